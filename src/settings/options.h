#pragma once
// The optional settings file, read once at start-up. Only this file knows its keys.
#include <cstdint>
#include <string>

struct AppOptions {
    int32_t volumeClampPercent = 0;  // 0 to 100; 0 leaves the system volume alone
    bool blockSystemShortcuts = true;
    bool soundEnabled = true;
    bool showExitHint = true;
    int32_t autoSaveIntervalSeconds = 120;  // at least 60
    std::wstring language;                  // as read, at most 63 characters
};

// Reads config.ini, after writing it from a template if it does not exist. Never fails: out is always valid.
void loadOptions(AppOptions &out);

// Writes the parent's choice never to see the exit hint again. A failure is ignored.
void turnOffExitHint();
