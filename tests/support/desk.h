#pragma once
// A desk to play at: while it stands, all that the program asks the system comes from here, on a clock that
// only the test moves, and all that it does to the system is recorded in `calls`. GDI and GDI+ draw on real
// bitmaps.
#include <cstdio>
#include <filesystem>
#include <map>
#include <optional>
#include <set>

#include "shell/base/surfaces.h"
#include "support/imports.h"

// A call on one line, e.g. "SetTimer w0 6 210", "FillEllipse c1 E10A0B0C 10 20 30 40" or "DrawLine elsewhere
// C837322D wide 2.50 caps 222 1 2 3 4": the function without Gdip and W, then its arguments as told.cpp lists
// them. w0 is the first window that was created, c0 the canvas of the first surface, any other device context
// is elsewhere; a drawing call has the colour of its brush or pen, the pen's traits, and the path's numbers.
struct Told {
    std::string text;
    std::string name;            // without "Gdip"
    std::vector<float> numbers;  // the plain ones, in order
    uint32_t argb = 0;           // of the brush or pen
    int canvas = -1;             // the surface that is drawn on; -1 for everything else
};

struct DeskWindow {
    std::wstring className;
    WNDPROC proc = nullptr;
    RECT rect = {};  // virtual-screen coordinates
    HWND owner = nullptr;
    bool exists = true, visible = false;
    RECT invalid = {};  // client coordinates
    HDC dc = nullptr;   // holds what it shows
    HBITMAP shown = nullptr;
};

struct DeskTimer {
    UINT period;
    int64_t due;  // on the steady clock
};

struct Desk : private Unique {
    // Starts the program's variables, the streams and the clocks anew, and opens a window and a canvas on
    // each monitor.
    explicit Desk(const std::vector<RECT> &monitors, MarkColor background = 0x000000);
    ~Desk();
    static inline Desk *current = nullptr;

    // What the program hears.
    DWORD tick = 1'000'000;  // GetTickCount
    static constexpr int64_t firstSteady = 1'000'000'000'000;
    int64_t steady = firstSteady;         // the steady clock, nanoseconds
    int64_t wallSeconds = 1'777'890'615;  // of the system clock at the beginning, UTC since 1970
    std::vector<RECT> monitors;           // in the order in which the system enumerates them
    size_t primaryMonitor = 0;
    int frame = 0;                        // how much smaller than a new window its client area is
    std::optional<VirtualScreen> screen;  // the union of the monitors while unset
    std::set<int> keysDown, tapped;       // the second: went down since the program last asked
    POINT cursor = {};
    HWND foreground = nullptr;
    bool buttonsSwapped = false;       // the mouse is a left-handed one's
    LPARAM extraInfo = 0;              // GetMessageExtraInfo
    DWORD orientation = DMDO_DEFAULT;  // of the primary monitor
    std::vector<TOUCHINPUT> touches;   // GetTouchInputInfo fails while this is empty
    std::vector<MSG> messages;         // posted, or to be handed out by GetMessageW, which then ends the loop
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
    std::vector<Told> calls;
    std::vector<DeskWindow> windows;
    std::map<std::pair<HWND, UINT_PTR>, DeskTimer> timers;  // the running ones
    std::vector<std::pair<const void *, DWORD>> sounds;     // bytes and flags of what the player accepted
    int64_t soundEnd = 0;                                   // on the steady clock
    HANDLE clipboard = nullptr;
    HOOKPROC hook = nullptr;
    bool telling = true;

    void moveClocks(DWORD ms);  // and no timer fires
    void wait(DWORD ms);        // timers fire when they are due
    LRESULT send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);  // then settles
    void settle();  // delivers what was posted, repaints what is invalid
    void hold(int key);
    void release(int key) { keysDown.erase(key); }

    // A folder that goes with the desk; each known folder of the user is another one inside.
    const std::filesystem::path &folder();
    std::filesystem::path ownFolder;

    DeskWindow *find(HWND window);  // null if there is none of that handle

    // Calls whose text begins so; the first one's place among calls, -1 if there is none.
    int count(const std::string &start) const;
    int first(const std::string &start) const;
    // The texts of all calls, or of those that begin with one of these, a line each.
    std::string text(const std::vector<std::string> &starts = {}) const;
};

// Handles of windows begin here, two apart.
inline constexpr intptr_t firstWindow = 0x5A0000;
inline HWND windowHandle(int index)
{
    return HWND(firstWindow + 2 * index);
}

// The second monitor of two lies to the left of the first and lower, at negative x.
inline const std::vector<RECT> oneMonitor = {{0, 0, 800, 600}};
inline const std::vector<RECT> twoMonitors = {{0, 0, 800, 600}, {-640, 100, 0, 580}};

// The program's variables as they were before main; calls keepProgramState() then.
void keepProgramState();
void resetProgram();

// GDI+ and GDI objects that were made since the desk was opened and not freed, e.g. "2 GdipCreatePen1".
std::string leaks();

// What Windows would not forgive is reported through this, e.g. a null window; the test fails.
inline void (*reportMisuse)(const std::string &what) = [](const std::string &what) {
    std::puts(what.c_str());
};

void tellCalls(bool on);
void forgetObjects();                   // what was made so far is no leak
void forgetObject(const void *object);  // it is the system's from now on
