#include "autodraw/outlines.h"

#include <algorithm>
#include <cmath>

#include "autodraw/pen_paths.h"
#include "marks/angles.h"

void beginOutline(bool quick)
{
    outlineQueue.clear();
    outlineTracing = true;
    outlineStrokeIndex = 0;
    outlinePointIndex = 0;
    outlineQuick = quick;
    outlineColor = anyColor();
    penColor = outlineColor;  // the pen continues in the picture's colour
    penColorLife = randInt(6, 12);
}

void appendSpaced(std::vector<POINT> &polyline, POINT point, int spacing)
{
    const double step = std::max(8, spacing);
    while (!polyline.empty()) {
        const POINT last = polyline.back();
        const double distance = distanceBetween(last, point);
        if (distance <= step) break;
        const double share = step / distance;
        polyline.push_back(
            {last.x + lround(share * (point.x - last.x)), last.y + lround(share * (point.y - last.y))});
    }
    polyline.push_back(point);
}

void appendBezier(std::vector<POINT> &polyline, POINT p0, POINT p1, POINT p2, POINT p3)
{
    const VirtualScreen screen = virtualScreen();
    for (int i = 1; i <= 28; ++i) {
        POINT point = curvePoint(p0, p1, p2, p3, float(i) / 28.0f);
        clampTo(screen, point);
        appendSpaced(polyline, point, 10);
    }
}

static POINT roundedOffset(POINT centre, float dx, float dy)
{
    return {centre.x + lroundf(dx), centre.y + lroundf(dy)};
}

void appendArc(POINT centre, int radius, float startAngle, float sweep, int segments, int spacing)
{
    std::vector<POINT> &arc = outlineQueue.emplace_back();
    const VirtualScreen screen = virtualScreen();
    for (int i = 0; i <= segments; ++i) {
        const float angle = startAngle + float(i) / float(segments) * sweep;
        POINT point = roundedOffset(centre, cosf(angle) * float(radius), sinf(angle) * float(radius));
        clampTo(screen, point);
        appendSpaced(arc, point, spacing);
    }
}

static void addLine(POINT from, POINT to, int spacing)
{
    appendSpaced(outlineQueue.emplace_back(std::vector<POINT>{from}), to, spacing);
}

// A closed polyline through corners or samples. Two points make a line that does not return.
static void addClosed(const std::vector<POINT> &corners, int spacing)
{
    std::vector<POINT> &polyline = outlineQueue.emplace_back();
    for (const POINT corner : corners)
        appendSpaced(polyline, corner, spacing);
    if (corners.size() > 2) appendSpaced(polyline, corners.front(), spacing);
}

// Fractions of a pixel are truncated towards the centre.
static POINT cutOffset(POINT centre, float dx, float dy)
{
    return {centre.x + int(dx), centre.y + int(dy)};
}

static POINT onCircle(POINT centre, float angle, float radius)
{
    return cutOffset(centre, cosf(angle) * radius, sinf(angle) * radius);
}

static void clampAll(std::vector<POINT> &points)
{
    const VirtualScreen screen = virtualScreen();
    for (POINT &point : points)
        clampTo(screen, point);
}

// A full circle of samples, the last on top of the first.
static std::vector<POINT> circle(POINT centre, int radius, int parts)
{
    std::vector<POINT> samples;
    for (int i = 0; i <= parts; ++i)
        samples.push_back(onCircle(centre, float(i) / float(parts) * 2.0f * pi, float(radius)));
    return samples;
}

// A size from the big range in bigPercent of 100 cases, else from the small one.
static int drawSize(int bigPercent, int bigLow, int bigHigh, int smallLow, int smallHigh)
{
    const int chance = randInt(0, 99);
    if (chance < bigPercent) return randInt(bigLow, bigHigh);
    return randInt(smallLow, smallHigh);
}

void outlineStar(POINT centre)
{
    beginOutline(false);
    const int radius = drawSize(62, 148, 215, 92, 132);
    const int percent = randInt(38, 58);
    const int innerRadius = std::max(14, int(float(percent) / 100.0f * float(radius)));
    std::vector<POINT> corners;
    for (int i = 0; i < 10; ++i) {
        const float angle = float(i) * pi / 5.0f - pi / 2.0f;
        corners.push_back(onCircle(centre, angle, float(i % 2 == 0 ? radius : innerRadius)));
    }
    clampAll(corners);
    addClosed(corners, radius > 139 ? 14 : 11);
}

void outlineSquare(POINT centre)
{
    beginOutline(false);
    const int half = drawSize(62, 132, 188, 78, 118);
    const int tilt = randInt(-28, 28);
    const float angle = float(tilt) / 100.0f;
    std::vector<POINT> corners;
    for (const auto &[signX, signY] : {std::pair(-1, -1), {1, -1}, {1, 1}, {-1, 1}}) {
        const float x = float(signX * half);
        const float y = float(signY * half);
        corners.push_back(
            cutOffset(centre, cosf(angle) * x - sinf(angle) * y, sinf(angle) * x + cosf(angle) * y));
    }
    clampAll(corners);
    addClosed(corners, half > 119 ? 13 : 11);
}

void outlineDiamond(POINT centre)
{
    beginOutline(false);
    const int half = drawSize(58, 132, 188, 78, 118);
    const auto [x, y] = centre;
    addClosed({{x, y - half}, {x + half, y}, {x, y + half}, {x - half, y}}, 11);
}

void outlineHeart(POINT centre)
{
    beginOutline(false);
    const int size = randInt(50, 88);
    const int widePercent = randInt(90, 125);
    const int tallPercent = randInt(85, 120);
    const int dipPercent = randInt(-26, -10);
    const float s = float(size);
    const float wide = float(widePercent) / 100.0f;
    const float tall = float(tallPercent) / 100.0f;
    const float dip = float(dipPercent) / 100.0f;  // negative: the notch lies above the centre
    const POINT tip = roundedOffset(centre, 0.0f, s * 0.95f * tall);
    const POINT notch = roundedOffset(centre, 0.0f, s * dip);
    const POINT lowerLeft = roundedOffset(centre, -s * 1.45f * wide, s * 0.25f * tall);
    const POINT upperLeft = roundedOffset(centre, -s * 1.1f * wide, -s * 0.85f * tall);
    const POINT upperRight = roundedOffset(centre, s * 1.1f * wide, -s * 0.85f * tall);
    const POINT lowerRight = roundedOffset(centre, s * 1.45f * wide, s * 0.25f * tall);
    std::vector<POINT> &heart = outlineQueue.emplace_back(std::vector<POINT>{tip});
    appendBezier(heart, tip, lowerLeft, upperLeft, notch);
    appendBezier(heart, notch, upperRight, lowerRight, tip);
}

void outlineEllipse(POINT centre)
{
    beginOutline(false);
    const int radiusX = randInt(48, 90);
    const int radiusY = randInt(40, std::max(42, radiusX - 6));
    const int parts = randInt(56, 76);
    std::vector<POINT> samples;
    for (int i = 0; i <= parts; ++i) {
        const float angle = float(i) / float(parts) * 2.0f * pi;
        samples.push_back(roundedOffset(centre, cosf(angle) * float(radiusX), sinf(angle) * float(radiusY)));
    }
    clampAll(samples);
    addClosed(samples, 10);
}

void outlineTriangle(POINT centre)
{
    beginOutline(false);
    const int size = drawSize(36, 118, 168, 52, 92);
    const int half = int(float(size) * 0.88f);
    const auto [x, y] = centre;
    addClosed({{x, y - size}, {x - half, y + size / 2}, {x + half, y + size / 2}}, size >= 110 ? 13 : 11);
}

// Six round lobes; between them the radius falls to 42 %.
void outlineFlower(POINT centre)
{
    beginOutline(false);
    const int radius = drawSize(38, 98, 148, 46, 82);
    const int spacing = radius > 94 ? 12 : 10;
    const int parts = 6 * spacing;  // larger flowers are smoother
    std::vector<POINT> samples;
    for (int i = 0; i <= parts; ++i) {
        const float angle = float(i) / float(parts) * 2.0f * pi;
        const float reach = float(radius) * (fabsf(sinf(angle * 6.0f * 0.5f)) * 0.58f + 0.42f);
        samples.push_back(onCircle(centre, angle, reach));
    }
    clampAll(samples);
    addClosed(samples, spacing);
}

void outlineSun(POINT centre)
{
    beginOutline(true);
    const int radius = drawSize(45, 88, 128, 42, 72);
    const int parts = randInt(52, 68);
    std::vector<POINT> disc = circle(centre, radius, parts);
    clampAll(disc);
    addClosed(disc, radius > 87 ? 12 : 10);
    const int rays = randInt(8, 12);
    const int length = randInt(30, 52);
    const float reach = float(radius + length);
    for (int ray = 0; ray < rays; ++ray) {
        const float angle = float(ray) / float(rays) * 2.0f * pi;
        addLine(onCircle(centre, angle, float(radius + 5)), onCircle(centre, angle, reach), 9);
    }
}

void outlineFace(POINT centre)
{
    beginOutline(true);
    const int radius = drawSize(40, 95, 138, 50, 82);
    const int parts = randInt(54, 70);
    addClosed(circle(centre, radius, parts), radius > 94 ? 12 : 10);
    const int eyeRadius = std::max(10, radius / 7);
    const int eyeOffset = int(float(radius) * 0.32f);
    const LONG eyeY = centre.y - radius / 6;
    addClosed(circle({centre.x - eyeOffset, eyeY}, eyeRadius, 14), 8);
    addClosed(circle({centre.x + eyeOffset, eyeY}, eyeRadius, 14), 8);
    const int mouthRadius = int(float(radius) * 0.72f);
    appendArc({centre.x, centre.y + radius / 8}, mouthRadius, 0.12f * pi, 0.76f * pi, 22, 9);
}

void outlineHouse(POINT centre)
{
    beginOutline(true);
    const int width = drawSize(38, 175, 240, 95, 150);
    const int spacing = width >= 175 ? 12 : 10;
    const int heightPercent = randInt(70, 95);
    const int height = width * heightPercent / 100;
    const int roofPercent = randInt(45, 65);
    const int roof = height * roofPercent / 100;
    const LONG left = centre.x - width / 2;
    const LONG right = left + width;
    const LONG bottom = centre.y + height / 2;
    const LONG top = bottom - height;
    addClosed({{left, bottom}, {right, bottom}, {right, top}, {left, top}}, spacing);
    addClosed({{left - 8, top}, {centre.x, top - roof}, {right + 8, top}}, spacing);
    const int doorWidth = std::max(width / 5, 22);
    const LONG doorLeft = left + (width - doorWidth) / 2;
    const LONG doorRight = left + (width + doorWidth) / 2;
    const LONG doorTop = bottom - std::max(height / 2, 30);
    addClosed({{doorLeft, bottom}, {doorRight, bottom}, {doorRight, doorTop}, {doorLeft, doorTop}}, spacing);
}

void outlineRocket(POINT centre)
{
    beginOutline(true);
    const int width = drawSize(35, 95, 140, 48, 78);
    const int spacing = width >= 95 ? 11 : 9;
    const int heightPercent = randInt(150, 210);
    const int height = width * heightPercent / 100;
    const LONG left = centre.x - width / 2;
    const LONG right = left + width;
    const LONG base = centre.y + height / 2;
    const LONG shoulder = base - height * 72 / 100;
    const int flame = height * 22 / 100;
    addClosed({{left, base}, {right, base}, {right, shoulder}, {left, shoulder}}, spacing);
    addClosed({{left, shoulder}, {centre.x, base - height}, {right, shoulder}}, spacing);
    addLine({left + width * 30 / 100, base}, {left + width * 18 / 100, base + flame}, 8);
    addLine({centre.x, base}, {centre.x, base + height * 26 / 100}, 8);
    addLine({left + width * 70 / 100, base}, {left + width * 82 / 100, base + flame}, 8);
}

void outlineStickFigure(POINT centre)
{
    beginOutline(true);
    const int height = drawSize(42, 155, 220, 85, 130);
    const int spacing = height >= 155 ? 12 : 10;
    const int headRadius = height / 6;
    const auto [x, y] = centre;
    const LONG headY = y - height / 2;
    const LONG hipY = y + height / 3;
    const LONG armY = y - height / 8;
    const LONG footY = y + height / 2;
    const int arm = height / 3;
    addClosed(circle({x, headY}, headRadius, 18), 8);
    addLine({x, headY + headRadius}, {x, hipY}, spacing);
    addLine({x - arm, armY}, {x + arm, armY}, spacing);
    addLine({x, hipY}, {x - arm, footY}, spacing);
    addLine({x, hipY}, {x + arm, footY}, spacing);
}

void outlineRainbow(POINT centre)
{
    beginOutline(true);
    const int radius = drawSize(40, 380, 520, 240, 340);
    for (const int offset : {0, 16, 32, 48, 64})
        appendArc({centre.x, centre.y + radius / 4}, radius - offset, pi, pi, 26, radius > 379 ? 11 : 9);
}

static void placeSimple(POINT place)
{
    const int chance = randInt(0, 99);
    if (chance < 30) return outlineStar(place);
    if (chance < 55) return outlineSquare(place);
    if (chance < 65) return outlineDiamond(place);
    if (chance < 73) return outlineHeart(place);
    if (chance < 80) return outlineEllipse(place);
    if (chance < 87) return outlineTriangle(place);
    outlineFlower(place);
}

static void placeLarge(POINT place)
{
    switch (randInt(0, 5)) {
    case 0: outlineSun(place); break;
    case 1: outlineFace(place); break;
    case 2: outlineHouse(place); break;
    case 3: outlineRocket(place); break;
    case 4: outlineStickFigure(place); break;
    case 5: outlineRainbow(place); break;
    }
}

void placeOutline(POINT point)
{
    keepInside(point, 88);
    if (randInt(0, 999) <= 94) return placeLarge(point);
    placeSimple(point);
}
