#include "mascot/walker.h"

#include <cmath>
#include <string>

#include "marks/angles.h"
#include "marks/primitives.h"
#include "mascot/fireworks.h"
#include "mascot/frames.h"
#include "mascot/pixels.h"
#include "mascot/sprites.h"
#include "shell/base/files.h"
#include "sound/playback.h"

static std::wstring penguinFolder()
{
    const std::wstring program = programFolder();
    return program.empty() ? program : inFolder(program, L"assets\\penguin");
}

static void fillPenguinHost()
{
    penguinHost.context = nullptr;
    penguinHost.random = [](void *, int lo, int hi) { return int(randInt(lo, hi)); };
    penguinHost.startTimer = [](void *) { startPrimaryTimer(12, 16); };
    penguinHost.stopTimer = [](void *) { stopPrimaryTimer(12); };
    penguinHost.invalidate = [](void *, const RECT &virtualRect) { invalidateVirtualRect(virtualRect); };
    penguinHost.playMascotCall = [](void *) { playMascotCall(); };
    penguinHost.playMascotChatter = [](void *) { playMascotChatter(); };
    penguinHost.showFinished = [](void *) { walkerClicked = false; };
}

static void scheduleWalk(int soonest, int latest)
{
    const int wait = randInt(soonest, latest);
    nextWalkTick = GetTickCount() + DWORD(wait);
}

void initMascot()
{
    loadMascotFrames(penguinFolder());
    mascotEnabled = bubbleFrame || mainFrame || happyFrame || cheerFrame;
    fillPenguinHost();
    buildSprites();
    rockets.reserve(8);
    sparks.reserve(maxSparks);
    if (mascotEnabled) {
        scheduleWalk(25000, 55000);  // replaced at once; the draw keeps the random sequence unchanged
        scheduleWalk(4000, 9000);
    }
    startPrimaryTimer(13, 33);
}

void shutdownMascot()
{
    stopShow(true);
    freeSprites();
    unloadMascotFrames();
    freeSpriteDC();
    mascotEnabled = walkerActive = walkerClicked = peekEnabled = peekDone = walkerRectValid = false;
    nextWalkTick = leanClock = 0;
    walkerX = walkerY = walkerPhase = leanAngle = leanX = leanY = peekX = 0.0f;
    walkerDir = walkerStartDir;
    walkerSpeed = walkerStartSpeed;
    walkerSize = walkerStartSize;
    leanStage = walking;
    walkerRect = {};
}

// Invalidates what the penguin covers now and what it covered before.
static void invalidateWalker()
{
    const float k = std::min(fabsf(leanAngle) / 90.0f, 1.0f);
    const float s = walkerSize;
    const float x = walkerX + leanX;
    const float y = walkerY + leanY;
    const float half = (k * 0.5f + 0.55f) * s;
    const RECT now = {LONG(x - half) - 12, LONG(y - s - (k * 0.5f + 0.12f) * s) - 12, LONG(x + half) + 12,
                      LONG(y + (k * 0.4f + 0.04f) * s) + 16};
    RECT both = now;
    if (walkerRectValid) UnionRect(&both, &now, &walkerRect);
    invalidateVirtualRect(both);
    walkerRect = now;
    walkerRectValid = true;
}

static void startWalk(const MonitorSurface &surface)
{
    walkerSize = std::clamp(float(surface.height) * 0.22f, 150.0f, 240.0f);
    walkerPhase = 0.0f;
    walkerY = float(surface.rect.bottom - 8);
    walkerSpeed = float(randInt(8, 12));
    const int side = randInt(0, 1);
    const float outside = walkerSize * 0.55f + 24.0f;
    walkerDir = side == 0 ? 1.0f : -1.0f;
    walkerX = side == 0 ? float(surface.rect.left) - outside : float(surface.rect.right) + outside;
    walkerActive = true;
    walkerRectValid = false;
    leanStage = walking;
    leanAngle = leanX = leanY = 0.0f;
    peekDone = false;
    peekEnabled = randInt(0, 99) < 35;
    const int hundredths = randInt(0, 35);
    const float across = float(surface.width) * (float(hundredths) / 100.0f + 0.3f);
    peekX = side == 0 ? float(surface.rect.left) + across : float(surface.rect.right) - across;
    invalidateWalker();
}

static void endWalk()
{
    if (walkerRectValid) invalidateVirtualRect(walkerRect);
    walkerRectValid = false;
    walkerActive = false;
    scheduleWalk(25000, 55000);
}

static void walkOn()
{
    walkerPhase += 0.42f;
    walkerX += walkerSpeed * walkerDir;
    invalidateWalker();
    const bool atPeek = walkerDir > 0.0f ? walkerX >= peekX : walkerX <= peekX;
    if (peekEnabled && !peekDone && atPeek) {
        peekDone = true;
        leanStage = leaning;
        leanClock = GetTickCount();
        return;
    }
    const MonitorSurface *surface = launchSurface();
    const float outside = walkerSize * 0.55f + 40.0f;
    if (!surface || (walkerDir > 0.0f ? walkerX > float(surface->rect.right) + outside
                                      : walkerX < float(surface->rect.left) - outside))
        endWalk();
}

static void setLean(float share)
{
    leanAngle = walkerDir * 82.0f * share;
    leanX = walkerSize * 0.16f * walkerDir * share;
    leanY = walkerSize * 0.05f * share;
}

// The bow: down in 420 ms, held for 900 ms, up in 420 ms, then a short wobble.
static void leanOn()
{
    const DWORD now = GetTickCount();
    const DWORD t = now - leanClock;
    if (leanStage == leaning) {
        const float u = float(std::min<DWORD>(t, 420)) / 420.0f;
        setLean(u * u);
        if (t >= 420) {
            leanStage = holding;
            leanClock = now;
        }
    } else if (leanStage == holding) {
        setLean(1.0f);
        if (t > 899) {
            leanStage = returning;
            leanClock = now;
        }
    } else if (t < 420) {
        const float v = 1.0f - float(t) / 420.0f;
        setLean(v * v);
    } else {
        setLean(0.0f);
        if (t < 640) {
            const float w = float(t - 420) / 220.0f;
            leanAngle = sinf(w * pi * 4.0f) * 5.0f * (1.0f - w);
        } else {
            leanStage = walking;
        }
    }
    invalidateWalker();
}

void mascotWalkTick()
{
    if (!mascotEnabled || surfaces.empty() || walkerClicked) return;
    if (showAlive()) return;
    if (walkerActive && leanStage == walking) return walkOn();
    if (walkerActive) return leanOn();
    if (int32_t(GetTickCount() - nextWalkTick) < 0) return;
    const MonitorSurface *surface = launchSurface();
    if (!surface) return scheduleWalk(25000, 55000);
    startWalk(*surface);
}

static const ImageFrame *firstFrame()
{
    for (const ImageFrame *frame : {mainFrame, cheerFrame, bubbleFrame, happyFrame}) {
        if (frame) return frame;
    }
    return nullptr;
}

static const ImageFrame *frameOf(int state)
{
    if (state == bubblePose && bubbleFrame) return bubbleFrame;
    if (state == happyPose && happyFrame) return happyFrame;
    if (state == cheerPose && cheerFrame) return cheerFrame;
    return firstFrame();
}

bool mascotHit(POINT point)
{
    if (!walkerActive || !mascotEnabled || menuOpen) return false;
    const struct FrameRect rect =
        frameRect(firstFrame(), walkerX, walkerY + sinf(walkerPhase) * 5.0f, walkerSize, 0.0f);
    const float margin = rect.width * 0.06f;
    const float x = float(point.x);
    const float y = float(point.y);
    if (x < rect.x + margin || x > rect.x + rect.width - margin) return false;
    if (y < rect.y || y > rect.y + rect.height) return false;
    walkerClicked = true;
    startShow(x);
    return true;
}

// Draws the image with its alpha channel multiplied by alpha.
static void drawFaded(GraphicsScope &scope, GpImage *image, const struct FrameRect &rect, float alpha)
{
    const ColorMatrix matrix = {{{1.0f, 0.0f, 0.0f, 0.0f, 0.0f},
                                 {0.0f, 1.0f, 0.0f, 0.0f, 0.0f},
                                 {0.0f, 0.0f, 1.0f, 0.0f, 0.0f},
                                 {0.0f, 0.0f, 0.0f, alpha, 0.0f},
                                 {0.0f, 0.0f, 0.0f, 0.0f, 1.0f}}};
    const PixelSize size = pixelSize(image);
    GpImageAttributes *attributes = nullptr;
    GdipCreateImageAttributes(&attributes);
    GdipSetImageAttributesColorMatrix(attributes, ColorAdjustTypeDefault, TRUE, &matrix, nullptr,
                                      ColorMatrixFlagsDefault);
    scope.note(GdipDrawImageRectRect(scope.graphics, image, rect.x, rect.y, rect.width, rect.height, 0.0f,
                                     0.0f, float(size.width), float(size.height), UnitPixel, attributes,
                                     nullptr, nullptr));
    GdipDisposeImageAttributes(attributes);
}

void drawFrame(GraphicsScope &scope, const FrameRecord &record)
{
    const ImageFrame *frame = frameOf(record.state);
    if (!frame) return;
    const struct FrameRect rect = frameRect(frame, record.x, record.y, record.height, record.bob);
    GpGraphics *graphics = scope.graphics;
    InterpolationMode interpolation = InterpolationModeDefault;
    PixelOffsetMode pixelOffset = PixelOffsetModeDefault;
    CompositingQuality compositing = CompositingQualityDefault;
    SmoothingMode smoothing = SmoothingModeDefault;
    GpMatrix *world = nullptr;
    GdipGetInterpolationMode(graphics, &interpolation);
    GdipGetPixelOffsetMode(graphics, &pixelOffset);
    GdipGetCompositingQuality(graphics, &compositing);
    GdipGetSmoothingMode(graphics, &smoothing);
    GdipCreateMatrix(&world);
    GdipGetWorldTransform(graphics, world);

    GdipSetInterpolationMode(graphics, InterpolationModeHighQualityBilinear);
    GdipSetPixelOffsetMode(graphics, PixelOffsetModeHalf);
    GdipSetCompositingQuality(graphics, CompositingQualityHighQuality);
    GdipSetSmoothingMode(graphics, SmoothingModeHighQuality);
    if (record.mirrored) {
        GdipTranslateWorldTransform(graphics, record.x, 0.0f, MatrixOrderPrepend);
        GdipScaleWorldTransform(graphics, -1.0f, 1.0f, MatrixOrderPrepend);
        GdipTranslateWorldTransform(graphics, -record.x, 0.0f, MatrixOrderPrepend);
    }
    if (record.alpha >= 0.999f) {
        scope.note(GdipDrawImageRect(graphics, frame->image, rect.x, rect.y, rect.width, rect.height));
    } else if (record.alpha > 0.001f) {
        drawFaded(scope, frame->image, rect, record.alpha);
    }

    GdipSetInterpolationMode(graphics, interpolation);
    GdipSetPixelOffsetMode(graphics, pixelOffset);
    GdipSetCompositingQuality(graphics, compositing);
    GdipSetSmoothingMode(graphics, smoothing);
    GdipSetWorldTransform(graphics, world);
    GdipDeleteMatrix(world);
}

void drawWalker(HDC dc, const MonitorSurface &surface, int originX, int originY)
{
    if (!walkerActive || !mascotEnabled) return;
    FrameRecord record;
    record.x = walkerX + leanX - float(surface.rect.left) - float(originX);
    record.y = walkerY + leanY - float(surface.rect.top) - float(originY);
    record.height = walkerSize;
    record.mirrored = walkerDir < 0.0f;
    record.bob = leanStage == walking ? sinf(walkerPhase) * 5.0f : 0.0f;
    GraphicsScope scope(dc);
    GdipTranslateWorldTransform(scope.graphics, record.x, record.y, MatrixOrderPrepend);
    GdipRotateWorldTransform(scope.graphics, leanAngle, MatrixOrderPrepend);
    GdipTranslateWorldTransform(scope.graphics, -record.x, -record.y, MatrixOrderPrepend);
    drawFrame(scope, record);
}
