#pragma once
// The program's imports, replaced at link time: what it asks the system comes from `fakes`, what it does
// to the system and draws is kept in `recorded`, and drawing is passed on to real canvases.
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "shell/base/surfaces.h"

struct Fakes {
    DWORD tick = 1'000'000;              // GetTickCount
    int64_t steady = 1'000'000'000'000;  // the steady clock, nanoseconds
    std::set<int> keysDown;              // GetAsyncKeyState
    std::vector<RECT> monitors;          // in the order in which the system tells them
    size_t primaryMonitor = 0;
    DWORD orientation = DMDO_DEFAULT;  // of the first monitor, EnumDisplaySettingsW
    VirtualScreen screen = {};         // metrics 76 to 79; desks set it to the union of their monitors
    bool buttonsSwapped = false;       // metric 23
    POINT cursor = {};
    HWND foreground = nullptr;
    HDC paintDC = nullptr;  // BeginPaint of our windows
    RECT paintRect = {};
    BOOL playResult = TRUE;           // PlaySoundW
    BOOL postResult = TRUE;           // PostMessageW
    std::vector<TOUCHINPUT> touches;  // GetTouchInputInfo; it fails while this is empty
    LPARAM extraInfo = 0;             // GetMessageExtraInfo
    std::vector<MSG> messages;        // GetMessageW hands these out, then ends the loop
    DWORD lastError = 0;              // after CreateMutexW
    LANGID uiLanguage = 0x0409;       // GetUserDefaultUILanguage
    std::wstring programFile;         // GetModuleFileNameW; the real answer while empty
    std::filesystem::path folder;     // every known folder of the user; the real ones while empty
    int64_t wallSeconds = 0;          // the system clock, UTC since 1970; the real time while 0
    SYSTEMTIME localTime = {};        // GetLocalTime
    std::function<HRESULT(REFCLSID, void **)> makeObject;  // CoCreateInstance; it fails while this is empty
    std::map<std::string, void *> functions;  // GetProcAddress; the real ones where this has none
    std::set<std::string> failing;            // imports that fail, of those below that ask for it
    std::function<void()> play;               // GetMessageW does this once instead, then ends the loop

    void passMs(DWORD ms)  // both clocks
    {
        tick += ms;
        steady += int64_t(ms) * 1'000'000;
    }
};
inline Fakes fakes;

struct DrawCall {
    std::string what = {};            // the GDI+ function without "Gdip"
    HDC dc = nullptr;                 // whose Graphics it was drawn on
    std::vector<float> numbers = {};  // all numbers of the call or of its path, in order
    uint32_t argb = 0;                // of its brush or pen
    float penWidth = 0.0f;            // 0 for fills
    int startCap = 0, endCap = 0, dashCap = 0, join = 0;
};

struct Invalidation {
    HWND window;
    bool whole;
    RECT rect;
};

struct Recorded {
    std::vector<DrawCall> draws;
    std::vector<Invalidation> invalidations;
    std::vector<std::pair<const void *, DWORD>> sounds;  // bytes and flags of PlaySoundW
    std::map<std::pair<HWND, UINT_PTR>, UINT> timers;    // running: window and id, period
    std::map<std::pair<HWND, UINT_PTR>, DWORD> started;  // the ticks at which they were set
    std::vector<std::string> calls;                      // the rest, in order, e.g. "KillTimer 6"
    int alive = 0;                                       // GDI+ objects made and not freed
};
inline Recorded recorded;

// Where all that is done to the system is written, a line each in one order; nobody tells while it is null.
inline std::string *story = nullptr;
inline void tell(const std::string &line)
{
    *story += line + "\n";
}

// Handles of windows that only the recorder knows begin here, two apart, in the order of creation.
inline constexpr intptr_t firstFakeWindow = 0x5A0000;
inline HWND fakeWindow(int index)
{
    return HWND(firstFakeWindow + 2 * index);
}

// How often a call was made that begins with that text, e.g. "SetTimer 6".
int countCalls(const std::string &start);

// The place of the first such call among recorded.calls; -1 if there is none.
int firstCall(const std::string &start);

// A drawing call on one line: what, colour, width and round parts of the pen, numbers; with the monitor's
// number where it is not the first.
std::string textOf(const DrawCall &call);
std::string textOf(const Invalidation &each);

// All that was drawn and repainted, a line each, and the next output of markRng.
std::string textOfRecord();

// Lends a variable a value and gives the old one back.
template <class T> class Having {
  public:
    template <class U> Having(T &where, U &&value) : place(where), old(where)
    {
        where = std::forward<U>(value);
    }
    ~Having() { place = old; }
    Having(const Having &) = delete;
    Having &operator=(const Having &) = delete;

  private:
    T &place;
    T old;
};

// Surfaces with real canvases and fake windows, one per rectangle, for as long as the desk stands. The
// recorder starts empty, both clocks and all streams at known values.
class Desk {
  public:
    explicit Desk(const std::vector<RECT> &monitors, MarkColor background = 0x000000);
    ~Desk();
    Desk(const Desk &) = delete;
    Desk &operator=(const Desk &) = delete;

    MarkColor pixel(int x, int y) const;  // at a virtual-screen point; CLR_INVALID off all canvases
};

// Two monitors: the second lies to the left of the first and lower, at negative x.
inline const std::vector<RECT> oneMonitor = {{0, 0, 800, 600}};
inline const std::vector<RECT> twoMonitors = {{0, 0, 800, 600}, {-640, 100, 0, 580}};

// A folder for one test; it is the user's every known folder (fakes.folder) and gone at the test's end.
// Stands inside a desk, which empties the fakes.
struct TestFolder {
    const std::filesystem::path path;
    TestFolder();
    ~TestFolder();
};

void seedAll(uint32_t seed);

// FNV-1a over code units: stands for a text in a table where the text itself would be a second copy.
inline uint32_t hashOf(const std::wstring &text)
{
    uint32_t hash = 2166136261u;
    for (const wchar_t unit : text)
        hash = (hash ^ unit) * 16777619u;
    return hash;
}

// Whether both streams would give the same next output; compares a stream with its replay by hand.
inline bool sameStream(Rng a, Rng b)
{
    return a() == b();
}
