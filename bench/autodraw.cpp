// Measures a wipe's tick and a step of auto-drawing at 3840 by 2160, and the program's own share: the ratio
// to the same GDI and GDI+ calls made directly. autodraw [NAME]: one row only.
#include <algorithm>
#include <cstdio>
#include <numeric>
#include <string>

#include "autodraw/pen_paths.h"
#include "autodraw/sequencer.h"
#include "clearing/actions.h"
#include "clearing/wipes.h"
#include "desk.h"
#include "figures.h"
#include "replay.h"

static std::wstring wanted;

// The costliest of several measurements, with its name.
struct Costliest {
    double figure = 0.0;
    double floor = 1.0;  // of the same tick or ticks
    std::string name;

    void take(double newFigure, double newFloor, double rank, const std::string &newName)
    {
        if (rank <= most) return;
        most = rank;
        figure = newFigure;
        floor = newFloor;
        name = newName;
    }

  private:
    double most = 0.0;
};
static Costliest slowestTick, worstRatio;

// prepare leads to the same ticks each time; tick returns false after the last one. The quickest run of each
// tick counts, because other processes may use the machine.
static void measure(const std::wstring &what, int runs, auto prepare, auto tick)
{
    if (!wanted.empty() && what != wanted) return;
    recordCalls(true);
    std::vector<size_t> ends;  // of each tick in recordedCalls
    prepare();
    for (bool more = true; more; ends.push_back(recordedCalls.size()))
        more = tick();
    recordCalls(false);
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
                    if (recordedCalls[call].draws) recordedCalls[call].again();
            });
            bare[i] = std::min(bare[i], time);
        }
    }
    const double sum = std::reduce(program.begin(), program.end());
    const double bareSum = std::reduce(bare.begin(), bare.end());
    const std::string name(what.begin(), what.end());
    const size_t slowest = size_t(std::max_element(program.begin(), program.end()) - program.begin());
    slowestTick.take(program[slowest], bare[slowest], program[slowest], name);
    worstRatio.take(sum, bareSum, sum / bareSum, name);
    std::sort(program.begin(), program.end());
    std::printf("%-12ls %3zu ticks: middle %6.2f ms, worst %6.2f ms; over the bare calls %.3f\n",
                what.c_str(), ends.size(), program[ends.size() / 2], program.back(), sum / bareSum);
}

// Prints the rows of the costliest since the last call, if anything was measured.
static void printCostliest(const std::string &kind)
{
    if (slowestTick.name.empty()) return;
    printCost(("Slowest tick at 3840x2160: " + kind + slowestTick.name).c_str(), slowestTick.figure,
              slowestTick.floor, "8 ms");
    printCost(("All its ticks over their bare calls, costliest: " + kind + worstRatio.name).c_str(),
              worstRatio.figure, worstRatio.floor, "1.15 times the floor");
    slowestTick = worstRatio = {};
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
    openDesk(3840, 2160);
    static const wchar_t *const styles[] = {L"from left",   L"from right", L"from top", L"from bottom",
                                            L"from corner", L"ring",       L"band",     L"bubbles"};
    for (int style = 0; style < 8; ++style)
        measureWipe(style, styles[style]);
    printCostliest("wipe, ");
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
    printCostliest("");
    return 0;
}
