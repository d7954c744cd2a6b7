#include "mascot/fireworks.h"

#include <cmath>

#include "marks/angles.h"
#include "marks/gdi_plus.h"
#include "mascot/sprites.h"
#include "shell/base/surfaces.h"

static int hostRandom(int lo, int hi)
{
    return penguinHost.random ? penguinHost.random(penguinHost.context, lo, hi) : lo;
}

static void hostInvalidate(const RECT &rect)
{
    if (penguinHost.invalidate) penguinHost.invalidate(penguinHost.context, rect);
}

static void hostCall(void (*callback)(void *context))
{
    if (callback) callback(penguinHost.context);
}

void startShow(float clickX)
{
    stopShow(false);
    const VirtualScreen screen = virtualScreen();
    const int count = hostRandom(4, 5);
    for (int i = 0; i < count; ++i) {
        Rocket rocket = {};
        rocket.x = clickX;
        if (i > 0) {
            const int across = hostRandom(screen.width * 18 / 100, screen.width * 82 / 100);
            rocket.x = float(screen.left + across);
        }
        rocket.y = float(screen.top + screen.height);
        const int down = hostRandom(screen.height * 28 / 100, screen.height * 52 / 100);
        rocket.targetY = float(screen.top + down);
        const int tenths = hostRandom(300, 380);
        rocket.vy = -float(tenths) / 10.0f;
        rocket.kind = hostRandom(0, 7);
        rockets.push_back(rocket);
    }
    showActive = true;
    showTicks = 0;
    showRectValid = false;
    hostCall(penguinHost.startTimer);
    hostCall(penguinHost.playMascotCall);
}

void stopShow(bool notify)
{
    const bool wasAlive = showAlive();
    rockets.clear();
    sparks.clear();
    showActive = false;
    showTicks = 0;
    hostCall(penguinHost.stopTimer);
    if (wasAlive && showRectValid) hostInvalidate(showRect);
    showRectValid = false;
    if (wasAlive && notify) hostCall(penguinHost.showFinished);
}

// A spark that leaves the rocket; angle is in radians, speed in pixels per tick.
static Spark sparkFrom(const Rocket &rocket, float angle, float speed)
{
    Spark spark = {};
    spark.x = rocket.x;
    spark.y = rocket.y;
    spark.vx = cosf(angle) * speed;
    spark.vy = sinf(angle) * speed;
    return spark;
}

// One spark of the main burst; i of count is its place on the ring.
static Spark burstSpark(const Rocket &rocket, int i, int count, float power, float base, int burstColor)
{
    const int sway = hostRandom(-12, 12);
    const float angle = float(i) * tau / float(count) + base + float(sway) / 100.0f;
    const float scale = i % 3 == 0 ? 0.55f : 1.0f;  // every third spark is in an inner ring
    const int push = hostRandom(0, 60);
    const float speed = (float(push) / 100.0f + 0.55f) * scale * (power / 10.0f);
    Spark spark = sparkFrom(rocket, angle, speed);
    spark.life = float(hostRandom(64, 104));
    spark.maxLife = spark.life;
    const int shapeDraw = hostRandom(0, 9);
    if (shapeDraw < 3) {
        spark.shape = starSpark;
        spark.size = float(hostRandom(18, 34));
    } else if (shapeDraw == 3) {
        spark.shape = heartSpark;
        spark.size = float(hostRandom(18, 34));
    } else {
        spark.shape = glowSpark;
        spark.size = float(hostRandom(7, 15));
    }
    const int colorDraw = hostRandom(0, 9);
    spark.color = rocket.kind;
    if (colorDraw <= 3) spark.color = burstColor;
    if (colorDraw == 4) spark.color = hostRandom(0, 7);
    return spark;
}

// A large, short glow in the middle of a burst.
static Spark flashSpark(const Rocket &rocket)
{
    const int turn = hostRandom(0, 628);
    const float angle = float(turn) / 100.0f;
    const int push = hostRandom(0, 20);
    const float speed = float(push) / 10.0f;
    Spark spark = sparkFrom(rocket, angle, speed);
    spark.life = float(hostRandom(10, 16));
    spark.maxLife = spark.life;
    spark.size = float(hostRandom(26, 40));
    spark.color = rocket.kind;
    return spark;
}

static void explodeRocket(const Rocket &rocket)
{
    const int wanted = hostRandom(110, 155);
    const int count = std::min(wanted, int(maxSparks - sparks.size()));
    if (count > 0) {
        const float power = float(hostRandom(150, 240));
        const int turn = hostRandom(0, 628);
        const float base = float(turn) / 100.0f;
        const int burstColor = hostRandom(0, 7);
        for (int i = 0; i < count; ++i)
            sparks.push_back(burstSpark(rocket, i, count, power, base, burstColor));
    }
    for (int i = 0; i < 6 && sparks.size() < maxSparks; ++i)
        sparks.push_back(flashSpark(rocket));
    hostCall(penguinHost.playMascotChatter);
}

// The bounding box of points, in virtual-screen pixels.
struct Bounds {
    float left = HUGE_VALF, top = HUGE_VALF, right = -HUGE_VALF, bottom = -HUGE_VALF;

    void include(float x, float y)
    {
        left = std::min(left, x);
        top = std::min(top, y);
        right = std::max(right, x);
        bottom = std::max(bottom, y);
    }
};

void showTick()
{
    if (!showAlive()) return;
    ++showTicks;
    Bounds bounds;
    size_t flying = 0;
    for (Rocket &rocket : rockets) {
        rocket.vy += 0.17f;
        rocket.y += rocket.vy;
        if (rocket.y <= rocket.targetY || rocket.vy >= 0.0f) {
            explodeRocket(rocket);
            continue;
        }
        bounds.include(rocket.x, rocket.y);
        bounds.include(rocket.x, rocket.y + 32.0f);
        rockets[flying++] = rocket;
    }
    rockets.resize(flying);
    size_t glowing = 0;
    for (Spark &spark : sparks) {
        spark.vx *= 0.991f;
        spark.vy = spark.vy * 0.991f + 0.17f;
        spark.x += spark.vx;
        spark.y += spark.vy;
        spark.life -= 1.0f;
        if (spark.life <= 0.0f) continue;
        bounds.include(spark.x, spark.y);
        sparks[glowing++] = spark;
    }
    sparks.resize(glowing);
    if ((rockets.empty() && sparks.empty()) || showTicks > 220) return stopShow(true);
    RECT box = {LONG(bounds.left), LONG(bounds.top), LONG(bounds.right), LONG(bounds.bottom)};
    InflateRect(&box, 80, 80);  // the largest spark reaches 68 pixels from its point
    RECT both = box;
    if (showRectValid) UnionRect(&both, &box, &showRect);
    hostInvalidate(both);
    showRect = box;
    showRectValid = true;
}

static void drawRocket(GraphicsScope &scope, const Rocket &rocket, float x, float y)
{
    const MarkColor color = showPalette[size_t(rocket.kind)];
    const OwnedBrush halo = solidBrush(color, 120);
    const OwnedBrush tail = solidBrush(color, 80);
    const OwnedBrush core = solidBrush(0xF0FFFFFF);
    fillEllipse(scope, halo, x - 8.0f, y - 8.0f, 16.0f, 16.0f);
    fillEllipse(scope, tail, x - 4.0f, y + 10.0f, 8.0f, 22.0f);
    fillEllipse(scope, core, x - 3.0f, y - 3.0f, 6.0f, 6.0f);
}

static const Sprite &spriteOf(const Spark &spark)
{
    const size_t color = size_t(spark.color);
    if (spark.shape == starSpark) return starSprites[color];
    if (spark.shape == heartSpark) return heartSprites[color];
    return glowSprites[color];
}

static void drawSpark(HDC dc, const Spark &spark, int x, int y)
{
    const float share = std::clamp(spark.life / spark.maxLife, 0.0f, 1.0f);
    const int alpha = int(std::min(share * 2.6f, 1.0f) * 255.0f);  // full until 38 % of its life is left
    const Sprite &sprite = spriteOf(spark);
    if (alpha == 0 || !sprite.bitmap) return;
    const float reach = spark.shape == glowSpark ? spark.size * 1.7f : spark.size * 1.25f;
    const int side = std::max(2, int(reach + reach));
    const BLENDFUNCTION blend = {AC_SRC_OVER, 0, BYTE(alpha), AC_SRC_ALPHA};
    SelectObject(spriteDC, sprite.bitmap);
    AlphaBlend(dc, x - side / 2, y - side / 2, side, side, spriteDC, 0, 0, sprite.size, sprite.size, blend);
}

void drawShow(HDC dc, int surfaceLeft, int surfaceTop, int width, int height, int originX, int originY)
{
    if (!showAlive()) return;
    // x and y are surface-local; the far edges are included.
    const auto inView = [&](float x, float y) {
        return x >= -40.0f && y >= -40.0f && x <= float(width + 40) && y <= float(height + 40);
    };
    if (!rockets.empty()) {
        GraphicsScope scope(dc);
        for (const Rocket &rocket : rockets) {
            const float x = rocket.x - float(surfaceLeft);
            const float y = rocket.y - float(surfaceTop);
            if (inView(x, y)) drawRocket(scope, rocket, x - float(originX), y - float(originY));
        }
    }
    HGDIOBJ before = GetCurrentObject(spriteDC, OBJ_BITMAP);
    for (const Spark &spark : sparks) {
        const float x = spark.x - float(surfaceLeft);
        const float y = spark.y - float(surfaceTop);
        // Truncated before the origin is subtracted, so that a spark has the same pixels in every repaint.
        if (inView(x, y)) drawSpark(dc, spark, int(x) - originX, int(y) - originY);
    }
    SelectObject(spriteDC, before);
}
