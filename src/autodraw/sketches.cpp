#include "autodraw/sketches.h"

#include <cmath>
#include <vector>

#include "autodraw/motifs.h"
#include "autodraw/pen_paths.h"
#include "marks/strokes.h"

// The open sketch. All points are virtual-screen points.
struct Sketch {
    int form = 0;     // 0 poles, 1 ring with dots and a smile, 2 blob with box, 3 spotted blob, 4 scribble
    int step = 0;     // the next one
    int steps = 0;    // how many there are
    int count = 0;    // poles or dots
    int spacing = 0;  // from pole to pole
    POINT anchor = {};
    POINT target = {};  // of form 1's smile
    std::vector<POINT> points;
};
static Sketch sketch;  // a stop of the run leaves it alone: the next run goes on with it

void clearSketch()
{
    sketchActive = false;
    sketch = {};
}

static void strokeThin(POINT from, POINT to)
{
    brushStroke(from, to, 3, 24);
}

static void layPoles()
{
    sketch.count = randInt(5, 7);
    sketch.spacing = randInt(56, 74);
    sketch.steps = sketch.count * 2;
}

static void layRing()
{
    sketch.count = randInt(4, 6);
    for (int i = 0; i < sketch.count; ++i) {
        const int dx = randInt(-200, 200);
        const int dy = randInt(-170, 150);
        POINT dot = {sketch.anchor.x + dx, sketch.anchor.y + dy};
        clampToVirtualScreen(dot);
        sketch.points.push_back(dot);
    }
    const int dx = randInt(-120, 120);
    const int dy = randInt(130, 240);
    sketch.target = {sketch.anchor.x + dx, sketch.anchor.y + dy};
    clampToVirtualScreen(sketch.target);
    sketch.steps = sketch.count + 2;
}

static void layBox()
{
    const int dx = randInt(140, 320);
    const int dy = randInt(-220, 220);
    POINT corner = {sketch.anchor.x + dx, sketch.anchor.y + dy};
    const POINT offset = randomOffset(90, 90);
    POINT second = {corner.x + offset.x, corner.y + offset.y};  // nothing draws it
    clampToVirtualScreen(corner);
    clampToVirtualScreen(second);
    sketch.points = {corner, second};
    sketch.count = randInt(3, 5);
    sketch.steps = sketch.count + 2;
}

static void laySpots()
{
    sketch.count = randInt(5, 8);
    for (int i = 0; i < sketch.count; ++i) {
        const POINT offset = randomOffset(120, 95);
        POINT spot = {sketch.anchor.x + offset.x, sketch.anchor.y + offset.y};
        clampToVirtualScreen(spot);
        sketch.points.push_back(spot);
    }
    sketch.steps = sketch.count + 1;
}

static void layScribble()
{
    const int turns = randInt(7, 10);
    sketch.points.push_back(sketch.anchor);
    for (int i = 0; i < turns; ++i) {
        const POINT offset = randomOffset(95, 80);
        const POINT last = sketch.points.back();
        POINT next = {last.x + offset.x, last.y + offset.y};
        clampToVirtualScreen(next);
        sketch.points.push_back(next);
    }
    sketch.points.push_back(sketch.anchor);
    sketch.steps = int(sketch.points.size()) - 1;
}

void startSketch()
{
    clearMotif();
    clearSketch();
    sketchActive = true;
    sketch.form = randInt(0, 4);
    sketch.anchor = freshPenStart();
    switch (sketch.form) {
    case 0: layPoles(); break;
    case 1: layRing(); break;
    case 2: layBox(); break;
    case 3: laySpots(); break;
    case 4: layScribble(); break;
    }
    keepInside(sketch.anchor, 72);
    for (POINT &point : sketch.points)
        keepInside(point, 44);
    keepInside(sketch.target, 40);  // in every form, though only the ring has a use for it
}

// Pole and crossbar in turn; the height is each step's own, so they seldom meet.
static void drawPoles(int step)
{
    const int k = step / 2;
    const LONG x = sketch.anchor.x + k * sketch.spacing;
    const LONG y = sketch.anchor.y - 25 + k * 19 % 50;
    const int height = randInt(70, 120);
    const LONG top = y - height;
    if (step % 2 == 0) {
        const int sway = randInt(-8, 8);
        POINT foot = {x, y};
        POINT tip = {x + sway, top};
        keepInside(foot, 30);
        keepInside(tip, 30);
        strokeThin(foot, tip);
    } else {
        const int reach = randInt(24, 48);
        const int leftDrop = randInt(12, 28);
        const int rightDrop = randInt(8, 32);
        POINT left = {x - reach, top + leftDrop};
        POINT right = {x + reach, top + rightDrop};
        keepInside(left, 28);
        keepInside(right, 28);
        strokeThin(left, right);
    }
}

static void drawFlatRing()
{
    const int radius = randInt(55, 95);
    POINT last = {sketch.anchor.x + radius, sketch.anchor.y};  // outside the ring: the first chord reaches in
    for (int j = 1; j <= 9; ++j) {
        const float angle = float(j) * 2.0f * pi / 9.0f;
        const LONG x = sketch.anchor.x + lroundf(cosf(angle) * float(radius) * 0.55f);
        const LONG y = sketch.anchor.y + lroundf(sinf(angle) * float(radius) * 0.55f);
        strokeThin(last, {x, y});
        last = {x, y};
    }
}

static void drawRing(int step)
{
    if (step == 0) return drawFlatRing();
    if (step <= sketch.count) {
        const MarkColor color = randColor(50, 255);
        const int radiusY = randInt(12, 22);
        const int radiusX = randInt(10, 18);
        paintBlob(sketch.points[size_t(step - 1)], radiusX, radiusY, color);
        return;
    }
    const MarkColor color = randColor(120, 245);
    const int radiusY = randInt(22, 40);
    const int radiusX = randInt(35, 65);
    paintArc(sketch.target, radiusX, radiusY, color);
}

static void drawSquare(POINT corner)
{
    const int side = randInt(36, 72);
    const POINT right = {corner.x + side, corner.y};
    const POINT opposite = {corner.x + side, corner.y + side};
    const POINT below = {corner.x, corner.y + side};
    strokeThin(corner, right);
    strokeThin(right, opposite);
    strokeThin(opposite, below);
    strokeThin(below, corner);
}

// Dots along the line from the blob to the box.
static void drawBoxDot(int step, POINT corner)
{
    const float share = float(step - 2) / float(sketch.count + 1);
    const POINT anchor = sketch.anchor;
    const POINT off = randomOffset(12, 12);
    const LONG x = lroundf(float(anchor.x) + float(corner.x - anchor.x) * share + float(off.x));
    const LONG y = lroundf(float(anchor.y) + float(corner.y - anchor.y) * share + float(off.y));
    const MarkColor color = randColor(50, 255);
    const int radiusY = randInt(8, 14);
    const int radiusX = randInt(8, 14);
    paintBlob({x, y}, radiusX, radiusY, color);
}

static void drawBox(int step)
{
    const POINT corner = sketch.points[0];
    if (step == 0) {
        const MarkColor color = randColor(120, 245);
        const int radiusY = randInt(55, 95);
        const int radiusX = randInt(70, 110);
        paintBlob(sketch.anchor, radiusX, radiusY, color);
        return;
    }
    if (step == 1) return brushStroke(sketch.anchor, corner, 12, 88);
    if (step == 2) return drawSquare(corner);
    drawBoxDot(step, corner);
}

static void drawTwinBlob()
{
    const MarkColor color = randColor(120, 245);
    const int radiusY = randInt(75, 120);
    const int radiusX = randInt(95, 150);
    paintBlob(sketch.anchor, radiusX, radiusY, color);
    const POINT offset = randomOffset(55, 40);
    const int smallX = randInt(40, 70);
    const int smallY = randInt(35, 60);
    paintBlob({sketch.anchor.x + offset.x, sketch.anchor.y + offset.y}, smallX, smallY, color);
}

static void drawSpots(int step)
{
    if (step == 0) return drawTwinBlob();
    const POINT spot = sketch.points[size_t(step - 1)];
    const MarkColor color = randColor(50, 255);
    const int radiusY = randInt(11, 20);
    const int radiusX = randInt(9, 16);
    paintBlob(spot, radiusX, radiusY, color);
    if (randInt(0, 2) != 0) return;
    const POINT offset = randomOffset(6, 5);
    paintBlob({spot.x + offset.x, spot.y + offset.y}, 4, 5, 0x141414);
}

bool stepSketch()
{
    if (!sketchActive) return true;
    const int step = sketch.step;
    switch (sketch.form) {
    case 0: drawPoles(step); break;
    case 1: drawRing(step); break;
    case 2: drawBox(step); break;
    case 3: drawSpots(step); break;
    case 4: strokeThin(sketch.points[size_t(step)], sketch.points[size_t(step) + 1]); break;
    }
    ++sketch.step;
    if (sketch.step < sketch.steps) return false;
    clearSketch();
    return true;
}
