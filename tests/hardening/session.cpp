// The whole program on a desk, from runApp to its last release, under faults, storms and long days.
//   session.exe list                             the calls that can fail
//   session.exe fault NAME start|later SECONDS   one fails from the first moment or a third of the time on
//   session.exe random SEED SECONDS              every now and then another one fails or works again
//   session.exe storm SEED COUNT                 any messages in any order, monitors of any size
//   session.exe day HOURS                        play and pauses; the tick counter wraps in the middle
//   session.exe longest                          five minutes at 3840 by 2160: what takes longest to handle
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <fstream>
#include <random>
#include <sstream>
#include <thread>

#include "autodraw/outlines.h"
#include "autodraw/pen_paths.h"
#include "clearing/wipes.h"
#include "hint/panel.h"
#include "marks/key_reactions.h"
#include "mascot/fireworks.h"
#include "mascot/walker.h"
#include "menu/menu.h"
#include "shell/lockdown.h"
#include "shell/shutdown.h"
#include "shell/startup.h"
#include "sound/playback.h"
#include "sound/speech.h"
#include "support/objects.h"
#include <psapi.h>

namespace fs = std::filesystem;

static Desk *desk = nullptr;
static std::string mode, faultName;
static bool faultFromStart = false;
static int wayOut = 0;  // 0 to 2
static std::mt19937 rng;
static int64_t sessionBegin = 0, sessionEnd = 0, nextInput = 0;  // milliseconds
static int inputsGiven = 0;
static std::atomic<uint64_t> messages;

static int64_t now()
{
    return desk->steady / 1'000'000;
}
static void moveTo(int64_t ms)
{
    desk->moveClocks(DWORD(std::max<int64_t>(ms - now(), 0)));
}
static int pick(int lo, int hi)
{
    return std::uniform_int_distribution(lo, hi)(rng);
}

[[noreturn]] static void red(const std::string &what)
{
    std::printf("RED %jd ms before the end: %s; failing:", intmax_t(sessionEnd - now()), what.c_str());
    for (const std::string &name : programImports())
        if (const Import *import = findImport(name); import && import->failing)
            std::printf(" %s", name.c_str());
    std::puts("");
    std::fflush(stdout);
    TerminateProcess(GetCurrentProcess(), 1);  // under Wine a crashed program can end with 0
    std::abort();
}

// --- Faults. What only computes has no way to fail.
static std::vector<std::string> fallible()
{
    static const std::set<std::string> others = {"fclose", "fread", "fseek", "ftell", "wcsftime", "strtoll"};
    std::vector<std::string> names;
    for (const std::string &name : programImports())
        if (findImport(name) && name != "GetMessageW" && (std::isupper(name[0]) || others.contains(name)))
            names.push_back(name);
    return names;
}
static void letAllWork()
{
    for (const std::string &name : fallible())
        setFailing(importOf(name), false);
}

// In a random session every message changes what fails; about one import in twelve does.
static void switchFaults()
{
    if (mode == "fault")
        setFailing(importOf(faultName), faultFromStart || now() > (2 * sessionBegin + sessionEnd) / 3);
    if (mode != "random") return;
    static const std::vector<std::string> names = fallible();
    setFailing(importOf(names[size_t(pick(0, int(names.size()) - 1))]), pick(0, 11) == 0);
}

static void expectSoundState()
{
    const std::pair<const char *, bool> rows[] = {
        {"keyMashCount", keyMashCount >= 0 && keyMashCount <= 50},
        {"sameKeyCount", sameKeyCount >= 0 && sameKeyCount <= 6},
        {"spiralRadius", spiralRadius >= 70.0f && spiralRadius <= 420.0f},
        {"autoMode", autoMode >= 0 && autoMode <= 3 && autoStepsLeft >= 0 && autoStepsLeft <= 10000},
        {"pen", penPathIndex <= penPath.size() && penPath.size() < 20000 && outlineQueue.size() < 2000},
        {"wipe", wipeStyle >= 0 && wipeStyle <= 7 && wipeClipIndex >= 0 && wipeClipIndex <= 11},
        {"rings", keyVoiceNext < 6 && mashVoiceNext < 4 && noteClipCounter >= 0},
        {"show", sparks.size() <= maxSparks && rockets.size() <= 5},
        {"walker", leanStage >= 0 && leanStage <= 3 && walkerX > -1e5f && walkerX < 1e5f},
        {"menu", menuEntries.size() <= 3},
        {"timers", desk->timers.size() < 40 && desk->messages.size() < 1000},
        {"surfaces", shuttingDown || surfaces.empty() || surfaces.size() == desk->monitors.size()}};
    for (const auto &[what, sound] : rows)
        if (!sound) red(std::string(what) + " out of range");
}

// --- What comes in.
static LPARAM pointAt(float x, float y)
{
    return MAKELPARAM(WORD(int(x)), WORD(int(y)));
}
static HWND anyWindow()
{
    return surfaces.empty() ? nullptr : surfaces[size_t(pick(0, int(surfaces.size()) - 1))].hwnd;
}
static void turn(int key, bool down)
{
    down ? desk->hold(key) : desk->release(key);
}

// What a child and now and then a grown-up does: each once, then as it comes.
static MSG input()
{
    static constexpr WPARAM keys[] = {0,          0,         0,        VK_SPACE, VK_RETURN,    VK_LEFT,
                                      VK_NUMPAD8, VK_ESCAPE, VK_SHIFT, VK_F1,    VK_OEM_COMMA, VK_SNAPSHOT};
    static constexpr UINT others[] = {WM_KEYUP,       WM_LBUTTONDOWN, WM_LBUTTONDOWN, WM_MOUSEMOVE,
                                      WM_MOUSEMOVE,   WM_MOUSEMOVE,   WM_LBUTTONUP,   WM_RBUTTONDOWN,
                                      WM_RBUTTONUP,   WM_XBUTTONDOWN, WM_TOUCH,       WM_APPCOMMAND,
                                      WM_CONTEXTMENU, WM_SYSKEYDOWN,  WM_ACTIVATEAPP, WM_ACTIVATE};
    const bool first = inputsGiven < 28;
    const int next = first ? inputsGiven++ : pick(0, 27);
    const bool key = next < 12;
    const float x = float(pick(0, 700)), y = float(pick(0, 500));
    MSG made = {anyWindow(), key ? WM_KEYDOWN : others[next - 12], key ? keys[next] : 1, pointAt(x, y), 0,
                {}};
    const auto click = [&made](HWND window, float toX, float toY) {
        desk->keysDown.clear();  // both buttons would be something else
        made = {window, WM_LBUTTONDOWN, 0, pointAt(toX, toY), 0, {}};
    };
    if (key && made.wParam == 0) made.wParam = WPARAM(pick('0', 'Z'));
    if (key) made.lParam = pick(0, 3) ? 0 : 1 << 30;
    if (made.message == WM_KEYUP) made.wParam = 'A';
    if (made.message == WM_SYSKEYDOWN) made.wParam = VK_F1, made.lParam = 1 << 29;
    if (made.message == WM_CONTEXTMENU) made.lParam = -1;
    if (!first && menuOpen && !menuEntries.empty() && pick(0, 3) == 0)
        click(primaryWindow(), float(menuEntries[0].rect.left + 9), float(menuEntries[0].rect.top + 9));
    if (made.message == WM_LBUTTONDOWN && hintVisible && hintFloatWindow)
        click(hintFloatWindow, hintCheckRect.X + 5 - float(hintBox.left),
              hintCheckRect.Y + 5 - float(hintBox.top));
    if (!first && walkerActive && pick(0, 9) == 0)
        click(primaryWindow(), walkerX, walkerY - walkerSize / 2.0f);
    if (first && !surfaces.empty()) {  // a faded penguin, which no walk shows yet
        FrameRecord faded;
        faded.alpha = 0.5f;
        GraphicsScope scope(surfaces[0]);
        drawFrame(scope, faded);
    }
    const bool right = made.message == WM_RBUTTONDOWN || made.message == WM_RBUTTONUP;
    if (made.message >= WM_LBUTTONDOWN && made.message <= WM_RBUTTONUP)
        turn(right ? VK_RBUTTON : VK_LBUTTON,
             made.message == WM_LBUTTONDOWN || made.message == WM_RBUTTONDOWN);
    desk->touches.assign(size_t(pick(0, 3)), {pick(-9999, 99999), pick(-9999, 99999), nullptr, 0,
                                              DWORD(pick(0, 7)), 0, 0, 0, 0, 0});
    if (made.message == WM_TOUCH && pick(0, 9)) made.wParam = desk->touches.size();
    static constexpr DWORD hooked[] = {VK_SNAPSHOT, VK_LWIN, VK_TAB, 'A'};
    const KBDLLHOOKSTRUCT event = {hooked[pick(0, 3)], 0, 0, 0, 0};
    lowLevelKeyboardProc(HC_ACTION, pick(0, 1) ? WM_KEYDOWN : WM_KEYUP, LPARAM(&event));
    return made;
}

// Any message with anything in it, but none that ends the program or its windows.
static MSG anything()
{
    static constexpr UINT handled[] = {
        WM_CREATE,      WM_DESTROY,      WM_ACTIVATE,    WM_SETFOCUS,    WM_PAINT,       WM_QUERYENDSESSION,
        WM_ERASEBKGND,  WM_ENDSESSION,   WM_ACTIVATEAPP, WM_CONTEXTMENU, WM_KEYDOWN,     WM_KEYDOWN,
        WM_KEYDOWN,     WM_KEYUP,        WM_SYSKEYUP,    WM_SYSKEYDOWN,  WM_TIMER,       WM_TIMER,
        WM_TIMER,       WM_TIMER,        WM_MOUSEMOVE,   WM_MOUSEMOVE,   WM_LBUTTONDOWN, WM_LBUTTONUP,
        WM_RBUTTONDOWN, WM_RBUTTONUP,    WM_XBUTTONDOWN, WM_TOUCH,       WM_APPCOMMAND,  WM_APP + 1,
        WM_MOUSEWHEEL,  WM_LBUTTONDBLCLK};
    MSG made = {anyWindow(), handled[pick(0, 31)], WPARAM(pick(0, 255)), LPARAM(rng()), 0, {}};
    if (pick(0, 9) == 0) made.wParam = WPARAM(rng());
    if (made.message == WM_TOUCH) made.wParam &= 0xFFFF;  // it is the low word
    if (pick(0, 1) == 0) made.lParam = pointAt(float(pick(-9, 1700)), float(pick(-9, 1700)));
    if (made.message == WM_TIMER) made.wParam %= 16;
    if (made.message == WM_TIMER && made.wParam == 8) made.wParam = 12;
    if (made.message == WM_ENDSESSION) made.wParam = 0;
    if (made.wParam == VK_F4 || (made.wParam == VK_F1 && pick(0, 19))) made.wParam = VK_F2;
    for (const int key : {VK_LBUTTON, VK_RBUTTON})
        if (pick(0, 7) == 0) turn(key, !desk->keysDown.contains(key));
    return made;
}

static MSG nextOfScript()
{
    if (mode == "storm") {
        moveTo(now() + pick(0, 30));
        // Each way in once at first: what the system makes for it at the first time, it keeps.
        return inputsGiven < 28 ? input() : anything();
    }
    const auto first = std::min_element(desk->timers.begin(), desk->timers.end(),
                                        [](auto &a, auto &b) { return a.second.due < b.second.due; });
    if (first == desk->timers.end() || nextInput <= first->second.due / 1'000'000) {
        moveTo(nextInput);
        const bool calm = mode == "day" && inputsGiven > 27;
        nextInput += pick(0, 39) == 0 ? pick(8000, 40000) : calm ? pick(20, 8000) : pick(20, 400);
        return input();
    }
    moveTo(first->second.due / 1'000'000);
    first->second.due = desk->steady + int64_t(first->second.period) * 1'000'000;
    return {first->first.first, WM_TIMER, first->first.second, 0, 0, {}};
}

// A sample of what the canvases show.
static std::vector<MarkColor> picture()
{
    std::vector<MarkColor> colors;
    const RECT all = desk->bounds();
    for (int i = 0; i < 2500; ++i)
        colors.push_back(desk->pixel(all.left + (all.right - all.left) * (i % 50) / 50,
                                     all.top + (all.bottom - all.top) * (i / 50) / 50));
    return colors;
}

// The last messages: all works again, so that five Spaces must leave something; then one of the ways out,
// with the fault.
static BOOL lastMessage(LPMSG message)
{
    static std::vector<MarkColor> before;
    static int step;
    if (now() >= sessionEnd + 100'000) return FALSE;
    if (now() < sessionEnd + 10'000) {
        step = 0;
        moveTo(sessionEnd + 10'000);
        letAllWork();
        before = picture();
    }
    moveTo(now() + 1000);
    *message = {primaryWindow(), WM_KEYDOWN, VK_SPACE, 0, 0, {}};
    if (++step <= 5) return TRUE;
    const MonitorSurface *const surface = surfaces.empty() ? nullptr : &surfaces[0];
    const bool canPlay = surface && surface->hwnd && surface->width > 50 && surface->canvasDC &&
                         GetCurrentObject(surface->canvasDC, OBJ_BITMAP) == surface->canvasBitmap;
    if (canPlay && before == picture()) red("nothing comes of five Spaces");
    if (mode == "fault") setFailing(importOf(faultName), true);
    moveTo(sessionEnd + 100'000);
    if (wayOut == 0) return FALSE;
    if (wayOut == 1) SendMessageW(primaryWindow(), WM_QUERYENDSESSION, 0, 0);
    *message = {primaryWindow(), WM_ENDSESSION, 1, 0, 0, {}};
    if (wayOut == 2) *message = {primaryWindow(), WM_SYSKEYDOWN, VK_F4, 1 << 29, 0, {}};
    return TRUE;
}

static void watch(const MSG &);  // what the mode measures, before a message is handed out

static BOOL nextMessage(LPMSG message)
{
    static int inRow = 0;
    ++messages;
    expectSoundState();
    if (now() < sessionEnd) {
        switchFaults();
        if (mode == "random" && pick(0, 99) == 0) return -1;
    }
    *message = {};
    // What was posted, and repaints, which never stop while BeginPaint fails.
    if (!desk->messages.empty()) {
        *message = desk->messages.front();
        desk->messages.erase(desk->messages.begin());
    } else if (inRow++ < 3) {
        for (size_t i = 0; i < desk->windows.size(); ++i)
            if (const DeskWindow &window = desk->windows[i]; window.visible && window.invalid.right > 0)
                *message = {windowHandle(int(i)), WM_PAINT, 0, 0, 0, {}};
    }
    if (!message->message) {
        inRow = 0;
        if (now() >= sessionEnd) return lastMessage(message);
        *message = nextOfScript();
    }
    watch(*message);
    return TRUE;
}

// --- The save dialog hands out messages as the program's own loop does, and a voice can fail.
static int64_t answer()
{
    return mode == "random" && pick(0, 9) == 0 ? E_FAIL : S_OK;
}
static Object item = {objectMethods, "item", 0, [](int place, void **, void **second, void **, void **) {
                          const std::wstring path = (desk->folder() / "given.png").wstring();
                          const size_t bytes = 2 * path.size() + 2;
                          if (place == 5) *second = std::memcpy(CoTaskMemAlloc(bytes), path.c_str(), bytes);
                          return int64_t(S_OK);
                      }};
static Object tokens = {objectMethods, "tokens", 0,
                        [](int place, void **first, void **second, void **, void **) {
                            if (place == 8) *reinterpret_cast<ULONG *>(first) = 1;  // GetCount
                            return place == 3 ? give(item, second) : answer();      // Next
                        }};
static Object voice = {objectMethods, "voice", 0, [](int place, void **, void **, void **third, void **) {
                           return place == 18 && third ? give(tokens, third) : answer();  // EnumTokens
                       }};
static int dialogs = 0;
static Object dialog = {
    objectMethods, "dialog", 0, [](int place, void **first, void **, void **, void **) {
        if (place == 20) return give(item, first);  // GetResult
        if (place != 3) return answer();            // Show
        ++dialogs;
        MSG message = {};
        for (int i = 0; i < 20 && dialogs < 3 && mode != "longest" && now() < sessionEnd; ++i)
            if (nextMessage(&message) > 0)
                SendMessageW(message.hwnd, message.message, message.wParam, message.lParam);
        --dialogs;
        return answer();
    }};

// --- Measures.
struct Load {
    int gdi = 0, windows = 0, handles = 0, objects = 0;  // objects: of GDI and GDI+, by their makers
    size_t heap = 0, process = 0;                        // KiB: in use of the heaps, and what the process has
};

static Load load()
{
    Load found;
    // Wine answers 0 to the questions for counts. But there is a table of the GDI objects, and a new handle
    // is the lowest free one.
    struct GdiEntry {
        uint64_t object;
        uint32_t owner;
        uint16_t unique;
        uint8_t type, flags;
        uint64_t user;
    };
    const auto peb = reinterpret_cast<uint8_t *(*)()>(
        reinterpret_cast<void *>(GetProcAddress(GetModuleHandleW(L"ntdll"), "RtlGetCurrentPeb")));
    const GdiEntry *table = *reinterpret_cast<GdiEntry **>(peb() + 0xF8);
    found.gdi = int(std::count_if(table, table + 0x4000, [](const GdiEntry &entry) { return entry.type; }));
    for (const DeskWindow &window : desk->windows)
        found.windows += window.exists;
    const HANDLE lowest = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    found.handles = int(uintptr_t(lowest) / 4);
    CloseHandle(lowest);
    std::istringstream made(leaks());
    for (std::string word; made >> word;)
        found.objects += std::atoi(word.c_str());
    HANDLE heaps[64];
    const DWORD heapCount = std::min<DWORD>(GetProcessHeaps(64, heaps), 64);
    for (DWORD i = 0; i < heapCount; ++i) {
        PROCESS_HEAP_ENTRY entry = {};
        while (HeapWalk(heaps[i], &entry))
            if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) found.heap += entry.cbData;
    }
    PROCESS_MEMORY_COUNTERS memory = {};
    GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory);
    found.heap /= 1024;
    found.process = memory.WorkingSetSize / 1024;
    return found;
}

static void show(const std::string &when, const Load &at)
{
    std::printf(
        "%s: %ju messages; GDI %d, windows %d, handles %d, objects %d, heap %zu KiB, process %zu KiB\n",
        when.c_str(), uintmax_t(messages), at.gdi, at.windows, at.handles, at.objects, at.heap, at.process);
    std::fflush(stdout);
}

// What leaks stays: only a growth that that many looks in a row find counts.
static void expectFlat(const Load &first, const Load &at, int looks)
{
    static int grown;
    const bool flat = at.gdi <= first.gdi + 4 && at.windows <= first.windows + 4 &&
                      at.handles <= first.handles + 4 && at.objects <= first.objects + 4 &&
                      at.heap <= first.heap + 1024 && at.process <= first.process + 16 * 1024;
    grown = flat ? 0 : grown + 1;
    if (!flat) show("grown since " + std::to_string(first.heap) + " KiB", at);
    if (grown == looks) red("it grows: " + leaks());
}

static std::map<std::string, std::pair<double, double>> longest;  // of each kind: ms and minute

static void watch(const MSG &message)
{
    static Load first;
    static int64_t nextLook;
    if (mode == "day" && now() >= nextLook) {
        const int64_t minutes = (now() - sessionBegin) / 60'000;
        const Load at = load();
        if (minutes <= 1) first = at;
        if (minutes >= 1) expectFlat(first, at, 3);
        if (minutes % 60 == 1) show("minute " + std::to_string(minutes), at);
        nextLook = sessionBegin + (minutes + 1) * 60'000;
    }
    if (mode != "longest") return;
    static std::string handled = "start-up";
    LARGE_INTEGER count = {}, frequency = {};
    SYSTEM(QueryPerformanceCounter)(&count);
    QueryPerformanceFrequency(&frequency);
    const double ms = 1000.0 * double(count.QuadPart) / double(frequency.QuadPart);
    static double begin = ms;
    std::pair<double, double> &worst = longest[handled];
    worst = std::max(worst, {ms - begin, double(now() - sessionBegin) / 60e3});
    char text[64];
    std::snprintf(text, sizeof text, "message %04X, wParam %jX", message.message, uintmax_t(message.wParam));
    handled = text;
    begin = ms;
}

static void run(int64_t length)
{
    sessionBegin = now();
    sessionEnd = now() + length;
    nextInput = now() + 500;
    inputsGiven = 0;
    shuttingDown = false;
    desk->timers.clear();
    desk->keysDown.clear();
    desk->messages.clear();
    desk->lastError = ERROR_ALREADY_EXISTS;
    if (runApp(GetModuleHandleW(nullptr)) != 0 && faultName != "CreateMutexW")
        red("a second start does something");
    desk->lastError = 0;
    desk->foreground = windowHandle(int(desk->windows.size()));  // the next window
    const int code = runApp(GetModuleHandleW(nullptr));
    if (now() < sessionEnd && !(code == 1 && faultName == "EnumDisplayMonitors")) red("it left");
    // Without a monitor the process ends at once, and the system undoes the rest.
    if (code == 0 && (hookTargetWindow || keyboardHook || speechVoice)) red("left behind");
    letAllWork();
    stopStrokeLoop();  // the next run makes new clips
    moveTo(now() + 60'000);
}

static void layOut()
{
    const fs::path folder = desk->folder(), roaming = folder / "Roaming" / "norvanta";
    wchar_t file[260] = {};
    SYSTEM(GetModuleFileNameW)(nullptr, file, 260);
    fs::copy(fs::path(file).parent_path().parent_path() / "assets", folder / "assets",
             fs::copy_options::recursive);
    fs::create_directories(folder / "Fonts");
    fs::copy_file("C:/windows/Fonts/tahoma.ttf", folder / "Fonts" / "MPLUSRounded1c-Regular.ttf");
    std::ofstream(folder / "Fonts" / "MPLUSRounded1c-Black.ttf") << "no font";
    std::ofstream(folder / "given.png") << "to be written over";
    // An older folder to carry over, unless new settings are to fail, and more pictures than are kept.
    fs::create_directories(roaming / "Zubworks" / "Zubbly" / "SavedPictures");
    for (int i = 0; i < 12; ++i)
        std::ofstream(roaming / "Zubworks" / "Zubbly" / "SavedPictures" / ("auto-" + std::to_string(i)));
    if (faultName == "CreateFileW" || faultName == "WriteFile") return;
    fs::create_directories(roaming / "Zubbly");
    std::ofstream(roaming / "Zubbly" / "config.ini") << "[Zubbly]\nAutoSaveIntervalSeconds=60\n";
}

static LONG WINAPI endRed(EXCEPTION_POINTERS *crash)
{
    const auto *stack = reinterpret_cast<const uint64_t *>(crash->ContextRecord->Rsp);
    for (int i = 0; i < 400; ++i)  // the calls: what points into our code
        if (stack[i] > 0x140001000 && stack[i] < 0x140200000) std::printf("%jx ", uintmax_t(stack[i]));
    char text[64];
    std::snprintf(text, sizeof text, "a crash at %p", crash->ExceptionRecord->ExceptionAddress);
    red(text);
}

// However slow the machine is: only no progress at all is a hang.
static void expectProgress()
{
    for (uint64_t before = ~uint64_t(0);; before = messages) {
        Sleep(180'000);
        if (messages == before) red("no message in three minutes");
    }
}

int main(int argc, char **argv)
{
    ULONG room = 65536;  // for the filter, where there is no stack left
    SetThreadStackGuarantee(&room);
    SetUnhandledExceptionFilter(endRed);
    GdiplusStartupInput start;  // so that no run of several takes GDI+ away from the objects that stay
    ULONG_PTR token = 0;
    GdiplusStartup(&token, &start, nullptr);
    keepProgramState();
    Desk here({});
    desk = &here;
    here.telling = false;
    tellCalls(false);
    reportMisuse = [](const std::string &what) { red(what); };
    const std::vector<std::string> words(argv + 1, argv + argc);
    if (words.empty()) return 2;
    mode = words[0];
    const int number = argc > 2 ? std::atoi(argv[2]) : 0;
    const int64_t length = argc > 3 ? std::atoll(argv[argc - 1]) : 0;
    rng.seed(unsigned(number) + 1);
    markRng.seed(unsigned(number));
    if (mode == "fault") faultName = words[1], faultFromStart = words[2] == "start";
    here.monitors = {{0, 0, 400, 300}, {-200, 50, 0, 250}};
    if (mode == "longest") here.monitors = {{0, 0, 3840, 2160}};
    here.environment[L"APPDATA"] = (here.folder() / "Roaming").wstring();
    here.programFile = (here.folder() / "Zubbly.exe").wstring();
    here.makeObject = [](REFCLSID id, void **out) {
        if (id == CLSID_FileSaveDialog) return HRESULT(give(dialog, out));
        return id == CLSID_SpVoice || id == CLSID_SpObjectTokenCategory ? HRESULT(give(voice, out)) : E_FAIL;
    };
    layOut();
    REPLACE(GetMessageW, nextMessage);
    std::thread(expectProgress).detach();
    if (mode == "list") {
        for (const std::string &name : fallible())
            std::puts(name.c_str());
    } else if (mode == "fault") {
        wayOut = faultFromStart ? 2 : 1;
        setFailing(importOf(faultName), faultFromStart);
        run(length * 1000);
        std::printf("%s %s %ju\n", argv[2], argv[3], uintmax_t(importOf(faultName).failed));
    } else if (mode == "random") {
        wayOut = number % 3;
        run(length * 1000);
    } else if (mode == "storm") {
        Load first;
        for (int round = 0; messages < uint64_t(length); ++round) {
            // The largest ones first: what only grows has its size then.
            const auto size = [round] { return round == 0 ? 1500 : pick(1, pick(1, 1500)); };
            here.monitors = {{0, 0, size(), size()}};
            if (round == 0 || pick(0, 1)) here.monitors.push_back({-size(), 10, 0, 10 + size()});
            wayOut = round % 3;
            run(300'000);
            const Load at = load();
            show("round " + std::to_string(round), at);
            if (round < 3) first = at;
            expectFlat(first, at, 1);
        }
    } else if (mode == "day") {
        const int64_t day = int64_t(std::atof(argv[2]) * 3'600'000);
        here.tick = DWORD(-day / 2);
        run(day);
        show("the end", load());
    } else if (mode == "longest") {
        run(300'000);
        longest.erase("start-up");
        std::multimap<double, std::string> byTime;
        for (const auto &[what, worst] : longest)
            byTime.insert({-worst.first, what + ", minute " + std::to_string(worst.second)});
        for (auto row = byTime.begin(); row != byTime.end() && std::distance(byTime.begin(), row) < 5; ++row)
            std::printf("%7.1f ms  %s\n", -row->first, row->second.c_str());
    }
    std::error_code ignored;
    fs::remove_all(here.folder(), ignored);
    std::fflush(stdout);
    ExitProcess(0);
}
