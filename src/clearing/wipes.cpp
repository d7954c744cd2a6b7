#include "clearing/wipes.h"

#include <algorithm>
#include <cmath>

#include "marks/angles.h"
#include "marks/primitives.h"

static void fillCanvas(const MonitorSurface &surface, HBRUSH brush, const RECT &part)
{
    FillRect(surface.canvasDC, &part, brush);
}

// Pixels that an edge has moved after that many steps across length pixels: about a hundredth a step.
static int edgeAfter(int steps, int length)
{
    if (steps == 0) return 0;
    return std::min(length, steps * std::max(1, length / 100) + 4);
}

static bool stepFromSide(const MonitorSurface &surface, HBRUSH brush)
{
    const bool across = wipeStyle == wipeFromLeft || wipeStyle == wipeFromRight;
    const bool mirrored = wipeStyle == wipeFromRight || wipeStyle == wipeFromBottom;
    const int length = across ? surface.width : surface.height;
    const auto strip = [&](int from, int to) -> RECT {  // distances from the side where the edge starts
        const int low = mirrored ? length - to : from;
        const int high = mirrored ? length - from : to;
        if (across) return {low, 0, high, surface.height};
        return {0, low, surface.width, high};
    };
    const int edge = edgeAfter(wipeStep + 1, length);
    fillCanvas(surface, brush, strip(0, edge));
    invalidateMarkRect(surface, strip(edgeAfter(wipeStep, length), edge));
    return edge >= length;
}

// Turns distances from this wipe's corner into a surface-local rectangle.
static RECT fromCorner(const MonitorSurface &surface, int left, int top, int right, int bottom)
{
    RECT part = {left, top, right, bottom};
    if (wipeCorner & 1) {
        part.left = surface.width - right;
        part.right = surface.width - left;
    }
    if (wipeCorner & 2) {
        part.top = surface.height - bottom;
        part.bottom = surface.height - top;
    }
    return part;
}

static bool stepFromCorner(const MonitorSurface &surface, HBRUSH brush)
{
    const int widthBefore = edgeAfter(wipeStep, surface.width);
    const int heightBefore = edgeAfter(wipeStep, surface.height);
    const int width = edgeAfter(wipeStep + 1, surface.width);
    const int height = edgeAfter(wipeStep + 1, surface.height);
    fillCanvas(surface, brush, fromCorner(surface, 0, 0, width, height));
    invalidateMarkRect(surface, fromCorner(surface, widthBefore, 0, width, height));
    invalidateMarkRect(surface, fromCorner(surface, 0, heightBefore, widthBefore, height));
    return width >= surface.width && height >= surface.height;
}

// A band moves down the canvas and leaves its colour behind; nothing above it is filled again.
static bool stepBand(const MonitorSurface &surface, HBRUSH brush)
{
    const int y = int(wipeStep / 180.0 * surface.height);
    const int half = std::max(70, surface.height / 18);
    const RECT band = {0, std::max(0, y - half), surface.width, std::min(surface.height, y + half)};
    fillCanvas(surface, brush, band);
    invalidateMarkRect(surface, band);
    return wipeStep > 180;
}

void drawRingBlobs(GraphicsScope &scope, const MonitorSurface &surface, float t)
{
    const float s = float(wipeScale);
    const float middleX = float(surface.width) * 0.5f;
    const float middleY = float(surface.height) * 0.5f;
    const float smaller = float(std::min(surface.width, surface.height));
    const int count = 10 + 4 * wipeScale;
    // Two different spins make the ring lean and wobble as it widens.
    const float spinX = (s * 0.4f + 0.8f) * t;
    const float spinY = (s * 0.3f + 1.2f) * t;
    const float radiusFactor = (s * 0.07f + 0.44f) * t + 0.035f;
    const float baseWidth = (s * 22.0f + 58.0f) * t + 22.0f;
    const float baseHeight = (s * 16.0f + 40.0f) * t + 14.0f;
    const OwnedBrush blob = solidBrush(backgroundColor, 88);
    for (int i = 0; i < count; ++i) {
        const float angle = float(i) / float(count) * 2.0f * pi;
        const int radiusChange = randInt(-11, 11);
        const int widthChange = randInt(-7, 9);
        const int heightChange = randInt(-5, 7);
        const float radius = smaller * radiusFactor + float(radiusChange);
        const float width = float(widthChange) + baseWidth;
        const float height = float(heightChange) + baseHeight;
        const float x = cosf(spinX + angle) * radius + middleX;
        const float y = sinf(spinY + angle) * radius + middleY;
        fillEllipse(scope, blob, x - width * 0.5f, y - height * 0.5f, width, height);
    }
}

// A veil over the whole canvas and a wheel of strokes. Veils accumulate: in the second half of a reveal wipe
// the canvas turns to revealColor.
void drawRevealRays(GraphicsScope &scope, const MonitorSurface &surface, float t, bool inward)
{
    const float u = std::clamp(t, 0.0f, 1.0f);
    const float middleX = float(surface.width) * 0.5f;
    const float middleY = float(surface.height) * 0.5f;
    const float reach = hypotf(float(surface.width), float(surface.height)) * 0.58f;
    const int veilAlpha = int(std::clamp((u - 0.45f) * 420.0f, 0.0f, 170.0f));
    const OwnedBrush veil = solidBrush(revealColor, veilAlpha);
    fillRect(scope, veil, 0.0f, 0.0f, float(surface.width), float(surface.height));
    for (int i = 0; i < 14; ++i) {
        const float angle = float(i) / 14.0f * 2.0f * pi + u * 1.8f;
        float start = (u * 0.7f + 0.25f) * reach;
        float end = start * 0.88f;
        if (inward) {
            start = (0.95f - u * 0.72f) * reach;
            end = start * 0.34f;
        }
        const int alphaChange = randInt(-18, 16);
        const int alpha = int(std::clamp(float(alphaChange) + u * 150.0f + 40.0f, 28.0f, 205.0f));
        const OwnedPen ray = cappedPen(toArgb(revealColor, alpha), u * 5.0f + 3.0f);
        drawLine(scope, ray, cosf(angle) * start + middleX, sinf(angle) * start + middleY,
                 cosf(angle + 0.35f) * end + middleX, sinf(angle + 0.35f) * end + middleY);
    }
}

// Three bubbles that swing from side to side and sink from 20 % to 85 % of the height.
static void drawBubbles(GraphicsScope &scope, const MonitorSurface &surface, float t)
{
    const float width = float(surface.width);
    const float height = float(surface.height);
    const float packX = sinf(t * 35.0f) * width * 0.35f + width * 0.5f;
    const float packY = cosf(t * 42.0f) * height * 0.06f + (t * 0.65f + 0.2f) * height;
    const float reachX = float(std::max(surface.width / 7, 170)) * 0.25f;
    const float reachY = float(std::max(surface.height / 11, 90)) * 0.22f;
    const OwnedBrush fill = solidBrush(backgroundColor, 116);
    const OwnedPen shine = plainPen(0x60FFFFFF, 1.7f);
    for (int i = 0; i < 3; ++i) {
        const float dx = sinf(float(i * 7 + 22) * t) * reachX;
        const float dy = cosf(float(i * 5 + 25) * t) * reachY;
        const float w = float(i * 12 + 118);
        const float h = float(i * 8 + 64);
        const float left = packX - w * 0.5f + dx;
        const float top = packY - h * 0.5f + dy;
        fillEllipse(scope, fill, left, top, w, h);
        drawEllipse(scope, shine, left + 4.0f, top + 4.0f, w - 8.0f, h - 8.0f);
    }
}

static bool stepReveal(const MonitorSurface &surface)
{
    const bool ring = wipeStyle == wipeRing;
    const float t = std::min(1.0f, float(wipeStep) / (ring ? 50.0f : 115.0f));
    {
        GraphicsScope scope(surface);
        ring ? drawRingBlobs(scope, surface, t) : drawBubbles(scope, surface, t);
        drawRevealRays(scope, surface, t, ring);
    }
    invalidateWhole(surface);
    return t >= 1.0f;
}

bool wipeSurface(const MonitorSurface &surface, HBRUSH brush)
{
    switch (wipeStyle) {
    case wipeFromLeft:
    case wipeFromRight:
    case wipeFromTop:
    case wipeFromBottom: return stepFromSide(surface, brush);
    case wipeFromCorner: return stepFromCorner(surface, brush);
    case wipeBand: return stepBand(surface, brush);
    default: return stepReveal(surface);
    }
}
