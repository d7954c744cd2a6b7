#pragma once
// The text in which a launcher names the monitor to start on. It comes from outside, so it is read here,
// without Windows.

struct MonitorBounds {
    long left, top, right, bottom;  // virtual-screen coordinates
};

// Reads "left,top,right,bottom": decimal numbers with single commas between them, then the end or a space.
// False, with bounds unchanged, for any other text or an empty area.
bool parseLaunchMonitor(const wchar_t *text, MonitorBounds &bounds);
