#include "autodraw/pen_paths.h"

#include <algorithm>
#include <cmath>

#include "marks/angles.h"

double distanceBetween(POINT a, POINT b)
{
    return std::hypot(double(b.x - a.x), double(b.y - a.y));
}

POINT randomOffset(int reachX, int reachY)
{
    const int x = randInt(-reachX, reachX);
    const int y = randInt(-reachY, reachY);
    return {x, y};
}

static LONG curveAt(LONG p0, LONG p1, LONG p2, LONG p3, float u)
{
    const float v = 1.0f - u;
    return lroundf(v * v * v * float(p0) + 3.0f * v * v * u * float(p1) + 3.0f * v * u * u * float(p2) +
                   u * u * u * float(p3));
}

POINT curvePoint(POINT p0, POINT p1, POINT p2, POINT p3, float u)
{
    return {curveAt(p0.x, p1.x, p2.x, p3.x, u), curveAt(p0.y, p1.y, p2.y, p3.y, u)};
}

POINT freshPenStart()
{
    POINT place = {};
    bool found = false;
    for (int tries = 0; tries < 10 && !found; ++tries) {
        place = randomPointOnLaunch(72);
        found = !penLastValid || distanceBetween(place, penLastPoint) >= 280.0;
    }
    if (!found) place = randomPointOnLaunch(72);
    keepInside(place, 72);
    penLastPoint = place;
    penLastValid = true;
    return place;
}

POINT farPointFrom(POINT from)
{
    POINT place = {};
    bool found = false;
    for (int tries = 0; tries < 12 && !found; ++tries) {
        place = randomPointOnLaunch(72);
        found = distanceBetween(place, from) >= 360.0;
    }
    if (!found) place = strayFrom(from, -720, 720, -520, 520);
    keepInside(place, 72);
    return place;
}

// Adds the points first to parts of a straight leg divided into that many parts. Each is moved by up to
// jitter before it is rounded.
static void addLeg(POINT from, POINT to, int first, int parts, int jitter)
{
    for (int j = first; j <= parts; ++j) {
        const float share = float(j) / float(parts);
        const POINT off = randomOffset(jitter, jitter);
        const LONG x = lroundf(float(from.x) + float(to.x - from.x) * share + float(off.x));
        const LONG y = lroundf(float(from.y) + float(to.y - from.y) * share + float(off.y));
        penPath.push_back({x, y});
    }
}

static void addCurve()
{
    const POINT a = freshPenStart();
    const POINT d = farPointFrom(a);
    const POINT b = strayFrom(a, -280, 280, -220, 220);
    const POINT c = strayFrom(d, -280, 280, -220, 220);
    const int parts = randInt(28, 40);
    for (int i = 0; i <= parts; ++i) {
        const POINT point = curvePoint(a, b, c, d, float(i) / float(parts));
        penPath.push_back(strayFrom(point, -5, 5, -5, 5));
    }
}

static void addZigzag()
{
    POINT from = freshPenStart();
    penPath.push_back(from);
    const int legs = randInt(6, 10);
    int direction = randInt(0, 1) == 0 ? -1 : 1;
    for (int k = 0; k < legs; ++k) {
        const int across = randInt(160, 340);
        const int down = randInt(110, 240);
        const POINT off = randomOffset(30, 28);
        const POINT to = {from.x + across * direction + off.x, from.y + (k % 2 == 0 ? -down : down) + off.y};
        const int parts = randInt(8, 14);
        addLeg(from, to, 1, parts, 14);
        from = to;
        if (randInt(0, 100) <= 41) direction = -direction;
    }
}

static void addLine()
{
    const POINT from = freshPenStart();
    const POINT to = farPointFrom(from);
    const int parts = randInt(18, 28);
    addLeg(from, to, 0, parts, 20);
}

static void addEllipse()
{
    const POINT centre = freshPenStart();
    const int parts = randInt(22, 34);
    const int radiusX = randInt(200, 380);
    const int radiusY = randInt(130, 250);
    for (int i = 0; i <= parts; ++i) {
        const float angle = float(i) / float(parts) * 2.0f * pi;
        const POINT off = randomOffset(10, 10);
        const LONG x = lroundf(cosf(angle) * float(radiusX)) + off.x + centre.x;
        const LONG y = lroundf(sinf(angle) * float(radiusY) * 0.55f) + off.y + centre.y;
        penPath.push_back({x, y});
    }
}

static POINT addFarLeg(POINT from, int fewestParts, int mostParts, int jitter)
{
    const POINT to = farPointFrom(from);
    const int parts = randInt(fewestParts, mostParts);
    addLeg(from, to, 1, parts, jitter);
    return to;
}

static void addChain()
{
    POINT from = freshPenStart();
    penPath.push_back(from);
    const int legs = randInt(5, 8);
    for (int leg = 0; leg < legs; ++leg)
        from = addFarLeg(from, 10, 16, 16);
}

static void addShortChain()
{
    POINT from = freshPenStart();
    penPath.push_back(from);
    // The limit is drawn anew after each leg, on purpose: lengths are uneven.
    int limit = randInt(2, 4);
    for (int leg = 0; leg < limit; ++leg) {
        from = addFarLeg(from, 8, 12, 10);
        limit = randInt(2, 4);
    }
}

// Inserts points where two are more than 28 pixels apart, slightly off the straight line.
static void densifyPenPath()
{
    std::vector<POINT> dense = {penPath.front()};
    for (size_t i = 1; i < penPath.size(); ++i) {
        const POINT target = penPath[i];
        for (;;) {
            const POINT last = dense.back();
            const float dx = float(target.x - last.x);
            const float dy = float(target.y - last.y);
            const float distance = hypotf(dx, dy);
            if (distance <= 28.0f) break;
            const float share = 28.0f / distance;
            const POINT next = {lroundf(float(last.x) + share * dx), lroundf(float(last.y) + share * dy)};
            dense.push_back(strayFrom(next, -3, 3, -3, 3));
        }
        dense.push_back(target);
    }
    penPath = dense;
}

// Keeps 48 points, the first and the last among them.
static void thinPenPath()
{
    const size_t count = penPath.size();
    if (count <= 48) return;
    std::vector<POINT> kept;
    for (size_t k = 0; k < 48; ++k)
        kept.push_back(penPath[(count - 1) * k / 47]);
    penPath = kept;
}

// Reflects a coordinate at the edge that it passed, up to four times.
static LONG folded(LONG value, LONG low, LONG high)
{
    for (int times = 0; times < 4; ++times) {
        if (value < low) {
            value = 2 * low - value;
        } else if (value > high) {
            value = 2 * high - value;
        }
    }
    return std::clamp(value, low, high);
}

static void bouncePenPath()
{
    const VirtualScreen screen = virtualScreen();
    if (screen.width <= 0 || screen.height <= 0) return;
    clampTo(screen, penPath.front());
    for (size_t i = 1; i < penPath.size(); ++i) {
        POINT &point = penPath[i];
        point.x = folded(point.x, screen.left, screen.left + screen.width - 1);
        point.y = folded(point.y, screen.top, screen.top + screen.height - 1);
    }
}

void newPenPath()
{
    penPath.clear();
    penPathIndex = 0;
    switch (randInt(0, 5)) {
    case 0: addCurve(); break;
    case 1: addZigzag(); break;
    case 2: addLine(); break;
    case 3: addEllipse(); break;
    case 4: addChain(); break;
    case 5: addShortChain(); break;
    }
    if (penPath.size() < 2) {  // no form is this short; the code below needs two points
        penPath.push_back(freshPenStart());
        penPath.push_back(farPointFrom(penPath.back()));
    }
    densifyPenPath();
    thinPenPath();
    if (const MonitorSurface *launch = launchSurface()) {
        for (POINT &point : penPath)
            keepInside(*launch, point, 52);
    }
    penLastPoint = penPath.back();
    penLastValid = true;
    bouncePenPath();
}
