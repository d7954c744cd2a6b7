#include "support/desk.h"

#include <chrono>
#include <utility>

#include "shell/window_proc.h"

// --- The program's variables.
extern "C" {
extern char programStateBegin, programStateEnd;
}
static char *keptState = nullptr;
static size_t stateSize()
{
    return size_t(&programStateEnd - &programStateBegin);
}

void keepProgramState()
{
    keptState = new char[stateSize()];
    std::memcpy(keptState, &programStateBegin, stateSize());
}

void resetProgram()
{
    std::memcpy(&programStateBegin, keptState, stateSize());
}

// --- What the imports answer while a desk stands.
static Desk &desk()
{
    return *Desk::current;
}

static void misuse(const std::string &what)
{
    if (reportMisuse) reportMisuse(what);
}

static RECT workArea(const RECT &monitor)
{
    return {monitor.left, monitor.top, monitor.right, monitor.bottom - desk().taskBar};
}

static HMONITOR monitorAt(const RECT &rect)
{
    for (size_t i = 0; i < desk().monitors.size(); ++i) {
        RECT common;
        if (IntersectRect(&common, &rect, &desk().monitors[i])) return HMONITOR(i + 1);
    }
    return HMONITOR(desk().primaryMonitor + 1);
}

static int64_t sendMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    const DeskWindow *const receiver = desk().find(window);
    return receiver && receiver->proc ? receiver->proc(window, message, wParam, lParam) : 0;
}

static RECT clientOf(const DeskWindow &window)
{
    return {0, 0, std::max<LONG>(window.rect.right - window.rect.left - desk().frame, 0),
            std::max<LONG>(window.rect.bottom - window.rect.top - desk().frame, 0)};
}

static HDC contextOf(DeskWindow &window)
{
    if (window.dc) return window.dc;
    const RECT client = clientOf(window);
    HDC screen = SYSTEM(GetDC)(nullptr);
    window.dc = SYSTEM(CreateCompatibleDC)(screen);
    window.shown = SYSTEM(CreateCompatibleBitmap)(screen, std::max<int>(client.right, 1),
                                                  std::max<int>(client.bottom, 1));
    SYSTEM(SelectObject)(window.dc, window.shown);
    SYSTEM(ReleaseDC)(nullptr, screen);
    return window.dc;
}

static void freeContext(DeskWindow &window)
{
    if (window.dc) SYSTEM(DeleteDC)(window.dc);
    if (window.shown) SYSTEM(DeleteObject)(window.shown);
    window.dc = nullptr;
    window.shown = nullptr;
}

static void paintWindow(HWND handle)
{
    const DeskWindow *const window = desk().find(handle);
    if (window && window->visible && !IsRectEmpty(&window->invalid)) sendMessage(handle, WM_PAINT, 0, 0);
}

static auto &windowClasses = *new std::map<std::wstring, WNDPROC>;

static HWND createWindow(DWORD extended, LPCWSTR name, LPCWSTR, DWORD style, int x, int y, int width,
                         int height, HWND owner)
{
    const auto windowClass = windowClasses.find(name);
    if (windowClass == windowClasses.end()) return nullptr;
    const HWND handle = windowHandle(int(desk().windows.size()));
    DeskWindow &window = desk().windows.emplace_back();
    window.className = name;
    window.proc = windowClass->second;
    window.style = style;
    window.extended = extended;
    window.rect = {x, y, x + width, y + height};
    window.owner = owner;
    CREATESTRUCTW create = {};
    if (sendMessage(handle, WM_NCCREATE, 0, LPARAM(&create)) == 0 ||
        sendMessage(handle, WM_CREATE, 0, LPARAM(&create)) < 0)
        return nullptr;
    if (style & WS_VISIBLE) {
        desk().find(handle)->visible = true;
        desk().find(handle)->invalid = clientOf(*desk().find(handle));
        sendMessage(handle, WM_SHOWWINDOW, TRUE, 0);
    }
    return handle;
}

// Those it owns go first, its timers with it; the next window becomes the active one.
static BOOL destroyWindow(HWND handle)
{
    if (!desk().find(handle)) return FALSE;
    for (size_t i = 0; i < desk().windows.size(); ++i)
        if (desk().windows[i].exists && desk().windows[i].owner == handle)
            destroyWindow(windowHandle(int(i)));
    sendMessage(handle, WM_DESTROY, 0, 0);
    DeskWindow *const window = desk().find(handle);
    if (!window) return TRUE;
    window->exists = window->visible = false;
    freeContext(*window);
    std::erase_if(desk().timers, [handle](const auto &timer) { return timer.first.first == handle; });
    if (desk().foreground != handle) return TRUE;
    desk().foreground = nullptr;
    for (size_t i = 0; i < desk().windows.size() && !desk().foreground; ++i)
        if (desk().windows[i].visible) desk().foreground = windowHandle(int(i));
    if (desk().foreground) sendMessage(desk().foreground, WM_ACTIVATE, WA_ACTIVE, 0);
    return TRUE;
}

static HRESULT knownFolder(const GUID &id, PWSTR *path)
{
    const char *const name = id == FOLDERID_Pictures         ? "Pictures"
                             : id == FOLDERID_RoamingAppData ? "Roaming"
                                                             : "Other";
    const std::wstring folder = (desk().folder() / name).wstring();
    std::error_code ignored;
    std::filesystem::create_directories(folder, ignored);
    const size_t bytes = (folder.size() + 1) * sizeof(wchar_t);
    *path = static_cast<PWSTR>(std::memcpy(CoTaskMemAlloc(bytes), folder.c_str(), bytes));
    return S_OK;
}

struct DeskImports {
    // What lies in the clipboard is the system's.
    static HANDLE setClipboard(UINT, HANDLE data)
    {
        forgetObject(data);
        if (desk().clipboard) SYSTEM(DeleteObject)(desk().clipboard);
        return desk().clipboard = data;
    }
    // One sound at a time, as the system's player.
    static BOOL play(LPCWSTR bytes, HMODULE, DWORD flags)
    {
        Desk &now = desk();
        if (bytes && (flags & SND_NOSTOP) && now.steady < now.soundEnd) return FALSE;
        now.sounds.push_back({bytes, flags});
        now.soundEnd = 0;
        if (!bytes) return TRUE;
        uint32_t size = 0;
        std::memcpy(&size, reinterpret_cast<const char *>(bytes) + 40, 4);
        now.soundEnd = flags & SND_LOOP ? INT64_MAX : now.steady + int64_t(size) * 1'000'000'000 / 44100;
        return TRUE;
    }
};

// While no desk stands, the system answers.
#define ANSWER(name, ...)                                                                                    \
    pushReplacement(#name, [replacement = REPLACEMENT(name, __VA_ARGS__)](const Call &call) {                \
        return Desk::current ? replacement(call) : call.passOn();                                            \
    })

[[maybe_unused]] static const bool answering = [] {
    // What only succeeds, and whose result is nothing.
    for (const char *name : {"ClipCursor", "RegisterTouchWindow", "CloseTouchInputHandle", "EndPaint",
                             "ReleaseCapture", "SetProcessDpiAwarenessContext", "AllowSetForegroundWindow",
                             "OpenClipboard", "EmptyClipboard", "CloseClipboard", "SetThreadExecutionState"})
        pushReplacement(name, [](const Call &call) { return Desk::current ? 1 : call.passOn(); });
    for (const char *name : {"SetActiveWindow", "SetCapture", "TranslateMessage", "ImmAssociateContext",
                             "CallNextHookEx", "CoInitializeEx", "PostQuitMessage", "CoUninitialize"})
        pushReplacement(name, [](const Call &call) { return Desk::current ? 0 : call.passOn(); });

    // Clocks. The counter's frequency is what the C library asked for before; a tick of it is 100 ns.
    ANSWER(GetTickCount, [] { return desk().tick; });
    ANSWER(QueryPerformanceCounter, [](LARGE_INTEGER *count) -> BOOL {
        LARGE_INTEGER frequency = {};
        QueryPerformanceFrequency(&frequency);
        count->QuadPart = desk().steady / (1'000'000'000 / frequency.QuadPart);
        return TRUE;
    });
    ANSWER(GetLocalTime, [](LPSYSTEMTIME time) { *time = desk().localTime; });
    ANSWER(SetTimer, [](HWND window, UINT_PTR id, UINT ms) -> UINT_PTR {
        if (!desk().find(window)) misuse("SetTimer without a window");
        desk().timers[{window, id}] = {ms, desk().steady + int64_t(ms) * 1'000'000};
        return id;
    });
    ANSWER(KillTimer,
           [](HWND window, UINT_PTR id) -> BOOL { return desk().timers.erase({window, id}) != 0; });

    // Screen and input.
    ANSWER(GetSystemMetrics, [](int index) -> int {
        const RECT all = desk().bounds();
        const VirtualScreen screen = desk().screen.value_or(
            VirtualScreen{all.left, all.top, all.right - all.left, all.bottom - all.top});
        const RECT primary = desk().monitors.empty() ? RECT{} : desk().monitors[desk().primaryMonitor];
        switch (index) {
        case SM_SWAPBUTTON: return desk().buttonsSwapped;
        case SM_XVIRTUALSCREEN: return screen.left;
        case SM_YVIRTUALSCREEN: return screen.top;
        case SM_CXVIRTUALSCREEN: return screen.width;
        case SM_CYVIRTUALSCREEN: return screen.height;
        case SM_CXSCREEN: return primary.right - primary.left;
        case SM_CYSCREEN: return primary.bottom - primary.top;
        }
        return 0;
    });
    ANSWER(EnumDisplayMonitors, [](HDC, LPCRECT, MONITORENUMPROC each, LPARAM data) -> BOOL {
        for (size_t i = 0; i < desk().monitors.size(); ++i) {
            RECT rect = desk().monitors[i];
            if (!each(HMONITOR(i + 1), nullptr, &rect, data)) return FALSE;
        }
        return TRUE;
    });
    ANSWER(MonitorFromPoint, [](POINT point, DWORD flags) -> HMONITOR {
        if (flags == MONITOR_DEFAULTTOPRIMARY && !PtInRect(&desk().monitors[desk().primaryMonitor], point))
            return HMONITOR(desk().primaryMonitor + 1);
        return monitorAt({point.x, point.y, point.x + 1, point.y + 1});
    });
    ANSWER(MonitorFromRect, [](LPCRECT rect) -> HMONITOR { return monitorAt(*rect); });
    ANSWER(GetMonitorInfoW, [](HMONITOR monitor, LPMONITORINFO info) -> BOOL {
        const size_t index = size_t(monitor) - 1;
        if (index >= desk().monitors.size() || info->cbSize < sizeof *info) return FALSE;
        info->rcMonitor = desk().monitors[index];
        info->rcWork = workArea(info->rcMonitor);
        info->dwFlags = index == desk().primaryMonitor ? MONITORINFOF_PRIMARY : 0;
        return TRUE;
    });
    ANSWER(GetAsyncKeyState, [](int key) -> SHORT {
        const bool tapped = desk().tapped.erase(key) != 0;
        return SHORT((desk().keysDown.contains(key) ? 0x8000 : 0) | tapped);
    });
    ANSWER(GetCursorPos, [](LPPOINT point) -> BOOL {
        *point = desk().cursor;
        return TRUE;
    });
    ANSWER(GetTouchInputInfo, [](HTOUCHINPUT, UINT count, PTOUCHINPUT touches, int size) -> BOOL {
        if (size != sizeof *touches || desk().touches.empty() || desk().touches.size() != count) return FALSE;
        std::copy(desk().touches.begin(), desk().touches.end(), touches);
        return TRUE;
    });
    ANSWER(GetMessageExtraInfo, [] { return desk().extraInfo; });
    ANSWER(EnumDisplaySettingsW, [](LPCWSTR, DWORD, DEVMODEW *mode) -> BOOL {
        const RECT &rect = desk().monitors.at(desk().primaryMonitor);
        mode->dmPelsWidth = DWORD(rect.right - rect.left);
        mode->dmPelsHeight = DWORD(rect.bottom - rect.top);
        mode->dmDisplayOrientation = desk().orientation;
        return TRUE;
    });
    // Functions that not every Windows has; others are not the program's.
    pushReplacement("GetProcAddress", [](const Call &call) -> int64_t {
        const char *const name = call.get<const char *>(1);
        if (!Desk::current || !HIWORD(intptr_t(name)) || !desk().functions.contains(name))
            return call.passOn();
        return reinterpret_cast<int64_t>(desk().functions[name]);
    });
    ANSWER(SetWindowsHookExW, [](int, HOOKPROC hook) -> HHOOK {
        desk().hook = hook;
        return HHOOK(0x400);
    });
    ANSWER(UnhookWindowsHookEx, [](HHOOK) -> BOOL {
        desk().hook = nullptr;
        return TRUE;
    });

    // Windows.
    ANSWER(RegisterClassExW, [](const WNDCLASSEXW *windowClass) -> ATOM {
        windowClasses[windowClass->lpszClassName] = windowClass->lpfnWndProc;
        return 1;
    });
    ANSWER(CreateWindowExW, createWindow);
    ANSWER(DestroyWindow, destroyWindow);
    ANSWER(IsWindow, [](HWND window) -> BOOL { return desk().find(window) != nullptr; });
    ANSWER(IsWindowVisible,
           [](HWND window) -> BOOL { return desk().find(window) && desk().find(window)->visible; });
    ANSWER(GetWindowRect, [](HWND handle, LPRECT rect) -> BOOL {
        const DeskWindow *const window = desk().find(handle);
        if (window) *rect = window->rect;
        return window != nullptr;
    });
    ANSWER(GetClientRect, [](HWND handle, LPRECT rect) -> BOOL {
        const DeskWindow *const window = desk().find(handle);
        if (window) *rect = clientOf(*window);
        return window != nullptr;
    });
    ANSWER(ClientToScreen, [](HWND handle, LPPOINT point) -> BOOL {
        const DeskWindow *const window = desk().find(handle);
        if (window) *point = {point->x + window->rect.left, point->y + window->rect.top};
        return window != nullptr;
    });
    ANSWER(ShowWindow, [](HWND handle, int how) -> BOOL {
        DeskWindow *const window = desk().find(handle);
        if (!window) return FALSE;
        const bool before = std::exchange(window->visible, how != SW_HIDE);
        if (window->visible && !before) window->invalid = clientOf(*window);
        return before;
    });
    ANSWER(EnableWindow, [](HWND handle, BOOL enable) -> BOOL {
        DeskWindow *const window = desk().find(handle);
        return window && !std::exchange(window->enabled, enable != FALSE);
    });
    ANSWER(SetWindowPos, [](HWND handle, HWND, int x, int y, int width, int height, UINT flags) -> BOOL {
        DeskWindow *const window = desk().find(handle);
        if (!window) return FALSE;
        RECT &rect = window->rect;
        if (!(flags & SWP_NOMOVE)) OffsetRect(&rect, x - rect.left, y - rect.top);
        if (!(flags & SWP_NOSIZE)) rect = {rect.left, rect.top, rect.left + width, rect.top + height};
        if (flags & (SWP_SHOWWINDOW | SWP_HIDEWINDOW)) window->visible = (flags & SWP_SHOWWINDOW) != 0;
        return TRUE;
    });
    ANSWER(SetWindowRgn, [](HWND handle, HRGN region) -> int {
        if (!desk().find(handle)) return 0;
        forgetObject(region);  // the system's from now on
        if (region) SYSTEM(DeleteObject)(region);
        return 1;
    });
    ANSWER(SetLayeredWindowAttributes, [](HWND handle) -> BOOL { return desk().find(handle) != nullptr; });
    ANSWER(UpdateLayeredWindow, [](HWND handle, HDC, POINT *at, SIZE *size) -> BOOL {
        DeskWindow *const window = desk().find(handle);
        if (!window) return FALSE;
        if (at) OffsetRect(&window->rect, at->x - window->rect.left, at->y - window->rect.top);
        if (size) window->rect.right = window->rect.left + size->cx;
        if (size) window->rect.bottom = window->rect.top + size->cy;
        return TRUE;
    });
    ANSWER(InvalidateRect, [](HWND handle, const RECT *part, BOOL erase) -> BOOL {
        DeskWindow *const window = desk().find(handle);
        if (!window || erase) misuse(window ? "InvalidateRect erases" : "InvalidateRect without a window");
        if (!window) return FALSE;
        const RECT client = clientOf(*window);
        RECT inside = part ? *part : client;
        IntersectRect(&inside, &inside, &client);
        UnionRect(&window->invalid, &window->invalid, &inside);
        return TRUE;
    });
    ANSWER(UpdateWindow, [](HWND handle) -> BOOL {
        paintWindow(handle);
        return TRUE;
    });
    ANSWER(GetDC, [](HWND handle) -> HDC {
        DeskWindow *const window = desk().find(handle);
        return window ? contextOf(*window) : SYSTEM(GetDC)(nullptr);
    });
    ANSWER(ReleaseDC, [](HWND handle, HDC dc) -> int {
        return desk().find(handle) ? 1 : SYSTEM(ReleaseDC)(nullptr, dc);
    });
    ANSWER(BeginPaint, [](HWND handle, LPPAINTSTRUCT paint) -> HDC {
        DeskWindow *const window = desk().find(handle);
        if (!window) return nullptr;
        paint->rcPaint = std::exchange(window->invalid, RECT{});
        return paint->hdc = contextOf(*window);
    });
    ANSWER(GetForegroundWindow, [] { return desk().foreground; });
    ANSWER(SetForegroundWindow, [](HWND window) -> BOOL {
        desk().foreground = window;
        return TRUE;
    });
    ANSWER(SetFocus, [](HWND window) {
        if (!window) misuse("SetFocus without a window");
        return HWND();
    });

    // Messages.
    ANSWER(DefWindowProcW, [](HWND, UINT message) -> LRESULT { return message == WM_NCCREATE; });
    ANSWER(SendMessageW, sendMessage);
    ANSWER(PostMessageW, [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> BOOL {
        desk().messages.push_back({window, message, wParam, lParam, desk().tick, {}});
        return TRUE;
    });
    ANSWER(GetMessageW, [](LPMSG message) -> BOOL {
        if (const auto play = std::exchange(desk().play, nullptr)) play();
        if (desk().messages.empty()) return FALSE;
        *message = desk().messages.front();
        desk().messages.erase(desk().messages.begin());
        return TRUE;
    });
    ANSWER(DispatchMessageW, [](const MSG *message) -> LRESULT {
        return sendMessage(message->hwnd, message->message, message->wParam, message->lParam);
    });

    // The rest of the system.
    ANSWER(PlaySoundW, DeskImports::play);
    ANSWER(SystemParametersInfoW, [](UINT action, UINT, PVOID value) -> BOOL {
        const UINT all[] = {SPI_GETSTICKYKEYS, SPI_GETTOGGLEKEYS, SPI_GETFILTERKEYS, SPI_GETMOUSEKEYS,
                            SPI_GETHIGHCONTRAST};
        const bool asks = std::count(std::begin(all), std::end(all), action) != 0;
        if (asks) static_cast<DWORD *>(value)[1] = 0xFF;  // behind the size in all records
        return TRUE;
    });
    ANSWER(CreateMutexW, [] {
        SetLastError(desk().lastError);
        return HANDLE(0x444);
    });
    ANSWER(CoCreateInstance, [](REFCLSID id, LPUNKNOWN, DWORD, REFIID, void **object) -> HRESULT {
        return desk().makeObject ? desk().makeObject(id, object) : REGDB_E_CLASSNOTREG;
    });
    ANSWER(SetClipboardData, DeskImports::setClipboard);
    ANSWER(GetUserDefaultUILanguage, [] { return desk().uiLanguage; });
    ANSWER(SHGetKnownFolderPath,
           [](REFKNOWNFOLDERID id, DWORD, HANDLE, PWSTR *path) { return knownFolder(id, path); });
    ANSWER(GetEnvironmentVariableW, [](LPCWSTR name, LPWSTR text, DWORD size) -> DWORD {
        const auto found = desk().environment.find(name);
        if (found == desk().environment.end()) return 0;
        const DWORD length = DWORD(found->second.size());
        if (length >= size) return length + 1;
        std::copy_n(found->second.c_str(), length + 1, text);
        return length;
    });
    pushReplacement("GetModuleFileNameW", [](const Call &call) -> int64_t {
        if (!Desk::current || desk().programFile.empty()) return call.passOn();
        const std::wstring &file = desk().programFile;
        const DWORD size = call.get<DWORD>(2);
        const size_t length = std::min<size_t>(file.size(), size - 1);
        std::copy_n(file.c_str(), length, call.get<LPWSTR>(1));
        call.get<LPWSTR>(1)[length] = 0;
        return file.size() < size ? int64_t(length) : size;
    });
    return true;
}();

// The C library finds the system's function for this one by itself, so the linker replaces the clock.
using WallTime = std::chrono::system_clock::time_point;
extern "C" WallTime __real__ZNSt6chrono3_V212system_clock3nowEv();
extern "C" WallTime __wrap__ZNSt6chrono3_V212system_clock3nowEv()
{
    if (!Desk::current) return __real__ZNSt6chrono3_V212system_clock3nowEv();
    const std::chrono::nanoseconds passed(desk().steady - Desk::firstSteady);
    return WallTime(
        std::chrono::duration_cast<WallTime::duration>(std::chrono::seconds(desk().wallSeconds) + passed));
}

// --- The desk itself.
Desk::Desk(const std::vector<RECT> &all, MarkColor background) : monitors(all)
{
    if (current) misuse("two desks at once");
    resetProgram();
    current = this;
    telling = false;
    windowClasses = {{L"ZubblyWindow", windowProc}};
    for (RECT monitor : all)
        createSurface(nullptr, nullptr, &monitor, 0);
    HBRUSH brush = CreateSolidBrush(background);
    for (const MonitorSurface &surface : surfaces) {
        const RECT canvas = {0, 0, surface.width, surface.height};
        FillRect(surface.canvasDC, &canvas, brush);
        find(surface.hwnd)->invalid = {};
    }
    DeleteObject(brush);
    foreground = primaryWindow();
    markRng.seed(7);
    soundRng.seed(8);
    clipRng.seed(9);
    canvasDirty = false;
    forgetObjects();
    tellCalls(true);
    telling = true;
}

Desk::~Desk()
{
    tellCalls(false);
    for (MonitorSurface &surface : surfaces)
        freeSurfaceBuffers(surface);
    surfaces.clear();
    for (DeskWindow &window : windows)
        freeContext(window);
    if (clipboard) SYSTEM(DeleteObject)(clipboard);
    std::error_code ignored;
    if (!ownFolder.empty()) std::filesystem::remove_all(ownFolder, ignored);
    current = nullptr;
}

const std::filesystem::path &Desk::folder()
{
    if (!ownFolder.empty()) return ownFolder;
    ownFolder = std::filesystem::temp_directory_path() / ("zubbly" + std::to_string(GetCurrentProcessId()));
    std::error_code ignored;
    std::filesystem::remove_all(ownFolder, ignored);  // of a process that was ended and had the same number
    std::filesystem::create_directories(ownFolder);
    return ownFolder;
}

DeskWindow *Desk::find(HWND window)
{
    const intptr_t index = (intptr_t(window) - firstWindow) / 2;
    if (intptr_t(window) < firstWindow || index >= intptr_t(windows.size())) return nullptr;
    return windows[size_t(index)].exists ? &windows[size_t(index)] : nullptr;
}

RECT Desk::bounds() const
{
    RECT all = {};
    for (const RECT &monitor : monitors)
        UnionRect(&all, &all, &monitor);
    return all;
}

MarkColor Desk::pixel(int x, int y) const
{
    for (const MonitorSurface &surface : surfaces) {
        if (PtInRect(&surface.rect, {x, y}))
            return GetPixel(surface.canvasDC, x - surface.rect.left, y - surface.rect.top);
    }
    return CLR_INVALID;
}

void Desk::moveClocks(DWORD ms)
{
    tick += ms;
    steady += int64_t(ms) * 1'000'000;
}

void Desk::wait(DWORD ms)
{
    const int64_t end = steady + int64_t(ms) * 1'000'000;
    for (;;) {
        const auto next = std::min_element(timers.begin(), timers.end(), [](const auto &a, const auto &b) {
            return a.second.due < b.second.due;
        });
        if (next == timers.end() || next->second.due > end) break;
        const auto [window, id] = next->first;
        moveClocks(DWORD(std::max<int64_t>(next->second.due - steady, 0) / 1'000'000));
        next->second.due = steady + int64_t(next->second.period) * 1'000'000;
        send(window, WM_TIMER, id);
    }
    moveClocks(DWORD((end - steady) / 1'000'000));
}

LRESULT Desk::send(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    const LRESULT result = sendMessage(window, message, wParam, lParam);
    settle();
    return result;
}

void Desk::settle()
{
    while (!messages.empty()) {
        const MSG message = messages.front();
        messages.erase(messages.begin());
        sendMessage(message.hwnd, message.message, message.wParam, message.lParam);
    }
    for (size_t i = 0; i < windows.size(); ++i)
        paintWindow(windowHandle(int(i)));
}

void Desk::hold(int key)
{
    if (keysDown.insert(key).second) tapped.insert(key);
}

void Desk::release(int key)
{
    keysDown.erase(key);
}

int Desk::count(const std::string &start) const
{
    return int(std::count_if(calls.begin(), calls.end(),
                             [&](const Told &call) { return call.text.starts_with(start); }));
}

int Desk::first(const std::string &start) const
{
    for (size_t i = 0; i < calls.size(); ++i)
        if (calls[i].text.starts_with(start)) return int(i);
    return -1;
}

std::string Desk::text(const std::vector<std::string> &starts) const
{
    std::string lines;
    for (const Told &call : calls) {
        const bool wanted = std::any_of(starts.begin(), starts.end(), [&](const std::string &start) {
            return call.text.starts_with(start);
        });
        if (wanted || starts.empty()) lines += call.text + "\n";
    }
    return lines;
}
