// What a wipe's tick and a step of auto-drawing cost at 3840 by 2160, and how much of it is the program's
// own: the ratio to the same GDI and GDI+ calls made bare. autodraw [NAME]: one row only.
#include <algorithm>
#include <cstdio>
#include <numeric>
#include <string>

#include "autodraw/sequencer.h"
#include "clearing/wipes.h"
#include "replay.h"

static int WINAPI bigScreen(int index)
{
    return index == SM_CXVIRTUALSCREEN ? 3840 : index == SM_CYVIRTUALSCREEN ? 2160 : 0;
}
extern "C" {
int(WINAPI *__imp_GetSystemMetrics)(int) = bigScreen;
}

static std::wstring wanted;

// prepare leads to the same ticks each time; tick is false after the last one. Of each tick the quickest run
// counts, since others may use the machine.
static void measure(const std::wstring &what, int runs, auto prepare, auto tick)
{
    if (!wanted.empty() && what != wanted) return;
    recordedCalls.clear();
    replayedObjects.clear();
    recordingCalls = true;
    std::vector<size_t> ends;  // of each tick in recordedCalls
    prepare();
    for (bool more = true; more; ends.push_back(recordedCalls.size()))
        more = tick();
    recordingCalls = false;
    std::vector<double> program(ends.size(), 1e9);
    std::vector<double> bare(ends.size(), 1e9);
    for (int run = 0; run < runs; ++run) {
        prepare();
        for (double &best : program)
            best = std::min(best, millisecondsOf(tick));
        size_t call = 0;
        for (size_t i = 0; i < ends.size(); ++i) {
            const double time = millisecondsOf([&] {
                for (; call < ends[i]; ++call)
                    recordedCalls[call]();
            });
            bare[i] = std::min(bare[i], time);
        }
    }
    const double ratio = std::reduce(program.begin(), program.end()) / std::reduce(bare.begin(), bare.end());
    std::sort(program.begin(), program.end());
    std::printf("%-12ls %3zu ticks: middle %6.2f ms, worst %6.2f ms; over the bare calls %.3f\n",
                what.c_str(), ends.size(), program[ends.size() / 2], program.back(), ratio);
}

static void measureWipe(int style, const wchar_t *what)
{
    const auto prepare = [=] {
        startWipe();
        markRng.seed(1);
        wipeStyle = style;
        wipeCorner = 3;
        wipeScale = 2;
        revealWipe = style == 5 || style == 7;
    };
    measure(what, style == 5 || style == 7 ? 2 : 20, prepare, [] {
        wipeTick();
        return wipeRunning;
    });
}

extern "C" int wmain(int argc, wchar_t **argv)
{
    if (argc > 1) wanted = argv[1];
    GdiplusStartupInput input;
    ULONG_PTR token = 0;
    GdiplusStartup(&token, &input, nullptr);
    RECT monitor = {0, 0, 3840, 2160};
    createSurface(nullptr, nullptr, &monitor, 0);
    newBackground(true);
    static const wchar_t *const styles[] = {L"from left",   L"from right", L"from top", L"from bottom",
                                            L"from corner", L"ring",       L"band",     L"bubbles"};
    for (int style = 0; style < 8; ++style)
        measureWipe(style, styles[style]);
    const auto prepare = [] {
        markRng.seed(1);
        resetPen();
        penLastValid = false;
        penColorLife = 0;
        autoMode = 3;
        autoStepsLeft = 400;
    };
    measure(L"auto-drawing", 20, prepare, [] {
        onTimer3();
        return autoStepsLeft > 0;
    });
    return 0;
}
