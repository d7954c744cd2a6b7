// Measures each mark on a canvas of 3840 by 2160 pixels beside the same GDI+ calls replayed directly, without
// and with its size and repaint calls, and the handlers of keys and buttons. Goals: all marks together take
// at most 1.05 times their bare calls, sizes and repaints included, the costliest one 1.15 times, and no
// handler more than 8 ms.
#include <algorithm>
#include <cstdio>
#include <functional>
#include <string>

#include "figures.h"
#include "marks/bursts.h"
#include "marks/cursor_pen.h"
#include "marks/key_reactions.h"
#include "marks/notes.h"
#include "marks/stamps.h"
#include "marks/strokes.h"
#include "replay.h"
#include "shell/window_proc.h"
#include "sound/playback.h"

// --- Measuring.
static int64_t ticks()
{
    LARGE_INTEGER now;
    QueryPerformanceCounter(&now);
    return now.QuadPart;
}
static double microseconds(int64_t begin)
{
    static const int64_t perSecond = [] {
        LARGE_INTEGER value;
        QueryPerformanceFrequency(&value);
        return value.QuadPart;
    }();
    return double(ticks() - begin) * 1e6 / double(perSecond);
}

// For the table of costs.
static struct Costliest {
    std::string name;
    double figure = 0, floor = 1, sum = 0, floorSum = 0;  // us; the costliest mark, and all together

    void take(const char *newName, double newFigure, double newFloor)
    {
        sum += newFigure;
        floorSum += newFloor;
        if (newFigure / newFloor <= figure / floor) return;
        name = newName;
        figure = newFigure;
        floor = newFloor;
    }
} overAll;  // over the drawing, size and repaint calls
static struct {
    std::string name;
    double figure = 0;  // ms
} slowestHandler;

static const int seeds = 12;
static const int rounds = 15;
static const POINT middle = {1920, 1080};

// Takes the best round of each seed. The mark and its bare calls take turns, so that other work on the
// machine affects both alike.
static void measureMark(const char *name, const std::function<void()> &draw)
{
    double marks = 0;
    double bare = 0;
    double all = 0;  // with the size and repaint calls
    double slowest = 0;
    size_t calls = 0;
    for (uint32_t seed = 1; seed <= seeds; ++seed) {
        markRng.seed(seed);
        recordCalls(true);
        draw();
        recordCalls(false);
        calls += size_t(std::count_if(recordedCalls.begin(), recordedCalls.end(),
                                      [](const RecordedCall &call) { return call.draws; }));
        double bestMark = 1e9;
        double bestBare = 1e9;
        double bestAll = 1e9;
        for (int round = 0; round < rounds; ++round) {
            markRng.seed(seed);
            int64_t begin = ticks();
            draw();
            bestMark = std::min(bestMark, microseconds(begin));
            begin = ticks();
            for (const RecordedCall &call : recordedCalls)
                if (call.draws) call.again();
            bestBare = std::min(bestBare, microseconds(begin));
            begin = ticks();
            for (const RecordedCall &call : recordedCalls)
                call.again();
            bestAll = std::min(bestAll, microseconds(begin));
        }
        marks += bestMark / seeds;
        bare += bestBare / seeds;
        all += bestAll / seeds;
        slowest = std::max(slowest, bestMark);
    }
    overAll.take(name, marks, all);
    std::printf("%-16s %7zu %9.0f %9.0f %9.0f %7.2f %9.0f %7.2f%s\n", name, calls / seeds, marks, slowest,
                bare, marks / bare, all, marks / all, marks > 1.15 * bare ? "  over 1.15" : "");
}

static void send(UINT message, WPARAM key, LPARAM detail = 0)
{
    windowProc(surfaces[0].hwnd, message, key, detail);
}

// Calls a handler a few times, each after a pause that lets it pass its rate limits.
static void measureHandler(const char *name, DWORD pause, const std::function<void(int)> &handle)
{
    double sum = 0;
    double slowest = 0;
    const int times = 25;
    for (int i = 0; i < times; ++i) {
        Sleep(pause);
        const int64_t begin = ticks();
        handle(i);
        const double took = microseconds(begin) / 1000;
        sum += took;
        slowest = std::max(slowest, took);
    }
    if (slowest > slowestHandler.figure) slowestHandler = {name, slowest};
    std::printf("%-28s %9.2f %9.2f%s\n", name, sum / times, slowest, slowest > 8 ? "  over 8 ms" : "");
}

int wmain()
{
    GdiplusStartupInput input;
    ULONG_PTR token = 0;
    GdiplusStartup(&token, &input, nullptr);
    MonitorSurface surface;
    surface.rect = {0, 0, 3840, 2160};
    surface.width = 3840;
    surface.height = 2160;
    surface.hwnd = CreateWindowExW(WS_EX_TOPMOST, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 3840, 2160,
                                   nullptr, nullptr, nullptr, nullptr);
    HDC screen = GetDC(nullptr);
    surface.canvasDC = CreateCompatibleDC(screen);
    surface.canvasBitmap = CreateCompatibleBitmap(screen, 3840, 2160);
    SelectObject(surface.canvasDC, surface.canvasBitmap);
    surfaces.push_back(surface);
    soundEnabled = false;
    rainbowStroke = false;

    std::puts("mark               calls   mean us   slowest bare mean   ratio  and sizes   ratio");
    const std::pair<const char *, void (*)(POINT)> pointMarks[] = {{"tap", tapMark},
                                                                   {"face", stampFace},
                                                                   {"sun", stampSun},
                                                                   {"rainbow", stampRainbow},
                                                                   {"house", stampHouse},
                                                                   {"balloon", stampBalloon},
                                                                   {"tree", stampTree},
                                                                   {"cat", stampCat},
                                                                   {"blush face", stampBlushFace},
                                                                   {"car", stampCar},
                                                                   {"train", stampTrain},
                                                                   {"rocket", stampRocket},
                                                                   {"fish", stampFish},
                                                                   {"big face", stampBigFace},
                                                                   {"stick figure", stampStickFigure},
                                                                   {"large shape", popShape},
                                                                   {"spiral stroke", spiralStroke},
                                                                   {"cat parade", catParade},
                                                                   {"ray burst", stampRayBurst},
                                                                   {"burst", burst}};
    for (const auto &[name, draw] : pointMarks)
        measureMark(name, [draw = draw] { draw(middle); });
    measureMark("stroke", [] { brushStroke(middle, {1950, 1100}, 14, 92); });
    measureMark("curve", [] { bezierStroke(middle, {2000, 900}, {1800, 1300}, {2100, 1200}); });
    measureMark("wobbly stroke", [] { wobblyStroke(middle, {2300, 1200}); });
    for (const int kind : {0, 1, 2})
        measureMark(kind == 0   ? "note"
                    : kind == 1 ? "note with a flag"
                                : "two notes",
                    [kind] { drawMusicNote(middle, kind, 0x8040C0, 3); });
    measureMark("scattered mark", [] { scatterMarks(false); });
    measureMark("space burst", spaceBurst);
    for (const uint32_t key : {65u, 66u, 67u, 68u, 69u})
        measureMark((std::string("key shape ") + char('0' + key - 65)).c_str(),
                    [key] { keyReaction(key, 1); });
    measureMark("key, level 6", [] { keyReaction(70, 6); });
    measureMark("spiral of notes", [] {
        keyMashCount = 50;
        sameKeyCount = 6;
        spiralRadius = 420.0f;
        spiralAngle = 0.0f;
        noteSpiral();
    });
    measureMark("pen step", [] {
        penDotVisible = true;
        penDotPoint = {300, 300};
        penKey(VK_RIGHT);
    });

    std::puts("\nWhat a mark calls beside its drawing, us a call:");
    const std::pair<const char *, void (*)()> questions[] = {
        {"launchSurface", [] { launchSurface(); }},
        {"virtualScreen", [] { virtualScreen(); }},
        {"InvalidateRect", [] { invalidateMarkRect(surfaces[0], 10, 10, 90, 90); }},
        {"InvalidateRect, whole", [] { invalidateWhole(surfaces[0]); }}};
    for (const auto &[name, ask] : questions) {
        double best = 1e9;
        for (int round = 0; round < 100; ++round) {
            const int64_t begin = ticks();
            ask();
            best = std::min(best, microseconds(begin));
        }
        std::printf("%-22s %6.0f\n", name, best);
    }

    std::puts("\nhandler                        mean ms   slowest");
    soundEnabled = true;
    resetKeyState(surfaces[0].hwnd);
    measureHandler("letter, press and release", 550, [](int i) {
        send(WM_KEYDOWN, WPARAM('A' + i));
        send(WM_KEYUP, WPARAM('A' + i));
    });
    resetKeyState(surfaces[0].hwnd);
    measureHandler("mashed letters, one step", 45, [](int i) { send(WM_KEYDOWN, WPARAM('A' + i)); });
    measureHandler("the same at its height", 45, [](int) {
        keyMashCount = 50;
        sameKeyCount = 6;
        spiralRadius = 420.0f;
        send(WM_KEYDOWN, 'A', 1 << 30);
    });
    resetKeyState(surfaces[0].hwnd);
    measureHandler("Space", 310, [](int) { send(WM_KEYDOWN, VK_SPACE); });
    measureHandler("arrow", 0, [](int) { send(WM_KEYDOWN, VK_LEFT); });
    measureHandler("left press and release", 0, [](int) {
        send(WM_LBUTTONDOWN, 0, MAKELPARAM(900, 900));
        send(WM_LBUTTONUP, 0, MAKELPARAM(900, 900));
    });
    send(WM_LBUTTONDOWN, 0, MAKELPARAM(900, 900));
    measureHandler("a step of a drag", 0,
                   [](int i) { send(WM_MOUSEMOVE, 0, MAKELPARAM(900 + 30 * i, 950)); });
    // A mark cannot do without these calls, so they are part of the floor.
    printCost("All marks of the list together, at 3840x2160, over their bare calls, sizes and "
              "repaints included",
              overAll.sum / 1000, overAll.floorSum / 1000, "1.05 times the floor");
    printCost(("Costliest mark over the same: " + overAll.name).c_str(), overAll.figure / 1000,
              overAll.floor / 1000, "1.15 times the floor");
    printCost(("Slowest handler at 3840x2160: " + slowestHandler.name).c_str(), slowestHandler.figure, 0,
              "8 ms");
    return 0;
}
