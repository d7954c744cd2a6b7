#pragma once
// A desk to play at: while it stands, all that the program asks the system comes from here, on a clock that
// only the test moves, and all that it does to the system is recorded in `calls`. GDI and GDI+ draw on real
// bitmaps.
#include <cstdio>
#include <deque>
#include <filesystem>
#include <optional>
#include <set>

#include "shell/base/surfaces.h"
#include "support/imports.h"

// A call on one line, e.g. "SetTimer w0 6 210", "FillEllipse c1 E10A0B0C 10 20 30 40" or "DrawLine elsewhere
// C837322D wide 2.50 caps 222 1 2 3 4": the function without Gdip and W, then its arguments as calls.cpp
// lists them. w0 is the first window that was created, c0 the canvas of the first surface, any other device
// context is elsewhere; a drawing call has the colour of its brush or pen, the pen's traits, and the path's
// numbers.
struct CallLine {
    std::string text;
    int numbers = 0;  // so many arguments are plain ones

    void add(const CallLine &more) { text += more.text, numbers += more.numbers; }
};

struct DeskWindow {
    std::wstring className = {};
    WNDPROC proc = nullptr;
    RECT rect = {};  // virtual-screen coordinates
    bool visible = false;
    RECT invalid = {};  // client coordinates
    HDC dc = nullptr;   // holds what it shows
    HBITMAP shown = nullptr;

    static inline int frame = 0;  // how much smaller than a window its client area is
    RECT client() const { return {0, 0, rect.right - rect.left - frame, rect.bottom - rect.top - frame}; }
    HDC context();
    BOOL show(bool on);  // true if it was visible
    DeskWindow() = default;
    DeskWindow(const DeskWindow &) = delete;
    ~DeskWindow();
};

struct DeskTimer {
    UINT period;
    int64_t due;  // on the steady clock
};

// An object of GDI or GDI+ that the program made.
struct DeskObject {
    std::string maker;
    CallLine looks;
};

struct Desk {
    // Starts the program's variables, the streams and the clocks anew, and opens a window and a canvas on
    // each monitor.
    explicit Desk(const std::vector<RECT> &monitors, MarkColor background = 0x000000);
    Desk(const Desk &) = delete;
    ~Desk();
    static inline Desk *current = nullptr;

    // What the program hears.
    DWORD tick = 1'000'000;  // GetTickCount
    static constexpr int64_t firstSteady = 1'000'000'000'000;
    int64_t steady = firstSteady;         // the steady clock, nanoseconds
    int64_t wallSeconds = 1'777'890'615;  // of the system clock at the beginning, UTC since 1970
    std::vector<RECT> monitors;           // in the order in which the system enumerates them
    size_t primaryMonitor = 0;
    std::optional<VirtualScreen> screen;  // the union of the monitors while unset
    std::set<int> keysDown, tapped;       // the second: went down since the program last asked
    POINT cursor = {};
    HWND foreground = nullptr;
    bool buttonsSwapped = false;       // the mouse is a left-handed one's
    LPARAM extraInfo = 0;              // GetMessageExtraInfo
    DWORD orientation = DMDO_DEFAULT;  // of the primary monitor
    std::vector<TOUCHINPUT> touches;   // GetTouchInputInfo fails while this is empty
    std::deque<MSG> messages;          // posted, or to be handed out by GetMessageW, which then ends the loop
    std::function<void()> play;        // GetMessageW does this once before
    DWORD lastError = 0;               // after CreateMutexW
    LANGID uiLanguage = 0x0409;
    std::wstring programFile;  // the real one while empty
    std::map<std::wstring, std::wstring> environment;
    std::map<std::string, const void *> functions = {{"SHGetPropertyStoreForWindow", nullptr},
                                                     {"GetDisplayAutoRotationPreferences", nullptr},
                                                     {"SetDisplayAutoRotationPreferences", nullptr}};
    std::function<HRESULT(REFCLSID, void **)> makeObject;  // CoCreateInstance fails while this is empty

    // What it did.
    bool recording = false;
    std::vector<CallLine> calls;
    std::map<std::wstring, WNDPROC> windowClasses;
    std::map<HWND, DeskWindow> windows;
    int windowsMade = 0;
    std::map<std::pair<HWND, UINT_PTR>, DeskTimer> timers;  // the running ones
    std::map<const void *, DeskObject> objects;             // that are not freed
    std::vector<std::pair<const void *, DWORD>> sounds;     // bytes and flags of what the player accepted
    int64_t soundEnd = 0;                                   // on the steady clock
    HOOKPROC hook = nullptr;

    void moveClocks(DWORD ms) { tick += ms, steady += int64_t(ms) * 1'000'000; }  // and no timer fires
    void wait(DWORD ms);  // timers fire when they are due
    LRESULT send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);  // then settles
    void settle();  // delivers what was posted, repaints what is invalid
    void hold(int key)
    {
        if (keysDown.insert(key).second) tapped.insert(key);
    }
    void release(int key) { keysDown.erase(key); }
    DeskWindow *find(HWND window) { return windows.contains(window) ? &windows[window] : nullptr; }

    // A folder that goes with the desk; each known folder of the user is another one inside.
    static std::filesystem::path folder();

    // The calls whose text begins with one of these, or all; their number, or their texts, a line each.
    std::vector<CallLine> callsOf(const std::vector<std::string> &starts) const;
    int count(const std::string &start) const { return int(callsOf({start}).size()); }
    std::string text(const std::vector<std::string> &starts = {""}) const;
    void record(const std::string &line)
    {
        if (recording) calls.push_back({line});
    }
};

// Handles of windows begin here, two apart. They are named as in recorded calls, e.g. " w0".
inline constexpr intptr_t firstWindow = 0x5A0000;
inline HWND windowHandle(int index)
{
    return HWND(firstWindow + 2 * index);
}
std::string windowName(HWND window);

// A text for the program to free.
PWSTR taskString(const std::wstring &text);

// The second monitor of two lies to the left of the first and lower, at negative x.
inline const std::vector<RECT> oneMonitor = {{0, 0, 800, 600}};
inline const std::vector<RECT> twoMonitors = {{0, 0, 800, 600}, {-640, 100, 0, 580}};

// Before the first desk: starts GDI+, lets a crash be seen, and keeps the program's variables, which
// resetProgram() puts back.
void beginDesks();
void resetProgram();

// GDI+ and GDI objects that were made since the desk was opened and not freed, e.g. "2 GdipCreatePen1".
std::string leaks();

// What Windows would not forgive is reported through this, e.g. a null window; the test fails.
inline void (*reportMisuse)(const std::string &what) = [](const std::string &what) {
    std::puts(what.c_str());
};
