// Creates everything before the first window shows, then runs the one message loop. Thus no input can find a
// clip missing, and the child sees nothing until all is ready.
#include "shell/startup.h"

#include <algorithm>

#include "hint/count_file.h"
#include "hint/idle.h"
#include "hint/panel.h"
#include "mascot/walker.h"
#include "settings/folders.h"
#include "settings/language.h"
#include "settings/options.h"
#include "shell/allowance.h"
#include "shell/base/surfaces.h"
#include "shell/lockdown.h"
#include "shell/shutdown.h"
#include "shell/volume.h"
#include "shell/window_order.h"
#include "shell/window_proc.h"
#include "sound/bank_a.h"
#include "sound/bank_b.h"
#include "sound/playback.h"
#include "sound/speech.h"

// A second instance exits silently. The mutex is released with the process.
static bool isFirstInstance()
{
    HANDLE lock = CreateMutexW(nullptr, TRUE, L"Local\\Zubbly_SingleInstance_v1");
    if (!lock || GetLastError() != ERROR_ALREADY_EXISTS) return true;
    CloseHandle(lock);
    return false;
}

static void takeOptions(const AppOptions &options)
{
    soundEnabled = options.soundEnabled;
    blockShortcuts = options.blockSystemShortcuts;
    const int percent = options.volumeClampPercent;
    volumeClamp = percent >= 1 && percent <= 100 ? float(percent) / 100.0f : -1.0f;
}

static void startGdiplus()
{
    GdiplusStartupInput input;
    GdiplusStartup(&gdiplusToken, &input, nullptr);
}

static void registerWindowClass()
{
    WNDCLASSEXW windowClass = {};
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = windowProc;
    windowClass.hInstance = programInstance;
    windowClass.hIcon = LoadIconW(programInstance, MAKEINTRESOURCEW(101));
    if (!windowClass.hIcon) windowClass.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
    windowClass.hIconSm = windowClass.hIcon;
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = HBRUSH(GetStockObject(BLACK_BRUSH));
    windowClass.lpszClassName = L"ZubblyWindow";
    RegisterClassExW(&windowClass);
}

// Milliseconds. A parent who means "never" may write more seconds than a timer can wait.
static UINT saveInterval(const AppOptions &options)
{
    return UINT(std::min(int64_t(options.autoSaveIntervalSeconds) * 1000, int64_t(USER_TIMER_MAXIMUM)));
}

static void takeFocus()
{
    if (!primaryWindow()) return;  // SetFocus(nullptr) would take the focus from our other windows
    SetForegroundWindow(primaryWindow());
    SetActiveWindow(primaryWindow());
    SetFocus(primaryWindow());
}

// The panel shows at each of the first three launches, and later whenever nothing is touched.
static void armExitHint(const AppOptions &options)
{
    const MonitorSurface *surface = launchSurface();
    if (!surface) return;
    exitHintEnabled = options.showExitHint;
    if (!exitHintEnabled) return;
    const int count = readHintCount();
    if (count < 3) {
        writeHintCount(count + 1);
        showHintPanel(surface->hwnd, surface->width, surface->height);
    }
    armIdleHint(*surface);
}

static void pumpMessages()
{
    MSG message = {};
    while (GetMessageW(&message, nullptr, 0, 0)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

// False if there is no monitor. Nothing is undone then, because the process ends anyway.
static bool openProgram(const AppOptions &options)
{
    buildSoundBankA();
    buildSoundBankB();
    createVoice();
    startGdiplus();
    registerWindowClass();
    EnumDisplayMonitors(nullptr, nullptr, createSurface, 0);
    if (surfaces.empty()) return false;
    initMascot();
    newBackground(true);
    canvasDirty = false;  // the first background is not worth saving
    refreshTopmost();
    takeFocus();
    confineCursor();
    startPrimaryTimer(1, 1500);
    startPrimaryTimer(10, saveInterval(options));
    takeLock();
    armExitHint(options);
    if (soundEnabled) playStartClip();
    clampMasterVolume();
    return true;
}

int runApp(HINSTANCE instance)
{
    if (!isFirstInstance()) return 0;
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    const HRESULT comResult = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    programInstance = instance;
    AppOptions options;
    loadOptions(options);
    takeOptions(options);
    chooseLanguage(options.language);
    ensureDataDirectories();
    if (allowLaunch()) {
        if (!openProgram(options)) return 1;
        pumpMessages();
        finishRun();
    }
    if (comResult == S_OK) CoUninitialize();
    return 0;
}
