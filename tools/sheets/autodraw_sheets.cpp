// autodraw_sheets FOLDER: writes autodraw.png, everything that draws by itself, and wipes.png, all wipes step
// by step.
#include "autodraw/motifs.h"
#include "autodraw/outlines.h"
#include "autodraw/pen_paths.h"
#include "autodraw/scenes.h"
#include "autodraw/sequencer.h"
#include "autodraw/sketches.h"
#include "clearing/actions.h"
#include "clearing/wipes.h"
#include "marks/strokes.h"
#include "sheet.h"

struct Paper : Desk {
    Paper() : Desk({Sheet::desk()}, 0xF8F4F0)
    {
        resetPen();
        penLastValid = false;
        autoMode = 3;
        autoStepsLeft = 88;
    }
};

static void addOutline(Sheet &sheet, const std::wstring &name, void (*build)(POINT))
{
    for (const bool large : {false, true}) {
        const Paper paper;
        int chance = 50;  // each picture has a limit of its own from 35 to 62
        for (uint32_t seed = 1; large ? chance >= 35 : chance < 62; ++seed) {
            seedAll(seed);
            for (int i = 0; i < 4; ++i)
                randInt(0, 99);  // the colour and its life
            chance = randInt(0, 99);
            seedAll(seed);
        }
        build(Sheet::middle);
        while (outlineTracing)
            traceOutlineStep();
        sheet.add(surfaces[0], name + (large ? L", large" : L", small"), build == outlineRainbow ? 6 : 4);
    }
}

// kind is 0 for paths, 1 for sketches, 2 for motifs.
static void addScene(Sheet &sheet, int kind, int form, const std::wstring &name)
{
    const Paper paper;
    int drawn = -1;
    double off = 0.0;
    for (uint32_t seed = 1; drawn != form || off > 120.0; ++seed) {
        seedAll(seed);
        if (kind < 2) drawn = randInt(0, kind == 0 ? 5 : 4);
        off = distanceBetween(freshPenStart(), Sheet::middle);
        if (kind == 2) drawn = randInt(0, 5);
        penLastValid = false;
        seedAll(seed);
    }
    if (kind == 0) {
        newPenPath();
        paintSegments(penPath, 0x0000C8, 8, 8);
        paintBlob(penPath.front(), 14, 14, 0x00A000);
    } else {
        kind == 1 ? startSketch() : startMotif();
    }
    while (sketchActive || motifActive)
        sketchActive ? stepSketch() : stepMotif();
    sheet.add(surfaces[0], name, kind == 0 ? 6 : 4, kind == 0 ? Sheet::middle : penLastPoint);
}

static void addRun(Sheet &sheet)
{
    const Paper paper;
    penColor = 0xC6FF87;
    penColorLife = 12;
    for (int step = 1; step <= 88; ++step) {
        onTimer3();
        if (step % 11 == 0) sheet.add(surfaces[0], L"a run, " + std::to_wstring(step) + L" steps");
    }
}

static void addWipe(Sheet &sheet, int style, const std::wstring &name, int length)
{
    const Paper paper;
    for (int i = 0; i < 40; ++i) {
        const POINT from = randomPointOn(surfaces[0], 24);
        const POINT to = randomPointOn(surfaces[0], 24);
        brushStroke(from, to, 14, 92);
    }
    startWipe();
    wipeStyle = style;
    wipeCorner = 3;
    wipeScale = 1;
    revealWipe = style == 5 || style == 7;
    backgroundColor = 0x78C8E6;
    revealColor = 0xDABEAC;
    for (int kept = 0; wipeRunning;) {
        wipeTick();
        if (wipeRunning && wipeStep != 1 + kept * length / 6) continue;
        sheet.add(surfaces[0], name + L", step " + std::to_wstring(wipeStep));
        ++kept;
    }
}

int main(int argc, char **argv)
{
    if (argc != 2) return 2;
    const std::wstring folder(argv[1], argv[1] + strlen(argv[1]));
    beginDesks();
    static constexpr std::pair<const wchar_t *, void (*)(POINT)> outlines[] = {
        {L"star", outlineStar},      {L"square", outlineSquare},   {L"diamond", outlineDiamond},
        {L"heart", outlineHeart},    {L"ellipse", outlineEllipse}, {L"triangle", outlineTriangle},
        {L"flower", outlineFlower},  {L"sun", outlineSun},         {L"face", outlineFace},
        {L"house", outlineHouse},    {L"rocket", outlineRocket},   {L"stick figure", outlineStickFigure},
        {L"rainbow", outlineRainbow}};
    Sheet autodraw(8);
    for (const auto &[name, build] : outlines)
        addOutline(autodraw, name, build);
    static const wchar_t *const scenes[][6] = {
        {L"curve", L"zigzag", L"straight line", L"ellipse", L"chain", L"short chain"},
        {L"poles", L"ring, dots, smile", L"blob, line, box, dots", L"blob and spots", L"scribble"},
        {L"bead chain", L"spiral shell", L"eared head", L"rayed disc", L"zigzag", L"stick body"}};
    for (int i = 0; i < 18; ++i) {
        if (const wchar_t *name = scenes[i / 6][i % 6]) addScene(autodraw, i / 6, i % 6, name);
    }
    addRun(autodraw);
    autodraw.save(folder + L"\\autodraw.png");
    Sheet sheet(7);
    static constexpr std::pair<const wchar_t *, int> wipes[] = {
        {L"left", 105},   {L"right", 105}, {L"top", 103},  {L"bottom", 103},
        {L"corner", 105}, {L"ring", 51},   {L"band", 182}, {L"bubbles", 116}};
    for (int style = 0; style < 8; ++style)
        addWipe(sheet, style, wipes[style].first, wipes[style].second);
    sheet.save(folder + L"\\wipes.png");
    return 0;
}
