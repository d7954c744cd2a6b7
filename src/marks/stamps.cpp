#include "marks/stamps.h"

#include <algorithm>
#include <cmath>

#include "marks/angles.h"
#include "marks/strokes.h"

// A ring with a face in it; the canvas shows through.
void stampFace(POINT centre)
{
    const int radius = randInt(48, 92);
    const int width = randInt(11, 22);
    const MarkColor ringColor = brightColor();
    const MarkColor eyeColor = anyColor();
    for (const MonitorSurface &surface : surfaces) {
        const POINT local = toLocal(surface, centre);
        if (!inReach(surface, local, 2 * radius)) continue;
        const auto [x, y] = toFloat(local);
        const float r = float(radius);
        GraphicsScope scope(surface);
        const OwnedPen ring = joinedPen(toArgb(ringColor, 0xEB), float(width));
        drawEllipse(scope, ring, x - r, y - r, 2 * r, 2 * r);
        const OwnedBrush eyes = solidBrush(eyeColor, 0xF0);
        const float e = 0.11f * r;
        fillCircle(scope, eyes, x - 0.32f * r - e, y - 0.18f * r - e, 2 * e);
        fillCircle(scope, eyes, 0.32f * r + x - e, y - 0.18f * r - e, 2 * e);
        const OwnedPen mouth = strokePen(toArgb(ringColor, 0xEB), std::max(float(width) * 0.65f, 4.0f));
        drawArc(scope, mouth, x - 0.62f * r, y - 0.08f * r, 1.24f * r, 0.95f * r, 15.0f, 150.0f);
        invalidateWhole(surface);
    }
}

void stampSun(POINT centre)
{
    const int radius = randInt(36, 72);
    const int rayEnd = randInt(26, 48);  // distance beyond the disc
    const int rayCount = randInt(8, 12);
    const MarkColor discColor = brightColor();
    const MarkColor rayColor = anyColor();
    for (const MonitorSurface &surface : surfaces) {
        const POINT local = toLocal(surface, centre);
        if (!inReach(surface, local, 200)) continue;
        GraphicsScope scope(surface);
        const OwnedBrush disc = solidBrush(discColor, 0xE6);
        const int rayWidth = randInt(10, 18);  // separate for each monitor
        const OwnedPen ray = dashCappedPen(toArgb(rayColor, 0xE4), float(rayWidth));
        scope.note(GdipFillEllipseI(scope.graphics, disc.get(), local.x - radius, local.y - radius,
                                    2 * radius, 2 * radius));
        for (int i = 0; i < rayCount; ++i) {
            const float angle = float(i + i) * pi / float(rayCount);
            const auto onRay = [&](int distance) {
                const float d = float(distance);
                return POINT{local.x + int(cosf(angle) * d), local.y + int(sinf(angle) * d)};
            };
            drawLine(scope, ray, onRay(radius + 6), onRay(radius + rayEnd));
        }
        invalidateWhole(surface);
    }
}

void stampRainbow(POINT innerLeft)
{
    static constexpr uint32_t bands[] = {0xEBFF5050, 0xEBFFA03C, 0xEBFFDC46, 0xEB64C864, 0xEB4682FF};
    const int width = randInt(12, 20);
    const int span = randInt(280, 520);
    const int gap = width + 5;
    for (const MonitorSurface &surface : surfaces) {
        const POINT local = toLocal(surface, innerLeft);
        if (!inReach(surface, local, span)) continue;
        const auto [x, y] = toFloat(local);
        const float d = float(span);
        GraphicsScope scope(surface);
        // The arcs grow only in width: they meet at the top and fan out at the foot.
        for (int k = 0; k < 5; ++k) {
            const OwnedPen band = dashCappedPen(bands[k], float(width));
            drawArc(scope, band, x - float(k * gap), y - 0.5f * d, d + float(2 * k * gap), d, 180.0f, 180.0f);
        }
        invalidateWhole(surface);
    }
}

// Houses, balloons, trees and cats are tested only in x, so a monitor above or below draws them too.
void stampHouse(POINT lowerLeft)
{
    const int width = randInt(100, 200);
    const int height = randInt(80, 150);
    const int roofHeight = randInt(50, 90);
    const MarkColor wallColor = brightColor();
    const MarkColor roofColor = anyColor();
    const MarkColor doorColor = anyColor();
    const int doorWidth = std::max(width / 5, 18);
    const int doorHeight = std::max(height / 2, 28);
    for (const MonitorSurface &surface : surfaces) {
        const POINT local = toLocal(surface, lowerLeft);
        if (!inReachX(surface, local.x, 250)) continue;
        const auto [x, y] = toFloat(local);
        const float w = float(width);
        const float h = float(height);
        const float top = y - h;
        GraphicsScope scope(surface);
        const OwnedBrush wall = solidBrush(wallColor, 0xEE);
        const OwnedBrush roof = solidBrush(roofColor, 0xEE);
        const OwnedBrush door = solidBrush(doorColor, 0xF0);
        const OwnedPen outline = joinedPen(0xDA322D37, 3.5f);
        const OwnedPath gable = newPath();
        const Triangle corners = {{x - 8, top}, {x + 0.5f * w, top - float(roofHeight)}, {x + w + 8, top}};
        GdipAddPathPolygon(gable.get(), corners, 3);
        paintPath(scope, roof, outline, gable);
        paintRect(scope, wall, outline, x, top, w, h);
        paintRect(scope, door, outline, x + float((width - doorWidth) / 2), y - float(doorHeight),
                  float(doorWidth), float(doorHeight));
        invalidateWhole(surface);
    }
}

void stampBalloon(POINT neck)
{
    const int radiusX = randInt(35, 70);
    const int radiusY = randInt(48, 90);
    const int lineLength = randInt(60, 130);
    const MarkColor skinColor = brightColor();
    for (const MonitorSurface &surface : surfaces) {
        const POINT local = toLocal(surface, neck);
        if (!inReachX(surface, local.x, 160)) continue;
        const auto [x, y] = toFloat(local);
        const float rx = float(radiusX);
        const float ry = float(radiusY);
        const float knotReach = float(radiusX / 4);
        GraphicsScope scope(surface);
        const OwnedBrush skin = solidBrush(skinColor, 0xEC);
        const OwnedPen outline = plainPen(0xC8282834, 2.8f);
        paintEllipse(scope, skin, outline, x - rx, y - 2 * ry - 8, 2 * rx, 2 * ry);
        fillTriangle(scope, skin, {{x - knotReach, y - 8}, {x + knotReach, y - 8}, {x, y + 6}});
        const OwnedPen line = dashCappedPen(0xD246464E, 3.0f);
        const int sway = randInt(-10, 10);  // separate for each monitor
        drawLine(scope, line, x, y + 6, x + float(sway), y + float(lineLength));
        invalidateWhole(surface);
    }
}

void stampTree(POINT foot)
{
    const int trunkWidth = randInt(14, 28);
    const int trunkHeight = randInt(55, 100);
    const int radius = randInt(55, 100);
    const int brown = randInt(0, 40);
    const MarkColor crownColor = brightColor();
    const MarkColor trunkColor = 0x325000u + 120u + uint32_t(brown);  // only red varies
    for (const MonitorSurface &surface : surfaces) {
        const POINT local = toLocal(surface, foot);
        if (!inReachX(surface, local.x, 200)) continue;
        GraphicsScope scope(surface);
        const OwnedBrush trunk = solidBrush(trunkColor, 0xF0);
        const OwnedBrush crown = solidBrush(crownColor, 0xE8);
        const OwnedPen outline = plainPen(0xC837322D, 2.5f);
        paintRect(scope, trunk, outline, float(local.x - trunkWidth / 2), float(local.y - trunkHeight),
                  float(trunkWidth), float(trunkHeight));
        const int sway = randInt(-6, 6);  // separate for each monitor
        paintDisc(scope, crown, outline, local.x - radius, local.y - 2 * radius - trunkHeight + sway,
                  2 * radius);
        invalidateWhole(surface);
    }
}

void stampCat(POINT centre)
{
    const int radius = randInt(38, 72);
    const MarkColor headColor = brightColor();
    const MarkColor earColor = anyColor();
    const float noseRadius = float(std::max(radius / 10, 6));
    for (const MonitorSurface &surface : surfaces) {
        const POINT local = toLocal(surface, centre);
        if (!inReachX(surface, local.x, 150)) continue;
        const auto [x, y] = toFloat(local);
        const float r = float(radius);
        GraphicsScope scope(surface);
        const OwnedBrush head = solidBrush(headColor, 0xEC);
        const OwnedBrush ears = solidBrush(earColor, 0xEE);
        const OwnedPen outline = joinedPen(0xD72D2A30, 3.0f);
        paintDisc(scope, head, outline, local.x - radius, local.y - radius, 2 * radius);
        const Triangle leftEar = {
            {x - 0.85f * r, y - 0.75f * r}, {x - 0.35f * r, y - 1.15f * r}, {x - 0.1f * r, y - 0.35f * r}};
        const Triangle rightEar = {
            {x + 0.1f * r, y - 0.35f * r}, {x + 0.35f * r, y - 1.15f * r}, {x + 0.85f * r, y - 0.75f * r}};
        fillTriangle(scope, ears, leftEar);
        fillTriangle(scope, ears, rightEar);
        drawTriangle(scope, outline, leftEar);
        drawTriangle(scope, outline, rightEar);
        const OwnedBrush nose = solidBrush(0xFFFF7896);
        fillCircle(scope, nose, x - noseRadius, y + 0.08f * r - noseRadius, 2 * noseRadius);
        const OwnedPen whisker = dashCappedPen(0xC83C3737, 2.8f);
        drawLine(scope, whisker, x - 1.05f * r, y + 0.15f * r, x - 1.65f * r, y + 0.22f * r);
        drawLine(scope, whisker, x + 1.05f * r, y + 0.15f * r, x + 1.65f * r, y + 0.22f * r);
        invalidateWhole(surface);
    }
}

// A filled face with red cheeks and triangular eyes.
void stampBlushFace(POINT centre)
{
    const int radius = randInt(44, 80);
    const MarkColor faceColor = brightColor();
    const MarkColor eyeColor = anyColor();
    const MarkColor mouthColor = anyColor();
    const float cheekWidth = float(std::max(radius / 3, 10));
    const float cheekHeight = float(std::max(radius / 4, 8));
    for (const MonitorSurface &surface : surfaces) {
        const POINT local = toLocal(surface, centre);
        if (!inReach(surface, local, 170)) continue;
        const auto [x, y] = toFloat(local);
        const float r = float(radius);
        GraphicsScope scope(surface);
        const OwnedBrush face = solidBrush(faceColor, 0xEC);
        const OwnedPen outline = joinedPen(0xDC302A32, 3.6f);
        paintDisc(scope, face, outline, local.x - radius, local.y - radius, 2 * radius);
        const OwnedBrush eyes = solidBrush(eyeColor, 0xF4);
        fillTriangle(
            scope, eyes,
            {{x - 0.5f * r, y - 0.05f * r}, {x - 0.18f * r, y - 0.38f * r}, {x - 0.05f * r, y + 0.04f * r}});
        fillTriangle(
            scope, eyes,
            {{x + 0.05f * r, y + 0.04f * r}, {x + 0.18f * r, y - 0.38f * r}, {x + 0.5f * r, y - 0.05f * r}});
        const OwnedPen mouth = cappedPen(toArgb(mouthColor, 0xEC), std::max(0.11f * r, 3.8f));
        drawArc(scope, mouth, x - 0.45f * r, y - 0.02f * r, 0.9f * r, 0.72f * r, 20.0f, 140.0f);
        const OwnedBrush cheeks = solidBrush(0x78FF78A0);
        const float cheekTop = y + 0.08f * r;
        fillEllipse(scope, cheeks, x - 0.62f * r, cheekTop, cheekWidth, cheekHeight);
        fillEllipse(scope, cheeks, 0.3f * r + x, cheekTop, cheekWidth, cheekHeight);
        invalidateWhole(surface);
    }
}

// The car and the train are tested by their left end, not by their middle.
void stampCar(POINT foot)
{
    const int width = randInt(110, 180);
    const int height = randInt(48, 78);
    const MarkColor bodyColor = brightColor();
    const float wheelRadius = float(std::max(height / 4, 14));
    for (const MonitorSurface &surface : surfaces) {
        POINT local = toLocal(surface, foot);
        local.x -= width / 2;
        if (!inReach(surface, local, 220)) continue;
        const float left = float(local.x);
        const float y = float(local.y);
        const float w = float(width);
        const float h = float(height);
        GraphicsScope scope(surface);
        const OwnedBrush body = solidBrush(bodyColor, 0xEE);
        const OwnedPen outline = plainPen(0xD72D2A32, 3.0f);
        paintRect(scope, body, outline, left, y - h, w, 0.55f * h);
        const OwnedBrush wheels = solidBrush(0xF028282D);
        fillCircle(scope, wheels, left + 0.22f * w - wheelRadius, y - wheelRadius, 2 * wheelRadius);
        fillCircle(scope, wheels, left + 0.72f * w - wheelRadius, y - wheelRadius, 2 * wheelRadius);
        const OwnedBrush windows = solidBrush(0xDC8CD2FF);
        fillRect(scope, windows, left + 0.18f * w, y - 0.92f * h, 0.32f * w, 0.28f * h);
        fillRect(scope, windows, left + 0.54f * w, y - 0.92f * h, 0.28f * w, 0.28f * h);
        invalidateWhole(surface);
    }
}

void stampTrain(POINT foot)
{
    const int cabSize = randInt(70, 110);
    const int boilerLength = randInt(90, 150);
    const MarkColor bodyColor = brightColor();
    const MarkColor smokeColor = anyColor();
    const float wheelRadius = float(cabSize / 5);
    for (const MonitorSurface &surface : surfaces) {
        POINT local = toLocal(surface, foot);
        local.x -= (boilerLength + 12 + cabSize) / 2;
        if (!inReachX(surface, local.x, 280) || !inReachY(surface, local.y, 220)) continue;
        const float left = float(local.x);
        const float y = float(local.y);
        const float a = float(cabSize);
        const float top = y - a;
        GraphicsScope scope(surface);
        const OwnedBrush body = solidBrush(bodyColor, 0xEE);
        fillRect(scope, body, left, top, a, 0.72f * a);
        fillRect(scope, body, left + a + 12, y - 0.82f * a, float(boilerLength), 0.58f * a);
        const OwnedBrush wheels = solidBrush(0xF02D2A30);
        for (int i = 0; i < 4; ++i)
            fillCircle(scope, wheels, float(i) * (0.28f * a) + left + 16, y - wheelRadius, 2 * wheelRadius);
        const OwnedBrush smoke = solidBrush(smokeColor, 0xAA);
        fillCircle(scope, smoke, left + 0.35f * a, top - 28, 22);
        fillCircle(scope, smoke, left + 0.42f * a, top - 48, 28);
        fillCircle(scope, smoke, left + 0.5f * a, top - 72, 34);
        invalidateWhole(surface);
    }
}

void stampRocket(POINT foot)
{
    const int width = randInt(36, 58);
    const int height = randInt(95, 150);
    const MarkColor bodyColor = brightColor();
    const MarkColor finColor = anyColor();
    for (const MonitorSurface &surface : surfaces) {
        const POINT local = toLocal(surface, foot);
        if (!inReach(surface, local, 220)) continue;
        const auto [x, y] = toFloat(local);
        const float w = float(width);
        const float h = float(height);
        const float left = float(local.x - width / 2);
        const float right = float(local.x + width / 2);
        const float top = y - h;
        GraphicsScope scope(surface);
        const OwnedBrush body = solidBrush(bodyColor, 0xEC);
        const OwnedBrush fins = solidBrush(finColor, 0xEE);
        const OwnedPen outline = joinedPen(0xD82D2D34, 3.0f);
        fillEllipse(scope, body, left, top - 0.22f * h, w, 0.44f * h);
        paintRect(scope, body, outline, left, top, w, 0.72f * h);
        paintTriangle(scope, fins, outline, {{x, top - 0.34f * h}, {left, top + 6}, {right, top + 6}});
        const Triangle leftFin = {
            {left, y - 0.35f * h}, {x - 1.15f * w, y + 0.12f * h}, {left, y + 0.2f * h}};
        const Triangle rightFin = {
            {right, y - 0.35f * h}, {x + 1.15f * w, y + 0.12f * h}, {right, y + 0.2f * h}};
        fillTriangle(scope, fins, leftFin);
        fillTriangle(scope, fins, rightFin);
        drawTriangle(scope, outline, leftFin);
        drawTriangle(scope, outline, rightFin);
        const OwnedBrush window = solidBrush(0xF56EDCFF);
        paintEllipse(scope, window, outline, x - 0.2f * w, y - 0.7f * h, 0.4f * w, 0.4f * w);
        const OwnedBrush flame = solidBrush(0xDCFFAA46);
        fillTriangle(scope, flame,
                     {{x, y + 0.45f * h}, {x - 0.26f * w, y + 0.18f * h}, {x + 0.26f * w, y + 0.18f * h}});
        invalidateWhole(surface);
    }
}

// It swims to the left.
void stampFish(POINT centre)
{
    const int length = randInt(120, 210);
    const int height = randInt(52, 90);
    const MarkColor bodyColor = brightColor();
    const MarkColor finColor = anyColor();
    for (const MonitorSurface &surface : surfaces) {
        const POINT local = toLocal(surface, centre);
        if (!inReachX(surface, local.x, 250) || !inReachY(surface, local.y, 180)) continue;
        const auto [x, y] = toFloat(local);
        const float l = float(length);
        const float h = float(height);
        GraphicsScope scope(surface);
        const OwnedBrush body = solidBrush(bodyColor, 0xEC);
        const OwnedBrush fins = solidBrush(finColor, 0xEC);
        const OwnedPen outline = plainPen(0xD62D2A32, 3.0f);
        paintEllipse(scope, body, outline, float(local.x - length / 2), float(local.y - height / 2),
                     0.72f * l, h);
        paintTriangle(scope, fins, outline,
                      {{x + 0.22f * l, y}, {x + 0.48f * l, y - 0.56f * h}, {x + 0.48f * l, y + 0.56f * h}});
        paintTriangle(
            scope, fins, outline,
            {{x - 0.1f * l, y - 0.15f * h}, {x + 0.02f * l, y - 0.62f * h}, {x + 0.13f * l, y - 0.12f * h}});
        const OwnedBrush eye = solidBrush(0xF51E1E1E);
        fillCircle(scope, eye, x - 0.26f * l, y - 0.11f * h, 0.13f * h);
        const OwnedPen mouth = plainPen(0xB42D2D2D, 2.3f);
        drawArc(scope, mouth, x - 0.3f * l, y - 0.02f * h, 0.35f * h, 0.28f * h, 25.0f, 120.0f);
        invalidateWhole(surface);
    }
}

// A large face with a halo, for rare bursts and the Space key.
void stampBigFace(POINT centre)
{
    const int radius = randInt(130, 210);
    const MarkColor faceColor = brightColor();
    const MarkColor eyeColor = anyColor();
    const MarkColor haloColor = anyColor();
    for (const MonitorSurface &surface : surfaces) {
        const POINT local = toLocal(surface, centre);
        if (!inReach(surface, local, 3 * radius)) continue;
        const auto [x, y] = toFloat(local);
        const float r = float(radius);
        GraphicsScope scope(surface);
        const OwnedPen halo = joinedPen(toArgb(haloColor, 0xAA), std::max(0.1f * r, 9.0f));
        drawEllipse(scope, halo, x - 1.16f * r, y - 1.16f * r, 2.32f * r, 2.32f * r);
        const OwnedBrush face = solidBrush(faceColor, 0xEC);
        const OwnedPen dark = joinedPen(0xE62D2D32, std::max(0.08f * r, 5.0f));
        paintDisc(scope, face, dark, local.x - radius, local.y - radius, 2 * radius);
        const OwnedBrush eyes = solidBrush(eyeColor, 0xF4);
        fillCircle(scope, eyes, x - 0.42f * r, y - 0.3f * r, 0.24f * r);
        fillCircle(scope, eyes, x + 0.18f * r, y - 0.3f * r, 0.24f * r);
        drawArc(scope, dark, x - 0.56f * r, y - 0.04f * r, 1.12f * r, 0.88f * r, 15.0f, 150.0f);
        invalidateWhole(surface);
    }
}

// A random share of a limb's length; low and high are per cent.
static int shareOf(int limb, int low, int high)
{
    const int percent = randInt(low, high);
    return int(percent * limb / 100.0);
}

void stampStickFigure(POINT point)
{
    const int size = randInt(95, 220);
    const float s = float(size);
    const int hipShift = randInt(-30, 30);
    const POINT hip = {point.x + hipShift, point.y + int(0.28f * s)};
    const int neckShift = randInt(-12, 12);
    const POINT neck = {hip.x + neckShift, hip.y - int(0.42f * s)};
    const int headShift = randInt(-14, 14);
    const POINT head = {neck.x + headShift, neck.y - int(0.38f * s)};
    tapMark(head);
    brushStroke(neck, hip);

    const int armShare = randInt(32, 48);
    const int arm = int(float(armShare) * s / 100.0f);
    const int leftReach = shareOf(arm, 80, 120);
    const int leftDrop = shareOf(arm, 10, 60);
    const int rightReach = shareOf(arm, 80, 120);
    const int rightDrop = shareOf(arm, 10, 60);
    brushStroke(neck, {neck.x - leftReach, neck.y + leftDrop});
    brushStroke(neck, {neck.x + rightReach, neck.y + rightDrop});

    const int legShare = randInt(40, 55);
    const int leg = int(float(legShare) * s / 100.0f);
    const int leftStride = shareOf(leg, 95, 130);
    const int leftFoot = shareOf(leg, 90, 120);
    const int rightStride = shareOf(leg, 95, 130);
    const int rightFoot = shareOf(leg, 90, 120);
    brushStroke(hip, {hip.x - leftStride, hip.y + leftFoot});
    brushStroke(hip, {hip.x + rightStride, hip.y + rightFoot});
}
