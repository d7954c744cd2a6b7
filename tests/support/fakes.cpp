#include "support/fakes.h"

#include <algorithm>
#include <chrono>

#include "sound/slots.h"

int countCalls(const std::string &start)
{
    return int(std::count_if(recorded.calls.begin(), recorded.calls.end(),
                             [&](const std::string &call) { return call.starts_with(start); }));
}

int firstCall(const std::string &start)
{
    for (size_t i = 0; i < recorded.calls.size(); ++i) {
        if (recorded.calls[i].starts_with(start)) return int(i);
    }
    return -1;
}

static bool isFake(HWND window)
{
    return intptr_t(window) >= firstFakeWindow && intptr_t(window) < firstFakeWindow + 64;
}
static size_t indexOf(HWND window)
{
    return size_t(intptr_t(window) - firstFakeWindow) / 2;
}

static std::string text(const char *part)
{
    return part;
}
template <class Number> static std::string text(Number part)
{
    return std::to_string(part);
}
static std::string text(HWND window)
{
    if (!window) return "null";
    return isFake(window) ? "w" + std::to_string(indexOf(window)) : "window";
}

// Keeps a call and its telling arguments, with blanks between them, and gives its answer.
template <class Answer, class... Parts> static Answer said(Answer answer, const char *what, Parts... parts)
{
    recorded.calls.push_back((std::string(what) + ... + (" " + text(parts))));
    if (story) tell(recorded.calls.back());
    return answer;
}

static bool fails(const char *name)
{
    return fakes.failing.contains(name);
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
// One that is only recorded: its result, the answer, parameters, and what to tell of them.
#define SAYS(name, Result, answer, parameters, ...)                                                          \
    REPLACE_IMPORT(name) = [] parameters -> Result { return Result(said(answer, __VA_ARGS__)); }

REPLACE_IMPORT(GetTickCount) = []() -> DWORD { return fakes.tick; };
REPLACE_IMPORT(GetAsyncKeyState) = [](int key) -> SHORT {
    return fakes.keysDown.contains(key) ? SHORT(-32768) : 0;
};
REPLACE_IMPORT(GetSystemMetrics) = [](int index) -> int {
    const auto &[left, top, width, height] = fakes.screen;
    const std::map<int, int> screen = {
        {SM_SWAPBUTTON, fakes.buttonsSwapped}, {76, left}, {77, top}, {78, width}, {79, height}};
    return screen.contains(index) ? screen.at(index) : REAL(GetSystemMetrics)(index);
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
    if (fails("GetMonitorInfoW") || index >= fakes.monitors.size()) return FALSE;
    info->rcMonitor = fakes.monitors[index];
    info->rcWork = fakes.monitors[index];
    return TRUE;
};
REPLACE_IMPORT(EnumDisplaySettingsW) = [](LPCWSTR, DWORD, LPDEVMODEW mode) -> BOOL {
    if (fakes.monitors.empty()) return FALSE;
    const RECT &first = fakes.monitors.front();
    mode->dmPelsWidth = DWORD(first.right - first.left);
    mode->dmPelsHeight = DWORD(first.bottom - first.top);
    mode->dmDisplayOrientation = fakes.orientation;
    return TRUE;
};

REPLACE_IMPORT(SetTimer) = [](HWND window, UINT_PTR id, UINT ms, TIMERPROC) -> UINT_PTR {
    recorded.timers[{window, id}] = ms;
    recorded.started[{window, id}] = fakes.tick;
    return said(id, "SetTimer", id, ms, window);
};
REPLACE_IMPORT(KillTimer) = [](HWND window, UINT_PTR id) -> BOOL {
    return said(recorded.timers.erase({window, id}) != 0, "KillTimer", id, window);
};
REPLACE_IMPORT(InvalidateRect) = [](HWND window, const RECT *rect, BOOL erase) -> BOOL {
    recorded.invalidations.push_back({window, rect == nullptr, rect ? *rect : RECT{}});
    if (story) tell(textOf(recorded.invalidations.back()));
    return window && !erase ? TRUE : said(FALSE, "InvalidateRect with a null window or erasing");
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
    const RECT &monitor = fakes.monitors[indexOf(window)];
    *point = {point->x + monitor.left, point->y + monitor.top};
    return TRUE;
};

REPLACE_IMPORT(CreateWindowExW) = [](DWORD extended, LPCWSTR name, LPCWSTR title, DWORD style, int x, int y,
                                     int w, int h, HWND parent, HMENU menu, HINSTANCE instance,
                                     LPVOID data) -> HWND {
    if (!HIWORD(intptr_t(name)) || std::wstring(name) != L"ZubblyWindow")
        return REAL(CreateWindowExW)(extended, name, title, style, x, y, w, h,
                                     isFake(parent) ? nullptr : parent, menu, instance, data);
    const HWND made = fails("CreateWindowExW") ? nullptr : fakeWindow(int(surfaces.size()));
    return said(made, "CreateWindow", extended, style, x, y, w, h);
};
static BOOL fakeClientRect(HWND window, LPRECT rect, bool atOrigin)
{
    *rect = fakes.monitors[indexOf(window)];
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
    return said(isFake(window), "DestroyWindow", window) || REAL(DestroyWindow)(window);
};
REPLACE_IMPORT(ShowWindow) = [](HWND window, int how) -> BOOL {
    return said(isFake(window), "ShowWindow", window, how) || REAL(ShowWindow)(window, how);
};
REPLACE_IMPORT(SetWindowPos) = [](HWND window, HWND after, int x, int y, int w, int h, UINT flags) -> BOOL {
    const char *where = after == HWND_TOPMOST ? "topmost" : "other";
    return said(isFake(window), "SetWindowPos", window, where, flags) ||
           REAL(SetWindowPos)(window, after, x, y, w, h, flags);
};
REPLACE_IMPORT(SetWindowRgn) = [](HWND window, HRGN region, BOOL redraw) -> int {
    if (!said(isFake(window), "SetWindowRgn", window)) return REAL(SetWindowRgn)(window, region, redraw);
    return DeleteObject(region) || !region;  // the system owns what it is given
};
SAYS(SetLayeredWindowAttributes, BOOL, TRUE, (HWND window, COLORREF, BYTE alpha, DWORD flags),
     "SetLayeredWindowAttributes", window, alpha, flags);
SAYS(UpdateWindow, BOOL, TRUE, (HWND window), "UpdateWindow", window);
REPLACE_IMPORT(DefWindowProcW) = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT {
    if (!isFake(window)) return REAL(DefWindowProcW)(window, message, wParam, lParam);
    return said(77, "DefWindowProc", message);
};

REPLACE_IMPORT(GetForegroundWindow) = []() -> HWND { return fakes.foreground; };
SAYS(SetForegroundWindow, BOOL, TRUE, (HWND window), "SetForegroundWindow", window);
SAYS(SetActiveWindow, HWND, HWND(), (HWND window), "SetActiveWindow", window);
SAYS(SetFocus, HWND, HWND(), (HWND window), "SetFocus", window);
SAYS(SetCapture, HWND, HWND(), (HWND window), "SetCapture", window);
SAYS(ReleaseCapture, BOOL, TRUE, (), "ReleaseCapture");
REPLACE_IMPORT(ClipCursor) = [](const RECT *clip) -> BOOL {
    if (!clip) return said(TRUE, "ClipCursor free");
    const std::string corners = std::to_string(clip->left) + "," + std::to_string(clip->top) + "," +
                                std::to_string(clip->right) + "," + std::to_string(clip->bottom);
    return said(TRUE, "ClipCursor", corners.c_str());
};
SAYS(RegisterTouchWindow, BOOL, TRUE, (HWND window, ULONG), "RegisterTouchWindow", window);
REPLACE_IMPORT(GetTouchInputInfo) = [](HTOUCHINPUT, UINT count, PTOUCHINPUT touches, int size) -> BOOL {
    if (size != 48 || fakes.touches.size() != count) return FALSE;
    std::copy(fakes.touches.begin(), fakes.touches.end(), touches);
    return TRUE;
};
REPLACE_IMPORT(GetMessageExtraInfo) = []() -> LPARAM { return fakes.extraInfo; };
SAYS(CloseTouchInputHandle, BOOL, TRUE, (HTOUCHINPUT), "CloseTouchInputHandle");

SAYS(SetWindowsHookExW, HHOOK, fails("SetWindowsHookExW") ? nullptr : HHOOK(0x400),
     (int kind, HOOKPROC, HINSTANCE, DWORD thread), "SetWindowsHook", kind, thread);
SAYS(UnhookWindowsHookEx, BOOL, TRUE, (HHOOK), "Unhook");
SAYS(CallNextHookEx, LRESULT, 0, (HHOOK, int, WPARAM, LPARAM), "CallNextHook");
REPLACE_IMPORT(SystemParametersInfoW) = [](UINT action, UINT, PVOID value, UINT profile) -> BOOL {
    DWORD &flags = static_cast<DWORD *>(value)[1];  // behind the size in all three records
    if (action % 2) return said(TRUE, "SystemParametersInfo", action, flags, profile);  // sets
    flags = 0xFF;
    return !fails("SystemParametersInfoW");
};
SAYS(SetThreadExecutionState, EXECUTION_STATE, EXECUTION_STATE(), (EXECUTION_STATE state),
     "SetThreadExecutionState", state);
SAYS(PostMessageW, BOOL, fakes.postResult, (HWND window, UINT message, WPARAM wParam, LPARAM), "PostMessage",
     window, message, wParam);
SAYS(PostQuitMessage, void, 0, (int code), "PostQuitMessage", code);
REPLACE_IMPORT(GetMessageW) = [](LPMSG message, HWND, UINT, UINT) -> BOOL {
    if (const auto play = std::exchange(fakes.play, nullptr)) play();
    if (fakes.messages.empty()) return FALSE;
    *message = fakes.messages.front();
    fakes.messages.erase(fakes.messages.begin());
    return TRUE;
};
REPLACE_IMPORT(CreateMutexW) = [](LPSECURITY_ATTRIBUTES, BOOL, LPCWSTR) -> HANDLE {
    SetLastError(fakes.lastError);
    return said(HANDLE(0x444), "CreateMutex");
};
SAYS(CoInitializeEx, HRESULT, S_OK, (LPVOID, DWORD), "CoInitialize");
SAYS(CoUninitialize, void, 0, (), "CoUninitialize");

REPLACE_IMPORT(GetModuleFileNameW) = [](HMODULE module, LPWSTR text, DWORD size) -> DWORD {
    if (fakes.programFile.empty()) return REAL(GetModuleFileNameW)(module, text, size);
    const size_t length = std::min(fakes.programFile.copy(text, size - 1), size_t(size));
    text[length] = 0;
    return fakes.programFile.size() < size ? DWORD(length) : size;
};
REPLACE_IMPORT(GetProcAddress) = [](HMODULE module, LPCSTR name) -> FARPROC {
    if (HIWORD(intptr_t(name)) && fakes.functions.contains(name))
        return reinterpret_cast<FARPROC>(fakes.functions[name]);
    return REAL(GetProcAddress)(module, name);
};
REPLACE_IMPORT(GetUserDefaultUILanguage) = []() -> LANGID { return fakes.uiLanguage; };
REPLACE_IMPORT(IsWindow) = [](HWND window) -> BOOL { return isFake(window) || REAL(IsWindow)(window); };
REPLACE_IMPORT(GetLocalTime) = [](LPSYSTEMTIME time) { *time = fakes.localTime; };
REPLACE_IMPORT(CoCreateInstance) = [](REFCLSID id, LPUNKNOWN, DWORD, REFIID, void **object) -> HRESULT {
    said(0, "CoCreateInstance");
    return fakes.makeObject ? fakes.makeObject(id, object) : REGDB_E_CLASSNOTREG;
};
SAYS(OpenClipboard, BOOL, !fails("OpenClipboard"), (HWND window), "OpenClipboard", window);
SAYS(EmptyClipboard, BOOL, TRUE, (), "EmptyClipboard");
SAYS(SetClipboardData, HANDLE, data, (UINT format, HANDLE data), "SetClipboardData", format);
SAYS(CloseClipboard, BOOL, TRUE, (), "CloseClipboard");
SAYS(EnableWindow, BOOL, FALSE, (HWND window, BOOL enable), "EnableWindow", window, enable);
SAYS(AllowSetForegroundWindow, BOOL, TRUE, (DWORD process), "AllowSetForegroundWindow", int(process));

REPLACE_IMPORT(PlaySoundW) = [](LPCWSTR bytes, HMODULE, DWORD flags) -> BOOL {
    recorded.sounds.push_back({bytes, flags});
    if (story) tell("PlaySound " + (bytes ? nameOf(bytes) : "nothing") + " " + text(flags));
    return fakes.playResult;
};

// Declared without dllimport, so called by its name.
#define WRAP(name, result, parameters)                                                                       \
    extern "C" result __real_##name parameters;                                                              \
    extern "C" result __wrap_##name parameters;                                                              \
    extern "C" result __wrap_##name parameters
WRAP(ImmAssociateContext, HIMC WINAPI, (HWND window, HIMC))
{
    return said(HIMC(), "ImmAssociateContext", window);
}
WRAP(SHGetKnownFolderPath, HRESULT WINAPI, (REFKNOWNFOLDERID id, DWORD flags, HANDLE token, PWSTR *path))
{
    if (fails("SHGetKnownFolderPath")) return E_FAIL;
    if (fakes.folder.empty()) return __real_SHGetKnownFolderPath(id, flags, token, path);
    const size_t bytes = (fakes.folder.native().size() + 1) * sizeof(wchar_t);
    *path = static_cast<PWSTR>(memcpy(CoTaskMemAlloc(bytes), fakes.folder.c_str(), bytes));
    return S_OK;
}

using WallTime = std::chrono::system_clock::time_point;
using SteadyTime = std::chrono::steady_clock::time_point;
WRAP(_ZNSt6chrono3_V212system_clock3nowEv, WallTime, ())
{
    return fakes.wallSeconds ? WallTime(std::chrono::seconds(fakes.wallSeconds))
                             : __real__ZNSt6chrono3_V212system_clock3nowEv();
}
WRAP(_ZNSt6chrono3_V212steady_clock3nowEv, SteadyTime, ())
{
    return SteadyTime(std::chrono::nanoseconds(fakes.steady));
}
