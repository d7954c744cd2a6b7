// probe FOLDER: starts the Zubbly.exe in FOLDER, plays with it from outside as children and grown-ups do, and
// prints a table of what it saw. Exit code 0: no row failed; 1: one did; 2: nothing was tried.
//   --yes            run although there are saved pictures
//   --only ROW       this row alone, between start and end
//   --set KEY=VALUE  one more line for the settings file
// Coordinates are physical pixels of the virtual screen.
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include <windows.h>
#include <psapi.h>
#include <shlobj.h>

namespace fs = std::filesystem;
using std::string, std::vector;

template <class... Values> static string text(const char *format, Values... values)
{
    char buffer[300];
    std::snprintf(buffer, sizeof buffer, format, values...);
    return buffer;
}
static int refuse(const string &reason)
{
    std::fprintf(stderr, "probe: %s\n", reason.c_str());
    return 2;
}

// What the current row has found.
static struct Finding {
    bool failed = false, notHere = false;
    string seen;
} finding;
template <class... Values> static void note(const char *format, Values... values)
{
    finding.seen += (finding.seen.empty() ? "" : ", ") + text(format, values...);
}
static void want(bool holds, const string &otherwise)
{
    if (!holds) note("%s", otherwise.c_str());
    finding.failed = finding.failed || !holds;
}
static void notHere(const string &reason)
{
    finding = {false, true, reason};
}

struct Box : RECT {
    Box(LONG x1 = 0, LONG y1 = 0, LONG x2 = 0, LONG y2 = 0) : RECT{x1, y1, x2, y2} {}
    LONG width() const { return right - left; }
    LONG height() const { return bottom - top; }
    POINT middle() const { return {(left + right) / 2, (top + bottom) / 2}; }
    void add(Box other) { UnionRect(this, this, &other); }
};
static vector<Box> monitors;  // the one with 0,0 first: the keys leave their marks there
static Box screen;            // all of them

static struct Program : PROCESS_INFORMATION {
    bool runs() const { return hProcess && WaitForSingleObject(hProcess, 0) == WAIT_TIMEOUT; }
    bool owns(HWND window) const
    {
        DWORD id = 0;
        GetWindowThreadProcessId(window, &id);
        return id && id == dwProcessId;
    }
    double megabytes() const
    {
        PROCESS_MEMORY_COUNTERS memory = {};
        GetProcessMemoryInfo(hProcess, &memory, sizeof memory);
        return double(memory.PagefileUsage) / 1e6;  // private bytes
    }
} program;

static string nameOf(HWND window)
{
    char type[80] = {}, title[80] = {};
    GetClassNameA(window, type, 80);
    GetWindowTextA(window, title, 80);
    return text("\"%s\" (%s)", title, type);
}
static vector<HWND> visibleWindows(bool ofProgram, const char *type = "")
{
    vector<HWND> found;
    for (HWND window = GetTopWindow(nullptr); window; window = GetWindow(window, GW_HWNDNEXT))
        if (IsWindowVisible(window) && program.owns(window) == ofProgram &&
            nameOf(window).find(type) != string::npos)
            found.push_back(window);
    return found;
}

// ---- Waiting

static bool stopping = false;
static int hotKeys = 0, rightPresses = 0;  // that reached the probe itself

// Until the condition holds; false when the time is over.
template <class Condition> static bool soon(double seconds, Condition condition)
{
    for (const ULONGLONG end = GetTickCount64() + ULONGLONG(seconds * 1000);; Sleep(5)) {
        if (stopping) Sleep(INFINITE);
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            hotKeys += message.message == WM_HOTKEY;
            rightPresses += message.message == WM_RBUTTONDOWN;
            DispatchMessageW(&message);
        }
        if (condition()) return true;
        if (GetTickCount64() > end) return false;
    }
}
static void pause(double seconds)
{
    soon(seconds, [] { return false; });
}
// The longest time in ms in which the program answered no message. It is asked on a thread of its own: what
// the probe does, such as SendInput, may itself have to wait for the program.
static std::atomic<ULONGLONG> longestSilence = 0;
static DWORD WINAPI ask(void *forEver)
{
    do {
        const ULONGLONG begin = GetTickCount64();
        DWORD_PTR answer;
        SendMessageTimeoutW(FindWindowW(L"ZubblyWindow", nullptr), WM_NULL, 0, 0, SMTO_NORMAL, 60000,
                            &answer);
        longestSilence = std::max(longestSilence.load(), GetTickCount64() - begin);
        Sleep(4);
    } while (forEver);
    return 0;
}
// Windows drops a keyboard hook that keeps it waiting longer.
static void wantAnswers()
{
    ask(nullptr);  // one that still goes on counts to its end
    pause(0.1);
    note("%llu ms", longestSilence.load());
    want(longestSilence < 1000, "silent");
}

// ---- Input

static void key(WORD code, DWORD flags, WORD scan = 0)
{
    INPUT input = {.type = INPUT_KEYBOARD, .ki = {code, scan, flags, 0, 0}};
    if (!scan) input.ki.wScan = WORD(MapVirtualKeyW(code, MAPVK_VK_TO_VSC));
    const bool extended = code == VK_LWIN || code == VK_RWIN || (code >= VK_PRIOR && code <= VK_DOWN);
    if (extended) input.ki.dwFlags |= KEYEVENTF_EXTENDEDKEY;
    SendInput(1, &input, sizeof input);
}
static void press(const vector<WORD> &codes)
{
    for (const WORD code : codes)
        key(code, 0);
    for (auto code = codes.rbegin(); code != codes.rend(); ++code)
        key(*code, KEYEVENTF_KEYUP);
}
static void mouse(POINT point, DWORD buttons = 0)
{
    const DWORD flags = buttons | MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE | MOUSEEVENTF_VIRTUALDESK;
    INPUT input = {.type = INPUT_MOUSE, .mi = {0, 0, 0, flags, 0, 0}};
    input.mi.dx = ((point.x - screen.left) * 65536 + 32768) / screen.width();  // the middle of the pixel
    input.mi.dy = ((point.y - screen.top) * 65536 + 32768) / screen.height();
    SendInput(1, &input, sizeof input);
}
static POINT between(POINT from, POINT to, int part, int parts)
{
    return {from.x + (to.x - from.x) * part / parts, from.y + (to.y - from.y) * part / parts};
}
// SendInput speaks of the physical buttons, people mean the logical ones.
static void drag(POINT from, POINT to, bool left = true, int steps = 20)
{
    const bool first = left != bool(GetSystemMetrics(SM_SWAPBUTTON));
    mouse(from);
    mouse(from, first ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_RIGHTDOWN);
    for (int i = 1; i <= steps; ++i, pause(0.01))
        mouse(between(from, to, i, steps));
    mouse(to, first ? MOUSEEVENTF_LEFTUP : MOUSEEVENTF_RIGHTUP);
}
static void click(POINT point, bool left = true)
{
    drag(point, point, left, 0);
}

// ---- The screen

struct Pixels : vector<DWORD> {
    DWORD at(POINT p) const
    {
        return (*this)[size_t((p.y - screen.top) * screen.width() + p.x - screen.left)];
    }
};
// Of a picture, else of the screen.
static Pixels shoot(HBITMAP picture = nullptr)
{
    const HDC dc = GetDC(nullptr), memory = CreateCompatibleDC(dc);
    const HBITMAP copy = CreateCompatibleBitmap(dc, screen.width(), screen.height());
    const HGDIOBJ old = SelectObject(memory, copy);
    BitBlt(memory, 0, 0, screen.width(), screen.height(), dc, screen.left, screen.top, SRCCOPY);
    SelectObject(memory, old);
    Pixels pixels;
    pixels.resize(size_t(screen.width()) * size_t(screen.height()));
    BITMAPINFO info = {{sizeof(BITMAPINFOHEADER), screen.width(), -screen.height(), 1, 32, 0, 0, 0, 0, 0, 0},
                       {}};
    GetDIBits(dc, picture ? picture : copy, 0, UINT(screen.height()), pixels.data(), &info, DIB_RGB_COLORS);
    DeleteObject(copy);
    DeleteDC(memory);
    ReleaseDC(nullptr, dc);
    return pixels;
}

// The first monitor without the strip along its bottom where the penguin walks.
static Box canvas()
{
    Box box = monitors[0];
    box.bottom -= std::clamp<LONG>(box.height() * 22 / 100, 150, 240) + 30;
    return box;
}
static POINT place(int percentX, int percentY)
{
    const Box area = canvas();
    return {area.left + area.width() * percentX / 100, area.top + area.height() * percentY / 100};
}
// The box of what differs in the area, empty if nothing does.
static Box changeOf(const Pixels &before, const Pixels &after, Box area = canvas())
{
    Box box;
    for (POINT p = {0, area.top}; p.y < area.bottom; ++p.y)
        for (p.x = area.left; p.x < area.right; ++p.x)
            if ((before.at(p) ^ after.at(p)) & 0xFFFFFF) box.add({p.x, p.y, p.x + 1, p.y + 1});
    return box;
}
static bool changedSince(const Pixels &before, Box area = canvas())
{
    return changeOf(before, shoot(), area).width() > 0;
}
// What has changed once all stands still again.
static Box settledChange(const Pixels &before)
{
    Pixels after = before;
    if (!soon(3, [&] { return changedSince(before); })) return {};
    soon(2, [&] { return after = shoot(), pause(0.1), !changedSince(after); });
    return changeOf(before, after);
}

// ---- What is put back on every way out

struct Shortcut {
    const char *name;
    UINT get, set, size;
    DWORD bit;  // a combination of keys brings up a question
    DWORD found = 0, armed = 0;
    bool here() const { return armed & bit; }
    // All five records begin with their size and their flags. Sets other flags if they are given.
    DWORD flags(const DWORD *wanted = nullptr) const
    {
        alignas(8) DWORD record[16] = {size};
        if (!SystemParametersInfoW(get, size, record, 0)) return 0;
        if (!wanted || *wanted == record[1]) return record[1];
        record[1] = *wanted;
        SystemParametersInfoW(set, size, record, 0);
        return flags();
    }
};
static Shortcut shortcuts[] = {
    {"Sticky Keys", SPI_GETSTICKYKEYS, SPI_SETSTICKYKEYS, sizeof(STICKYKEYS), SKF_HOTKEYACTIVE},
    {"Toggle Keys", SPI_GETTOGGLEKEYS, SPI_SETTOGGLEKEYS, sizeof(TOGGLEKEYS), TKF_HOTKEYACTIVE},
    {"Filter Keys", SPI_GETFILTERKEYS, SPI_SETFILTERKEYS, sizeof(FILTERKEYS), FKF_HOTKEYACTIVE},
    {"Mouse Keys", SPI_GETMOUSEKEYS, SPI_SETMOUSEKEYS, sizeof(MOUSEKEYS), MKF_HOTKEYACTIVE},
    {"High Contrast", SPI_GETHIGHCONTRAST, SPI_SETHIGHCONTRAST, sizeof(HIGHCONTRASTW), HCF_HOTKEYACTIVE}};

static fs::path data, settings, settingsAside;
static std::set<fs::path> picturesBefore;
static BOOL swappedBefore = FALSE;
static Box clipBefore;
static AR_STATE rotationBefore = AR_NOT_SUPPORTED;
static double megabytesBefore = 0;

static AR_STATE rotation()
{
    AR_STATE state = AR_NOT_SUPPORTED;
    GetAutoRotationState(&state);
    return state;
}
static std::set<fs::path> pictures()
{
    std::error_code none;
    std::set<fs::path> found;
    for (const auto &entry : fs::directory_iterator(data / "SavedPictures", none))
        found.insert(entry.path());
    return found;
}

static bool somethingToPutBack = false;
static void putBack()
{
    if (!somethingToPutBack) return;
    somethingToPutBack = false;
    SwapMouseButton(swappedBefore);
    ClipCursor(nullptr);
    for (const int code : {VK_SHIFT, VK_CONTROL, VK_LMENU, VK_LWIN, VK_RWIN, VK_F1, VK_F4})
        if (GetAsyncKeyState(code) < 0) key(WORD(code), KEYEVENTF_KEYUP);
    if (program.runs()) {
        press({VK_LMENU, VK_F4});
        if (WaitForSingleObject(program.hProcess, 5000)) TerminateProcess(program.hProcess, 9);
        WaitForSingleObject(program.hProcess, 5000);
    }
    for (const Shortcut &shortcut : shortcuts)
        shortcut.flags(&shortcut.found);
    std::error_code none;
    for (const fs::path &picture : pictures())
        if (!picturesBefore.count(picture)) fs::remove(picture, none);
    fs::remove(settings, none);
    if (fs::exists(settingsAside, none)) fs::rename(settingsAside, settings, none);
}

// ---- What several rows do

static HWND intruder = nullptr;
static bool intruded()
{
    vector<HWND> windows = {GetForegroundWindow()};
    for (const Box &monitor : monitors)
        windows.push_back(WindowFromPoint(monitor.middle()));
    return std::any_of(windows.begin(), windows.end(),
                       [](HWND window) { return (intruder = window) && !program.owns(window); });
}

// What the desktop leaves unclaimed is claimed here, so that a leak shows on any. The first leak ends it.
static void chords(const vector<UINT> &modifierSets, const vector<WORD> &keys)
{
    const std::pair<UINT, WORD> modifiers[] = {
        {MOD_CONTROL, VK_CONTROL}, {MOD_ALT, VK_LMENU}, {MOD_SHIFT, VK_SHIFT}, {MOD_WIN, VK_LWIN}};
    int count = 2;
    for (const UINT held : modifierSets) {
        for (const WORD last : keys) {
            // The first two are for grown-ups, Win+L belongs to the system alone, and Ctrl+Esc leads out.
            if ((held & MOD_ALT) && (last == VK_F1 || last == VK_F4)) continue;
            if (((held & MOD_WIN) && last == 'L') || (held == MOD_CONTROL && last != VK_ESCAPE)) continue;
            vector<WORD> codes;
            for (const auto &[bit, code] : modifiers)
                if (held & bit) codes.push_back(code);
            codes.push_back(last);
            const bool claimed = RegisterHotKey(nullptr, 1, held, last);
            hotKeys = 0;
            press(codes);
            const bool out = soon(last == keys[0] ? 0.5 : 0.02, [] { return hotKeys > 0 || intruded(); });
            if (claimed) UnregisterHotKey(nullptr, 1);
            ++count;
            if (!out) continue;
            const string to = hotKeys ? "another program gets it" : nameOf(intruder);
            return want(false, text("key %x with modifiers %x: %s", last, held, to.c_str()));
        }
    }
    press({VK_LWIN});
    press({VK_RWIN});
    if (soon(1, intruded)) want(false, "after them: " + nameOf(intruder));
    const Pixels before = shoot();
    press({VK_SPACE});
    want(soon(3, [&] { return changedSince(before); }), "the keys are dead");
    note("%d chords", count);
}

static void tapAside(POINT point = place(50, 3))
{
    click(point);
    pause(0.3);
}
// The row of buttons is wider than a tap and of one height; a part of it may lie on the next monitor.
static bool menuShows(const Pixels &before)
{
    const Box change = settledChange(before);
    return change.width() >= 480 && change.height() >= 200 && change.height() <= 240;
}
static bool opensMenu()
{
    const Pixels before = shoot();
    click(place(50, 60), false);
    return menuShows(before);
}

static HWND putOver(POINT point)
{
    return CreateWindowExW(WS_EX_TOPMOST | WS_EX_NOACTIVATE | WS_EX_TOOLWINDOW, L"STATIC", L"",
                           WS_POPUP | WS_VISIBLE | SS_NOTIFY, point.x - 60, point.y - 60, 120, 120, nullptr,
                           nullptr, nullptr, nullptr);
}
static bool shutIn()
{
    Box clip;
    return GetClipCursor(&clip) && clip.width() <= 20;
}
static void shutCursor()
{
    const Box corner(monitors[0].left, monitors[0].top, monitors[0].left + 20, monitors[0].top + 20);
    ClipCursor(&corner);
}

static void hand(BOOL swapped)
{
    SwapMouseButton(swapped);
    // Does the system send what the swap means? A window of our own is asked.
    const HWND window = putOver(place(85, 80));
    rightPresses = 0;
    click(place(85, 80), false);
    const bool counts = soon(2, [] { return rightPresses > 0; });
    DestroyWindow(window);
    if (counts) {
        tapAside();
        want(opensMenu(), "no menu");
        tapAside();
        const Pixels before = shoot();
        drag(place(30, 75), place(60, 75));
        const LONG stroke = settledChange(before).width(), way = place(60, 0).x - place(30, 0).x;
        note("a stroke of %ld for %ld", stroke, way);
        want(stroke > way - 40 && stroke < way + 200, "not as long");
    } else {
        notHere("a swap of the buttons changes no message");
    }
    SwapMouseButton(swappedBefore);
}

template <class Function> static Function *userFunction(Function *, const char *name)
{
    const FARPROC found = GetProcAddress(GetModuleHandleW(L"user32.dll"), name);
    return reinterpret_cast<Function *>(reinterpret_cast<void *>(found));
}
static void finger()
{
    const auto begin = userFunction(InitializeTouchInjection, "InitializeTouchInjection");
    const auto inject = userFunction(InjectTouchInput, "InjectTouchInput");
    if (!begin || !inject) return notHere("user32.dll has no InjectTouchInput");
    if (!begin(1, TOUCH_FEEDBACK_NONE))
        return notHere(text("no injected touches: error %lu", GetLastError()));
    int refused = 0;
    // From one place to another in so many steps of 20 ms.
    const auto touch = [&](POINT from, POINT to, int steps) {
        POINTER_TOUCH_INFO contact = {};
        contact.pointerInfo.pointerType = PT_TOUCH;
        contact.touchMask = TOUCH_MASK_CONTACTAREA;
        for (int i = -1; i <= steps + 1; ++i, pause(0.02)) {
            const POINT p = between(from, to, std::clamp(i, 0, steps), steps);
            contact.pointerInfo.ptPixelLocation = p;
            contact.rcContact = Box(p.x - 4, p.y - 4, p.x + 4, p.y + 4);
            const DWORD phase = i < 0 ? POINTER_FLAG_DOWN : POINTER_FLAG_UPDATE;
            contact.pointerInfo.pointerFlags = phase | POINTER_FLAG_INRANGE | POINTER_FLAG_INCONTACT;
            if (i > steps) contact.pointerInfo.pointerFlags = POINTER_FLAG_UP;
            refused += !inject(1, &contact);
        }
    };
    const Pixels before = shoot();
    touch(place(20, 40), place(70, 40), 50);
    const LONG drawn = settledChange(before).width();
    const Pixels rested = shoot();
    const DWORD dot = rested.at(place(70, 40));  // a yellow one stays
    want((dot >> 16 & 255) > 180 && (dot >> 8 & 255) > 160 && (dot & 255) < 150, "no dot");
    touch(place(50, 60), place(50, 60), 75);  // long enough for a right click elsewhere
    want(!menuShows(rested), "a menu");
    note("%ld wide", drawn);
    want(drawn > place(70, 0).x - place(20, 0).x - 40, "not as long");
    want(refused == 0, text("%d refused", refused));
}

// ---- The rows

static const struct {
    const char *name, *must;
    void (*look)();
} rows[] = {
    {"covered", "every monitor has its window, picture and tap",
     [] {
         const Pixels start = shoot();
         note("%zu monitors", monitors.size());
         for (const Box &monitor : monitors) {
             int windows = 0, holes = 0;
             for (const HWND window : visibleWindows(true, "(ZubblyWindow)")) {
                 Box box;
                 windows += GetWindowRect(window, &box) && EqualRect(&box, &monitor);
             }
             for (POINT p = {0, monitor.top}; p.y < monitor.bottom; p.y += 7)
                 for (p.x = monitor.left; p.x < monitor.right; p.x += 7)
                     holes += start.at(p) != start.at(place(50, 50)) || !program.owns(WindowFromPoint(p));
             const LONG x = monitor.middle().x, y = monitor.top + 100;
             want(windows == 1 && !holes, text("at %ld,%ld: %d windows, %d holes", x, y, windows, holes));
             click({x, y});
             const Box around(x - 20, y - 20, x + 20, y + 20);
             want(soon(3, [&] { return changedSince(start, around); }), text("no mark at %ld,%ld", x, y));
         }
     }},
    {"keys", "eight keys leave their shapes at their places",
     [] {
         const Box box = monitors[0];
         const LONG width = std::max<LONG>(box.width() / 3, 120),
                    height = std::max<LONG>(box.height() / 3, 120);
         for (const char code : {'A', 'B', 'C', 'E', 'N', 'P', '4', '7'}) {  // shapes around their places
             const Pixels before = shoot();
             press({WORD(code)});
             const Box change = settledChange(before);
             // A key's place is a hash of its code, in the middle third of the monitor.
             const DWORD hash = (DWORD(code) + 1) * 0x9E3779B1u;
             const LONG x = box.middle().x - width / 2 + LONG(hash % DWORD(width));
             const LONG y = box.middle().y - height / 2 + LONG(hash / 97 % DWORD(height));
             const LONG offX = change.middle().x - x, offY = change.middle().y - y;
             want(std::abs(offX) <= 40 && std::abs(offY) <= 40 && std::abs(change.width() - 170) <= 130,
                  text("%c is %ld wide, %ld,%ld off", code, change.width(), offX, offY));
             pause(0.7);  // keys that come faster make notes
         }
     }},
    {"chords", "Alt, Ctrl and Windows chords lead nowhere",
     [] {
         vector<WORD> keys = {VK_TAB, VK_ESCAPE, VK_SPACE, VK_DELETE, VK_LEFT, VK_UP, VK_RIGHT, VK_DOWN};
         for (WORD letter = 'A'; letter <= 'Z'; ++letter)
             keys.push_back(letter);
         for (WORD function = VK_F1; function <= VK_F12; ++function)
             keys.push_back(function);
         chords({MOD_ALT, MOD_CONTROL, MOD_WIN, MOD_ALT | MOD_SHIFT, MOD_ALT | MOD_CONTROL, MOD_ALT | MOD_WIN,
                 MOD_CONTROL | MOD_SHIFT, MOD_CONTROL | MOD_WIN, MOD_SHIFT | MOD_WIN},
                keys);
     }},
    {"shift", "five presses of Shift bring up no question",
     [] {
         if (!shortcuts[0].here()) return notHere("the Sticky Keys shortcut cannot be switched on");
         const vector<HWND> before = visibleWindows(false);
         for (int i = 0; i < 5; ++i, pause(0.08))
             press({VK_SHIFT});
         soon(2, [&] { return visibleWindows(false) != before || intruded(); });
         for (const HWND window : visibleWindows(false))
             want(std::find(before.begin(), before.end(), window) != before.end(), nameOf(window));
         want(!intruded(), "something in front");
     }},
    {"shortcuts", "shortcuts that bring up a question are off",
     [] {
         if (std::ranges::none_of(shortcuts, &Shortcut::here))
             return notHere("none of the five can be switched on");
         for (const Shortcut &shortcut : shortcuts) {
             if (!shortcut.here()) continue;
             note("%s", shortcut.name);
             want(!(shortcut.flags() & shortcut.bit), "which is still on");
         }
     }},
    {"turned", "the screen does not turn with the tablet",
     [] {
         if (rotationBefore) return notHere(text("a screen that does not turn (state %d)", rotationBefore));
         want(rotation() != AR_ENABLED, "it turns");
     }},
    {"finger", "draws, leaves its dot, held opens no menu", finger},
    {"right", "right-handed: right for menu, left paints", [] { hand(FALSE); }},
    {"left", "left-handed: the other way round", [] { hand(TRUE); }},
    {"copy", "PrintScreen copies what shows, in 1000 ms",
     [] {
         want(opensMenu(), "no menu");
         const Pixels shown = shoot();
         const DWORD sequence = GetClipboardSequenceNumber();
         longestSilence = 0;
         // Windows looks at the scan code alone; the code of the key is for systems that do not translate it.
         for (const DWORD up : {0, KEYEVENTF_KEYUP})
             key(VK_SNAPSHOT, KEYEVENTF_SCANCODE | KEYEVENTF_EXTENDEDKEY | up, 0x37);
         if (!soon(5, [&] { return GetClipboardSequenceNumber() != sequence; }) ||
             !soon(2, [] { return OpenClipboard(nullptr) != FALSE; }))
             return want(false, !intruded() ? "no copy" : nameOf(intruder) + ": does Windows keep the key?");
         const HBITMAP bitmap = HBITMAP(GetClipboardData(CF_BITMAP));
         BITMAP size = {};
         GetObjectW(bitmap, sizeof size, &size);
         note("%ld by %ld", size.bmWidth, size.bmHeight);
         want(size.bmWidth == screen.width() && size.bmHeight == screen.height() &&
                  changeOf(shown, shoot(bitmap)).width() == 0,
              "unlike the screen");
         CloseClipboard();
         tapAside();
         wantAnswers();
     }},
    {"wipe", "Escape wipes to one colour in 0.5 to 8 s",
     [] {
         press({VK_SPACE});
         pause(0.5);
         const ULONGLONG begin = GetTickCount64();
         ULONGLONG changed = begin;
         Pixels last = shoot();
         press({VK_ESCAPE});
         soon(15, [&] {
             if (changedSince(last)) changed = GetTickCount64();
             last = shoot();
             return GetTickCount64() > std::max(changed, begin) + 2000;
         });
         int even = 0;
         for (int i = 0; i < 10000; ++i)
             even += last.at(place(i % 100, i / 100)) == last.at(place(50, 50));
         note("%llu ms, then %d %% one colour", changed - begin, even / 100);
         want(changed - begin > 500 && changed - begin < 8000 && even > 9000, "no wipe");
     }},
    {"again", "window on top, shut-in cursor: 1.8 s at most",
     [] {
         const POINT point = place(80, 30);
         const HWND window = putOver(point);
         const bool covers = soon(3, [&] {
             SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
             shutCursor();
             return WindowFromPoint(point) == window && shutIn();
         });
         const ULONGLONG begin = GetTickCount64();
         soon(5, [&] { return program.owns(WindowFromPoint(point)) && !shutIn(); });
         note("%llu ms", GetTickCount64() - begin);
         want(GetTickCount64() - begin < 1800, "too late");
         DestroyWindow(window);
         if (!covers) notHere("another program can do neither");
     }},
    {"play", "10 s of play, never silent for 1000 ms",
     [] {
         const Pixels before = shoot();
         longestSilence = 0;
         const ULONGLONG end = GetTickCount64() + 10000;
         for (int i = 0; GetTickCount64() < end; ++i) {
             if (i % 4 == 0) drag(place(10, 20 + i % 60), place(90, 80 - i % 60));
             if (i % 4 == 1) press({VK_SPACE});
             if (i % 4 == 2) press({VK_RETURN});
             for (const WORD code : {'A', 'S', 'D', 'F', 'J', 'K', 'L'}) {
                 if (i % 4 == 3) press({code});
                 pause(0.05);
             }
         }
         press({VK_SHIFT});  // stops what draws by itself
         wantAnswers();
         want(settledChange(before).width() > canvas().width() / 2, "little was painted");
     }},
    {"memory", "no more than a few pictures more after it",
     [] {
         // On the clipboard, to compose on.
         const double limit = megabytesBefore + 2 * 4e-6 * screen.width() * screen.height() + 40;
         note("%.1f MB, at the start %.1f, limit %.1f", program.megabytes(), megabytesBefore, limit);
         want(megabytesBefore > 0 && program.megabytes() < limit, "too much");
     }},
    {"save", "saves by itself, not silent for 1000 ms",
     [] {
         const std::set<fs::path> before = pictures();
         click(place(40, 30));  // something to save
         longestSilence = 0;
         const auto isWhole = [&](const fs::path &picture) {
             std::ifstream file(picture, std::ios::binary);
             const string bytes(std::istreambuf_iterator<char>(file), {});
             return !before.count(picture) && bytes.size() > 8 && bytes.substr(bytes.size() - 8, 4) == "IEND";
         };
         const auto saved = [&] { return std::ranges::any_of(pictures(), isWhole); };
         want(soon(130, saved), "no whole file");
         wantAnswers();
     }},
    {"held", "Alt+F1 held for 4 s opens one dialog",
     [] {
         size_t most = 0;
         const auto dialogs = [&] {
             const vector<HWND> open = visibleWindows(true, "(#32770)");
             most = std::max(most, open.size());
             return open;
         };
         for (int i = 0; i < 120; ++i, pause(0.033), dialogs()) {    // as a keyboard repeats
             if (GetAsyncKeyState(VK_LMENU) >= 0) key(VK_LMENU, 0);  // a change of focus may let go of it
             key(VK_F1, 0);
         }
         key(VK_F1, KEYEVENTF_KEYUP);
         key(VK_LMENU, KEYEVENTF_KEYUP);
         soon(15, [&] { return !dialogs().empty(); });
         pause(0.5);
         const auto closed = [&] {
             for (const HWND dialog : dialogs())
                 PostMessageW(dialog, WM_CLOSE, 0, 0);
             return pause(0.1), dialogs().empty();
         };
         want(soon(60, closed), "one stays open");
         want(most == 1, text("%zu dialogs", most));
     }},
    {"still", "the chords still lead nowhere",
     [] { chords({MOD_ALT, MOD_CONTROL, MOD_WIN}, {VK_TAB, VK_ESCAPE}); }},
    {"end", "Alt+F4 ends it with code 0",
     [] {
         shutCursor();  // something to undo
         press({VK_LMENU, VK_F4});
         want(soon(30, [] { return !program.runs(); }), "it runs on");
         DWORD code = 0;
         GetExitCodeProcess(program.hProcess, &code);
         want(code == 0, text("code %lu", code));
     }},
    {"settings", "all settings are as before", [] {
         for (const Shortcut &shortcut : shortcuts)
             want(shortcut.flags() == shortcut.armed, shortcut.name);
         Box clip;
         GetClipCursor(&clip);
         want(EqualRect(&clip, &clipBefore), "the cursor");
         want(GetSystemMetrics(SM_SWAPBUTTON) == swappedBefore, "the mouse buttons");
         want(rotation() == rotationBefore, "the turning of the screen");
         if (!finding.failed && std::ranges::none_of(shortcuts, &Shortcut::here))
             notHere("none of the five can be switched on, the rest is as before");
     }}};

// ---- Before and after

static void prepare(const string &lines)
{
    std::atexit(putBack);
    const auto onControl = [](DWORD) -> BOOL {
        stopping = true;  // holds the rows at their next step
        Sleep(100);
        putBack();
        ExitProcess(2);
    };
    SetConsoleCtrlHandler(onControl, TRUE);
    SetUnhandledExceptionFilter([](EXCEPTION_POINTERS *what) -> LONG {
        putBack();
        refuse(text("crashed with %lx", what->ExceptionRecord->ExceptionCode));
        return EXCEPTION_CONTINUE_SEARCH;
    });
    fs::create_directories(data);
    // A probe that was killed has left them aside.
    if (fs::exists(settings) && !fs::exists(settingsAside)) fs::rename(settings, settingsAside);
    picturesBefore = pictures();
    swappedBefore = GetSystemMetrics(SM_SWAPBUTTON);
    ClipCursor(nullptr);
    GetClipCursor(&clipBefore);
    rotationBefore = rotation();
    for (Shortcut &shortcut : shortcuts)
        shortcut.found = shortcut.flags();
    somethingToPutBack = true;
    for (Shortcut &shortcut : shortcuts) {
        const DWORD wanted = shortcut.found | shortcut.bit;
        shortcut.armed = shortcut.flags(&wanted);
    }
    std::ofstream file(settings, std::ios::binary);
    file.exceptions(std::ios::failbit | std::ios::badbit);
    file << "[Zubbly]\r\nShowExitHint=0\r\nAutoSaveIntervalSeconds=60\r\n" << lines << std::flush;
}

// What keeps it from coming up; empty if nothing does.
static string launch(const fs::path &folder)
{
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    if (!CreateProcessW((folder / "Zubbly.exe").c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr,
                        folder.c_str(), &start, &program))
        return text("Zubbly.exe does not start: error %lu", GetLastError());
    AllowSetForegroundWindow(program.dwProcessId);
    size_t windows = 0;
    soon(60, [&] {
        windows = visibleWindows(true, "(ZubblyWindow)").size();
        return windows >= monitors.size() || !program.runs();
    });
    CreateThread(nullptr, 0, ask, &program, 0, nullptr);
    pause(1);
    megabytesBefore = program.megabytes();
    DWORD code = 0;
    GetExitCodeProcess(program.hProcess, &code);
    if (!program.runs()) return text("Zubbly.exe ended at once, with code %lx", code);
    return windows ? "" : "no window came up";
}

static int probe(const vector<fs::path> &words)
{
    fs::path folder, only;
    string lines;
    bool yes = false;
    for (size_t i = 1; i < words.size(); ++i) {
        if (words[i] == "--yes")
            yes = true;
        else if (words[i] == "--only" && i + 1 < words.size())
            only = words[++i];
        else if (words[i] == "--set" && i + 1 < words.size())
            lines += words[++i].string() + "\r\n";
        else
            folder = fs::absolute(words[i]);
    }
    if (!fs::exists(folder / "Zubbly.exe")) return refuse("name the folder of Zubbly.exe");
    // One that is just ending gets the time for it.
    if (!soon(5, [] { return !FindWindowW(L"ZubblyWindow", nullptr); }))
        return refuse("Zubbly is running; leave it with Alt+F4 first");
    wchar_t *roaming = nullptr;
    if (FAILED(SHGetKnownFolderPath(FOLDERID_RoamingAppData, 0, nullptr, &roaming)))
        return refuse("no data folder");
    data = fs::path(roaming) / "norvanta" / "Zubworks" / "Zubbly";
    settings = data / "config.ini";
    settingsAside = data / "config.ini.before-probe";
    if (!yes && !pictures().empty())
        return refuse("the oldest saved pictures may go; --yes runs nevertheless");

    if (!SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2)) SetProcessDPIAware();
    const auto add = [](HMONITOR, HDC, LPRECT box, LPARAM) -> BOOL {
        const Box monitor(box->left, box->top, box->right, box->bottom);
        monitors.insert(PtInRect(box, {0, 0}) ? monitors.begin() : monitors.end(), monitor);
        screen.add(monitor);
        return TRUE;
    };
    EnumDisplayMonitors(nullptr, nullptr, add, 0);
    if (monitors.empty()) return refuse("the system names no monitor");
    prepare(lines);
    const string obstacle = launch(folder);
    if (!obstacle.empty()) return refuse(obstacle);

    bool failed = false;
    std::printf("%-10s%-46s%-50s\n", "row", "what must be", "what was seen");
    for (const auto &[name, must, look] : rows) {
        const bool first = name == string("covered"), last = name == string("settings");
        if (!only.empty() && only != name && !last && name != string("end")) continue;
        finding = {};
        want(last || program.runs(), "the program is gone");
        // A tap would leave a hole in what the first row looks at.
        const auto inFront = [] { return program.owns(GetForegroundWindow()); };
        if (!first && !last && !soon(1, inFront)) tapAside(place(97, 3));
        if (!finding.failed) look();
        const char *verdict = finding.failed ? "FAIL" : finding.notHere ? "not here" : "pass";
        if (finding.seen.empty()) finding.seen = "as expected";
        std::printf("%-10s%-46s%-50s %s\n", name, must, finding.seen.c_str(), verdict);
        std::fflush(stdout);
        failed = failed || finding.failed;
    }
    return failed;
}

int wmain(int count, wchar_t **words)
{
    try {
        return probe({words, words + count});
    } catch (const std::exception &failure) {
        return refuse(failure.what());
    }
}
