// The whole program on a desk, from runApp to its last release, under faults, storms and long days.
//   session.exe faults HALF SECONDS     each call of one half (0 or 1) fails always, then from a third on
//   session.exe random SEED SECONDS     every now and then another one fails or works again
//   session.exe storm SEED COUNT        any messages in any order, monitors of any size
//   session.exe day HOURS               play and pauses; the tick counter wraps in the middle
//   session.exe pictures FOLDER COUNT   so many damaged copies of pictures for the penguin
#include <atomic>
#include <random>
#include <thread>

#include "autodraw/outlines.h"
#include "autodraw/pen_paths.h"
#include "marks/key_reactions.h"
#include "mascot/fireworks.h"
#include "mascot/frames.h"
#include "shell/child.h"
#include "shell/lockdown.h"
#include "shell/shutdown.h"
#include "shell/startup.h"
#include "sound/playback.h"
#include "sound/speech.h"

namespace fs = std::filesystem;

static Tablet *desk = nullptr;
static std::string mode, deed;
static Import *fault = nullptr;  // fails in the whole session, or from later on
static int wayOut = 0;           // 0 to 2
static int seed = 0;
static fs::path folderOfPictures;
static std::mt19937 rng;
static int64_t begin = 0, end = 0;  // of the run, milliseconds
static uint64_t steps = 0;
static auto &progress = *new std::atomic<uint64_t>(0);  // goes on from one desk to the next

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
    for (const auto &[name, import] : imports())
        if (import.failing) std::printf(" %s", name.c_str());
    std::puts("");
    std::fflush(stdout);
    TerminateProcess(GetCurrentProcess(), 1);  // under Wine a crashed program can end with 0
    std::abort();
}

// What only computes has no way to fail.
static bool canFail(const std::string &name)
{
    static const std::set<std::string> others = {"fclose", "fread", "fseek", "ftell", "wcsftime"};
    static const std::set<std::string> never = {"GetMessageW", "QueryPerformanceCounter"};
    return others.contains(name) || (std::isupper(name[0]) && !never.contains(name));
}

static void letAllWork()
{
    for (auto &[name, import] : imports())
        import.setFailing(false);
    Tablet::refusal = S_OK;
}

// In a random session about one import in twelve fails, and what fails changes all the time.
static void switchFaults()
{
    if (fault && now() > (2 * begin + end) / 3) fault->setFailing(true);
    if (mode != "random") return;
    auto &[name, import] = *std::next(imports().begin(), pick(0, int(imports().size()) - 1));
    if (canFail(name)) import.setFailing(pick(0, 11) == 0);
    Tablet::refusal = pick(0, 9) ? S_OK : E_FAIL;
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
    act(deed);
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

// --- What a deed leaves.
static void expectInRange()
{
    const bool sound = keyMashCount >= 0 && keyMashCount <= 50 && sameKeyCount >= 0 && sameKeyCount <= 6 &&
                       penPathIndex <= penPath.size() && penPath.size() < 20000 &&
                       outlineQueue.size() < 2000 && sparks.size() <= maxSparks && rockets.size() <= 5 &&
                       desk->timers.size() < 40 && desk->messages.size() < 1000 && !shuttingDown &&
                       surfaces.size() == desk->monitors.size();
    if (!sound) red("its state is out of range");
}

// What leaks stays: only a growth after the settling looks that so many in a row find counts.
static void expectFlat(const std::string &when, int settling, int looks)
{
    static std::array<size_t, 4> first;
    static int number = 0, grown = 0;
    const HANDLE lowest = CreateEventW(nullptr, FALSE, FALSE, nullptr);  // the lowest that is free
    CloseHandle(lowest);
    size_t bytes = 0;
    HANDLE heaps[64];
    for (DWORD i = std::min<DWORD>(GetProcessHeaps(64, heaps), 64); i-- > 0;)
        for (PROCESS_HEAP_ENTRY entry = {}; HeapWalk(heaps[i], &entry);)
            if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) bytes += entry.cbData;
    const std::array at = {desk->windows.size(), size_t(lowest) / 4, desk->objects.size(), bytes / 1024};
    if (++number <= settling) first = at;
    const bool flat =
        at[0] <= first[0] + 4 && at[1] <= first[1] + 4 && at[2] <= first[2] + 4 && at[3] <= first[3] + 1024;
    grown = flat ? 0 : grown + 1;
    if (!flat || !when.empty())
        std::printf("%s: %ju steps; windows %zu, handles %zu, objects %zu, heap %zu KiB%s\n", when.c_str(),
                    uintmax_t(steps), at[0], at[1], at[2], at[3], flat ? "" : ", which has grown");
    std::fflush(stdout);
    if (grown == looks) red("it grows: " + leaks());
}

// --- A run of the program.
static void step(size_t number)
{
    ++steps, ++progress;
    desk->sounds.clear();  // a day of them would look like a leak
    mode == "storm" && number > 60 ? anyMessage() : childsPlay(number);
    expectInRange();
    int pause = mode == "storm" ? 0 : pick(0, 39) ? pick(20, 400) : 20'000;
    if (mode == "day" && number > 60) pause *= 20;
    for (deed = "timers"; pause > 0 && now() < end; pause -= 16) {
        ++progress;
        switchFaults();
        desk->wait(16);
        expectInRange();
    }
    static int64_t minutes = 0;
    if (mode != "day" || (now() - begin) / 60'000 == minutes) return;
    minutes = (now() - begin) / 60'000;
    expectFlat(minutes % 60 == 1 ? "minute " + std::to_string(minutes) : "", 1, 3);
}

// In the end all works again, so that five Spaces must leave something; then one of the ways out, with the
// fault.
static void play()
{
    const uint64_t last = mode == "storm" ? steps + 4000 : ~0ull;
    for (size_t number = 0; now() < end && steps < last; ++number)
        step(number);
    letAllWork();
    desk->wait(10'000);
    canvasDirty = false;
    act("Space 999 Space 999 Space 999 Space 999 Space 999");
    if (!canvasDirty && desk->find(primaryWindow())) red("nothing comes of five Spaces");
    if (fault) fault->setFailing(true);
    if (wayOut > 0) act(wayOut == 1 ? "mayend ends" : "Alt+F4");
    desk->messages.push_back({primaryWindow(), WM_KEYUP, 'A', 0, 0, {}});  // for the program's own loop
}

static void run(int64_t ms)
{
    begin = now();
    end = begin + ms;
    shuttingDown = false;
    desk->timers.clear();
    desk->keysDown.clear();
    desk->messages.clear();
    const std::string failing = fault ? fault->name : "";
    desk->lastError = ERROR_ALREADY_EXISTS;
    if (runApp(GetModuleHandleW(nullptr)) != 0 || (!surfaces.empty() && failing != "CreateMutexW"))
        red("a second start does something");
    desk->lastError = 0;
    desk->play = play;
    desk->foreground = windowHandle(desk->windowsMade);  // the next window
    const int code = runApp(GetModuleHandleW(nullptr));
    if (std::exchange(desk->play, nullptr) && !(code == 1 && failing == "EnumDisplayMonitors"))
        red("it left at once");
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
    const fs::path pictures = roaming / "Zubworks" / "Zubbly" / "SavedPictures";
    fs::copy(fs::path(ZUBBLY_BUILD) / "assets", folder / "assets", fs::copy_options::recursive);
    fs::create_directories(folder / "Fonts");
    fs::copy_file("C:/windows/Fonts/tahoma.ttf", folder / "Fonts" / "MPLUSRounded1c-Regular.ttf");
    std::ofstream(folder / "Fonts" / "MPLUSRounded1c-Black.ttf") << "no font";
    std::ofstream(folder / "given.png") << "to be written over";
    fs::create_directories(pictures);
    for (int i = 0; i < 12; ++i)
        std::ofstream(pictures / ("auto-" + std::to_string(i)));
    desk->environment[L"APPDATA"] = (folder / "Roaming").wstring();
    desk->programFile = (folder / "Zubbly.exe").wstring();
    if (fault && (fault->name == "CreateFileW" || fault->name == "WriteFile")) return;
    fs::create_directories(roaming / "Zubbly");
    std::ofstream(roaming / "Zubbly" / "config.ini") << "[Zubbly]\nAutoSaveIntervalSeconds=60\n";
}

static void open(Tablet &here)
{
    desk = &here;
    here.recording = false;
    here.monitors = {{0, 0, 400, 300}, {-200, 50, 0, 250}};
    reportMisuse = [](const std::string &what) { red(what); };
    Tablet::whileSaving = [] {
        static int dialogs = 0;
        ++dialogs;
        for (int i = 0; i < 10 && dialogs < 3 && now() < end; ++i)
            step(99);
        --dialogs;
    };
    rng.seed(unsigned(seed) + 1);
    markRng.seed(unsigned(seed));
    wayOut = seed % 3;
    layOut();
}

// --- Modes, with the last argument.
static void random(double seconds)
{
    int failures = 5;
    const Replaced lost("GetMessageW", [&](const Call &call) { return failures-- > 0 ? -1 : call.passOn(); });
    run(int64_t(seconds * 1000));
}

static void storm(double count)
{
    for (int round = 0; double(steps) < count; ++round) {
        // The largest ones first: what only grows has its size then.
        const auto size = [round] { return round == 0 ? 1500 : pick(1, pick(1, 1500)); };
        desk->monitors = {{0, 0, size(), size()}};
        if (round == 0 || pick(0, 1)) desk->monitors.push_back({-size(), 10, 0, 10 + size()});
        wayOut = round % 3;
        run(300'000);
        expectFlat("round " + std::to_string(round), 3, 1);
    }
}

static void day(double hours)
{
    desk->tick = DWORD(-int64_t(hours * 1'800'000));
    run(int64_t(hours * 3'600'000));
}

// Wrong bytes, every third in the head, where sizes and formats stand, or no end.
static void damage(const fs::path &file)
{
    const int size = int(fs::file_size(file));
    std::fstream bytes(file, std::ios::in | std::ios::out | std::ios::binary);
    for (int i = pick(0, 5); i > 0; --i)
        bytes.seekp(pick(0, i % 3 == 0 ? 59 : size - 1)).put(char(rng()));
    bytes.close();
    if (pick(0, 3) == 0) fs::resize_file(file, uintmax_t(pick(0, size - 1)));
}

// Wine loses some memory with each picture that it cannot load; undamaged ones have to leave none.
static void pictures(double count)
{
    const std::vector<fs::path> good(fs::directory_iterator(folderOfPictures), {});
    createSurface(nullptr, nullptr, &desk->monitors[0], 0);
    GraphicsScope scope(surfaces[0]);
    for (int left = int(count) + 300; left > 0; --left, ++steps, ++progress) {
        const fs::path &source = good[size_t(pick(0, int(good.size()) - 1))];
        deed = source.string();
        const fs::path file = desk->folder() / std::to_string(left);  // one that is shown stays open
        fs::copy_file(source, file);
        if (left > 300) damage(file);
        unloadMascotFrames();
        mainFrame = loadFrameFile(file.wstring()).release();
        drawFrame(scope, {.x = 50, .y = 100, .alpha = 0.5f, .mirrored = true});
        if (!HeapValidate(GetProcessHeap(), 0, nullptr)) red("it wrote beside its own memory");
        if (left > 300) continue;
        if (!mainFrame) red("an undamaged picture was refused");
        expectFlat(left == 1 ? "pictures" : "", 100, 3);
    }
}

// A call that was never made proves nothing. Each run has a desk of its own, which starts all variables anew.
static void faults(int half, double seconds)
{
    int number = 0;
    for (auto &[name, import] : imports()) {
        if (!canFail(name) || ++number % 2 != half % 2) continue;
        for (const int when : {2, 1}) {
            Tablet here;
            fault = &import;
            open(here);
            wayOut = when;
            import.setFailing(when == 2);
            run(int64_t(seconds * 1000));
            std::printf("%s failed %ju times\n", name.c_str(), uintmax_t(import.failed));
            if (when == 1 && import.failed == 0) red("it was never called");
        }
    }
}

int main(int, char **argv)
{
    beginDesks();  // GDI+ as well, so that no run of several takes it from the objects that stay
    const std::string asked = argv[1];
    const double amount = std::atof(argv[asked == "day" ? 2 : 3]);
    std::thread watch([] {  // however slow the machine is: only no progress at all is a hang
        for (uint64_t before = ~uint64_t(0); before != progress; Sleep(180'000))
            before = progress;
        red("no progress in three minutes");
    });
    watch.detach();
    if (asked == "faults")
        faults(std::atoi(argv[2]), amount);
    else {
        const std::map<std::string, void (*)(double)> modes = {
            {"random", random}, {"storm", storm}, {"day", day}, {"pictures", pictures}};
        Tablet here;
        mode = asked;
        seed = std::atoi(argv[2]);
        folderOfPictures = argv[2];
        open(here);
        modes.at(mode)(amount);
    }
    std::fflush(stdout);
    ExitProcess(0);
}
