#include "mascot/sprites.h"

#include <cmath>
#include <cstdint>
#include <vector>

#include "marks/angles.h"
#include "mascot/pixels.h"

static const uint32_t rimWhite = 0xE6FFFFFF;

// A pixel for AlphaBlend: 0xAARRGGBB, the channels multiplied by alpha.
static uint32_t premultiplied(int red, int green, int blue, int alpha)
{
    return toArgb(markColor(red * alpha / 255, green * alpha / 255, blue * alpha / 255), alpha);
}

// Creates a transparent bitmap and returns its pixels, row by row from the top; null on failure.
static uint32_t *newSprite(Sprite &sprite, int size)
{
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = size;
    info.bmiHeader.biHeight = -size;  // top-down
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void *bits = nullptr;
    sprite.bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    sprite.size = size;
    return static_cast<uint32_t *>(bits);
}

static int whitened(int channel, float heat)
{
    return int(float(channel) + float(255 - channel) * heat * heat * 0.85f);
}

static const int glowSize = 48;

struct GlowPixel {
    int alpha;   // 0 to 255
    float heat;  // 0 to 1, towards white
};

using GlowPixels = std::vector<GlowPixel>;  // row by row

// A soft ball of light with a white core. All colours share it, because the roots and powers for each colour
// would take much of the start-up time.
static GlowPixels glowPixels()
{
    GlowPixels pixels;
    for (int j = 0; j < glowSize; ++j) {
        for (int i = 0; i < glowSize; ++i) {
            const float dx = float(i) - 23.5f;
            const float dy = float(j) - 23.5f;
            const float nearness = std::clamp(1.0f - sqrtf(dx * dx + dy * dy) / 24.0f, 0.0f, 1.0f);
            const int alpha = int(std::clamp(powf(nearness, 1.7f), 0.0f, 1.0f) * 255.0f);
            pixels.push_back({alpha, std::clamp((nearness - 0.62f) / 0.38f, 0.0f, 1.0f)});
        }
    }
    return pixels;
}

static void buildGlow(Sprite &sprite, const GlowPixels &glow, MarkColor color)
{
    uint32_t *pixel = newSprite(sprite, glowSize);
    if (!pixel) return;
    for (const auto &[alpha, heat] : glow)
        *pixel++ = premultiplied(whitened(redOf(color), heat), whitened(greenOf(color), heat),
                                 whitened(blueOf(color), heat), alpha);
}

static void fillStar(GpGraphics *graphics, float centre, float radius, uint32_t argb)
{
    GpPointF corners[10];
    for (int i = 0; i < 10; ++i) {
        const float angle = float(i) * pi / 5.0f - pi / 2.0f;
        const float reach = i % 2 == 0 ? radius : radius * 0.45f;
        corners[i].X = centre + cosf(angle) * reach;
        corners[i].Y = centre + sinf(angle) * reach;
    }
    GdipFillPolygon(graphics, solidBrush(argb).get(), corners, 10, FillModeAlternate);
}

static void fillHeart(GpGraphics *graphics, float centre, float s, uint32_t argb)
{
    const float x = centre;
    const float y = centre;
    const float tip = y + s * 0.9f;
    const float notch = y - s * 0.25f;
    const OwnedPath heart = newPath();
    GdipStartPathFigure(heart.get());
    GdipAddPathBezier(heart.get(), x, tip, x - s * 1.4f, y + s * 0.2f, x - s * 1.05f, y - s * 0.8f, x, notch);
    GdipAddPathBezier(heart.get(), x, notch, x + s * 1.05f, y - s * 0.8f, x + s * 1.4f, y + s * 0.2f, x, tip);
    GdipClosePathFigure(heart.get());
    GdipFillPath(graphics, solidBrush(argb).get(), heart.get());
}

// The shape on a slightly larger white one, whose rim is visible on every background. GDI+ draws with
// straight alpha, so the pixels are premultiplied as they are copied into the sprite.
static void buildShape(Sprite &sprite, MarkColor color,
                       void (*fillShape)(GpGraphics *, float, float, uint32_t), float rimSize,
                       float innerSize)
{
    const int size = 56;
    uint32_t *target = newSprite(sprite, size);
    if (!target) return;
    const OwnedBitmap canvas = newBitmap(size, size);
    GpGraphics *graphics = nullptr;
    GdipGetImageGraphicsContext(canvas.get(), &graphics);
    GdipSetSmoothingMode(graphics, SmoothingModeAntiAlias);
    GdipGraphicsClear(graphics, 0);
    fillShape(graphics, 28.0f, rimSize, rimWhite);
    fillShape(graphics, 28.0f, innerSize, toArgb(color, 255));
    GdipDeleteGraphics(graphics);
    const LockedPixels drawn(canvas.get());
    for (int y = 0; y < drawn.height; ++y) {
        for (int x = 0; x < drawn.width; ++x) {
            const uint8_t *pixel = drawn.at(x, y);
            *target++ = premultiplied(pixel[2], pixel[1], pixel[0], pixel[3]);
        }
    }
}

void buildSprites()
{
    if (spriteDC) return;
    spriteDC = CreateCompatibleDC(nullptr);
    const GlowPixels glow = glowPixels();
    for (size_t i = 0; i < showPalette.size(); ++i) {
        buildGlow(glowSprites[i], glow, showPalette[i]);
        buildShape(starSprites[i], showPalette[i], fillStar, 24.931196f, 21.167997f);
        buildShape(heartSprites[i], showPalette[i], fillHeart, 18.345598f, 15.5232f);
    }
}

void freeSprites()
{
    for (auto *family : {&glowSprites, &starSprites, &heartSprites}) {
        for (Sprite &sprite : *family) {
            if (sprite.bitmap) DeleteObject(sprite.bitmap);
            sprite = {};
        }
    }
}

void freeSpriteDC()
{
    if (spriteDC) DeleteDC(spriteDC);
    spriteDC = nullptr;
}
