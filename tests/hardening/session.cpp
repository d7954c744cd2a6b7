// The whole program on a desk, from runApp to its last release, under faults, storms and long days.
//   session.exe list                             the calls that can fail
//   session.exe fault NAME start|later SECONDS   one fails from the first moment or a third of the time on
//   session.exe random SEED SECONDS              every now and then another one fails or works again
//   session.exe storm SEED COUNT                 any messages in any order, monitors of any size
//   session.exe day HOURS                        play and pauses; the tick counter wraps in the middle
//   session.exe longest                          five minutes at 3840 by 2160: what takes longest to handle
#include <atomic>
#include <cstdio>
#include <fstream>
#include <random>
#include <thread>

#include "autodraw/outlines.h"
#include "autodraw/pen_paths.h"
#include "marks/key_reactions.h"
#include "mascot/fireworks.h"
#include "shell/child.h"
#include "shell/lockdown.h"
#include "shell/shutdown.h"
#include "shell/startup.h"
#include "sound/playback.h"
#include "sound/speech.h"
#include <psapi.h>

namespace fs = std::filesystem;

static Tablet *desk = nullptr;
static std::string mode, faultName, deed;
static bool faultFromStart = false, played = false;
static int wayOut = 0;  // 0 to 2
static std::mt19937 rng;
static int64_t begin = 0, end = 0;  // of the run, milliseconds
static std::atomic<uint64_t> steps;

static int64_t now()
{
    return desk->steady / 1'000'000;
}
static int pick(int lo, int hi)
{
    return std::uniform_int_distribution(lo, hi)(rng);
}

[[noreturn]] static void red(const std::string &what)
{
    std::printf("RED %jd ms after the start, at %s: %s; failing:", intmax_t(now() - begin), deed.c_str(),
                what.c_str());
    for (const std::string &name : programImports())
        if (const Import *import = findImport(name); import && import->failing)
            std::printf(" %s", name.c_str());
    std::puts("");
    std::fflush(stdout);
    TerminateProcess(GetCurrentProcess(), 1);  // under Wine a crashed program can end with 0
    std::abort();
}

// What only computes has no way to fail.
static const std::vector<std::string> &fallible()
{
    static std::vector<std::string> names;
    const std::set<std::string> others = {"fclose", "fread", "fseek", "ftell", "wcsftime", "strtoll"};
    if (names.empty())
        for (const std::string &name : programImports())
            if (findImport(name) && name != "GetMessageW" && (std::isupper(name[0]) || others.contains(name)))
                names.push_back(name);
    return names;
}
static void letAllWork()
{
    for (const std::string &name : fallible())
        setFailing(importOf(name), false);
    Tablet::refusal = S_OK;
}

// In a random session about one import in twelve fails, and what fails changes all the time.
static void switchFaults()
{
    if (mode == "fault") setFailing(importOf(faultName), faultFromStart || now() > (2 * begin + end) / 3);
    if (mode != "random") return;
    setFailing(importOf(fallible()[size_t(pick(0, int(fallible().size()) - 1))]), pick(0, 11) == 0);
    Tablet::refusal = pick(0, 9) ? S_OK : E_FAIL;
}

static void expectSoundState()
{
    const bool sound = keyMashCount >= 0 && keyMashCount <= 50 && sameKeyCount >= 0 && sameKeyCount <= 6 &&
                       penPathIndex <= penPath.size() && penPath.size() < 20000 &&
                       outlineQueue.size() < 2000 && sparks.size() <= maxSparks && rockets.size() <= 5 &&
                       desk->timers.size() < 40 && desk->messages.size() < 1000 && !shuttingDown &&
                       surfaces.size() == desk->monitors.size();
    if (!sound) red("its state is out of range");
}

// --- What comes in. What a child and now and then a grown-up does: each once, then as it comes.
static void childsPlay(size_t step)
{
    static const std::vector<std::string> words = wordsOf(
        "checkbox Q mash Tab tap Space 300,200 left 20,90 leftup Enter Left Numpad6 PrintScreen right 200,90 "
        "rightup Escape Shift finger slide lift side Alt+F1 contextmenu command other away back doodle Q*900 "
        "activate Alt+Tab Escape -90,90 5 Extended+PrintScreen");
    deed = words[step < words.size() ? step : size_t(pick(0, int(words.size()) - 1))];
    if (step == 5 && !surfaces.empty()) {  // a faded penguin, which no walk shows yet
        FrameRecord faded;
        faded.alpha = 0.5f;
        GraphicsScope scope(surfaces[0]);
        drawFrame(scope, faded);
    }
    if (walkerActive && pick(0, 3) == 0) {
        moveTo(int(walkerX), int(walkerY - walkerSize / 2.0f));
        deed = "tap";
    }
    actWord(deed);
}

// Any message with anything in it, but none that ends the program or its windows.
static void anyMessage()
{
    static constexpr UINT handled[] = {
        WM_CREATE,      WM_DESTROY,      WM_ACTIVATE,    WM_SETFOCUS,    WM_PAINT,      WM_QUERYENDSESSION,
        WM_ERASEBKGND,  WM_ENDSESSION,   WM_ACTIVATEAPP, WM_CONTEXTMENU, WM_KEYDOWN,    WM_KEYDOWN,
        WM_KEYDOWN,     WM_KEYUP,        WM_SYSKEYUP,    WM_SYSKEYDOWN,  WM_TIMER,      WM_TIMER,
        WM_TIMER,       WM_TIMER,        WM_MOUSEMOVE,   WM_MOUSEMOVE,   WM_LBUTTONUP,  WM_LBUTTONDOWN,
        WM_RBUTTONDOWN, WM_RBUTTONUP,    WM_XBUTTONDOWN, WM_TOUCH,       WM_APPCOMMAND, WM_APP + 1,
        WM_MOUSEWHEEL,  WM_LBUTTONDBLCLK};
    const UINT message = handled[pick(0, 31)];
    WPARAM wParam = WPARAM(pick(0, 9) ? pick(0, 255) : int(rng()));
    if (message == WM_TOUCH) wParam &= 0xFFFF;                    // the count is its low word
    if (message == WM_TIMER && (wParam %= 16) == 8) wParam = 12;  // 8 ends the program
    if (message == WM_ENDSESSION) wParam = 0;
    if (wParam == VK_F4 || (wParam == VK_F1 && pick(0, 19))) wParam = VK_F2;
    for (const int key : {VK_LBUTTON, VK_RBUTTON})
        if (pick(0, 7) == 0) desk->keysDown.contains(key) ? desk->release(key) : desk->hold(key);
    const auto place = [] { return pick(-9999, 99999); };
    desk->touches.assign(wParam % 256, {place(), place(), nullptr, 0, DWORD(pick(0, 7)), 0, 0, 0, 0, 0});
    deed = "message " + std::to_string(message);
    desk->send(surfaces[size_t(pick(0, int(surfaces.size()) - 1))].hwnd, message, wParam,
               pick(0, 1) ? LPARAM(rng()) : MAKELPARAM(pick(-9, 1700), pick(-9, 1700)));
    desk->moveClocks(DWORD(pick(0, 30)));
}

// --- Measures. Windows, handles, objects of GDI and GDI+, and KiB in use of the heaps.
using Load = std::array<size_t, 4>;

static Load load()
{
    size_t objects = 0, bytes = 0;
    std::istringstream made(leaks());
    for (std::string word; made >> word;)
        objects += size_t(std::atoi(word.c_str()));
    const HANDLE lowest =
        CreateEventW(nullptr, FALSE, FALSE, nullptr);  // a new handle is the lowest free one
    CloseHandle(lowest);
    HANDLE heaps[64];
    for (DWORD i = std::min<DWORD>(GetProcessHeaps(64, heaps), 64); i-- > 0;) {
        PROCESS_HEAP_ENTRY entry = {};
        while (HeapWalk(heaps[i], &entry))
            if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) bytes += entry.cbData;
    }
    const auto exists = [](const DeskWindow &window) { return window.exists; };
    return {size_t(std::count_if(desk->windows.begin(), desk->windows.end(), exists)), uintptr_t(lowest) / 4,
            objects, bytes / 1024};
}

// What leaks stays: only a growth that that many looks in a row find counts.
static void expectFlat(const std::string &when, const Load &first, int looks)
{
    static int grown;
    const Load at = load();
    const bool flat =
        at[0] <= first[0] + 4 && at[1] <= first[1] + 4 && at[2] <= first[2] + 4 && at[3] <= first[3] + 1024;
    grown = flat ? 0 : grown + 1;
    if (!flat || !when.empty())
        std::printf("%s: %ju steps; windows %zu, handles %zu, objects %zu, heap %zu KiB%s\n", when.c_str(),
                    uintmax_t(steps), at[0], at[1], at[2], at[3], flat ? "" : ", which has grown");
    std::fflush(stdout);
    if (grown == looks) red("it grows: " + leaks());
}

static double milliseconds()
{
    LARGE_INTEGER count = {}, frequency = {};
    SYSTEM(QueryPerformanceCounter)(&count);
    QueryPerformanceFrequency(&frequency);
    return 1000.0 * double(count.QuadPart) / double(frequency.QuadPart);
}

static std::map<std::string, double> longest;  // milliseconds for each deed

// --- A run of the program.
static void timed(const std::function<void()> &act)
{
    const double before = milliseconds();
    act();
    longest[deed] = std::max(longest[deed], milliseconds() - before);
    expectSoundState();
}

static void step(size_t number)
{
    static Load first;
    static int64_t minutes;
    ++steps;
    timed([&] { mode == "storm" && number > 60 ? anyMessage() : childsPlay(number); });
    int pause = mode == "storm" ? 0 : pick(0, 39) ? pick(20, 400) : 20'000;
    if (mode == "day" && number > 60) pause *= 20;
    for (deed = "timers"; pause > 0 && now() < end; pause -= 16) {
        switchFaults();
        timed([] { desk->wait(16); });
    }
    if (mode != "day" || (now() - begin) / 60'000 == minutes) return;
    minutes = (now() - begin) / 60'000;
    if (minutes == 1) first = load();
    expectFlat(minutes % 60 == 1 ? "minute " + std::to_string(minutes) : "", first, 3);
}

// In the end all works again, so that five Spaces must leave something; then one of the ways out, with the
// fault.
static void play()
{
    played = true;
    const uint64_t last = mode == "storm" ? steps + 4000 : ~0ull;
    for (size_t number = 0; now() < end && steps < last; ++number)
        step(number);
    letAllWork();
    desk->wait(10'000);
    canvasDirty = false;
    act("Space 999 Space 999 Space 999 Space 999 Space 999");
    if (!canvasDirty && desk->find(primaryWindow())) red("nothing comes of five Spaces");
    if (mode == "fault") setFailing(importOf(faultName), true);
    if (wayOut > 0) act(wayOut == 1 ? "mayend ends" : "Alt+F4");
    desk->messages.push_back({primaryWindow(), WM_KEYUP, 'A', 0, 0, {}});  // for the program's own loop
}

static void run(int64_t length)
{
    begin = now();
    end = begin + length;
    shuttingDown = played = false;
    desk->timers.clear();
    desk->keysDown.clear();
    desk->messages.clear();
    desk->lastError = ERROR_ALREADY_EXISTS;
    if (runApp(GetModuleHandleW(nullptr)) != 0 || (!surfaces.empty() && faultName != "CreateMutexW"))
        red("a second start does something");
    desk->lastError = 0;
    desk->play = play;
    desk->foreground = windowHandle(int(desk->windows.size()));  // the next window
    const int code = runApp(GetModuleHandleW(nullptr));
    if (!played && !(code == 1 && faultName == "EnumDisplayMonitors")) red("it left at once");
    // Without a monitor the process ends at once, and the system undoes the rest.
    if (code == 0 && (hookTargetWindow || keyboardHook || speechVoice)) red("left behind");
    letAllWork();
    stopStrokeLoop();  // the next run makes new clips
    desk->moveClocks(60'000);
}

// An older folder to carry over, unless new settings are to fail, more pictures than are kept, and typefaces.
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
    const fs::path older = roaming / "Zubworks" / "Zubbly" / "SavedPictures";
    fs::create_directories(older);
    for (int i = 0; i < 12; ++i)
        std::ofstream(older / ("auto-" + std::to_string(i)));
    desk->environment[L"APPDATA"] = (folder / "Roaming").wstring();
    desk->programFile = (folder / "Zubbly.exe").wstring();
    if (faultName == "CreateFileW" || faultName == "WriteFile") return;
    fs::create_directories(roaming / "Zubbly");
    std::ofstream(roaming / "Zubbly" / "config.ini") << "[Zubbly]\nAutoSaveIntervalSeconds=60\n";
}

static LONG WINAPI endRed(EXCEPTION_POINTERS *crash)
{
    red("a crash at " + std::to_string(uintptr_t(crash->ExceptionRecord->ExceptionAddress)));
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
    Tablet here;
    desk = &here;
    here.telling = false;
    tellCalls(false);
    reportMisuse = [](const std::string &what) { red(what); };
    Tablet::whileSaving = [] {
        static int dialogs = 0;
        ++dialogs;
        for (int i = 0; i < 10 && dialogs < 3 && mode != "longest" && now() < end; ++i)
            step(99);
        --dialogs;
    };
    const std::vector<std::string> words(argv + 1, argv + argc);
    mode = words.empty() ? "list" : words[0];
    if (mode == "fault") faultName = words[1], faultFromStart = words[2] == "start";
    const int number = words.size() > 1 ? std::atoi(argv[2]) : 0;
    const int64_t length = words.size() > 1 ? std::atoll(argv[argc - 1]) * 1000 : 0;
    rng.seed(unsigned(number) + 1);
    markRng.seed(unsigned(number));
    wayOut = mode == "fault" ? faultFromStart ? 2 : 1 : number % 3;
    here.monitors = {{0, 0, 400, 300}, {-200, 50, 0, 250}};
    layOut();
    int failures = mode == "random" ? 5 : 0;
    const Replaced lost("GetMessageW", [&](const Call &call) { return failures-- > 0 ? -1 : call.passOn(); });
    std::thread([] {  // however slow the machine is: only no progress at all is a hang
        for (uint64_t before = ~uint64_t(0); before != steps; Sleep(180'000))
            before = steps;
        red("no progress in three minutes");
    })
        .detach();
    if (mode == "list") {
        for (const std::string &name : fallible())
            std::puts(name.c_str());
    } else if (mode == "fault") {
        setFailing(importOf(faultName), faultFromStart);
        run(length);
        std::printf("%s %s %ju\n", argv[2], argv[3], uintmax_t(importOf(faultName).failed));
    } else if (mode == "random") {
        run(length);
    } else if (mode == "storm") {
        Load first;
        for (int round = 0; int64_t(steps) < length / 1000; ++round) {
            // The largest ones first: what only grows has its size then.
            const auto size = [round] { return round == 0 ? 1500 : pick(1, pick(1, 1500)); };
            here.monitors = {{0, 0, size(), size()}};
            if (round == 0 || pick(0, 1)) here.monitors.push_back({-size(), 10, 0, 10 + size()});
            wayOut = round % 3;
            run(300'000);
            if (round < 3) first = load();
            expectFlat("round " + std::to_string(round), first, 1);
        }
    } else if (mode == "day") {
        const int64_t day = int64_t(std::atof(argv[2]) * 3'600'000);
        here.tick = DWORD(-day / 2);
        run(day);
    } else if (mode == "longest") {
        here.monitors = {{0, 0, 3840, 2160}};
        run(300'000);
        std::multimap<double, std::string, std::greater<>> byTime;
        for (const auto &[what, worst] : longest)
            byTime.insert({worst, what});
        for (auto row = byTime.begin(); row != byTime.end() && std::distance(byTime.begin(), row) < 5; ++row)
            std::printf("%7.1f ms  %s\n", row->first, row->second.c_str());
    }
    std::error_code ignored;
    fs::remove_all(here.folder(), ignored);
    std::fflush(stdout);
    ExitProcess(0);
}
