#include "autodraw/motifs.h"

#include <cmath>
#include <vector>

#include "autodraw/pen_paths.h"
#include "autodraw/sketches.h"
#include "marks/strokes.h"

// The open motif. All points are virtual-screen points.
struct Motif {
    int form = 0;   // 0 bead chain, 1 shell, 2 eared head, 3 rayed disc, 4 zigzag, 5 stick body
    int step = 0;   // the next one
    int steps = 0;  // how many there are
    int size = 0;   // of the shell, the head and the disc
    POINT anchor = {};
    MarkColor colorA = 0, colorB = 0, colorC = 0;
    std::vector<POINT> points;                                // of the chain and the zigzag
    POINT head = {}, neck = {}, leftHip = {}, rightHip = {};  // of the stick body
};
static Motif motif;  // a stop of the run leaves it alone: the next run goes on with it

void clearMotif()
{
    motifActive = false;
    motif = {};
}

static void layBeads()
{
    motif.steps = randInt(5, 7);
    motif.colorA = randColor(120, 245);
    POINT bead = motif.anchor;
    motif.points.push_back(bead);
    for (int i = 1; i < motif.steps; ++i) {
        const int dx = randInt(48, 78);
        const int dy = randInt(-38, 38);
        bead = {bead.x + dx, bead.y + dy};
        clampToVirtualScreen(bead);
        motif.points.push_back(bead);
    }
}

static void layShell()
{
    motif.size = randInt(52, 88);
    motif.colorA = randColor(120, 245);
    motif.colorB = randColor(50, 255);
    motif.steps = 3;
}

static void layEaredHead()
{
    motif.size = randInt(70, 110);
    motif.colorA = randColor(120, 245);
    motif.colorB = randColor(50, 255);
    motif.colorC = randColor(50, 255);
    motif.steps = 4;
}

static void layRayedDisc()
{
    motif.size = randInt(28, 44);
    motif.colorA = randColor(120, 245);
    motif.steps = 6;
}

static void layZigzag()
{
    const auto [x, y] = motif.anchor;
    const int x1 = randInt(-40, 40);
    const int y1 = randInt(55, 95);
    const int x2 = randInt(50, 110);
    const int y2 = randInt(10, 50);
    const int x3 = randInt(-30, 30);
    const int y3 = randInt(40, 90);
    const int x4 = randInt(60, 130);
    const int y4 = randInt(95, 170);
    motif.points = {{x, y}, {x + x1, y - y1}, {x + x2, y - y2}, {x + x3, y + y3}, {x + x4, y + y4}};
    for (POINT &point : motif.points)
        clampToVirtualScreen(point);
    motif.colorA = randColor(50, 255);
    motif.steps = 4;
}

static void layStickBody()
{
    const auto [x, y] = motif.anchor;
    const int headHeight = randInt(75, 120);
    const int leftReach = randInt(55, 95);
    const int leftDrop = randInt(70, 120);
    const int rightReach = randInt(55, 95);
    const int rightDrop = randInt(70, 120);
    motif.head = {x, y - headHeight};
    motif.neck = {x, y};
    motif.leftHip = {x - leftReach, y + leftDrop};
    motif.rightHip = {x + rightReach, y + rightDrop};
    for (POINT *joint : {&motif.head, &motif.neck, &motif.leftHip, &motif.rightHip}) {
        clampToVirtualScreen(*joint);
        keepInside(*joint, 44);
    }
    motif.colorA = randColor(120, 245);
    motif.steps = 4;
}

void startMotif()
{
    clearMotif();
    clearSketch();
    motifActive = true;
    motif.anchor = freshPenStart();
    keepInside(motif.anchor, 88);
    motif.form = randInt(0, 5);
    switch (motif.form) {
    case 0: layBeads(); break;
    case 1: layShell(); break;
    case 2: layEaredHead(); break;
    case 3: layRayedDisc(); break;
    case 4: layZigzag(); break;
    case 5: layStickBody(); break;
    }
    for (POINT &point : motif.points)
        keepInside(point, 48);
}

static void drawBead(int step)
{
    POINT &bead = motif.points[size_t(step)];
    keepInside(bead, 34);
    const int radiusX = randInt(16, 26);
    const int radiusY = randInt(14, 22);
    paintBlob(bead, radiusX, radiusY, motif.colorA);
    if (step > 0) brushStroke(motif.points[size_t(step - 1)], bead, 3, 24);
}

// x and y are the anchor on this surface.
static void drawShellSpiral(GraphicsScope &scope, float x, float y)
{
    const float size = float(motif.size);
    const OwnedPen pen = dashCappedPen(toArgb(motif.colorA, 220), 5.0f);
    float lastX = 0.0f;
    float lastY = 0.0f;
    for (int j = 0; j <= 15; ++j) {
        const float turn = float(j) * 0.0625f;
        const float radius = (turn * 0.62f + 0.35f) * size;
        const float angle = turn * 4.2f * pi;
        const float nextX = x + cosf(angle) * radius;
        const float nextY = y - size * 0.35f + sinf(angle) * radius * 0.72f;
        if (j > 0) scope.note(GdipDrawLine(scope.graphics, pen.get(), lastX, lastY, nextX, nextY));
        lastX = nextX;
        lastY = nextY;
    }
}

static void drawShell(GraphicsScope &scope, float x, float y, int step)
{
    const float size = float(motif.size);
    if (step == 0) return drawShellSpiral(scope, x, y);
    if (step == 1) {
        const OwnedBrush body = solidBrush(motif.colorA, 236);
        scope.note(
            GdipFillEllipse(scope.graphics, body.get(), x - size * 0.55f, y, size * 1.1f, size * 0.55f));
        return;
    }
    const OwnedPen feeler = dashCappedPen(toArgb(motif.colorB, 220), 3.0f);
    scope.note(
        GdipDrawLine(scope.graphics, feeler.get(), x - size * 0.45f, y + 8.0f, x - size * 0.75f, y - 18.0f));
    scope.note(
        GdipDrawLine(scope.graphics, feeler.get(), x - size * 0.2f, y + 8.0f, x - size * 0.05f, y - 20.0f));
}

static void drawSnout(GraphicsScope &scope, float x, float y)
{
    const float size = float(motif.size);
    const OwnedBrush snout = solidBrush(motif.colorB, 250);
    const OwnedBrush nose = solidBrush(0xFF141414);
    scope.note(GdipFillEllipse(scope.graphics, snout.get(), x - size * 0.35f, y - size * 0.35f, size * 0.7f,
                               size * 0.85f));
    scope.note(GdipFillEllipse(scope.graphics, nose.get(), x - size * 0.12f, y - size * 0.18f, size * 0.22f,
                               size * 0.28f));
}

static void drawWhiskers(GraphicsScope &scope, float x, float y)
{
    const float size = float(motif.size);
    const OwnedPen pen = dashCappedPen(toArgb(motif.colorC, 240), 4.0f);
    for (int j = 0; j < 5; ++j) {
        const float left = x - size * 0.35f + float(j) * size * 0.16f;
        scope.note(
            GdipDrawLine(scope.graphics, pen.get(), left, y + size * 0.35f, left + 6.0f, y + size * 0.55f));
    }
}

static void drawEars(GraphicsScope &scope, float x, float y)
{
    const float size = float(motif.size);
    const OwnedBrush ear = solidBrush(motif.colorC, 238);
    const GpPointF left[] = {{x - size * 0.55f, y - size * 0.55f},
                             {x - size * 0.35f, y - size * 1.05f},
                             {x - size * 0.12f, y - size * 0.45f}};
    const GpPointF right[] = {{x + size * 0.12f, y - size * 0.45f},
                              {x + size * 0.35f, y - size * 1.05f},
                              {x + size * 0.55f, y - size * 0.55f}};
    scope.note(GdipFillPolygon(scope.graphics, ear.get(), left, 3, FillModeAlternate));
    scope.note(GdipFillPolygon(scope.graphics, ear.get(), right, 3, FillModeAlternate));
}

static void drawEaredHead(GraphicsScope &scope, float x, float y, int step)
{
    const float size = float(motif.size);
    switch (step) {
    case 0: {
        const OwnedBrush head = solidBrush(motif.colorA, 236);
        scope.note(GdipFillEllipse(scope.graphics, head.get(), x - size, y - size * 0.75f, size * 2.0f,
                                   size * 1.5f));
        break;
    }
    case 1: drawSnout(scope, x, y); break;
    case 2: drawWhiskers(scope, x, y); break;
    case 3: drawEars(scope, x, y); break;
    }
}

// Shell and head have no strokes that keep to the screen: they are painted on every surface as they lie.
static void drawOnAll(void (*draw)(GraphicsScope &, float, float, int), int step)
{
    for (const MonitorSurface &surface : surfaces) {
        const POINT local = toLocal(surface, motif.anchor);
        {
            GraphicsScope scope(surface);
            draw(scope, float(local.x), float(local.y), step);
        }
        invalidateWhole(surface);
    }
}

// Rays from straight up round the right side of the disc: five of the ten that would go round.
static void drawRayedDisc(int step)
{
    if (step == 0) return paintBlob(motif.anchor, motif.size, motif.size, motif.colorA);
    const int length = randInt(28, 52);
    const float reach = float(motif.size + length);
    const float angle = float(step - 1) * pi / 5.0f - pi / 2.0f;
    POINT tip = {motif.anchor.x + lroundf(cosf(angle) * reach),
                 motif.anchor.y + lroundf(sinf(angle) * reach)};
    keepInside(tip, 28);
    brushStroke(motif.anchor, tip, 12, 72);
}

static void strokeBold(POINT from, POINT to)
{
    brushStroke(from, to, 14, 92);
}

static void drawArms()
{
    strokeBold(motif.head, motif.neck);
    for (const int side : {-1, 1}) {
        const int reach = randInt(50, 80);
        const int drop = randInt(20, 50);
        strokeBold(motif.neck, {motif.neck.x + side * reach, motif.neck.y + drop});
    }
}

static void drawStickBody(int step)
{
    switch (step) {
    case 0: {
        const int radiusX = randInt(22, 34);
        const int radiusY = randInt(22, 34);
        paintBlob(motif.head, radiusX, radiusY, motif.colorA);
        break;
    }
    case 1: drawArms(); break;
    case 2:
        strokeBold(motif.neck, motif.leftHip);
        strokeBold(motif.neck, motif.rightHip);
        break;
    case 3:
        for (const POINT hip : {motif.leftHip, motif.rightHip}) {
            const int drop = randInt(50, 90);
            strokeBold(hip, {hip.x, hip.y + drop});
        }
        break;
    }
}

bool stepMotif()
{
    if (!motifActive) return false;
    canvasDirty = true;
    flushBackdrop();
    const int step = motif.step;
    switch (motif.form) {
    case 0: drawBead(step); break;
    case 1: drawOnAll(drawShell, step); break;
    case 2: drawOnAll(drawEaredHead, step); break;
    case 3: drawRayedDisc(step); break;
    case 4: brushStroke(motif.points[size_t(step)], motif.points[size_t(step) + 1], 14, 78); break;
    case 5: drawStickBody(step); break;
    }
    ++motif.step;
    if (motif.step >= motif.steps) clearMotif();
    return true;
}
