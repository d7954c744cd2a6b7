#include "autodraw/sketches.h"

#include <cmath>

#include "autodraw/pen_paths.h"
#include "autodraw/scenes.h"
#include "marks/angles.h"
#include "marks/strokes.h"

enum SketchForm { poles, ring, boxedBlob, spottedBlob, scribble };

static void strokeThin(POINT from, POINT to)
{
    brushStroke(from, to, 3, 24);
}

static void layPoles()
{
    scene.count = randInt(5, 7);
    scene.spacing = randInt(56, 74);
    scene.steps = scene.count * 2;
}

static void layRing()
{
    scene.count = randInt(4, 6);
    for (int i = 0; i < scene.count; ++i) {
        POINT dot = strayFrom(scene.anchor, -200, 200, -170, 150);
        clampToVirtualScreen(dot);
        scene.points.push_back(dot);
    }
    scene.target = strayFrom(scene.anchor, -120, 120, 130, 240);
    clampToVirtualScreen(scene.target);
    scene.steps = scene.count + 2;
}

static void layBox()
{
    POINT corner = strayFrom(scene.anchor, 140, 320, -220, 220);
    // Never drawn; its draws keep the random sequence unchanged.
    POINT second = strayFrom(corner, -90, 90, -90, 90);
    clampToVirtualScreen(corner);
    clampToVirtualScreen(second);
    scene.points = {corner, second};
    scene.count = randInt(3, 5);
    scene.steps = scene.count + 2;
}

static void laySpots()
{
    scene.count = randInt(5, 8);
    for (int i = 0; i < scene.count; ++i) {
        POINT spot = strayFrom(scene.anchor, -120, 120, -95, 95);
        clampToVirtualScreen(spot);
        scene.points.push_back(spot);
    }
    scene.steps = scene.count + 1;
}

static void layScribble()
{
    const int turns = randInt(7, 10);
    scene.points.push_back(scene.anchor);
    for (int i = 0; i < turns; ++i) {
        POINT next = strayFrom(scene.points.back(), -95, 95, -80, 80);
        clampToVirtualScreen(next);
        scene.points.push_back(next);
    }
    scene.points.push_back(scene.anchor);
    scene.steps = int(scene.points.size()) - 1;
}

void startSketch()
{
    clearScene();
    sketchActive = true;
    scene.form = randInt(0, 4);
    scene.anchor = freshPenStart();
    switch (scene.form) {
    case poles: layPoles(); break;
    case ring: layRing(); break;
    case boxedBlob: layBox(); break;
    case spottedBlob: laySpots(); break;
    case scribble: layScribble(); break;
    }
    keepInside(scene.anchor, 72);
    for (POINT &point : scene.points)
        keepInside(point, 44);
    keepInside(scene.target, 40);  // in every form, though only the ring uses it
}

// Pole and crossbar in turn; each step draws its own height, so they seldom meet.
static void drawPoles(int step)
{
    const int k = step / 2;
    const LONG x = scene.anchor.x + k * scene.spacing;
    const LONG y = scene.anchor.y - 25 + k * 19 % 50;
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
    // Starts outside the ring, so the first chord reaches in.
    POINT last = {scene.anchor.x + radius, scene.anchor.y};
    for (int j = 1; j <= 9; ++j) {
        const float angle = float(j) * 2.0f * pi / 9.0f;
        const LONG x = scene.anchor.x + lroundf(cosf(angle) * float(radius) * 0.55f);
        const LONG y = scene.anchor.y + lroundf(sinf(angle) * float(radius) * 0.55f);
        strokeThin(last, {x, y});
        last = {x, y};
    }
}

static void drawRing(int step)
{
    if (step == 0) return drawFlatRing();
    if (step <= scene.count) {
        const MarkColor color = anyColor();
        const int radiusY = randInt(12, 22);
        const int radiusX = randInt(10, 18);
        paintBlob(scene.points[size_t(step - 1)], radiusX, radiusY, color);
        return;
    }
    const MarkColor color = brightColor();
    const int radiusY = randInt(22, 40);
    const int radiusX = randInt(35, 65);
    paintArc(scene.target, radiusX, radiusY, color);
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
    const float share = float(step - 2) / float(scene.count + 1);
    const POINT anchor = scene.anchor;
    const POINT off = randomOffset(12, 12);
    const LONG x = lroundf(float(anchor.x) + float(corner.x - anchor.x) * share + float(off.x));
    const LONG y = lroundf(float(anchor.y) + float(corner.y - anchor.y) * share + float(off.y));
    const MarkColor color = anyColor();
    const int radiusY = randInt(8, 14);
    const int radiusX = randInt(8, 14);
    paintBlob({x, y}, radiusX, radiusY, color);
}

static void drawBox(int step)
{
    const POINT corner = scene.points[0];
    if (step == 0) {
        const MarkColor color = brightColor();
        const int radiusY = randInt(55, 95);
        const int radiusX = randInt(70, 110);
        paintBlob(scene.anchor, radiusX, radiusY, color);
        return;
    }
    if (step == 1) return brushStroke(scene.anchor, corner, 12, 88);
    if (step == 2) return drawSquare(corner);
    drawBoxDot(step, corner);
}

static void drawTwinBlob()
{
    const MarkColor color = brightColor();
    const int radiusY = randInt(75, 120);
    const int radiusX = randInt(95, 150);
    paintBlob(scene.anchor, radiusX, radiusY, color);
    const POINT second = strayFrom(scene.anchor, -55, 55, -40, 40);
    const int smallX = randInt(40, 70);
    const int smallY = randInt(35, 60);
    paintBlob(second, smallX, smallY, color);
}

static void drawSpots(int step)
{
    if (step == 0) return drawTwinBlob();
    const POINT spot = scene.points[size_t(step - 1)];
    const MarkColor color = anyColor();
    const int radiusY = randInt(11, 20);
    const int radiusX = randInt(9, 16);
    paintBlob(spot, radiusX, radiusY, color);
    if (randInt(0, 2) != 0) return;
    const POINT pupil = strayFrom(spot, -6, 6, -5, 5);
    paintBlob(pupil, 4, 5, 0x141414);
}

bool stepSketch()
{
    if (!sketchActive) return true;
    const int step = scene.step;
    switch (scene.form) {
    case poles: drawPoles(step); break;
    case ring: drawRing(step); break;
    case boxedBlob: drawBox(step); break;
    case spottedBlob: drawSpots(step); break;
    case scribble: strokeThin(scene.points[size_t(step)], scene.points[size_t(step) + 1]); break;
    }
    ++scene.step;
    if (scene.step < scene.steps) return false;
    clearScene();
    return true;
}
