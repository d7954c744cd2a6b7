// probe FOLDER: starts the Zubbly.exe in FOLDER, plays with it from outside as children and grown-ups do, and
// prints a table of what it saw. Exit code 0: no row failed; 1: one did; 2: nothing was tried.
//   --yes            run although there are saved pictures
//   --only ROW       this row alone, between start and end
//   --set KEY=VALUE  one more line for the settings file
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include <windows.h>
#include <psapi.h>
#include <shlobj.h>

namespace fs = std::filesystem;

enum Verdict { pass, fail, notHere };
struct Finding {
    Verdict verdict;
    std::string seen;
};

__attribute__((format(gnu_printf, 1, 2))) static std::string text(const char *format, ...)
{
    char buffer[300];
    va_list values;
    va_start(values, format);
    std::vsnprintf(buffer, sizeof buffer, format, values);
    va_end(values);
    return buffer;
}

// ---- The program and its windows. Coordinates are physical pixels of the virtual screen.

static PROCESS_INFORMATION program = {};
static std::vector<HWND> surfaces;
static std::vector<RECT> monitors;  // the one with 0,0 first: the keys leave their marks there
static RECT screen = {};            // all of them
static LONG widthOf(const RECT &box)
{
    return box.right - box.left;
}
static LONG heightOf(const RECT &box)
{
    return box.bottom - box.top;
}
static std::atomic<bool> stopping = false;

static bool running()
{
    return program.hProcess && WaitForSingleObject(program.hProcess, 0) == WAIT_TIMEOUT;
}
static bool isProgram(HWND window)
{
    DWORD id = 0;
    GetWindowThreadProcessId(window, &id);
    return id && id == program.dwProcessId;
}
static bool inFront()
{
    return isProgram(GetForegroundWindow());
}

static std::vector<HWND> visibleWindows(bool ofProgram)
{
    std::vector<HWND> found;
    const auto add = [](HWND window, LPARAM list) -> BOOL {
        if (IsWindowVisible(window)) reinterpret_cast<std::vector<HWND> *>(list)->push_back(window);
        return TRUE;
    };
    EnumWindows(add, LPARAM(&found));
    std::erase_if(found, [&](HWND window) { return isProgram(window) != ofProgram; });
    return found;
}

static std::string nameOf(HWND window)
{
    char type[80] = {}, title[80] = {};
    GetClassNameA(window, type, 80);
    GetWindowTextA(window, title, 80);
    return text("\"%s\" (%s)", title, type);
}

static double now()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// Waits until the condition holds; false when the time is over.
static int hotKeys = 0, rightPresses = 0;  // that reached us meanwhile
template <class Condition> static bool soon(double seconds, Condition condition)
{
    for (const double end = now() + seconds;; Sleep(10)) {
        if (stopping) Sleep(INFINITE);
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            hotKeys += message.message == WM_HOTKEY;
            rightPresses += message.message == WM_RBUTTONDOWN;
            DispatchMessageW(&message);
        }
        if (condition()) return true;
        if (now() > end) return false;
    }
}
static void pause(double seconds)
{
    soon(seconds, [] { return false; });
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
static void press(const std::vector<WORD> &codes)
{
    for (size_t i = 0; i < codes.size(); ++i)
        key(codes[i], 0);
    for (size_t i = codes.size(); i-- > 0;)
        key(codes[i], KEYEVENTF_KEYUP);
}

static void mouse(POINT point, DWORD buttons = 0)
{
    const auto share = [](LONG value, LONG low, LONG high) {
        return LONG((int64_t(value - low) * 65536 + 32768) / (high - low));  // into the middle of the pixel
    };
    const DWORD moves = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE | MOUSEEVENTF_VIRTUALDESK;
    INPUT input = {.type = INPUT_MOUSE,
                   .mi = {share(point.x, screen.left, screen.right),
                          share(point.y, screen.top, screen.bottom), 0, buttons | moves, 0, 0}};
    SendInput(1, &input, sizeof input);
}

// SendInput speaks of the physical buttons, people mean the logical ones.
static DWORD button(bool left)
{
    return left != bool(GetSystemMetrics(SM_SWAPBUTTON)) ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_RIGHTDOWN;
}
static void click(POINT point, bool left = true)
{
    mouse(point);
    mouse(point, button(left));
    mouse(point, button(left) << 1);  // the flag of the release is the next one
}
static void drag(POINT from, POINT to)
{
    mouse(from);
    mouse(from, button(true));
    for (int i = 1; i <= 20; ++i) {
        mouse({from.x + (to.x - from.x) * i / 20, from.y + (to.y - from.y) * i / 20});
        pause(0.01);
    }
    mouse(to, button(true) << 1);
}

// ---- The screen

using Pixels = std::vector<uint32_t>;  // of the whole virtual screen
static uint32_t at(const Pixels &pixels, LONG x, LONG y)
{
    return pixels[size_t((y - screen.top) * widthOf(screen) + x - screen.left)];
}
static Pixels pixelsOf(HDC dc, HBITMAP bitmap)
{
    Pixels pixels(size_t(widthOf(screen)) * size_t(heightOf(screen)));
    BITMAPINFO info = {};
    info.bmiHeader = {
        sizeof info.bmiHeader, widthOf(screen), -heightOf(screen), 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    GetDIBits(dc, bitmap, 0, UINT(heightOf(screen)), pixels.data(), &info, DIB_RGB_COLORS);
    return pixels;
}
static Pixels shoot()
{
    HDC dc = GetDC(nullptr);
    HDC memory = CreateCompatibleDC(dc);
    HBITMAP bitmap = CreateCompatibleBitmap(dc, widthOf(screen), heightOf(screen));
    const HGDIOBJ old = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, widthOf(screen), heightOf(screen), dc, screen.left, screen.top, SRCCOPY);
    SelectObject(memory, old);
    const Pixels pixels = pixelsOf(dc, bitmap);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(nullptr, dc);
    return pixels;
}

// A monitor without the strip along its bottom where the penguin walks.
static RECT canvas(RECT monitor = monitors[0])
{
    monitor.bottom -= std::clamp<LONG>(heightOf(monitor) * 22 / 100, 150, 240) + 30;
    return monitor;
}
static POINT place(int percentX, int percentY)
{
    const RECT area = canvas();
    return {area.left + widthOf(area) * percentX / 100, area.top + heightOf(area) * percentY / 100};
}
static RECT around(POINT point, LONG reach)
{
    return {point.x - reach, point.y - reach, point.x + reach, point.y + reach};
}

// The box of what differs in the area, empty if nothing does.
static RECT changeOf(const Pixels &before, const Pixels &after, RECT area = canvas())
{
    RECT box = {};
    for (LONG y = area.top; y < area.bottom; ++y) {
        for (LONG x = area.left; x < area.right; ++x) {
            const uint32_t a = at(before, x, y), b = at(after, x, y);
            int most = 0;  // a screen of another depth rounds a little
            for (int shift = 0; shift < 24; shift += 8)
                most = std::max(most, std::abs(int(a >> shift & 255) - int(b >> shift & 255)));
            const RECT dot = {x, y, x + 1, y + 1};
            if (most > 12) UnionRect(&box, &box, &dot);
        }
    }
    return box;
}
static bool changedSince(const Pixels &before, RECT area = canvas())
{
    const RECT box = changeOf(before, shoot(), area);
    return !IsRectEmpty(&box);
}

// What has changed once all stands still again.
static RECT settledChange(const Pixels &before)
{
    Pixels after = before;
    if (!soon(3, [&] { return changedSince(before); })) return {};
    soon(2, [&] {
        after = shoot();
        pause(0.1);
        return !changedSince(after);
    });
    return changeOf(before, after);
}

// ---- The longest time in which the program answered no message

static std::atomic<HWND> asked = nullptr;
static std::atomic<int> silence = 0;   // ms
static const int silenceLimit = 1000;  // ms; Windows drops a keyboard hook that keeps it waiting longer
static void ask()
{
    const double begin = now();
    DWORD_PTR answer;
    if (!asked || !SendMessageTimeoutW(asked, WM_NULL, 0, 0, SMTO_NORMAL, 60000, &answer)) return;
    const int taken = int((now() - begin) * 1000);
    for (int longest = silence; taken > longest && !silence.compare_exchange_weak(longest, taken);) {
    }
}
static int longestSilence()
{
    ask();  // one that still goes on counts to its end
    pause(0.1);
    return silence;
}

// ---- What is put back on every way out

struct Shortcut {
    const char *name;
    UINT get, set, size;
    DWORD bit;  // a combination of keys brings up a question
    DWORD found = 0, armed = 0;
    bool here() const { return armed & bit; }
};
static Shortcut shortcuts[] = {
    {"Sticky Keys", SPI_GETSTICKYKEYS, SPI_SETSTICKYKEYS, sizeof(STICKYKEYS), SKF_HOTKEYACTIVE},
    {"Toggle Keys", SPI_GETTOGGLEKEYS, SPI_SETTOGGLEKEYS, sizeof(TOGGLEKEYS), TKF_HOTKEYACTIVE},
    {"Filter Keys", SPI_GETFILTERKEYS, SPI_SETFILTERKEYS, sizeof(FILTERKEYS), FKF_HOTKEYACTIVE},
    {"Mouse Keys", SPI_GETMOUSEKEYS, SPI_SETMOUSEKEYS, sizeof(MOUSEKEYS), MKF_HOTKEYACTIVE},
    {"High Contrast", SPI_GETHIGHCONTRAST, SPI_SETHIGHCONTRAST, sizeof(HIGHCONTRASTW), HCF_HOTKEYACTIVE}};

// All five records begin with their size and their flags. Sets other flags if they are given.
static DWORD flagsOf(const Shortcut &shortcut, const DWORD *wanted = nullptr)
{
    alignas(8) DWORD record[16] = {shortcut.size};
    if (!SystemParametersInfoW(shortcut.get, shortcut.size, record, 0)) return 0;
    if (!wanted || *wanted == record[1]) return record[1];
    record[1] = *wanted;
    SystemParametersInfoW(shortcut.set, shortcut.size, record, 0);
    return flagsOf(shortcut);
}

static fs::path data, settings, settingsAside;
static std::set<fs::path> picturesBefore;
static BOOL swappedBefore = FALSE;
static RECT clipBefore = {};
static bool began = false;

static std::set<fs::path> pictures()
{
    std::set<fs::path> found;
    std::error_code ignored;
    for (const fs::directory_entry &entry : fs::directory_iterator(data / "SavedPictures", ignored))
        found.insert(entry.path());
    return found;
}

static void putBack()
{
    static std::atomic<bool> done = false;
    if (!began || done.exchange(true)) return;
    SwapMouseButton(swappedBefore);
    ClipCursor(nullptr);
    for (const int code : {VK_SHIFT, VK_CONTROL, VK_LMENU, VK_LWIN, VK_RWIN, VK_F1, VK_F4}) {
        if (GetAsyncKeyState(code) < 0) key(WORD(code), KEYEVENTF_KEYUP);
    }
    if (running()) {
        press({VK_LMENU, VK_F4});
        if (WaitForSingleObject(program.hProcess, 5000)) TerminateProcess(program.hProcess, 9);
        WaitForSingleObject(program.hProcess, 5000);
    }
    for (const Shortcut &shortcut : shortcuts)
        flagsOf(shortcut, &shortcut.found);
    std::error_code ignored;
    for (const fs::path &picture : pictures()) {
        if (!picturesBefore.count(picture)) fs::remove(picture, ignored);
    }
    fs::remove(settings, ignored);
    if (fs::exists(settingsAside, ignored)) fs::rename(settingsAside, settings, ignored);
}

// ---- The rows

static Finding everyMonitor()
{
    const Pixels start = shoot();
    const uint32_t colour = at(start, place(50, 50).x, place(50, 50).y);
    std::string wrong;
    for (const RECT &monitor : monitors) {
        int windows = 0, holes = 0;
        for (const HWND window : surfaces) {
            RECT box = {};
            windows += GetWindowRect(window, &box) && EqualRect(&box, &monitor);
        }
        for (LONG y = monitor.top; y < monitor.bottom; y += 7) {
            for (LONG x = monitor.left; x < monitor.right; x += 7)
                holes += at(start, x, y) != colour || !isProgram(WindowFromPoint({x, y}));
        }
        const POINT point = {(monitor.left + monitor.right) / 2, monitor.top + 100};
        click(point);
        const bool marked = soon(3, [&] { return changedSince(start, around(point, 20)); });
        if (windows != 1 || holes || !marked)
            wrong += text("; at %ld,%ld: %d windows, %d holes%s", monitor.left, monitor.top, windows, holes,
                          marked ? "" : ", no mark");
    }
    return {wrong.empty() ? pass : fail, text("%zu monitors%s", monitors.size(), wrong.c_str())};
}

// A key's place is a hash of its code, in the middle third of the monitor.
static POINT placeOf(uint32_t code)
{
    const RECT box = monitors[0];
    const uint32_t hash = (code + 1) * 0x9E3779B1u;
    const LONG width = std::max<LONG>(widthOf(box) / 3, 120), height = std::max<LONG>(heightOf(box) / 3, 120);
    return {(box.left + box.right) / 2 + LONG(hash % uint32_t(width)) - width / 2,
            (box.top + box.bottom) / 2 + LONG(hash / 97 % uint32_t(height)) - height / 2};
}
static Finding eightKeys()
{
    std::string wrong;
    for (const char code :
         {'A', 'B', 'C', 'E', 'N', 'P', '4', '7'}) {  // keys with a shape around their place
        const Pixels before = shoot();
        press({WORD(code)});
        const RECT change = settledChange(before);
        const LONG x = (change.left + change.right) / 2 - placeOf(uint32_t(code)).x;
        const LONG y = (change.top + change.bottom) / 2 - placeOf(uint32_t(code)).y;
        if (std::abs(x) > 40 || std::abs(y) > 40 || widthOf(change) < 40 || widthOf(change) > 300)
            wrong += text("; %c is %ld wide, %ld,%ld off", code, widthOf(change), x, y);
        pause(0.7);  // keys that come faster make notes
    }
    return {wrong.empty() ? pass : fail, wrong.empty() ? "eight shapes" : wrong.substr(2)};
}

static HWND intruder = nullptr;
static bool intruded()
{
    intruder = GetForegroundWindow();
    if (intruder && !isProgram(intruder)) return true;
    return std::any_of(monitors.begin(), monitors.end(), [](RECT box) {
        return !isProgram(intruder =
                              WindowFromPoint({(box.left + box.right) / 2, (box.top + box.bottom) / 2}));
    });
}

// What the desktop leaves unclaimed is claimed here, so that a leak shows on any. The first leak ends it.
static Finding chords(const std::vector<UINT> &modifierSets, std::vector<int> keys)
{
    static const std::pair<UINT, WORD> modifiers[] = {
        {MOD_CONTROL, VK_CONTROL}, {MOD_ALT, VK_LMENU}, {MOD_SHIFT, VK_SHIFT}, {MOD_WIN, VK_LWIN}};
    int count = 0;
    for (const UINT held : modifierSets) {
        for (const int last : keys) {
            // The first two are for grown-ups, Win+L belongs to the system alone, and Ctrl+Esc leads out.
            if ((held & MOD_ALT) && (last == VK_F1 || last == VK_F4)) continue;
            if (((held & MOD_WIN) && last == 'L') || (held == MOD_CONTROL && last != VK_ESCAPE)) continue;
            std::vector<WORD> codes;
            for (const auto &[bit, code] : modifiers) {
                if (held & bit) codes.push_back(code);
            }
            codes.push_back(WORD(last));
            const bool claimed = RegisterHotKey(nullptr, 1, held, UINT(last));
            hotKeys = 0;
            press(codes);
            const double patience = last == keys.front() ? 0.5 : 0.02;
            const bool out = soon(patience, [] { return hotKeys > 0 || intruded(); });
            if (claimed) UnregisterHotKey(nullptr, 1);
            ++count;
            if (out)
                return {fail, text("key %x with modifiers %x: %s", last, held,
                                   hotKeys ? "another program gets it" : nameOf(intruder).c_str())};
        }
    }
    press({VK_LWIN});
    press({VK_RWIN});
    if (soon(1, intruded)) return {fail, "after them: " + nameOf(intruder)};
    const Pixels before = shoot();
    press({VK_SPACE});
    const bool plays = soon(3, [&] { return changedSince(before); });
    return {plays ? pass : fail,
            text("%d chords; %s", count + 2, plays ? "Space played" : "the keys are dead")};
}
static Finding allChords()
{
    std::vector<int> keys = {VK_TAB, VK_ESCAPE, VK_SPACE, VK_DELETE, VK_LEFT, VK_UP, VK_RIGHT, VK_DOWN};
    for (int i = 0; i < 26; ++i)
        keys.push_back('A' + i);
    for (int i = 0; i < 12; ++i)
        keys.push_back(VK_F1 + i);
    return chords({MOD_ALT, MOD_CONTROL, MOD_WIN, MOD_ALT | MOD_SHIFT, MOD_ALT | MOD_CONTROL,
                   MOD_ALT | MOD_WIN, MOD_CONTROL | MOD_SHIFT, MOD_CONTROL | MOD_WIN, MOD_SHIFT | MOD_WIN},
                  keys);
}
static Finding someChords()
{
    return chords({MOD_ALT, MOD_CONTROL, MOD_WIN}, {VK_TAB, VK_ESCAPE});
}

static Finding fiveShifts()
{
    if (!shortcuts[0].here()) return {notHere, "the Sticky Keys shortcut cannot be switched on"};
    const std::vector<HWND> before = visibleWindows(false);
    for (int i = 0; i < 5; ++i) {
        press({VK_SHIFT});
        pause(0.08);
    }
    const auto comes = [&] {
        for (const HWND window : visibleWindows(false)) {
            if (std::find(before.begin(), before.end(), intruder = window) == before.end()) return true;
        }
        return intruded();
    };
    if (soon(2, comes)) return {fail, nameOf(intruder)};
    return {pass, "none"};
}

static Finding shortcutsOff()
{
    std::string on, off;
    for (const Shortcut &shortcut : shortcuts) {
        if (!shortcut.here()) continue;
        std::string &list = flagsOf(shortcut) & shortcut.bit ? on : off;
        list += text(" %s,", shortcut.name);
    }
    if (on.empty() && off.empty()) return {notHere, "none of the five can be switched on"};
    return {on.empty() ? pass : fail, "off:" + off + (on.empty() ? "" : " still on:" + on)};
}

template <class Function> static Function systemCall(const char *name)
{
    const FARPROC found = GetProcAddress(GetModuleHandleW(L"user32.dll"), name);
    return reinterpret_cast<Function>(reinterpret_cast<void *>(found));
}

static UINT rotation()
{
    UINT state = 0x20;  // not supported
    const auto get = systemCall<BOOL(WINAPI *)(UINT *)>("GetAutoRotationState");
    if (get) get(&state);
    return state;
}
static UINT rotationBefore = 0;
static Finding turnedScreen()
{
    if (rotationBefore) return {notHere, text("a screen that does not turn (state %u)", rotationBefore)};
    return {rotation() ? pass : fail, text("state %u", rotation())};
}

// The row of buttons is wider than a tap and of one height; a part of it may lie on the next monitor.
static bool menuShows(const Pixels &before)
{
    const RECT change = settledChange(before);
    return widthOf(change) >= 480 && heightOf(change) >= 200 && heightOf(change) <= 240;
}
static bool opensMenu()
{
    const Pixels before = shoot();
    click(place(50, 60), false);
    return menuShows(before);
}
static void closeMenu()
{
    click(place(50, 3));
    pause(0.3);
}

static Finding finger()
{
    const auto begin = systemCall<BOOL(WINAPI *)(UINT32, DWORD)>("InitializeTouchInjection");
    const auto inject = systemCall<BOOL(WINAPI *)(UINT32, const POINTER_TOUCH_INFO *)>("InjectTouchInput");
    if (!begin || !inject) return {notHere, "user32.dll has no InjectTouchInput"};
    if (!begin(1, TOUCH_FEEDBACK_NONE))
        return {notHere, text("no injected touches: error %lu", GetLastError())};
    int refused = 0;
    const auto touch = [&](POINT point, DWORD flags) {
        POINTER_TOUCH_INFO contact = {};
        contact.pointerInfo.pointerType = PT_TOUCH;
        contact.pointerInfo.pointerFlags = flags;
        contact.pointerInfo.ptPixelLocation = point;
        contact.touchMask = TOUCH_MASK_CONTACTAREA;
        contact.rcContact = around(point, 4);
        refused += !inject(1, &contact);
        pause(0.02);
    };
    const DWORD down = POINTER_FLAG_DOWN | POINTER_FLAG_INRANGE | POINTER_FLAG_INCONTACT;
    const DWORD move = POINTER_FLAG_UPDATE | POINTER_FLAG_INRANGE | POINTER_FLAG_INCONTACT;
    const Pixels before = shoot();
    touch(place(20, 40), down);
    for (int i = 20; i <= 70; ++i)
        touch(place(i, 40), move);
    touch(place(70, 40), POINTER_FLAG_UP);
    const LONG drawn = widthOf(settledChange(before));
    const uint32_t dot = at(shoot(), place(70, 40).x, place(70, 40).y);  // a yellow one stays
    const bool yellow = (dot >> 16 & 255) > 180 && (dot >> 8 & 255) > 160 && (dot & 255) < 150;
    const Pixels rested = shoot();
    touch(place(50, 60), down);
    for (int i = 0; i < 75; ++i)  // long enough for a right click elsewhere
        touch(place(50, 60), move);
    touch(place(50, 60), POINTER_FLAG_UP);
    const bool menu = menuShows(rested);
    const bool whole = drawn > place(70, 0).x - place(20, 0).x - 40;
    return {whole && yellow && !menu && !refused ? pass : fail,
            text("%ld wide%s%s, %d refused", drawn, yellow ? ", the dot" : ", no dot", menu ? ", a menu" : "",
                 refused)};
}

static HWND putOver(POINT point)
{
    const DWORD flags = WS_EX_TOPMOST | WS_EX_NOACTIVATE | WS_EX_TOOLWINDOW;
    const HWND window =
        CreateWindowExW(flags, L"STATIC", L"", WS_POPUP | WS_VISIBLE | SS_NOTIFY, point.x - 60, point.y - 60,
                        120, 120, nullptr, nullptr, nullptr, nullptr);
    SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    return window;
}

static Finding hand()
{
    // Does the system send what the swap means? A window of our own is asked.
    const HWND window = putOver(place(85, 80));
    rightPresses = 0;
    click(place(85, 80), false);
    const bool counts = soon(2, [] { return rightPresses > 0; });
    DestroyWindow(window);
    if (!counts) return {notHere, "a swap of the buttons changes no message"};
    click(place(50, 3));
    pause(0.3);
    const bool menu = opensMenu();
    closeMenu();
    const Pixels before = shoot();
    drag(place(30, 75), place(60, 75));
    const LONG stroke = widthOf(settledChange(before)), way = place(60, 0).x - place(30, 0).x;
    const bool painted = stroke > way - 40 && stroke < way + 200;
    return {menu && painted ? pass : fail,
            text("%s, %s", menu ? "menu" : "no menu", painted ? "stroke" : "no stroke")};
}

static Finding hand(BOOL swapped)
{
    SwapMouseButton(swapped);
    const Finding finding = hand();
    SwapMouseButton(swappedBefore);
    return finding;
}

static Finding printScreen()
{
    const bool menu = opensMenu();
    const Pixels shown = shoot();
    const DWORD sequence = GetClipboardSequenceNumber();
    silence = 0;
    // Windows looks at the scan code alone; the code of the key is for systems that do not translate it.
    for (const DWORD up : {0, KEYEVENTF_KEYUP})
        key(VK_SNAPSHOT, KEYEVENTF_SCANCODE | KEYEVENTF_EXTENDEDKEY | up, 0x37);
    const bool copied = soon(5, [&] { return GetClipboardSequenceNumber() != sequence; });
    const int quiet = longestSilence();
    if (!copied && intruded()) return {fail, nameOf(intruder) + " comes up: does Windows keep the key?"};
    if (!copied || !soon(2, [] { return OpenClipboard(nullptr) != FALSE; })) return {fail, "no copy"};
    const HBITMAP bitmap = HBITMAP(GetClipboardData(CF_BITMAP));
    BITMAP size = {};
    GetObjectW(bitmap, sizeof size, &size);
    bool same = size.bmWidth == widthOf(screen) && size.bmHeight == heightOf(screen);
    if (same) {
        HDC dc = GetDC(nullptr);
        const RECT unlike = changeOf(shown, pixelsOf(dc, bitmap));
        same = IsRectEmpty(&unlike);
        ReleaseDC(nullptr, dc);
    }
    CloseClipboard();
    closeMenu();
    return {menu && same && quiet < silenceLimit ? pass : fail,
            text("%ld by %ld, %s, %s, %d ms", size.bmWidth, size.bmHeight,
                 same ? "as shown" : "unlike the screen", menu ? "menu" : "no menu", quiet)};
}

static Finding oneWipe()
{
    press({VK_SPACE});
    pause(0.5);
    const double begin = now();
    double changed = begin;
    Pixels last = shoot();
    press({VK_ESCAPE});
    soon(15, [&] {
        if (changedSince(last)) changed = now();
        last = shoot();
        return now() > std::max(changed, begin + 1) + 0.7;
    });
    const RECT area = canvas();
    int even = 0, all = 0;
    for (LONG x = area.left; x < area.right; x += 5) {
        for (LONG y = area.top; y < area.bottom; y += 5, ++all)
            even += at(last, x, y) == at(last, place(50, 50).x, place(50, 50).y);
    }
    const double taken = changed - begin, share = 100.0 * even / all;
    return {taken > 0.5 && taken < 8 && share > 90 ? pass : fail,
            text("%.1f s, then %.0f %% one colour", taken, share)};
}

static bool shutIn()
{
    RECT clip = {};
    return GetClipCursor(&clip) && clip.right - clip.left <= 20;
}
static void shutCursor()
{
    const RECT corner = {monitors[0].left, monitors[0].top, monitors[0].left + 20, monitors[0].top + 20};
    ClipCursor(&corner);
}
static Finding looksAgain()
{
    const POINT point = place(80, 30);
    const HWND window = putOver(point);
    shutCursor();
    const bool covers = WindowFromPoint(point) == window && shutIn();
    const double begin = now();
    const bool undone = soon(5, [&] { return isProgram(WindowFromPoint(point)) && !shutIn(); });
    DestroyWindow(window);
    if (!covers) return {notHere, "another program can do neither"};
    return {undone && now() - begin < 1.8 ? pass : fail, text("%.1f s", now() - begin)};
}

static Finding quietPlay()
{
    const Pixels before = shoot();
    silence = 0;
    const double end = now() + 10;
    for (int i = 0; now() < end; ++i) {
        if (i % 4 == 0) drag(place(10, 20 + i % 60), place(90, 80 - i % 60));
        if (i % 4 == 1) press({VK_SPACE});
        if (i % 4 == 2) press({VK_RETURN});
        for (const char code : {'A', 'S', 'D', 'F', 'J', 'K', 'L'}) {
            if (i % 4 == 3) press({WORD(code)});
            pause(0.05);
        }
    }
    press({VK_SHIFT});  // stops what draws by itself
    const int quiet = longestSilence();
    const LONG drawn = widthOf(settledChange(before));
    return {quiet < silenceLimit && drawn > widthOf(canvas()) / 2 ? pass : fail,
            text("%d ms, painted %ld wide", quiet, drawn)};
}

static double megabytes()
{
    PROCESS_MEMORY_COUNTERS memory = {};
    GetProcessMemoryInfo(program.hProcess, &memory, sizeof memory);
    return double(memory.PagefileUsage) / 1e6;  // private bytes
}
static double megabytesAtStart = 0;
static Finding memoryAfter()
{
    const double pictures = 2 * 4e-6 * widthOf(screen) * heightOf(screen);  // on the clipboard, to compose on
    const double limit = megabytesAtStart + pictures + 40;
    return {megabytesAtStart > 0 && megabytes() < limit ? pass : fail,
            text("%.1f MB, at the start %.1f, limit %.1f", megabytes(), megabytesAtStart, limit)};
}

static Finding autoSave()
{
    const std::set<fs::path> before = pictures();
    click(place(40, 30));  // something to save
    silence = 0;
    fs::path fresh;
    const bool saved = soon(130, [&] {
        for (const fs::path &picture : pictures()) {
            if (!before.count(picture)) fresh = picture;
        }
        std::ifstream file(fresh, std::ios::binary);
        std::string bytes(std::istreambuf_iterator<char>(file), {});
        return bytes.size() > 8 && bytes.substr(bytes.size() - 8, 4) == "IEND";
    });
    const int quiet = longestSilence();
    return {saved && quiet < silenceLimit ? pass : fail,
            text("%s, %d ms", saved ? "a whole file" : "no whole file", quiet)};
}

static std::vector<HWND> dialogs()
{
    std::vector<HWND> found = visibleWindows(true);
    std::erase_if(found, [](HWND window) { return nameOf(window).find("(#32770)") == std::string::npos; });
    return found;
}
static Finding heldSaveKey()
{
    size_t most = 0;
    const double before = megabytes(), end = now() + 4;
    while (now() < end) {                                       // as a keyboard repeats
        if (GetAsyncKeyState(VK_LMENU) >= 0) key(VK_LMENU, 0);  // a change of focus may let go of it
        key(VK_F1, 0);
        pause(0.033);
        most = std::max(most, dialogs().size());
    }
    key(VK_F1, KEYEVENTF_KEYUP);
    key(VK_LMENU, KEYEVENTF_KEYUP);
    soon(15, [] { return !dialogs().empty(); });
    pause(0.5);
    most = std::max(most, dialogs().size());
    const double more = megabytes() - before;
    const bool closed = soon(60, [] {
        for (const HWND dialog : dialogs())
            PostMessageW(dialog, WM_CLOSE, 0, 0);
        pause(0.1);
        return dialogs().empty();
    });
    return {most == 1 && closed ? pass : fail,
            text("%zu, %.1f MB more%s", most, more, closed ? "" : ", one stayed open")};
}

static Finding leave()
{
    shutCursor();  // something to undo
    const double begin = now();
    press({VK_LMENU, VK_F4});
    const bool ended = soon(30, [] { return !running(); });
    DWORD code = 0;
    GetExitCodeProcess(program.hProcess, &code);
    return {ended && code == 0 ? pass : fail,
            ended ? text("code %lu, %.1f s", code, now() - begin) : "it runs on"};
}

static Finding settingsAfter()
{
    std::string wrong;
    int kept = 0;
    for (const Shortcut &shortcut : shortcuts) {
        kept += shortcut.here();
        if (flagsOf(shortcut) != shortcut.armed) wrong += text(" %s,", shortcut.name);
    }
    RECT clip = {};
    GetClipCursor(&clip);
    if (!EqualRect(&clip, &clipBefore)) wrong += " the cursor,";
    if (bool(GetSystemMetrics(SM_SWAPBUTTON)) != bool(swappedBefore)) wrong += " the mouse buttons,";
    if (rotation() != rotationBefore) wrong += " the turning of the screen,";
    if (!wrong.empty()) return {fail, "changed:" + wrong};
    return {kept ? pass : notHere,
            kept ? "as before" : "none of the five can be switched on, the rest is as before"};
}

static const struct {
    const char *name, *must;
    Finding (*look)();
} rows[] = {{"covered", "every monitor has its window, picture and tap", everyMonitor},
            {"keys", "eight keys leave their shapes at their places", eightKeys},
            {"chords", "Alt, Ctrl and Windows chords lead nowhere", allChords},
            {"shift", "five presses of Shift bring up no question", fiveShifts},
            {"shortcuts", "shortcuts that bring up a question are off", shortcutsOff},
            {"turned", "the screen does not turn with the tablet", turnedScreen},
            {"finger", "draws, leaves its dot, held opens no menu", finger},
            {"right", "right-handed: right for menu, left paints", [] { return hand(FALSE); }},
            {"left", "left-handed: the other way round", [] { return hand(TRUE); }},
            {"copy", "PrintScreen copies what shows, in 1000 ms", printScreen},
            {"wipe", "Escape wipes to one colour in 0.5 to 8 s", oneWipe},
            {"again", "window on top, shut-in cursor: 1.8 s at most", looksAgain},
            {"play", "10 s of play, never silent for 1000 ms", quietPlay},
            {"memory", "no more than a few pictures more after it", memoryAfter},
            {"save", "saves by itself, not silent for 1000 ms", autoSave},
            {"held", "Alt+F1 held for 4 s opens one dialog", heldSaveKey},
            {"still", "the chords still lead nowhere", someChords},
            {"end", "Alt+F4 ends it with code 0", leave},
            {"settings", "all settings are as before", settingsAfter}};

// ---- Before and after

// Throws where a file cannot be moved or written.
static void prepare(const std::string &lines)
{
    fs::create_directories(data);
    // A probe that was killed has left them aside.
    if (fs::exists(settings) && !fs::exists(settingsAside)) fs::rename(settings, settingsAside);
    picturesBefore = pictures();
    swappedBefore = GetSystemMetrics(SM_SWAPBUTTON);
    ClipCursor(nullptr);
    GetClipCursor(&clipBefore);
    rotationBefore = rotation();
    for (Shortcut &shortcut : shortcuts)
        shortcut.found = flagsOf(shortcut);
    began = true;
    for (Shortcut &shortcut : shortcuts) {
        const DWORD wanted = shortcut.found | shortcut.bit;
        shortcut.armed = flagsOf(shortcut, &wanted);
    }
    std::ofstream file(settings, std::ios::binary);
    file.exceptions(std::ios::failbit | std::ios::badbit);
    file << "[Zubbly]\r\nShowExitHint=0\r\nAutoSaveIntervalSeconds=60\r\n" << lines << std::flush;
}

static int refuse(const std::string &reason)
{
    std::fprintf(stderr, "probe: %s\n", reason.c_str());
    return 2;
}

// Exit code 0 where the program came up.
static int launch(const fs::path &folder)
{
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    if (!CreateProcessW((folder / "Zubbly.exe").c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr,
                        folder.c_str(), &start, &program))
        return refuse(text("Zubbly.exe does not start: error %lu", GetLastError()));
    AllowSetForegroundWindow(program.dwProcessId);
    soon(60, [] {
        surfaces = visibleWindows(true);
        return surfaces.size() >= monitors.size() || !running();
    });
    pause(1);
    megabytesAtStart = megabytes();
    if (surfaces.empty()) {
        DWORD code = 0;
        GetExitCodeProcess(program.hProcess, &code);
        return refuse(running() ? text("no window came up on %zu monitors", monitors.size())
                                : text("Zubbly.exe ended at once: exit code %lx", code));
    }
    asked = surfaces[0];
    return 0;
}

int wmain(int count, wchar_t **words)
{
    fs::path folder, only;
    std::string lines;
    bool yes = false;
    for (int i = 1; i < count; ++i) {
        const std::wstring word = words[i];
        const fs::path next = i + 1 < count ? words[i + 1] : L"";
        if (word == L"--only" || word == L"--set") ++i;
        if (word == L"--only") only = next;
        if (word == L"--set") lines += next.string() + "\r\n";
        if (word == L"--yes") yes = true;
        if (word[0] != L'-') folder = fs::absolute(word);
    }
    if (!fs::exists(folder / "Zubbly.exe")) return refuse("name the folder of Zubbly.exe");
    // One that is just ending gets the time for it.
    if (!soon(5, [] { return FindWindowW(L"ZubblyWindow", nullptr) == nullptr; }))
        return refuse("Zubbly is running; leave it with Alt+F4 first");
    wchar_t *roaming = nullptr;
    if (FAILED(SHGetKnownFolderPath(FOLDERID_RoamingAppData, 0, nullptr, &roaming)))
        return refuse("no data folder");
    data = fs::path(roaming) / "norvanta" / "Zubworks" / "Zubbly";
    settings = data / "config.ini";
    settingsAside = data / "config.ini.before-probe";
    if (!yes && !pictures().empty())
        return refuse("the oldest saved pictures may go; --yes runs nevertheless");

    const auto setAwareness = systemCall<BOOL(WINAPI *)(HANDLE)>("SetProcessDpiAwarenessContext");
    if (!setAwareness || !setAwareness(HANDLE(-4))) SetProcessDPIAware();
    const auto add = [](HMONITOR, HDC, LPRECT box, LPARAM) -> BOOL {
        monitors.insert(PtInRect(box, {0, 0}) ? monitors.begin() : monitors.end(), *box);
        UnionRect(&screen, &screen, box);
        return TRUE;
    };
    EnumDisplayMonitors(nullptr, nullptr, add, 0);

    std::atexit(putBack);
    SetConsoleCtrlHandler(
        [](DWORD) -> BOOL {
            stopping = true;  // holds the rows at their next step
            Sleep(100);
            putBack();
            ExitProcess(2);
        },
        TRUE);
    SetUnhandledExceptionFilter([](EXCEPTION_POINTERS *what) -> LONG {
        putBack();
        refuse(text("crashed with %lx", what->ExceptionRecord->ExceptionCode));
        return EXCEPTION_CONTINUE_SEARCH;
    });
    std::set_terminate([] {
        putBack();
        std::_Exit(2);
    });
    try {
        prepare(lines);
    } catch (const std::exception &failure) {
        return refuse(text("the settings file cannot be written: %s", failure.what()));
    }
    if (const int code = launch(folder)) return code;
    std::thread([] {
        for (;; Sleep(4))
            ask();
    }).detach();

    bool failed = false;
    std::printf("%-10s%-46s%-50s\n", "row", "what must be", "what was seen");
    for (const auto &row : rows) {
        const bool closing = row.look == leave || row.look == settingsAfter;
        if (!only.empty() && only != row.name && !closing) continue;
        Finding finding = {fail, "the program is gone"};
        if (row.look == settingsAfter || running()) {
            // A tap would leave a hole in what the first row looks at.
            if (!closing && row.look != everyMonitor && !soon(1, inFront)) {
                click(place(97, 3));
                pause(0.3);
            }
            finding = row.look();
        }
        static const char *const verdicts[] = {"pass", "FAIL", "not here"};
        std::printf("%-10s%-46s%-50s %s\n", row.name, row.must, finding.seen.c_str(),
                    verdicts[finding.verdict]);
        std::fflush(stdout);
        failed = failed || finding.verdict == fail;
    }
    return failed;
}
