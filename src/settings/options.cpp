#include "settings/options.h"

#include <algorithm>

#include "settings/folders.h"
#include "shell/base/files.h"
#include "shell/base/windows_api.h"

// Two comment lines end in a bare line feed, on purpose: existing files have the same mix.
static constexpr wchar_t templateText[] =
    L"[Zubbly]\r\n"
    L"; Zubbly optional settings (parents / support). Encoding: UTF-16 LE with BOM.\r\n"
    L"; Path: %AppData%\\Roaming\\norvanta\\Zubworks\\Zubbly\\config.ini\r\n"
    L"\r\n"
    L"; Default playback device: cap master volume to this percent (1-100).\r\n"
    L"; Use 0 so the app does not change system volume.\r\n"
    L"VolumeClampPercent=0\r\n"
    L"\r\n"
    L"; 1 = block Windows key and Ctrl+Esc (low-level keyboard hook).\r\n"
    L"; 0 = do not install hook (debug or when hook is blocked by policy).\r\n"
    L"BlockSystemShortcuts=1\r\n"
    L"\r\n"
    L"; 1 = play UI sounds; 0 = mute (no in-app toggle yet).\r\n"
    L"SoundEnabled=1\r\n"
    L"\r\n"
    L"; 1 = show parent exit hints (startup + idle); 0 = never show.\n"
    L"; Parents can also opt out from the hint panel checkbox.\n"
    L"ShowExitHint=1\r\n"
    L"\r\n"
    L"; Auto-save interval in seconds (minimum 60, default 120).\r\n"
    L"AutoSaveIntervalSeconds=120\r\n"
    L"\r\n"
    L"[UI]\r\n"
    L"; Language override for menu labels (case-insensitive). Keep empty to follow Windows UI language.\r\n"
    L"; Examples: ja / en / zh / fr / it / de / es\r\n"
    L"; Chinese here means Simplified Chinese.\r\n"
    L"Language=\r\n"
    L"\r\n"
    L"; Legacy key names (still supported if the lines above are omitted):\r\n"
    L"; MasterVolumeClampPercent, LlKeyboardHook\r\n";

static_assert(sizeof(wchar_t) == 2, "the template is written as UTF-16 code units");

static void writeTemplate(const wchar_t *path)
{
    const HANDLE file = CreateFileW(path, GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_NEW,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return;
    const unsigned char byteOrderMark[] = {0xFF, 0xFE};
    DWORD written = 0;
    WriteFile(file, byteOrderMark, sizeof byteOrderMark, &written, nullptr);
    WriteFile(file, templateText, sizeof templateText - sizeof(wchar_t), &written, nullptr);
    CloseHandle(file);
}

static constexpr const wchar_t *section = L"Zubbly";
static constexpr const wchar_t *showExitHintKey = L"ShowExitHint";

static std::wstring settingsFile()
{
    return inFolder(dataDirectory(), L"config.ini");
}

static int32_t readNumber(const wchar_t *path, const wchar_t *key, int32_t missing)
{
    return int32_t(GetPrivateProfileIntW(section, key, missing, path));
}

// For a renamed key: the legacy one counts only if the new one is absent.
static int32_t readRenamed(const wchar_t *path, const wchar_t *key, const wchar_t *legacyKey, int32_t missing)
{
    const int32_t absent = INT32_MIN + 1;  // nobody would write this value
    const int32_t value = readNumber(path, key, absent);
    return value == absent ? readNumber(path, legacyKey, missing) : value;
}

void loadOptions(AppOptions &out)
{
    out = {};
    ensureDataDirectories();
    const std::wstring file = settingsFile();
    const wchar_t *path = file.c_str();
    if (GetFileAttributesW(path) == INVALID_FILE_ATTRIBUTES) writeTemplate(path);

    const int32_t percent = readRenamed(path, L"VolumeClampPercent", L"MasterVolumeClampPercent", 0);
    out.volumeClampPercent = std::clamp(percent, 0, 100);
    out.blockSystemShortcuts = readRenamed(path, L"BlockSystemShortcuts", L"LlKeyboardHook", 1) != 0;
    out.soundEnabled = readNumber(path, L"SoundEnabled", 1) != 0;
    out.showExitHint = readRenamed(path, showExitHintKey, L"ShowIdleExitHint", 1) != 0;
    out.autoSaveIntervalSeconds = std::max(readNumber(path, L"AutoSaveIntervalSeconds", 120), 60);

    wchar_t language[64] = {};
    GetPrivateProfileStringW(L"UI", L"Language", L"", language, 64, path);
    out.language = language;
}

void turnOffExitHint()
{
    WritePrivateProfileStringW(section, showExitHintKey, L"0", settingsFile().c_str());
}
