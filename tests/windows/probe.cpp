// probe FOLDER: starts the Zubbly.exe in FOLDER, plays with it from outside as children and grown-ups do, and
// prints a table of what it saw. Exit code 0: no row failed; 1: one did; 2: stderr has the cause.
//   --yes            run although there are saved pictures
//   --only ROW       this row alone, then the end
//   --set KEY=VALUE  one more line for the settings file
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <windows.h>
#include <psapi.h>
#include <shlobj.h>

namespace fs = std::filesystem;
using std::string, std::to_string, std::vector;

struct Box : RECT {
    Box(LONG x1 = 0, LONG y1 = 0, LONG x2 = 0, LONG y2 = 0) : RECT{x1, y1, x2, y2} {}
    Box(POINT p, LONG reach) : Box(p.x - reach, p.y - reach, p.x + reach, p.y + reach) {}
    LONG width() const { return right - left; }
    LONG height() const { return bottom - top; }
    POINT middle() const { return {(left + right) / 2, (top + bottom) / 2}; }
};
static vector<Box> monitors;  // the one with 0,0 first: the keys leave their marks there
static Box canvas;            // the first one without the strip along its bottom where the penguin walks
static PROCESS_INFORMATION program;

static bool runs()
{
    return WaitForSingleObject(program.hProcess, 0) == WAIT_TIMEOUT;
}
// The class of the window in front if it is not the program's. None is in front while that changes.
static string intruder()
{
    char name[80] = {};
    GetClassNameA(GetForegroundWindow(), name, 80);
    return name == string("ZubblyWindow") ? "" : name;
}

// ---- Waiting
static std::atomic_bool stopping = false;             // by Ctrl+C, or because the console closes
static ULONGLONG lastAnswer = 0, longestSilence = 0;  // ms

static void refuseIf(bool obstacle, const string &reason)
{
    if (obstacle) throw std::runtime_error(reason);
}
// Until the condition holds; false when the time is over. Meanwhile the program is asked for answers. Silence
// lasts from one to the next, because an injected key may itself have to wait for the program.
template <class Condition = bool (*)()>
static bool wait(double seconds, Condition condition = [] { return false; })
{
    const ULONGLONG end = GetTickCount64() + ULONGLONG(seconds * 1000);
    while (!condition()) {
        refuseIf(stopping, "stopped");
        if (GetTickCount64() > end) return false;
        Sleep(5);
        const HWND window = FindWindowW(L"ZubblyWindow", nullptr);
        const auto answer = SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, 5000, nullptr);
        longestSilence = std::max(longestSilence, GetTickCount64() - lastAnswer);
        if (answer) lastAnswer = GetTickCount64();
    }
    return true;
}
// Whether the probe itself gets such a message in time.
static bool receives(UINT type, double seconds)
{
    MSG message;
    return wait(seconds, [&] { return PeekMessageW(&message, nullptr, type, type, PM_REMOVE) != FALSE; });
}

// ---- The table
static string only;           // the name of the row that is wanted, or empty
static string seen, verdict;  // of the current row
static bool failed = false;

static void note(const string &figure)
{
    seen += (seen.empty() ? "" : ", ") + figure;
}
static void want(bool holds, const string &otherwise, const char *thenIs = "FAIL")
{
    if (holds) return;
    verdict = thenIs;
    note(otherwise);
}
// Windows drops a keyboard hook that keeps it waiting longer.
static void wantAnswers()
{
    wait(0.1);
    note(to_string(longestSilence) + " ms");
    want(longestSilence < 1000, "silent");
}
static void row(const string &name, const char *must, void (*look)())
{
    if (!only.empty() && only != name && name != "end") return;
    verdict = "pass";
    seen.clear();
    longestSilence = 0;
    want(runs(), "the program is gone");
    if (verdict == "pass") look();
    std::printf("%-10s%-46s%-50s %s\n", name.c_str(), must, seen.c_str(), verdict.c_str());
    std::fflush(stdout);
    failed = failed || verdict == "FAIL";
}

// ---- Input
static void key(WORD code, DWORD flags = 0)
{
    keybd_event(BYTE(code), BYTE(MapVirtualKeyW(code, MAPVK_VK_TO_VSC)), flags, 0);
}
static void press(const vector<WORD> &chord)
{
    for (const DWORD flags : {0, KEYEVENTF_KEYUP})
        for (const WORD code : chord)
            key(code, flags);
}
// To the right; without a way it is a click. Input has physical buttons, people mean the logical ones.
static void drag(POINT from, LONG way = 0, bool left = true)
{
    const bool first = left != bool(GetSystemMetrics(SM_SWAPBUTTON));
    SetCursorPos(from.x, from.y);
    wait(0.05);
    mouse_event(first ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_RIGHTDOWN, 0, 0, 0, 0);
    for (int i = 1; i <= 20; ++i, wait(0.01))
        SetCursorPos(from.x + way * i / 20, from.y);
    mouse_event(first ? MOUSEEVENTF_LEFTUP : MOUSEEVENTF_RIGHTUP, 0, 0, 0, 0);
}

// ---- The screen
static POINT place(int percentX, int percentY)
{
    return {canvas.left + canvas.width() * percentX / 100, canvas.top + canvas.height() * percentY / 100};
}
static vector<DWORD> shoot(Box area, HDC source = nullptr)
{
    const HDC dc = GetDC(nullptr), memory = CreateCompatibleDC(dc);
    BITMAPINFO info = {{sizeof info.bmiHeader, area.width(), -area.height(), 1, 32, 0, 0, 0, 0, 0, 0}, {}};
    void *bits = nullptr;
    const HGDIOBJ old = SelectObject(memory, CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    BitBlt(memory, 0, 0, area.width(), area.height(), source ? source : dc, area.left, area.top, SRCCOPY);
    GdiFlush();
    vector<DWORD> pixels(size_t(area.width()) * size_t(area.height()));
    for (size_t i = 0; bits && i < pixels.size(); ++i)
        pixels[i] = static_cast<DWORD *>(bits)[i] & 0xFFFFFF;
    DeleteObject(SelectObject(memory, old));
    DeleteDC(memory);
    ReleaseDC(nullptr, dc);
    lastAnswer = GetTickCount64();  // the probe's own time is not the program's silence
    return pixels;
}
// How much of the area is like its middle, from 0 to 1.
static double evenness(Box area)
{
    const vector<DWORD> pixels = shoot(area);
    const DWORD middle = pixels[size_t(area.height() / 2 * area.width() + area.width() / 2)];
    return double(std::ranges::count(pixels, middle)) / double(pixels.size());
}
template <class Action> static bool changes(Box area, Action action)
{
    const vector<DWORD> before = shoot(area);
    action();
    return wait(3, [&] { return shoot(area) != before; });
}

// ---- What is put back on every way out
static fs::path data, aside;  // the program's settings and pictures, and where the family's are meanwhile
static vector<bool> shortcutsBefore;
static BOOL swappedBefore = FALSE, swapWorks = FALSE;
static Box clipBefore;
static bool somethingToPutBack = false;

// Which shortcuts are on that bring up a question, such as Sticky Keys after five presses of Shift. Those
// that were on before can be turned on again.
static vector<bool> shortcutsOn(const vector<bool> &before = vector<bool>(5))
{
    static constexpr std::pair<UINT, UINT> features[] = {{SPI_GETSTICKYKEYS, sizeof(STICKYKEYS)},
                                                         {SPI_GETTOGGLEKEYS, sizeof(TOGGLEKEYS)},
                                                         {SPI_GETFILTERKEYS, sizeof(FILTERKEYS)},
                                                         {SPI_GETMOUSEKEYS, sizeof(MOUSEKEYS)},
                                                         {SPI_GETHIGHCONTRAST, sizeof(HIGHCONTRASTW)}};
    vector<bool> on;
    for (const auto &[get, size] : features) {
        // Each begins with its size and its flags, has the same flag, and is set by the number after.
        alignas(8) DWORD record[16] = {size};
        SystemParametersInfoW(get, size, record, 0);
        on.push_back(record[1] & SKF_HOTKEYACTIVE);
        if (on.back() || !before[on.size() - 1]) continue;
        record[1] |= SKF_HOTKEYACTIVE;
        SystemParametersInfoW(get + 1, size, record, 0);
    }
    return on;
}

static void putBack()
{
    if (!somethingToPutBack) return;
    somethingToPutBack = false;
    for (const int code : {VK_SHIFT, VK_CONTROL, VK_LMENU, VK_LWIN, VK_F1, VK_F4})
        if (GetAsyncKeyState(code) < 0) key(WORD(code), KEYEVENTF_KEYUP);
    if (runs()) press({VK_LMENU, VK_F4});
    if (WaitForSingleObject(program.hProcess, 5000)) TerminateProcess(program.hProcess, 9);
    WaitForSingleObject(program.hProcess, 5000);
    shortcutsOn(shortcutsBefore);
    SwapMouseButton(swappedBefore);
    ClipCursor(nullptr);
    std::error_code none;
    fs::remove_all(data, none);
    if (fs::exists(aside, none)) fs::rename(aside, data);
}
static bool menuOpens()
{
    // A corner of the button that comes up under the pointer: the mark of a tap does not reach it.
    const POINT at = place(50, 60);
    return changes({at.x + 115, at.y - 85, at.x + 145, at.y - 60}, [&] { drag(at, 0, false); });
}
static void hand(BOOL swapped)
{
    if (swapped && !swapWorks) return want(false, "a swap of the buttons changes nothing", "not here");
    SwapMouseButton(swapped);
    want(menuOpens(), "no menu");
    drag(place(50, 3));
    want(changes({place(60, 75), 40}, [] { drag(place(30, 75), canvas.width() * 3 / 10); }), "no stroke");
    SwapMouseButton(swappedBefore);
}

static void play()
{
    row("covered", "every monitor has its window, picture and tap", [] {
        for (const Box &monitor : monitors) {
            note(to_string(monitor.width()) + "x" + to_string(monitor.height()));
            want(evenness(monitor) == 1.0, "a hole");
            const POINT point = {monitor.middle().x, monitor.top + 100};
            want(changes({point, 20}, [&] { drag(point); }), "no mark");
        }
    });
    row("keys", "eight keys leave their shapes at their places", [] {
        const LONG width = monitors[0].width() / 3, height = monitors[0].height() / 3;
        for (const char code : {'A', 'B', 'C', 'E', 'N', 'P', '4', '7'}) {  // shapes around their places
            // A key's place is a hash of its code, in the middle third of the monitor.
            const DWORD hash = (DWORD(code) + 1) * 0x9E3779B1u;
            const POINT point = {monitors[0].middle().x - width / 2 + LONG(hash % DWORD(width)),
                                 monitors[0].middle().y - height / 2 + LONG(hash / 97 % DWORD(height))};
            want(changes({point, 10}, [&] { press({WORD(code)}); }), string("no ") + code);
            wait(0.7);  // keys that come faster make notes
        }
    });
    row("shift", "five presses of Shift bring up no question", [] {
        if (!shortcutsBefore[0]) return want(false, "the Sticky Keys shortcut is off", "not here");
        want(shortcutsOn() == vector<bool>(5), "a shortcut is still on");
        for (int i = 0; i < 5; ++i, wait(0.08))
            press({VK_SHIFT});
        want(!wait(2, [] { return !intruder().empty(); }), intruder() + " comes up");
    });
    row("finger", "an injected touch draws", [] {
        if (!GetProcAddress(GetModuleHandleW(L"user32.dll"), "InjectTouchInput") ||
            !InitializeTouchInjection(1, TOUCH_FEEDBACK_NONE))
            return want(false, "no touch can be injected", "not here");
        const auto stroke = [] {
            POINTER_TOUCH_INFO contact = {};
            contact.pointerInfo.pointerType = PT_TOUCH;
            for (int i = 20; i <= 71; ++i, wait(0.02)) {
                contact.pointerInfo.ptPixelLocation = place(std::min(i, 70), 40);
                const DWORD phase = i == 20 ? POINTER_FLAG_DOWN : POINTER_FLAG_UPDATE;
                contact.pointerInfo.pointerFlags = phase | POINTER_FLAG_INRANGE | POINTER_FLAG_INCONTACT;
                if (i == 71) contact.pointerInfo.pointerFlags = POINTER_FLAG_UP;
                InjectTouchInput(1, &contact);
            }
        };
        want(changes({place(70, 40), 40}, stroke), "no stroke");
    });
    row("right", "right-handed: right for menu, left paints", [] { hand(FALSE); });
    row("left", "left-handed: the other way round", [] { hand(TRUE); });
    row("copy", "PrintScreen copies what shows, in 1000 ms", [] {
        want(menuOpens(), "no menu");
        const vector<DWORD> shown = shoot(canvas);
        const DWORD sequence = GetClipboardSequenceNumber();
        // Windows looks at the scan code alone; the code of the key is for systems that do not translate it.
        for (const DWORD up : {0, KEYEVENTF_KEYUP})
            keybd_event(VK_SNAPSHOT, 0x37, KEYEVENTF_SCANCODE | KEYEVENTF_EXTENDEDKEY | up, 0);
        wait(5, [&] { return GetClipboardSequenceNumber() != sequence; });
        wantAnswers();
        const HDC copy = CreateCompatibleDC(nullptr);
        wait(2, [] { return OpenClipboard(nullptr) != FALSE; });
        SelectObject(copy, GetClipboardData(CF_BITMAP));
        const int left = GetSystemMetrics(SM_XVIRTUALSCREEN), top = GetSystemMetrics(SM_YVIRTUALSCREEN);
        SetViewportOrgEx(copy, -left, -top, nullptr);
        want(shoot(canvas, copy) == shown, "no copy " + intruder());
        CloseClipboard();
        DeleteDC(copy);
        drag(place(50, 3));
    });
    row("wipe", "Escape wipes to one colour in 0.5 to 8 s", [] {
        want(changes({place(50, 50), 5}, [] { drag(place(50, 50)); }), "no mark");
        const ULONGLONG begin = GetTickCount64();
        press({VK_ESCAPE});
        const bool wiped = wait(8, [] { return evenness(canvas) > 0.9; });
        note(to_string(GetTickCount64() - begin) + " ms");
        want(wiped && GetTickCount64() - begin > 500, "no wipe");
    });
    row("play", "10 s of play: silence and private memory", [] {
        PROCESS_MEMORY_COUNTERS before = {}, after = {};
        GetProcessMemoryInfo(program.hProcess, &before, sizeof before);
        const ULONGLONG end = GetTickCount64() + 10000;
        for (int i = 0; GetTickCount64() < end; i += 7) {
            drag(place(10, 20 + i % 60), canvas.width() * 4 / 5);
            for (const int code : {VK_SPACE, int('A'), int('S'), int('D'), int('F'), VK_RETURN}) {
                press({WORD(code)});
                wait(code == VK_RETURN ? 0.5 : 0.05);
            }
        }
        press({VK_SHIFT});  // stops what draws by itself
        wantAnswers();
        GetProcessMemoryInfo(program.hProcess, &after, sizeof after);
        const double more = (double(after.PagefileUsage) - double(before.PagefileUsage)) / 1e6;
        note(to_string(int(more)) + " MB more");
        want(more < 100, "too much");
    });
    row("save", "saves by itself, not silent for 1000 ms", [] {
        const fs::path folder = data / "SavedPictures";
        fs::remove_all(folder);
        fs::create_directory(folder);
        drag(place(40, 30));  // something to save
        const bool saves = wait(130, [&] { return !fs::is_empty(folder); });
        wantAnswers();
        std::ifstream file(saves ? *fs::directory_iterator(folder) : fs::path(), std::ios::binary);
        const string bytes(std::istreambuf_iterator<char>(file), {});
        want(bytes.find("IEND") != string::npos, "no whole picture");
    });
    row("held", "Alt+F1 held for 4 s opens one dialog", [] {
        for (int i = 0; i < 120; ++i, wait(0.033)) {             // as a keyboard repeats
            if (GetAsyncKeyState(VK_LMENU) >= 0) key(VK_LMENU);  // a change of focus may let go of it
            key(VK_F1);
        }
        key(VK_F1, KEYEVENTF_KEYUP);
        key(VK_LMENU, KEYEVENTF_KEYUP);
        wait(15, [] { return intruder() == "#32770"; });
        wait(1);
        int dialogs = 0;
        for (HWND any = nullptr; (any = FindWindowExW(nullptr, any, L"#32770", nullptr)) != nullptr;) {
            DWORD owner = 0;
            GetWindowThreadProcessId(any, &owner);
            if (owner != program.dwProcessId || !IsWindowVisible(any)) continue;
            PostMessageW(any, WM_CLOSE, 0, 0);
            ++dialogs;
        }
        want(dialogs == 1, to_string(dialogs) + " dialogs");
        want(wait(20, [] { return intruder().empty(); }), "one stays open");
    });
    // So late because Windows drops a hook that was slow.
    row("chords", "Alt, Ctrl+Shift, Windows chords lead nowhere", [] {
        const auto wantNowhere = [](UINT held, const vector<WORD> &chord) {
            if (verdict != "pass") return;  // one leak is enough
            const WORD last = chord.back();
            RegisterHotKey(nullptr, 1, held, last);  // what the desktop leaves free shows a leak here
            press(chord);
            const bool leaks = receives(WM_HOTKEY, 0.02) || !intruder().empty();
            UnregisterHotKey(nullptr, 1);
            want(!leaks, to_string(held) + "+" + to_string(last) + " leaks " + intruder());
        };
        wantNowhere(MOD_CONTROL, {VK_CONTROL, VK_ESCAPE});
        wantNowhere(0, {VK_LWIN});
        wantNowhere(0, {VK_RWIN});
        string keys = "ABCDEFGHIJKMNOPQRSTUVWXYZ";  // Win+L belongs to the system
        for (const int code : {VK_TAB, VK_ESCAPE, VK_SPACE, VK_DELETE, VK_LEFT, VK_UP, VK_F2, VK_F12})
            keys += char(code);
        for (const WORD last : keys) {
            wantNowhere(MOD_ALT, {VK_LMENU, last});
            wantNowhere(MOD_WIN, {VK_LWIN, last});
            wantNowhere(MOD_CONTROL | MOD_SHIFT, {VK_CONTROL, VK_SHIFT, last});
            wantNowhere(MOD_ALT | MOD_SHIFT, {VK_LMENU, VK_SHIFT, last});
            wantNowhere(MOD_ALT | MOD_CONTROL, {VK_LMENU, VK_CONTROL, last});
            wantNowhere(MOD_WIN | MOD_SHIFT, {VK_LWIN, VK_SHIFT, last});
        }
        want(!wait(1, [] { return !intruder().empty(); }), intruder() + " comes up");
        want(changes(canvas, [] { press({VK_SPACE}); }), "the keys are dead");
    });
    row("end", "Alt+F4: code 0, and all settings as before", [] {
        const Box corner(monitors[0].middle(), 20);
        ClipCursor(&corner);  // something to undo
        press({VK_LMENU, VK_F4});
        want(wait(30, [] { return !runs(); }), "it runs on");
        DWORD code = 0;
        GetExitCodeProcess(program.hProcess, &code);
        want(code == 0, "code " + to_string(code));
        Box clip;
        GetClipCursor(&clip);
        want(EqualRect(&clip, &clipBefore), "the cursor");
        want(shortcutsOn() == shortcutsBefore, "a shortcut");
        want(GetSystemMetrics(SM_SWAPBUTTON) == swappedBefore, "the mouse buttons");
    });
}

static void launch(const vector<fs::path> &words)
{
    const auto option = [&](const char *name) {
        const auto found = std::ranges::find(words, name);
        return words.end() - found < 2 ? string() : found[1].string();
    };
    only = option("--only");
    const fs::path folder = words.empty() ? fs::path() : fs::absolute(words[0]);
    refuseIf(!fs::exists(folder / "Zubbly.exe"), "name the folder of Zubbly.exe");
    refuseIf(FindWindowW(L"ZubblyWindow", nullptr), "leave Zubbly first, with Alt+F4");
    wchar_t *roaming = nullptr;
    refuseIf(FAILED(SHGetKnownFolderPath(FOLDERID_RoamingAppData, 0, nullptr, &roaming)), "no data folder");
    data = fs::path(roaming) / "norvanta" / "Zubworks" / "Zubbly";
    aside = fs::path(data) += ".before-probe";
    refuseIf(fs::exists(aside), "an earlier probe was killed: rename Zubbly.before-probe back first");
    const fs::path saved = data / "SavedPictures";
    refuseIf(!std::ranges::count(words, "--yes") && fs::exists(saved) && !fs::is_empty(saved),
             "there are saved pictures; --yes runs nevertheless");
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    const auto add = [](HMONITOR, HDC, LPRECT box, LPARAM) -> BOOL {
        const Box monitor(box->left, box->top, box->right, box->bottom);
        monitors.insert(PtInRect(box, {0, 0}) ? monitors.begin() : monitors.end(), monitor);
        return TRUE;
    };
    EnumDisplayMonitors(nullptr, nullptr, add, 0);
    canvas = monitors.at(0);
    canvas.bottom -= std::clamp<LONG>(canvas.height() * 22 / 100, 150, 240) + 30;

    shortcutsBefore = shortcutsOn();
    swappedBefore = GetSystemMetrics(SM_SWAPBUTTON);
    GetClipCursor(&clipBefore);
    if (fs::exists(data)) fs::rename(data, aside);
    somethingToPutBack = true;
    fs::create_directories(data);
    std::ofstream file(data / "config.ini", std::ios::binary);
    file << "[Zubbly]\r\nShowExitHint=0\r\nAutoSaveIntervalSeconds=60\r\n" << option("--set");
    file.close();
    refuseIf(!file, "the settings cannot be written");
    // Does the system send what a swap means? A window of the probe's finds out while nothing covers it.
    SwapMouseButton(TRUE);
    const HWND window = CreateWindowExW(WS_EX_TOPMOST, L"STATIC", L"", WS_POPUP | WS_VISIBLE | SS_NOTIFY, 0,
                                        0, 200, 200, nullptr, nullptr, nullptr, nullptr);
    drag({100, 100}, 0, false);
    swapWorks = receives(WM_RBUTTONDOWN, 1);
    DestroyWindow(window);
    SwapMouseButton(swappedBefore);
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    CreateProcessW((folder / "Zubbly.exe").c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr,
                   folder.c_str(), &start, &program);
    AllowSetForegroundWindow(program.dwProcessId);
    refuseIf(!wait(60, [] { return FindWindowW(L"ZubblyWindow", nullptr) != nullptr; }), "no window opens");
    wait(1);
}

int wmain(int count, wchar_t **words)
{
    // It does not return: the rows stop at their next step, and the process ends.
    SetConsoleCtrlHandler([](DWORD) -> BOOL { return stopping = true, Sleep(INFINITE), TRUE; }, TRUE);
    SetUnhandledExceptionFilter(
        [](EXCEPTION_POINTERS *) -> LONG { return putBack(), EXCEPTION_CONTINUE_SEARCH; });
    int code = 2;
    try {
        launch({words + 1, words + count});
        std::printf("%-10s%-46s%-50s\n", "row", "what must be", "what was seen");
        play();
        putBack();
        code = failed;
    } catch (const std::exception &failure) {
        std::fprintf(stderr, "probe: %s\n", failure.what());
    }
    putBack();
    return code;
}
