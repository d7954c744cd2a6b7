// autodraw_sheets FOLDER: writes autodraw.png, everything that draws by itself, and wipes.png, all wipes step
// by step.
#include <algorithm>

#include "autodraw/motifs.h"
#include "autodraw/outlines.h"
#include "autodraw/pen_paths.h"
#include "autodraw/sequencer.h"
#include "autodraw/sketches.h"
#include "clearing/wipes.h"
#include "marks/strokes.h"
#include "support/fakes.h"
#include "tools/sheet.h"

static const MarkColor paper = 0xF8F4F0;

static int extent()
{
    LONG left = 10000, right = -10000;
    for (const std::vector<POINT> &polyline : outlineQueue) {
        for (const POINT &point : polyline) {
            left = std::min(left, point.x);
            right = std::max(right, point.x);
        }
    }
    return int(right - left);
}

// The smallest and the largest picture that forty seeds give.
static void addOutline(Sheet &sheet, const wchar_t *name, void (*build)(POINT))
{
    std::pair<int, uint32_t> smallest = {10000, 0}, largest = {0, 0};
    for (uint32_t seed = 1; seed <= 40; ++seed) {
        const Desk desk({Sheet::desk()}, paper);
        seedAll(seed);
        build(Sheet::middle);
        smallest = std::min(smallest, {extent(), seed});
        largest = std::max(largest, {extent(), seed});
    }
    for (const auto &[width, seed] : {smallest, largest}) {
        const Desk desk({Sheet::desk()}, paper);
        seedAll(seed);
        build(Sheet::middle);
        while (outlineTracing)
            traceOutlineStep();
        sheet.add(surfaces.front(), std::wstring(name) + L", " + std::to_wstring(width) + L" px wide",
                  width > 450   ? 6
                  : width > 130 ? 4
                                : 3);
    }
}

// Whether the next path or scene would stand well inside the desk.
static bool startsNearMiddle()
{
    penLastValid = false;
    return distanceBetween(freshPenStart(), Sheet::middle) < 150.0;
}

static void addPath(Sheet &sheet, int form)
{
    static const wchar_t *const names[] = {L"curve",   L"zigzag", L"straight line",
                                           L"ellipse", L"chain",  L"short chain"};
    const Desk desk({Sheet::desk()}, paper);
    uint32_t seed = 0;
    do {
        seedAll(++seed);
    } while (randInt(0, 5) != form || !startsNearMiddle());
    seedAll(seed);
    penLastValid = false;
    newPenPath();
    paintSegments(penPath, 0x0000C8, 8, 8);
    paintBlob(penPath.front(), 14, 14, 0x00A000);
    sheet.add(surfaces.front(), std::wstring(L"path: ") + names[form]);
}

static void addSketch(Sheet &sheet, int form)
{
    static const wchar_t *const names[] = {L"poles", L"ring, dots, smile", L"blob, line, box, dots",
                                           L"blob and spots", L"scribble"};
    const Desk desk({Sheet::desk()}, paper);
    autoMode = 3;
    uint32_t seed = 0;
    do {
        seedAll(++seed);
    } while (randInt(0, 4) != form || !startsNearMiddle());
    seedAll(seed);
    penLastValid = false;
    startSketch();
    while (sketchActive)
        stepSketch();
    sheet.add(surfaces.front(), std::wstring(L"sketch: ") + names[form], 4, penLastPoint);
}

static void addMotif(Sheet &sheet, int form)
{
    static const wchar_t *const names[] = {L"bead chain", L"spiral shell", L"eared head",
                                           L"rayed disc", L"zigzag",       L"stick body"};
    const Desk desk({Sheet::desk()}, paper);
    autoMode = 3;
    uint32_t seed = 0;
    do {
        seedAll(++seed);
    } while (!startsNearMiddle() || randInt(0, 5) != form);
    seedAll(seed);
    penLastValid = false;
    startMotif();
    while (motifActive)
        stepMotif();
    sheet.add(surfaces.front(), std::wstring(L"motif: ") + names[form], 3, penLastPoint);
}

static void addRun(Sheet &sheet)
{
    const Desk desk({Sheet::desk()}, paper);
    resetPen();
    penLastValid = false;
    autoMode = 3;
    autoStepsLeft = 88;
    for (int step = 0; step < 88; ++step) {
        if (step == 22 || step == 44 || step == 66)
            sheet.add(surfaces.front(), L"a run, " + std::to_wstring(step) + L" steps");
        onTimer3();
    }
    sheet.add(surfaces.front(), L"a run, 88 steps");
}

static void addWipe(Sheet &sheet, int style)
{
    static const wchar_t *const names[] = {L"from left",   L"from right", L"from top", L"from bottom",
                                           L"from corner", L"ring",       L"band",     L"bubbles"};
    static constexpr int lengths[] = {105, 105, 105, 105, 105, 51, 182, 116};
    const Desk desk({Sheet::desk()}, paper);
    for (int i = 0; i < 40; ++i) {
        const POINT from = randomPointOn(surfaces.front(), 24);
        const POINT to = randomPointOn(surfaces.front(), 24);
        brushStroke(from, to, 14, 92);
    }
    startWipe();
    wipeStyle = style;
    wipeCorner = 3;
    wipeScale = 1;
    revealWipe = style == 5 || style == 7;
    backgroundColor = 0x78C8E6;
    revealColor = 0xDABEAC;
    for (int step = 0; wipeRunning; ++step) {
        if (step % (lengths[style] / 5) == 1)
            sheet.add(surfaces.front(), std::wstring(names[style]) + L", step " + std::to_wstring(step));
        wipeTick();
    }
    sheet.add(surfaces.front(), std::wstring(names[style]) + L", end, step " + std::to_wstring(wipeStep));
    sheet.endRow();
}

static void drawSheets(const std::wstring &folder)
{
    Sheet autodraw(8);
    addOutline(autodraw, L"star", outlineStar);
    addOutline(autodraw, L"square", outlineSquare);
    addOutline(autodraw, L"diamond", outlineDiamond);
    addOutline(autodraw, L"heart", outlineHeart);
    addOutline(autodraw, L"ellipse", outlineEllipse);
    addOutline(autodraw, L"triangle", outlineTriangle);
    addOutline(autodraw, L"flower", outlineFlower);
    addOutline(autodraw, L"sun", outlineSun);
    addOutline(autodraw, L"face", outlineFace);
    addOutline(autodraw, L"house", outlineHouse);
    addOutline(autodraw, L"rocket", outlineRocket);
    addOutline(autodraw, L"stick figure", outlineStickFigure);
    addOutline(autodraw, L"rainbow", outlineRainbow);
    autodraw.endRow();
    for (int form = 0; form < 6; ++form)
        addPath(autodraw, form);
    autodraw.endRow();
    for (int form = 0; form < 5; ++form)
        addSketch(autodraw, form);
    autodraw.endRow();
    for (int form = 0; form < 6; ++form)
        addMotif(autodraw, form);
    autodraw.endRow();
    addRun(autodraw);
    autodraw.save(folder + L"\\autodraw.png");
    Sheet wipes(7);
    for (int style = 0; style < 8; ++style)
        addWipe(wipes, style);
    wipes.save(folder + L"\\wipes.png");
}

int main(int argc, char **argv)
{
    if (argc < 2) return 2;
    GdiplusStartupInput input;
    ULONG_PTR token = 0;
    GdiplusStartup(&token, &input, nullptr);
    const std::string folder = argv[1];
    drawSheets(std::wstring(folder.begin(), folder.end()));
    GdiplusShutdown(token);
    return 0;
}
