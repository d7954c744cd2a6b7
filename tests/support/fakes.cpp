#include "support/fakes.h"

#include <chrono>

int countCalls(const std::string &start)
{
    int count = 0;
    for (const std::string &call : recorded.calls)
        count += call.starts_with(start);
    return count;
}

int firstCall(const std::string &start)
{
    for (size_t i = 0; i < recorded.calls.size(); ++i) {
        if (recorded.calls[i].starts_with(start)) return int(i);
    }
    return -1;
}

static void log(std::string call)
{
    recorded.calls.push_back(std::move(call));
}

static bool isFake(HWND window)
{
    const intptr_t handle = intptr_t(window);
    return handle >= firstFakeWindow && handle < firstFakeWindow + 64;
}
static int indexOf(HWND window)
{
    return int((intptr_t(window) - firstFakeWindow) / 2);
}

static std::string nameOf(HWND window)
{
    if (!window) return "null";
    return isFake(window) ? "w" + std::to_string(indexOf(window)) : "window";
}

// The linker gives `__real___imp_X` the real import and takes ours for `__imp_X`; the build reads the
// names from these lines.
#define REPLACE_IMPORT(name)                                                                                 \
    extern "C" {                                                                                             \
    extern decltype(&name) __real___imp_##name;                                                              \
    extern decltype(&name) __wrap___imp_##name;                                                              \
    }                                                                                                        \
    decltype(&name) __wrap___imp_##name
#define REAL(name) __real___imp_##name

REPLACE_IMPORT(GetTickCount) = []() -> DWORD { return fakes.tick; };
REPLACE_IMPORT(GetAsyncKeyState) = [](int key) -> SHORT {
    return fakes.keysDown.contains(key) ? SHORT(-32768) : 0;
};
REPLACE_IMPORT(GetSystemMetrics) = [](int index) -> int {
    switch (index) {
    case SM_XVIRTUALSCREEN: return fakes.screen.left;
    case SM_YVIRTUALSCREEN: return fakes.screen.top;
    case SM_CXVIRTUALSCREEN: return fakes.screen.width;
    case SM_CYVIRTUALSCREEN: return fakes.screen.height;
    }
    return REAL(GetSystemMetrics)(index);
};
REPLACE_IMPORT(GetCursorPos) = [](LPPOINT point) -> BOOL {
    *point = fakes.cursor;
    return TRUE;
};
REPLACE_IMPORT(EnumDisplayMonitors) = [](HDC, LPCRECT, MONITORENUMPROC each, LPARAM data) -> BOOL {
    for (size_t i = 0; i < fakes.monitors.size(); ++i) {
        RECT rect = fakes.monitors[i];
        each(HMONITOR(i + 1), nullptr, &rect, data);
    }
    return TRUE;
};
static HMONITOR monitorAt(const RECT &rect)
{
    for (size_t i = 0; i < fakes.monitors.size(); ++i) {
        RECT common;
        if (IntersectRect(&common, &rect, &fakes.monitors[i])) return HMONITOR(i + 1);
    }
    return HMONITOR(fakes.primaryMonitor + 1);
}
REPLACE_IMPORT(MonitorFromPoint) = [](POINT point, DWORD flags) -> HMONITOR {
    if (flags == MONITOR_DEFAULTTOPRIMARY) return HMONITOR(fakes.primaryMonitor + 1);
    return monitorAt({point.x, point.y, point.x + 1, point.y + 1});
};
REPLACE_IMPORT(MonitorFromRect) = [](LPCRECT rect, DWORD) -> HMONITOR { return monitorAt(*rect); };
REPLACE_IMPORT(GetMonitorInfoW) = [](HMONITOR monitor, LPMONITORINFO info) -> BOOL {
    const size_t index = size_t(monitor) - 1;
    if (fakes.failing.contains("GetMonitorInfoW") || index >= fakes.monitors.size()) return FALSE;
    info->rcMonitor = fakes.monitors[index];
    info->rcWork = fakes.monitors[index];
    return TRUE;
};

REPLACE_IMPORT(SetTimer) = [](HWND window, UINT_PTR id, UINT ms, TIMERPROC) -> UINT_PTR {
    log("SetTimer " + std::to_string(id) + " " + std::to_string(ms) + " " + nameOf(window));
    recorded.timers[{window, id}] = ms;
    return id;
};
REPLACE_IMPORT(KillTimer) = [](HWND window, UINT_PTR id) -> BOOL {
    log("KillTimer " + std::to_string(id) + " " + nameOf(window));
    return recorded.timers.erase({window, id}) != 0;
};
REPLACE_IMPORT(InvalidateRect) = [](HWND window, const RECT *rect, BOOL erase) -> BOOL {
    if (!window || erase) log("InvalidateRect with a null window or erasing");
    recorded.invalidations.push_back({window, rect == nullptr, rect ? *rect : RECT{}});
    return TRUE;
};
REPLACE_IMPORT(BeginPaint) = [](HWND window, LPPAINTSTRUCT paint) -> HDC {
    if (!isFake(window)) return REAL(BeginPaint)(window, paint);
    paint->rcPaint = fakes.paintRect;
    return paint->hdc = fakes.paintDC;
};
REPLACE_IMPORT(EndPaint) = [](HWND window, const PAINTSTRUCT *paint) -> BOOL {
    return isFake(window) ? TRUE : REAL(EndPaint)(window, paint);
};
REPLACE_IMPORT(ClientToScreen) = [](HWND window, LPPOINT point) -> BOOL {
    if (!isFake(window)) return REAL(ClientToScreen)(window, point);
    const RECT &monitor = fakes.monitors[size_t(indexOf(window))];
    *point = {point->x + monitor.left, point->y + monitor.top};
    return TRUE;
};

REPLACE_IMPORT(CreateWindowExW) = [](DWORD extended, LPCWSTR name, LPCWSTR title, DWORD style, int x, int y,
                                     int w, int h, HWND parent, HMENU menu, HINSTANCE instance,
                                     LPVOID data) -> HWND {
    const std::wstring className = HIWORD(intptr_t(name)) ? name : L"";
    const bool ours = className == L"ZubblyWindow";
    if (!ours)
        return REAL(CreateWindowExW)(extended, name, title, style, x, y, w, h, parent, menu, instance, data);
    log("CreateWindow " + std::to_string(extended) + " " + std::to_string(style) + " " + std::to_string(x) +
        "," + std::to_string(y) + " " + std::to_string(w) + "x" + std::to_string(h));
    return fakes.failing.contains("CreateWindowExW") ? nullptr : fakeWindow(int(surfaces.size()));
};
static BOOL fakeClientRect(HWND window, LPRECT rect, bool atOrigin)
{
    *rect = fakes.monitors[size_t(indexOf(window))];
    if (atOrigin) OffsetRect(rect, -rect->left, -rect->top);
    return TRUE;
}
REPLACE_IMPORT(GetClientRect) = [](HWND window, LPRECT rect) -> BOOL {
    return isFake(window) ? fakeClientRect(window, rect, true) : REAL(GetClientRect)(window, rect);
};
REPLACE_IMPORT(GetWindowRect) = [](HWND window, LPRECT rect) -> BOOL {
    return isFake(window) ? fakeClientRect(window, rect, false) : REAL(GetWindowRect)(window, rect);
};
REPLACE_IMPORT(GetDC) = [](HWND window) -> HDC { return REAL(GetDC)(isFake(window) ? nullptr : window); };
REPLACE_IMPORT(ReleaseDC) = [](HWND window, HDC dc) -> int {
    return REAL(ReleaseDC)(isFake(window) ? nullptr : window, dc);
};
REPLACE_IMPORT(DestroyWindow) = [](HWND window) -> BOOL {
    log("DestroyWindow " + nameOf(window));
    return isFake(window) ? TRUE : REAL(DestroyWindow)(window);
};
REPLACE_IMPORT(ShowWindow) = [](HWND window, int how) -> BOOL {
    log("ShowWindow " + nameOf(window) + " " + std::to_string(how));
    return isFake(window) ? TRUE : REAL(ShowWindow)(window, how);
};
REPLACE_IMPORT(SetWindowPos) = [](HWND window, HWND after, int x, int y, int w, int h, UINT flags) -> BOOL {
    log("SetWindowPos " + nameOf(window) + (after == HWND_TOPMOST ? " topmost " : " other ") +
        std::to_string(flags));
    return isFake(window) ? TRUE : REAL(SetWindowPos)(window, after, x, y, w, h, flags);
};
REPLACE_IMPORT(SetWindowRgn) = [](HWND window, HRGN region, BOOL redraw) -> int {
    log("SetWindowRgn " + nameOf(window));
    if (!isFake(window)) return REAL(SetWindowRgn)(window, region, redraw);
    DeleteObject(region);  // the system owns what it is given
    return 1;
};
REPLACE_IMPORT(SetLayeredWindowAttributes) = [](HWND window, COLORREF, BYTE alpha, DWORD flags) -> BOOL {
    log("SetLayeredWindowAttributes " + nameOf(window) + " " + std::to_string(alpha) + " " +
        std::to_string(flags));
    return TRUE;
};
REPLACE_IMPORT(UpdateWindow) = [](HWND window) -> BOOL {
    log("UpdateWindow " + nameOf(window));
    return TRUE;
};
REPLACE_IMPORT(DefWindowProcW) = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT {
    if (!isFake(window)) return REAL(DefWindowProcW)(window, message, wParam, lParam);
    log("DefWindowProc " + std::to_string(message));
    return 77;
};

REPLACE_IMPORT(GetForegroundWindow) = []() -> HWND { return fakes.foreground; };
REPLACE_IMPORT(SetForegroundWindow) = [](HWND window) -> BOOL {
    log("SetForegroundWindow " + nameOf(window));
    return TRUE;
};
REPLACE_IMPORT(SetActiveWindow) = [](HWND window) -> HWND {
    log("SetActiveWindow " + nameOf(window));
    return nullptr;
};
REPLACE_IMPORT(SetFocus) = [](HWND window) -> HWND {
    log("SetFocus " + nameOf(window));
    return nullptr;
};
REPLACE_IMPORT(SetCapture) = [](HWND window) -> HWND {
    log("SetCapture " + nameOf(window));
    return nullptr;
};
REPLACE_IMPORT(ReleaseCapture) = []() -> BOOL {
    log("ReleaseCapture");
    return TRUE;
};
REPLACE_IMPORT(ClipCursor) = [](const RECT *clip) -> BOOL {
    log(clip ? "ClipCursor " + std::to_string(clip->left) + "," + std::to_string(clip->top) + "," +
                   std::to_string(clip->right) + "," + std::to_string(clip->bottom)
             : std::string("ClipCursor free"));
    return TRUE;
};
REPLACE_IMPORT(RegisterTouchWindow) = [](HWND window, ULONG) -> BOOL {
    log("RegisterTouchWindow " + nameOf(window));
    return TRUE;
};
REPLACE_IMPORT(GetTouchInputInfo) = [](HTOUCHINPUT, UINT count, PTOUCHINPUT touches, int size) -> BOOL {
    if (size != 48 || fakes.touches.size() != count) return FALSE;
    std::copy(fakes.touches.begin(), fakes.touches.end(), touches);
    return TRUE;
};
REPLACE_IMPORT(CloseTouchInputHandle) = [](HTOUCHINPUT) -> BOOL {
    log("CloseTouchInputHandle");
    return TRUE;
};

REPLACE_IMPORT(SetWindowsHookExW) = [](int kind, HOOKPROC, HINSTANCE, DWORD thread) -> HHOOK {
    log("SetWindowsHook " + std::to_string(kind) + " " + std::to_string(thread));
    return fakes.failing.contains("SetWindowsHookExW") ? nullptr : HHOOK(0x400);
};
REPLACE_IMPORT(UnhookWindowsHookEx) = [](HHOOK) -> BOOL {
    log("Unhook");
    return TRUE;
};
REPLACE_IMPORT(CallNextHookEx) = [](HHOOK, int, WPARAM, LPARAM) -> LRESULT {
    log("CallNextHook");
    return 0;
};
REPLACE_IMPORT(SystemParametersInfoW) = [](UINT action, UINT size, PVOID value, UINT profile) -> BOOL {
    if (action != SPI_SETSTICKYKEYS && action != SPI_SETTOGGLEKEYS && action != SPI_SETFILTERKEYS) {
        static_cast<DWORD *>(value)[1] = 0xFF;  // the flags stand behind the size in all three
        return !fakes.failing.contains("SystemParametersInfoW");
    }
    log("SystemParametersInfo " + std::to_string(action) + " " +
        std::to_string(static_cast<DWORD *>(value)[1]) +
        (size == *static_cast<DWORD *>(value) && profile == 0 ? "" : " wrong"));
    return TRUE;
};
REPLACE_IMPORT(SetThreadExecutionState) = [](EXECUTION_STATE state) -> EXECUTION_STATE {
    log("SetThreadExecutionState " + std::to_string(state));
    return 0;
};
REPLACE_IMPORT(PostMessageW) = [](HWND window, UINT message, WPARAM wParam, LPARAM) -> BOOL {
    log("PostMessage " + nameOf(window) + " " + std::to_string(message) + " " + std::to_string(wParam));
    return fakes.postResult;
};
REPLACE_IMPORT(PostQuitMessage) = [](int code) { log("PostQuitMessage " + std::to_string(code)); };
REPLACE_IMPORT(GetMessageW) = [](LPMSG message, HWND, UINT, UINT) -> BOOL {
    if (fakes.messages.empty()) return FALSE;
    *message = fakes.messages.front();
    fakes.messages.erase(fakes.messages.begin());
    return TRUE;
};
REPLACE_IMPORT(CreateMutexW) = [](LPSECURITY_ATTRIBUTES, BOOL, LPCWSTR) -> HANDLE {
    log("CreateMutex");
    SetLastError(fakes.lastError);
    return HANDLE(0x444);
};
REPLACE_IMPORT(CoInitializeEx) = [](LPVOID, DWORD) -> HRESULT {
    log("CoInitialize");
    return S_OK;
};
REPLACE_IMPORT(CoUninitialize) = []() { log("CoUninitialize"); };

REPLACE_IMPORT(GetModuleFileNameW) = [](HMODULE module, LPWSTR text, DWORD size) -> DWORD {
    if (fakes.programFile.empty()) return REAL(GetModuleFileNameW)(module, text, size);
    const size_t length = std::min(fakes.programFile.copy(text, size - 1), size_t(size));
    text[length] = 0;
    return fakes.programFile.size() < size ? DWORD(length) : size;
};
REPLACE_IMPORT(GetUserDefaultUILanguage) = []() -> LANGID { return fakes.uiLanguage; };
REPLACE_IMPORT(IsWindow) = [](HWND window) -> BOOL { return isFake(window) || REAL(IsWindow)(window); };
REPLACE_IMPORT(GetLocalTime) = [](LPSYSTEMTIME time) { *time = fakes.localTime; };
REPLACE_IMPORT(CoCreateInstance) = [](REFCLSID id, LPUNKNOWN, DWORD, REFIID, void **object) -> HRESULT {
    log("CoCreateInstance");
    return fakes.makeObject ? fakes.makeObject(id, object) : REGDB_E_CLASSNOTREG;
};
REPLACE_IMPORT(OpenClipboard) = [](HWND window) -> BOOL {
    log("OpenClipboard " + nameOf(window));
    return !fakes.failing.contains("OpenClipboard");
};
REPLACE_IMPORT(EmptyClipboard) = []() -> BOOL {
    log("EmptyClipboard");
    return TRUE;
};
REPLACE_IMPORT(SetClipboardData) = [](UINT format, HANDLE data) -> HANDLE {
    log("SetClipboardData " + std::to_string(format));
    return data;
};
REPLACE_IMPORT(CloseClipboard) = []() -> BOOL {
    log("CloseClipboard");
    return TRUE;
};
REPLACE_IMPORT(EnableWindow) = [](HWND window, BOOL enable) -> BOOL {
    log("EnableWindow " + nameOf(window) + " " + std::to_string(enable));
    return FALSE;
};
REPLACE_IMPORT(AllowSetForegroundWindow) = [](DWORD process) -> BOOL {
    log("AllowSetForegroundWindow " + std::to_string(int(process)));
    return TRUE;
};

REPLACE_IMPORT(PlaySoundW) = [](LPCWSTR bytes, HMODULE, DWORD flags) -> BOOL {
    recorded.sounds.push_back({bytes, flags});
    return fakes.playResult;
};

// Declared without dllimport, so called by its name.
#define WRAP(name, result, parameters)                                                                       \
    extern "C" result __wrap_##name parameters;                                                              \
    extern "C" result __wrap_##name parameters
WRAP(ImmAssociateContext, HIMC WINAPI, (HWND window, HIMC))
{
    log("ImmAssociateContext " + nameOf(window));
    return nullptr;
}

extern "C" HRESULT WINAPI __real_SHGetKnownFolderPath(REFKNOWNFOLDERID, DWORD, HANDLE, PWSTR *);
WRAP(SHGetKnownFolderPath, HRESULT WINAPI, (REFKNOWNFOLDERID id, DWORD flags, HANDLE token, PWSTR *path))
{
    if (fakes.failing.contains("SHGetKnownFolderPath")) return E_FAIL;
    if (fakes.folder.empty()) return __real_SHGetKnownFolderPath(id, flags, token, path);
    const std::wstring folder = fakes.folder.wstring();
    *path = static_cast<PWSTR>(CoTaskMemAlloc((folder.size() + 1) * sizeof(wchar_t)));
    folder.copy(*path, folder.size());
    (*path)[folder.size()] = 0;
    return S_OK;
}

using WallTime = std::chrono::system_clock::time_point;
extern "C" WallTime __real__ZNSt6chrono3_V212system_clock3nowEv();
extern "C" WallTime __wrap__ZNSt6chrono3_V212system_clock3nowEv();
extern "C" WallTime __wrap__ZNSt6chrono3_V212system_clock3nowEv()
{
    return fakes.wallSeconds ? WallTime(std::chrono::seconds(fakes.wallSeconds))
                             : __real__ZNSt6chrono3_V212system_clock3nowEv();
}

extern "C" std::chrono::steady_clock::time_point __wrap__ZNSt6chrono3_V212steady_clock3nowEv();
extern "C" std::chrono::steady_clock::time_point __wrap__ZNSt6chrono3_V212steady_clock3nowEv()
{
    return std::chrono::steady_clock::time_point(std::chrono::nanoseconds(fakes.steady));
}
