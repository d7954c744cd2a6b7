#include "autodraw/motifs.h"

#include <cmath>

#include "autodraw/pen_paths.h"
#include "autodraw/scenes.h"
#include "marks/angles.h"
#include "marks/strokes.h"

enum MotifForm { beadChain, shell, earedHead, rayedDisc, zigzag, stickBody };

static void layBeads()
{
    scene.steps = randInt(5, 7);
    scene.colorA = brightColor();
    POINT bead = scene.anchor;
    scene.points.push_back(bead);
    for (int i = 1; i < scene.steps; ++i) {
        bead = strayFrom(bead, 48, 78, -38, 38);
        clampToVirtualScreen(bead);
        scene.points.push_back(bead);
    }
}

static void layShell()
{
    scene.size = randInt(52, 88);
    scene.colorA = brightColor();
    scene.colorB = anyColor();
    scene.steps = 3;
}

static void layEaredHead()
{
    scene.size = randInt(70, 110);
    scene.colorA = brightColor();
    scene.colorB = anyColor();
    scene.colorC = anyColor();
    scene.steps = 4;
}

static void layRayedDisc()
{
    scene.size = randInt(28, 44);
    scene.colorA = brightColor();
    scene.steps = 6;
}

static void layZigzag()
{
    const auto [x, y] = scene.anchor;
    const int x1 = randInt(-40, 40);
    const int y1 = randInt(55, 95);
    const int x2 = randInt(50, 110);
    const int y2 = randInt(10, 50);
    const int x3 = randInt(-30, 30);
    const int y3 = randInt(40, 90);
    const int x4 = randInt(60, 130);
    const int y4 = randInt(95, 170);
    scene.points = {{x, y}, {x + x1, y - y1}, {x + x2, y - y2}, {x + x3, y + y3}, {x + x4, y + y4}};
    for (POINT &point : scene.points)
        clampToVirtualScreen(point);
    scene.colorA = anyColor();
    scene.steps = 4;
}

static void layStickBody()
{
    const auto [x, y] = scene.anchor;
    const int headHeight = randInt(75, 120);
    const int leftReach = randInt(55, 95);
    const int leftDrop = randInt(70, 120);
    const int rightReach = randInt(55, 95);
    const int rightDrop = randInt(70, 120);
    scene.head = {x, y - headHeight};
    scene.neck = {x, y};
    scene.leftHip = {x - leftReach, y + leftDrop};
    scene.rightHip = {x + rightReach, y + rightDrop};
    for (POINT *joint : {&scene.head, &scene.neck, &scene.leftHip, &scene.rightHip}) {
        clampToVirtualScreen(*joint);
        keepInside(*joint, 44);
    }
    scene.colorA = brightColor();
    scene.steps = 4;
}

void startMotif()
{
    clearScene();
    motifActive = true;
    scene.anchor = freshPenStart();
    keepInside(scene.anchor, 88);
    scene.form = randInt(0, 5);
    switch (scene.form) {
    case beadChain: layBeads(); break;
    case shell: layShell(); break;
    case earedHead: layEaredHead(); break;
    case rayedDisc: layRayedDisc(); break;
    case zigzag: layZigzag(); break;
    case stickBody: layStickBody(); break;
    }
    for (POINT &point : scene.points)
        keepInside(point, 48);
}

static void drawBead(int step)
{
    POINT &bead = scene.points[size_t(step)];
    keepInside(bead, 34);
    const int radiusX = randInt(16, 26);
    const int radiusY = randInt(14, 22);
    paintBlob(bead, radiusX, radiusY, scene.colorA);
    if (step > 0) brushStroke(scene.points[size_t(step - 1)], bead, 3, 24);
}

// x and y: the anchor in surface-local coordinates.
static void drawShellSpiral(GraphicsScope &scope, float x, float y)
{
    const float size = float(scene.size);
    const OwnedPen pen = dashCappedPen(toArgb(scene.colorA, 220), 5.0f);
    float lastX = 0.0f;
    float lastY = 0.0f;
    for (int j = 0; j <= 15; ++j) {
        const float turn = float(j) * 0.0625f;
        const float radius = (turn * 0.62f + 0.35f) * size;
        const float angle = turn * 4.2f * pi;
        const float nextX = x + cosf(angle) * radius;
        const float nextY = y - size * 0.35f + sinf(angle) * radius * 0.72f;
        if (j > 0) drawLine(scope, pen, lastX, lastY, nextX, nextY);
        lastX = nextX;
        lastY = nextY;
    }
}

static void drawShell(GraphicsScope &scope, float x, float y, int step)
{
    const float size = float(scene.size);
    if (step == 0) return drawShellSpiral(scope, x, y);
    if (step == 1) {
        const OwnedBrush body = solidBrush(scene.colorA, 236);
        fillEllipse(scope, body, x - size * 0.55f, y, size * 1.1f, size * 0.55f);
        return;
    }
    const OwnedPen feeler = dashCappedPen(toArgb(scene.colorB, 220), 3.0f);
    drawLine(scope, feeler, x - size * 0.45f, y + 8.0f, x - size * 0.75f, y - 18.0f);
    drawLine(scope, feeler, x - size * 0.2f, y + 8.0f, x - size * 0.05f, y - 20.0f);
}

static void drawSnout(GraphicsScope &scope, float x, float y)
{
    const float size = float(scene.size);
    const OwnedBrush snout = solidBrush(scene.colorB, 250);
    const OwnedBrush nose = solidBrush(0xFF141414);
    fillEllipse(scope, snout, x - size * 0.35f, y - size * 0.35f, size * 0.7f, size * 0.85f);
    fillEllipse(scope, nose, x - size * 0.12f, y - size * 0.18f, size * 0.22f, size * 0.28f);
}

static void drawWhiskers(GraphicsScope &scope, float x, float y)
{
    const float size = float(scene.size);
    const OwnedPen pen = dashCappedPen(toArgb(scene.colorC, 240), 4.0f);
    for (int j = 0; j < 5; ++j) {
        const float left = x - size * 0.35f + float(j) * size * 0.16f;
        drawLine(scope, pen, left, y + size * 0.35f, left + 6.0f, y + size * 0.55f);
    }
}

static void drawEars(GraphicsScope &scope, float x, float y)
{
    const float size = float(scene.size);
    const OwnedBrush ear = solidBrush(scene.colorC, 238);
    const Triangle left = {{x - size * 0.55f, y - size * 0.55f},
                           {x - size * 0.35f, y - size * 1.05f},
                           {x - size * 0.12f, y - size * 0.45f}};
    const Triangle right = {{x + size * 0.12f, y - size * 0.45f},
                            {x + size * 0.35f, y - size * 1.05f},
                            {x + size * 0.55f, y - size * 0.55f}};
    fillTriangle(scope, ear, left);
    fillTriangle(scope, ear, right);
}

static void drawEaredHead(GraphicsScope &scope, float x, float y, int step)
{
    const float size = float(scene.size);
    switch (step) {
    case 0: {
        const OwnedBrush head = solidBrush(scene.colorA, 236);
        fillEllipse(scope, head, x - size, y - size * 0.75f, size * 2.0f, size * 1.5f);
        break;
    }
    case 1: drawSnout(scope, x, y); break;
    case 2: drawWhiskers(scope, x, y); break;
    case 3: drawEars(scope, x, y); break;
    }
}

// Shell and head are not kept on the screen: every surface paints them where they lie.
static void drawOnAll(void (*draw)(GraphicsScope &, float, float, int), int step)
{
    for (const MonitorSurface &surface : surfaces) {
        const POINT local = toLocal(surface, scene.anchor);
        {
            GraphicsScope scope(surface);
            draw(scope, float(local.x), float(local.y), step);
        }
        invalidateWhole(surface);
    }
}

// Five rays, from straight up round the right side of the disc.
static void drawRayedDisc(int step)
{
    if (step == 0) return paintBlob(scene.anchor, scene.size, scene.size, scene.colorA);
    const int length = randInt(28, 52);
    const float reach = float(scene.size + length);
    const float angle = float(step - 1) * pi / 5.0f - pi / 2.0f;
    POINT tip = {scene.anchor.x + lroundf(cosf(angle) * reach),
                 scene.anchor.y + lroundf(sinf(angle) * reach)};
    keepInside(tip, 28);
    brushStroke(scene.anchor, tip, 12, 72);
}

static void drawArms()
{
    brushStroke(scene.head, scene.neck);
    for (const int side : {-1, 1}) {
        const int reach = randInt(50, 80);
        const int drop = randInt(20, 50);
        brushStroke(scene.neck, {scene.neck.x + side * reach, scene.neck.y + drop});
    }
}

static void drawStickBody(int step)
{
    switch (step) {
    case 0: {
        const int radiusX = randInt(22, 34);
        const int radiusY = randInt(22, 34);
        paintBlob(scene.head, radiusX, radiusY, scene.colorA);
        break;
    }
    case 1: drawArms(); break;
    case 2:
        brushStroke(scene.neck, scene.leftHip);
        brushStroke(scene.neck, scene.rightHip);
        break;
    case 3:
        for (const POINT hip : {scene.leftHip, scene.rightHip}) {
            const int drop = randInt(50, 90);
            brushStroke(hip, {hip.x, hip.y + drop});
        }
        break;
    }
}

bool stepMotif()
{
    if (!motifActive) return false;
    beginMark();
    const int step = scene.step;
    switch (scene.form) {
    case beadChain: drawBead(step); break;
    case shell: drawOnAll(drawShell, step); break;
    case earedHead: drawOnAll(drawEaredHead, step); break;
    case rayedDisc: drawRayedDisc(step); break;
    case zigzag: brushStroke(scene.points[size_t(step)], scene.points[size_t(step) + 1], 14, 78); break;
    case stickBody: drawStickBody(step); break;
    }
    ++scene.step;
    if (scene.step >= scene.steps) clearScene();
    return true;
}
