#include "support/desk.h"

#include <algorithm>
#include <chrono>

#include "shell/window_proc.h"

extern "C" {
extern char programStateBegin, programStateEnd;
}
static std::string *keptState = nullptr;
static int &desks = *new int(0);  // counts on when the variables are put back

void beginDesks()
{
    ULONG room = 65536;  // for the filter, where there is no stack left
    SetThreadStackGuarantee(&room);
    SetUnhandledExceptionFilter([](EXCEPTION_POINTERS *crash) -> LONG {
        reportMisuse("a crash at " + std::to_string(uintptr_t(crash->ExceptionRecord->ExceptionAddress)));
        std::fflush(stdout);
        TerminateProcess(GetCurrentProcess(), 70);  // under Wine a crashed program can end with 0
        return 0;
    });
    GdiplusStartupInput input;
    ULONG_PTR token = 0;
    GdiplusStartup(&token, &input, nullptr);
    keptState = new std::string;
    keptState->assign(&programStateBegin, &programStateEnd);
}

void resetProgram()
{
    std::memcpy(&programStateBegin, keptState->data(), keptState->size());
}

static Desk &desk()
{
    return *Desk::current;
}

template <class T> static BOOL put(T *place, const T &value)
{
    *place = value;
    return TRUE;
}

// --- What the imports answer while a desk stands.
static RECT primaryRect()
{
    return desk().monitors.empty() ? RECT{} : desk().monitors[desk().primaryMonitor];
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

static void paintWindow(HWND handle)
{
    const DeskWindow *const window = desk().find(handle);
    if (window && window->visible && !IsRectEmpty(&window->invalid)) sendMessage(handle, WM_PAINT, 0, 0);
}

HDC DeskWindow::context()
{
    if (dc) return dc;
    dc = SYSTEM(CreateCompatibleDC)(nullptr);
    shown = CreateBitmap(client().right, client().bottom, 1, 32, nullptr);
    SYSTEM(SelectObject)(dc, shown);
    return dc;
}

BOOL DeskWindow::show(bool on)
{
    if (on && !visible) invalid = client();
    return std::exchange(visible, on);
}

DeskWindow::~DeskWindow()
{
    SYSTEM(DeleteDC)(dc);
    SYSTEM(DeleteObject)(shown);
}

static HWND createWindow(DWORD, LPCWSTR name, LPCWSTR, DWORD style, int x, int y, int width, int height)
{
    if (!desk().windowClasses.contains(name)) return nullptr;
    const HWND handle = windowHandle(desk().windowsMade++);
    DeskWindow &window = desk().windows[handle];
    window.className = name;
    window.proc = desk().windowClasses[name];
    window.rect = {x, y, x + width, y + height};
    CREATESTRUCTW create = {};
    if (sendMessage(handle, WM_NCCREATE, 0, LPARAM(&create)) == 0 ||
        sendMessage(handle, WM_CREATE, 0, LPARAM(&create)) < 0)
        return nullptr;
    if (!(style & WS_VISIBLE)) return handle;
    window.show(true);
    sendMessage(handle, WM_SHOWWINDOW, TRUE, 0);
    return handle;
}

// Its timers go with it, and the next window becomes the active one.
static BOOL destroyWindow(HWND handle)
{
    if (!desk().find(handle)) return FALSE;
    sendMessage(handle, WM_DESTROY, 0, 0);
    desk().windows.erase(handle);
    std::erase_if(desk().timers, [handle](const auto &timer) { return timer.first.first == handle; });
    if (desk().foreground != handle) return TRUE;
    const auto next = std::ranges::find_if(desk().windows, [](auto &other) { return other.second.visible; });
    desk().foreground = next == desk().windows.end() ? nullptr : next->first;
    sendMessage(desk().foreground, WM_ACTIVATE, WA_ACTIVE, 0);
    return TRUE;
}

// One sound at a time, as the system's player.
static BOOL play(LPCWSTR bytes, HMODULE, DWORD flags)
{
    if (bytes && (flags & SND_NOSTOP) && desk().steady < desk().soundEnd) return FALSE;
    desk().sounds.push_back({bytes, flags});
    uint32_t size = 0;
    if (bytes) std::memcpy(&size, reinterpret_cast<const char *>(bytes) + 40, 4);
    desk().soundEnd =
        bytes && (flags & SND_LOOP) ? INT64_MAX : desk().steady + int64_t(size) * 1'000'000'000 / 44100;
    return TRUE;
}

PWSTR taskString(const std::wstring &text)
{
    const size_t bytes = (text.size() + 1) * sizeof(wchar_t);
    return static_cast<PWSTR>(std::memcpy(CoTaskMemAlloc(bytes), text.c_str(), bytes));
}

static HRESULT knownFolder(REFKNOWNFOLDERID id, DWORD, HANDLE, PWSTR *path)
{
    const char *const other = id == FOLDERID_RoamingAppData ? "Roaming" : "Other";
    const std::wstring folder = desk().folder() / (id == FOLDERID_Pictures ? "Pictures" : other);
    std::filesystem::create_directories(folder);
    *path = taskString(folder);
    return S_OK;
}

// While no desk stands, the system answers.
static void answer(const char *name, const Replacement &replacement)
{
    if (!imports().contains(name)) return;
    importOf(name).push(
        [replacement](const Call &call) { return Desk::current ? replacement(call) : call.passOn(); });
}
#define ANSWER(name, ...) answer(#name, REPLACEMENT(name, __VA_ARGS__))

[[maybe_unused]] static const bool answering = [] {
    // What only succeeds, and whose result is nothing.
    for (const char *name :
         {"ClipCursor", "RegisterTouchWindow", "CloseTouchInputHandle", "EndPaint", "ReleaseCapture",
          "SetProcessDpiAwarenessContext", "AllowSetForegroundWindow", "OpenClipboard", "EmptyClipboard",
          "CloseClipboard", "SetThreadExecutionState", "SetWindowPos", "UpdateLayeredWindow"})
        answer(name, [](const Call &) { return 1; });
    for (const char *name : {"SetActiveWindow", "SetCapture", "TranslateMessage", "ImmAssociateContext",
                             "CallNextHookEx", "CoInitializeEx", "PostQuitMessage", "CoUninitialize"})
        answer(name, [](const Call &) { return 0; });

    // Clocks. A tick of the counter is 100 ns.
    ANSWER(GetTickCount, [] { return desk().tick; });
    ANSWER(QueryPerformanceCounter,
           [](LARGE_INTEGER *count) { return put(&count->QuadPart, desk().steady / 100); });
    ANSWER(GetLocalTime, [](LPSYSTEMTIME time) { *time = {2026, 5, 1, 4, 10, 30, 15, 0}; });
    ANSWER(SetTimer, [](HWND window, UINT_PTR id, UINT ms) -> UINT_PTR {
        if (!desk().find(window)) reportMisuse("SetTimer without a window");
        desk().timers[{window, id}] = {ms, desk().steady + int64_t(ms) * 1'000'000};
        return id;
    });
    ANSWER(KillTimer, [](HWND window, UINT_PTR id) { return BOOL(desk().timers.erase({window, id})); });

    // Screen and input.
    ANSWER(GetSystemMetrics, [](int index) -> int {
        RECT all = {};
        for (const RECT &monitor : desk().monitors)
            UnionRect(&all, &all, &monitor);
        const VirtualScreen screen = desk().screen.value_or(
            VirtualScreen{all.left, all.top, all.right - all.left, all.bottom - all.top});
        const RECT first = primaryRect();
        const std::map<int, LONG> metrics = {
            {SM_SWAPBUTTON, desk().buttonsSwapped}, {SM_XVIRTUALSCREEN, screen.left},
            {SM_YVIRTUALSCREEN, screen.top},        {SM_CXVIRTUALSCREEN, screen.width},
            {SM_CYVIRTUALSCREEN, screen.height},    {SM_CXSCREEN, first.right - first.left},
            {SM_CYSCREEN, first.bottom - first.top}};
        return metrics.at(index);
    });
    ANSWER(EnumDisplayMonitors, [](HDC, LPCRECT, MONITORENUMPROC each, LPARAM data) -> BOOL {
        intptr_t number = 0;
        for (RECT rect : desk().monitors)
            if (!each(HMONITOR(++number), nullptr, &rect, data)) return FALSE;
        return TRUE;
    });
    ANSWER(MonitorFromPoint, [](POINT point, DWORD flags) -> HMONITOR {
        if (flags == MONITOR_DEFAULTTOPRIMARY) return HMONITOR(desk().primaryMonitor + 1);
        return monitorAt({point.x, point.y, point.x + 1, point.y + 1});
    });
    ANSWER(MonitorFromRect, [](LPCRECT rect) { return monitorAt(*rect); });
    ANSWER(GetMonitorInfoW, [](HMONITOR monitor, LPMONITORINFO info) -> BOOL {
        const size_t index = size_t(monitor) - 1;
        if (index >= desk().monitors.size() || info->cbSize < sizeof *info) return FALSE;
        info->rcMonitor = info->rcWork = desk().monitors[index];
        info->rcWork.bottom -= 40;  // the taskbar
        info->dwFlags = index == desk().primaryMonitor ? MONITORINFOF_PRIMARY : 0;
        return TRUE;
    });
    ANSWER(EnumDisplaySettingsW, [](LPCWSTR, DWORD, DEVMODEW *mode) -> BOOL {
        mode->dmPelsWidth = DWORD(primaryRect().right - primaryRect().left);
        mode->dmPelsHeight = DWORD(primaryRect().bottom - primaryRect().top);
        return put(&mode->dmDisplayOrientation, desk().orientation);
    });
    ANSWER(GetAsyncKeyState, [](int key) {
        return SHORT((desk().keysDown.contains(key) ? 0x8000 : 0) | int(desk().tapped.erase(key)));
    });
    ANSWER(GetCursorPos, [](LPPOINT point) { return put(point, desk().cursor); });
    ANSWER(GetTouchInputInfo, [](HTOUCHINPUT, UINT count, PTOUCHINPUT touches, int size) -> BOOL {
        if (size != sizeof *touches || desk().touches.empty() || desk().touches.size() != count) return FALSE;
        std::ranges::copy(desk().touches, touches);
        return TRUE;
    });
    ANSWER(GetMessageExtraInfo, [] { return desk().extraInfo; });
    ANSWER(SetWindowsHookExW, [](int, HOOKPROC hook) { return HHOOK(intptr_t(put(&desk().hook, hook))); });
    ANSWER(UnhookWindowsHookEx, [] { return put(&desk().hook, HOOKPROC()); });

    // Windows.
    ANSWER(RegisterClassExW, [](const WNDCLASSEXW *made) {
        return ATOM(put(&desk().windowClasses[made->lpszClassName], made->lpfnWndProc));
    });
    ANSWER(CreateWindowExW, createWindow);
    ANSWER(DestroyWindow, destroyWindow);
    for (const char *name : {"IsWindow", "EnableWindow", "SetLayeredWindowAttributes"})
        answer(name, [](const Call &call) { return desk().find(call.get<HWND>(0)) != nullptr; });
    ANSWER(GetWindowRect, [](HWND window, LPRECT rect) -> BOOL {
        return desk().find(window) && put(rect, desk().find(window)->rect);
    });
    ANSWER(GetClientRect, [](HWND window, LPRECT rect) -> BOOL {
        return desk().find(window) && put(rect, desk().find(window)->client());
    });
    ANSWER(ClientToScreen, [](HWND window, LPPOINT point) -> BOOL {
        const RECT rect = desk().find(window) ? desk().find(window)->rect : RECT{};
        return put(point, {point->x + rect.left, point->y + rect.top});
    });
    ANSWER(ShowWindow, [](HWND window, int how) -> BOOL {
        return desk().find(window) && desk().find(window)->show(how != SW_HIDE);
    });
    ANSWER(SetWindowRgn, [](HWND window, HRGN region) -> int {
        return desk().find(window) && desk().objects.erase(region) && SYSTEM(DeleteObject)(region);
    });
    ANSWER(InvalidateRect, [](HWND handle, const RECT *part, BOOL erase) -> BOOL {
        DeskWindow *const window = desk().find(handle);
        if (!window || erase) reportMisuse("InvalidateRect without a window, or erasing");
        if (!window) return FALSE;
        RECT inside = window->client();
        if (part) IntersectRect(&inside, &inside, part);
        UnionRect(&window->invalid, &window->invalid, &inside);
        return TRUE;
    });
    ANSWER(UpdateWindow, [](HWND handle) { return paintWindow(handle), TRUE; });
    ANSWER(GetDC, [](HWND window) {
        return desk().find(window) ? desk().find(window)->context() : SYSTEM(GetDC)(nullptr);
    });
    ANSWER(ReleaseDC,
           [](HWND handle, HDC dc) { return desk().find(handle) ? 1 : SYSTEM(ReleaseDC)(nullptr, dc); });
    ANSWER(BeginPaint, [](HWND window, LPPAINTSTRUCT paint) {
        paint->rcPaint = std::exchange(desk().find(window)->invalid, RECT{});
        return paint->hdc = desk().find(window)->context();
    });
    ANSWER(GetForegroundWindow, [] { return desk().foreground; });
    ANSWER(SetForegroundWindow, [](HWND window) { return put(&desk().foreground, window); });
    ANSWER(SetFocus, [](HWND window) {
        if (!window) reportMisuse("SetFocus without a window");
        return HWND();
    });

    // Messages.
    ANSWER(DefWindowProcW, [](HWND, UINT message) { return LRESULT(message == WM_NCCREATE); });
    ANSWER(PostMessageW, [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> BOOL {
        desk().messages.push_back({window, message, wParam, lParam, desk().tick, {}});
        return TRUE;
    });
    ANSWER(GetMessageW, [](LPMSG message) -> BOOL {
        if (const auto play = std::exchange(desk().play, nullptr)) play();
        if (desk().messages.empty()) return FALSE;
        *message = desk().messages.front();
        desk().messages.pop_front();
        return TRUE;
    });
    ANSWER(DispatchMessageW, [](const MSG *message) {
        return LRESULT(sendMessage(message->hwnd, message->message, message->wParam, message->lParam));
    });

    // The rest of the system.
    ANSWER(PlaySoundW, play);
    ANSWER(GetProcAddress, [](HMODULE, LPCSTR name) {
        return reinterpret_cast<FARPROC>(const_cast<void *>(desk().functions[name]));
    });
    ANSWER(SystemParametersInfoW, [](UINT action, UINT, PVOID value) -> BOOL {
        const std::set<UINT> questions = {SPI_GETSTICKYKEYS, SPI_GETTOGGLEKEYS, SPI_GETFILTERKEYS,
                                          SPI_GETMOUSEKEYS, SPI_GETHIGHCONTRAST};
        if (questions.contains(action)) static_cast<DWORD *>(value)[1] = 0xFF;  // behind the record's size
        return TRUE;
    });
    ANSWER(CreateMutexW, [] { return SetLastError(desk().lastError), HANDLE(0x444); });
    ANSWER(CoCreateInstance, [](REFCLSID id, LPUNKNOWN, DWORD, REFIID, void **object) -> HRESULT {
        return desk().makeObject ? desk().makeObject(id, object) : REGDB_E_CLASSNOTREG;
    });
    ANSWER(SetClipboardData, [](UINT, HANDLE data) {
        desk().objects.erase(data);
        SYSTEM(DeleteObject)(data);
        return data;
    });
    ANSWER(GetUserDefaultUILanguage, [] { return desk().uiLanguage; });
    ANSWER(SHGetKnownFolderPath, knownFolder);
    ANSWER(GetEnvironmentVariableW, [](LPCWSTR name, LPWSTR text, DWORD size) {
        const std::wstring value = desk().environment[name];
        lstrcpynW(text, value.c_str(), int(size));
        return DWORD(value.size() < size ? value.size() : value.size() + 1);
    });
    answer("GetModuleFileNameW", [](const Call &call) {
        if (desk().programFile.empty()) return call.passOn();
        lstrcpynW(call.get<LPWSTR>(1), desk().programFile.c_str(), call.get<int>(2));
        return std::min(int64_t(desk().programFile.size()), int64_t(call.get<DWORD>(2)));
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
    if (current) reportMisuse("two desks at once");
    resetProgram();
    ++desks;
    current = this;
    std::filesystem::remove_all(folder());  // of a process that was ended and had the same number
    std::filesystem::create_directories(folder());
    windowClasses = {{L"ZubblyWindow", windowProc}};
    HBRUSH brush = CreateSolidBrush(background);
    for (RECT monitor : all) {
        createSurface(nullptr, nullptr, &monitor, 0);
        const MonitorSurface &surface = surfaces.back();
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
    objects.clear();
    recording = true;
}

Desk::~Desk()
{
    recording = false;
    for (MonitorSurface &surface : surfaces)
        freeSurfaceBuffers(surface);
    surfaces.clear();
    std::error_code ignored;
    std::filesystem::remove_all(folder(), ignored);
    current = nullptr;
}

std::filesystem::path Desk::folder()
{
    const std::string name = "zubbly" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(desks);
    return std::filesystem::temp_directory_path() / name;
}

void Desk::wait(DWORD ms)
{
    for (const int64_t end = steady + int64_t(ms) * 1'000'000;;) {
        const auto next =
            std::ranges::min_element(timers, {}, [](const auto &timer) { return timer.second.due; });
        const bool fires = next != timers.end() && next->second.due <= end;
        moveClocks(DWORD(std::max<int64_t>((fires ? next->second.due : end) - steady, 0) / 1'000'000));
        if (!fires) return;
        const auto [window, id] = next->first;
        next->second.due = steady + int64_t(next->second.period) * 1'000'000;
        send(window, WM_TIMER, id);
    }
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
        messages.pop_front();
        sendMessage(message.hwnd, message.message, message.wParam, message.lParam);
    }
    for (int i = 0; i < windowsMade; ++i)
        paintWindow(windowHandle(i));
}

std::vector<CallLine> Desk::callsOf(const std::vector<std::string> &starts) const
{
    std::vector<CallLine> found;
    for (const CallLine &call : calls)
        if (std::ranges::any_of(starts, [&call](const auto &start) { return call.text.starts_with(start); }))
            found.push_back(call);
    return found;
}

std::string Desk::text(const std::vector<std::string> &starts) const
{
    std::string lines;
    for (const CallLine &call : callsOf(starts))
        lines += call.text + "\n";
    return lines;
}
