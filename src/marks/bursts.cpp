#include "marks/bursts.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "marks/angles.h"
#include "marks/stamps.h"
#include "marks/strokes.h"
#include "sound/playback.h"

// One of four shapes on every monitor, even where it lies outside. It is not invalidated: it appears with
// the next paint of the window.
static void plainShape(POINT point)
{
    static constexpr Shape kinds[] = {Shape::star, Shape::heart, Shape::flower, Shape::cloud};
    const int kind = randInt(0, 3);
    const int size = randInt(56, 110);
    const MarkColor color = anyColor();
    for (const MonitorSurface &surface : surfaces)
        shapeOnSurface(surface, kinds[kind], point, size, color);
}

static void zigzag(POINT point)
{
    const int count = randInt(4, 7);
    POINT current = point;
    for (int i = 0; i < count; ++i) {
        const POINT next = strayFrom(current, -130, 130, -110, 110);
        brushStroke(current, next);
        current = next;
    }
}

// Each mark takes the draws (0 to 99) up to and including its limit.
struct WeightedMark {
    int limit;
    void (*draw)(POINT);
};
static constexpr WeightedMark ordinaryMarks[] = {
    {6, popShape},        {16, stampFace},   {24, stampSun},      {32, stampRainbow},     {39, stampHouse},
    {46, stampBalloon},   {53, stampTree},   {60, plainShape},    {67, stampStickFigure}, {73, stampCat},
    {82, stampBlushFace}, {86, stampRocket}, {90, stampCar},      {93, stampTrain},       {96, stampFish},
    {97, spiralStroke},   {98, zigzag},      {99, stampRayBurst},
};

void burst(POINT point)
{
    const int rare = randInt(0, 999);
    if (rare < 18) {
        stampBigFace(point);
        if (soundEnabled && passGate(lastSoundTick, 200)) playMarkSound();
        return;
    }
    if (rare < 35) {
        catParade(point);
        if (soundEnabled && passGate(lastSoundTick, 180)) playMarkSound();
        return;
    }
    const int choice = randInt(0, 99);
    const auto mark = std::find_if(std::begin(ordinaryMarks), std::end(ordinaryMarks),
                                   [choice](const WeightedMark &row) { return choice <= row.limit; });
    mark->draw(point);
}

void spaceBurst()
{
    beginMark();
    const POINT middle = launchMiddle();
    const int choice = randInt(0, 99);
    if (choice < 34) return stampBigFace(middle);
    if (choice < 52) return catParade(middle);
    if (choice < 70) return stampRocket(middle);
    const int size = randInt(150, 220);
    const MarkColor color = brightColor();
    const Shape shape = choice < 85 ? Shape::star : Shape::heart;
    for (const MonitorSurface &surface : surfaces) {
        shapeOnSurface(surface, shape, middle, size, color);
        invalidateWhole(surface);
    }
}

static Shape pickScatterShape()
{
    if (scatterShape == starsOnly) return Shape::star;
    if (scatterShape == heartsOnly) return Shape::heart;
    return Shape(randInt(0, 4));
}

void scatterMarks(bool withSound)
{
    static constexpr int sizes[] = {11, 16, 21, 26, 32, 39, 47, 56, 66, 78, 92, 108, 126, 148};
    beginMark();
    for (const MonitorSurface &surface : surfaces) {
        const int x = randInt(surface.rect.left, surface.rect.right - 1);
        const int y = randInt(surface.rect.top, surface.rect.bottom - 1);
        const int size = sizes[randInt(0, 13)];
        const MarkColor color = anyColor();
        const Shape shape = pickScatterShape();
        shapeOnSurface(surface, shape, {x, y}, size, color);
        const POINT local = toLocal(surface, {x, y});
        // Smaller than a heart or a cloud, on purpose: a later paint shows the rest.
        invalidateAround(surface, local, size + 7, size + 7);
    }
    if (withSound) playScatterSound();
}

static void turnedSquare(const MonitorSurface &surface, POINT local, int size, MarkColor color)
{
    const int angle = randInt(-22, 22);  // degrees
    const float s = float(size);
    GraphicsScope scope(surface);
    scope.note(
        GdipTranslateWorldTransform(scope.graphics, float(local.x), float(local.y), MatrixOrderPrepend));
    scope.note(GdipRotateWorldTransform(scope.graphics, float(angle), MatrixOrderPrepend));
    const OwnedBrush fill = solidBrush(color, 0xE8);
    const OwnedPen outline = plainPen(outlineWhite, 3.5f);
    paintRect(scope, fill, outline, -s, -s, 2 * s, 2 * s);
}

void popShape(POINT point)
{
    if (!surfaceHolding(point)) point = randomPointOnLaunch(88);
    keepInside(point, 88);
    const int kind = randInt(0, 99);
    const bool large = randInt(0, 99) < 58;
    const int size = randInt(large ? 142 : 88, large ? 198 : 128);
    const MarkColor color = anyColor();
    const MonitorSurface *surface = surfaceHolding(point);
    if (!surface || !surface->canvasDC) return;
    beginMark();
    const POINT local = toLocal(*surface, point);
    if (kind >= 58) {
        turnedSquare(*surface, local, size, color);
    } else {
        starOnSurface(*surface, point, size, color);
    }
    // The corners of a turned square may lie outside, on purpose: a later paint shows them.
    invalidateAround(*surface, local, size + 12, size + 12);
}

void bezierStroke(POINT p0, POINT p1, POINT p2, POINT p3)
{
    for (const MonitorSurface &surface : surfaces) {
        const POINT a = toLocal(surface, p0);
        const POINT b = toLocal(surface, p1);
        const POINT c = toLocal(surface, p2);
        const POINT d = toLocal(surface, p3);
        const MarkColor color = anyColor();
        const int width = randInt(14, 78);
        GraphicsScope scope(surface);
        const OwnedPen pen = cappedPen(toArgb(color, 0xE4), float(width));
        scope.note(GdipDrawBezier(scope.graphics, pen.get(), float(a.x), float(a.y), float(b.x), float(b.y),
                                  float(c.x), float(c.y), float(d.x), float(d.y)));
        const RECT start = lineBounds(a, b, lineReach(width));
        const RECT end = lineBounds(c, d, lineReach(width));
        RECT bounds;
        UnionRect(&bounds, &start, &end);
        invalidateMarkRect(surface, bounds);
    }
}

void wobblyStroke(POINT from, POINT to)
{
    constexpr double doublePi = std::numbers::pi;  // this stroke alone is in double precision
    const double dx = double(to.x) - from.x;
    const double dy = double(to.y) - from.y;
    const double length = std::hypot(dx, dy);
    if (length < 4.0) return brushStroke(from, to);
    const int cap = randInt(28, 56);
    const int count = std::clamp(int(length / 26.0), 9, cap);
    const int swing = randInt(12, 38);
    const int shift = randInt(0, 628);
    const int waves = randInt(2, 6);
    const double phase = shift / 100.0;
    POINT current = from;
    for (int i = 1; i <= count; ++i) {
        const double t = double(i) / count;
        const double rise = std::sin(t * doublePi);
        const double envelope = 0.72 * (rise * rise) + 0.28;  // never 0, so the line may miss its end point
        const double wave = std::sin(t * (2 * waves * doublePi / count) * count * 0.38 + phase);
        const double offset = wave * swing * envelope;  // across the line
        const POINT next = {std::lround(t * dx + from.x + offset * (-dy / length)),
                            std::lround(from.y + t * dy + offset * (dx / length))};
        brushStroke(current, next);
        current = next;
    }
}

void spiralStroke(POINT centre)
{
    const int count = randInt(20, 44);
    const int step = randInt(16, 28);
    int radius = randInt(8, 20);
    float angle = float(randInt(-900, 900)) / 100.0f;
    const auto onSpiral = [&](int jitter) {
        return POINT{jitter + int(cosf(angle) * float(radius)) + centre.x,
                     int(sinf(angle) * float(radius)) + centre.y};
    };
    POINT current = onSpiral(0);
    for (int i = 0; i < count; ++i) {
        const int wobble = randInt(-2, 2);
        angle += float(wobble) / 100.0f + float(step) / 100.0f;
        radius += randInt(7, 16);
        const int jitter = randInt(-5, 5);  // of x only
        const POINT next = onSpiral(jitter);
        brushStroke(current, next);
        current = next;
    }
}

// A cat and four to seven wobbly lines around it.
void catParade(POINT point)
{
    stampCat(point);
    for (int i = 0;; ++i) {
        const int bound = randInt(4, 7);  // drawn anew at each test
        if (i >= bound) return;
        const POINT from = strayFrom(point, -360, 360, -250, 250);
        const POINT to = strayFrom(from, -180, 180, -120, 120);
        wobblyStroke(from, to);
    }
}

void stampRayBurst(POINT centre)
{
    const int count = randInt(12, 22);
    for (int i = 0; i < count; ++i) {
        const int lean = randInt(-2, 2);
        const float angle = float(lean) / 10.0f + float(i + i) * pi / float(count);
        const int startX = randInt(8, 40);
        const int startY = randInt(8, 34);
        const int endX = randInt(60, 120);
        const int endY = randInt(50, 105);
        const POINT start = {centre.x + int(float(startX) * cosf(angle)),
                             centre.y + int(float(startY) * sinf(angle))};
        const POINT end = {centre.x + int(float(endX) * cosf(angle)),
                           centre.y + int(float(endY) * sinf(angle))};
        const POINT nearStart = strayFrom(start, -50, 50, -40, 40);
        const POINT nearEnd = strayFrom(end, -60, 60, -55, 55);
        bezierStroke(start, nearStart, nearEnd, end);
    }
    if (randInt(0, 1) == 1) {
        const int leftFar = randInt(30, 60);
        const int upFar = randInt(50, 90);
        const int leftNear = randInt(10, 35);
        const int upNear = randInt(80, 130);
        const POINT a = {centre.x - leftFar, centre.y - upFar};
        const POINT b = {centre.x - leftNear, centre.y - upNear};
        const POINT c = strayFrom(centre, -8, 8, 8, 24);
        brushStroke(b, c);
        brushStroke(b, a);
    }
    const POINT p = strayFrom(centre, 15, 70, -25, 60);
    const POINT q = strayFrom(centre, 80, 180, -55, 55);
    const POINT m = strayFrom({(p.x + q.x) / 2, (p.y + q.y) / 2}, -52, 52, -44, 44);
    brushStroke(p, m);
    brushStroke(m, q);
}
