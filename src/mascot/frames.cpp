#include "mascot/frames.h"

#include <cstdint>
#include <new>
#include <span>
#include <string>
#include <vector>

#include "mascot/pixels.h"

// Poses that stand in for a missing one, the likeliest first.
static constexpr const wchar_t *fallbackNames[] = {L"start", L"clean",  L"pick", L"bubble", L"spot",
                                                   L"board", L"puzzle", L"say",  L"pop"};

struct Neighbour {
    int dx, dy;
};
static constexpr Neighbour neighbours[] = {{-1, -1}, {0, -1}, {1, -1}, {-1, 0},
                                           {1, 0},   {-1, 1}, {0, 1},  {1, 1}};

static size_t pixelCount(const LockedPixels &pixels)
{
    return size_t(pixels.width) * size_t(pixels.height);
}

static size_t indexOf(const LockedPixels &pixels, int x, int y)
{
    return size_t(y) * size_t(pixels.width) + size_t(x);
}

void removeSpecks(ImageFrame &frame)
{
    const LockedPixels pixels(static_cast<GpBitmap *>(frame.image));
    if (pixels.status != Ok) frame.lastStatus = pixels.status;
    if (pixels.width < 3 || pixels.height < 3) return;

    const size_t total = pixelCount(pixels);
    const size_t sizeFloor = std::max<size_t>(total / 16000, 24);
    std::vector<bool> labelled(total);
    std::vector<size_t> members;   // pixel indices, blob after blob
    std::vector<size_t> blobEnds;  // where each blob's indices end
    std::vector<size_t> stack;
    stack.reserve(1024);
    const auto label = [&](int x, int y) {
        const size_t index = indexOf(pixels, x, y);
        if (labelled[index] || pixels.at(x, y)[3] < 16) return;
        labelled[index] = true;
        stack.push_back(index);
    };
    size_t largest = 0;
    for (int startY = 0; startY < pixels.height; ++startY) {
        for (int startX = 0; startX < pixels.width; ++startX) {
            label(startX, startY);
            if (stack.empty()) continue;
            const size_t begin = members.size();
            while (!stack.empty()) {
                const size_t index = stack.back();
                stack.pop_back();
                members.push_back(index);
                const int x = int(index % size_t(pixels.width));
                const int y = int(index / size_t(pixels.width));
                for (const Neighbour &to : neighbours) {
                    if (pixels.holds(x + to.dx, y + to.dy)) label(x + to.dx, y + to.dy);
                }
            }
            blobEnds.push_back(members.size());
            largest = std::max(largest, members.size() - begin);
        }
    }

    const size_t limit = std::max(sizeFloor, largest / 40);
    size_t begin = 0;
    for (const size_t end : blobEnds) {
        for (size_t i = begin; i < end && end - begin < limit; ++i) {
            const size_t index = members[i];
            uint8_t *pixel = pixels.at(int(index % size_t(pixels.width)), int(index / size_t(pixels.width)));
            std::fill_n(pixel, 4, uint8_t(0));
        }
        begin = end;
    }
}

void softenOutline(ImageFrame &frame)
{
    const LockedPixels pixels(static_cast<GpBitmap *>(frame.image));
    if (pixels.status != Ok) frame.lastStatus = pixels.status;
    if (pixels.width < 2 || pixels.height < 2) return;

    // The neighbours are read from a copy: a softened pixel must not count as transparent for the next.
    std::vector<uint8_t> alphas(pixelCount(pixels));
    for (int y = 0; y < pixels.height; ++y) {
        for (int x = 0; x < pixels.width; ++x)
            alphas[indexOf(pixels, x, y)] = pixels.at(x, y)[3];
    }
    for (int y = 0; y < pixels.height; ++y) {
        for (int x = 0; x < pixels.width; ++x) {
            uint8_t *pixel = pixels.at(x, y);
            if (alphas[indexOf(pixels, x, y)] < 200) continue;
            if (pixel[0] >= 50 || pixel[1] >= 50 || pixel[2] >= 50) continue;
            int open = 0;
            for (const Neighbour &to : neighbours) {
                if (!pixels.holds(x + to.dx, y + to.dy) || alphas[indexOf(pixels, x + to.dx, y + to.dy)] < 24)
                    ++open;
            }
            if (open >= 3) {
                pixel[3] = 150;
            } else if (open >= 1) {
                pixel[3] = 200;
            }
        }
    }
}

void bleedColour(ImageFrame &frame)
{
    const LockedPixels pixels(static_cast<GpBitmap *>(frame.image));
    if (pixels.status != Ok) frame.lastStatus = pixels.status;
    if (pixels.width < 3 || pixels.height < 3) return;

    std::vector<bool> coloured(pixelCount(pixels));
    for (int y = 0; y < pixels.height; ++y) {
        for (int x = 0; x < pixels.width; ++x)
            coloured[indexOf(pixels, x, y)] = pixels.at(x, y)[3] >= 16;
    }
    std::vector<size_t> added;
    for (int pass = 0; pass < 4; ++pass) {
        added.clear();
        for (int y = 0; y < pixels.height; ++y) {
            for (int x = 0; x < pixels.width; ++x) {
                if (coloured[indexOf(pixels, x, y)]) continue;
                int blue = 0;
                int green = 0;
                int red = 0;
                int count = 0;
                for (const Neighbour &to : neighbours) {
                    if (!pixels.holds(x + to.dx, y + to.dy)) continue;
                    if (!coloured[indexOf(pixels, x + to.dx, y + to.dy)]) continue;
                    const uint8_t *beside = pixels.at(x + to.dx, y + to.dy);
                    blue += beside[0];
                    green += beside[1];
                    red += beside[2];
                    ++count;
                }
                if (count == 0) continue;
                uint8_t *pixel = pixels.at(x, y);
                pixel[0] = uint8_t(blue / count);
                pixel[1] = uint8_t(green / count);
                pixel[2] = uint8_t(red / count);
                added.push_back(indexOf(pixels, x, y));
            }
        }
        if (added.empty()) return;
        for (const size_t index : added)
            coloured[index] = true;
    }
}

// A copy that can be locked and does not hold the file; null if it could not be made.
static OwnedBitmap copyOf(GpImage *image)
{
    UINT imageWidth = 0;
    UINT imageHeight = 0;
    GdipGetImageWidth(image, &imageWidth);
    GdipGetImageHeight(image, &imageHeight);
    const int width = int(imageWidth);
    const int height = int(imageHeight);
    OwnedBitmap copy = newBitmap(width, height);
    GpGraphics *graphics = nullptr;
    if (GdipGetImageGraphicsContext(copy.get(), &graphics) != Ok) return nullptr;
    GdipSetCompositingMode(graphics, CompositingModeSourceCopy);
    GdipGraphicsClear(graphics, 0);
    GdipSetInterpolationMode(graphics, InterpolationModeHighQualityBicubic);
    GdipSetPixelOffsetMode(graphics, PixelOffsetModeHighQuality);
    GdipSetCompositingQuality(graphics, CompositingQualityHighQuality);
    GdipSetSmoothingMode(graphics, SmoothingModeHighQuality);
    const GpStatus drawn = GdipDrawImageRectRectI(graphics, image, 0, 0, width, height, 0, 0, width, height,
                                                  UnitPixel, nullptr, nullptr, nullptr);
    GdipDeleteGraphics(graphics);
    return drawn == Ok ? std::move(copy) : nullptr;
}

std::unique_ptr<ImageFrame> loadFrameFile(const std::filesystem::path &path)
{
    std::error_code failed;
    if (path.empty() || !std::filesystem::exists(path, failed)) return nullptr;
    GpImage *image = nullptr;
    if (GdipLoadImageFromFile(path.c_str(), &image) != Ok) {
        GdipDisposeImage(image);
        return nullptr;
    }
    auto loaded = std::make_unique<ImageFrame>(image);
    OwnedBitmap copy = copyOf(image);
    if (!copy) return loaded;
    auto cleaned = std::make_unique<ImageFrame>(copy.release());
    try {
        removeSpecks(*cleaned);
        softenOutline(*cleaned);
        bleedColour(*cleaned);
    } catch (const std::bad_alloc &) {
        cleaned->lastStatus = OutOfMemory;  // a giant picture is shown as far as it was cleaned
    }
    return cleaned;
}

static void fillSlot(ImageFrame *&slot, const std::filesystem::path &folder,
                     std::span<const wchar_t *const> names)
{
    for (const wchar_t *name : names) {
        if (!slot) slot = loadFrameFile(folder / (std::wstring(name) + L".png")).release();
    }
}

void loadMascotFrames(const std::filesystem::path &folder)
{
    unloadMascotFrames();
    if (folder.empty()) return;
    static constexpr const wchar_t *bubbleNames[] = {L"bubble"};
    static constexpr const wchar_t *mainNames[] = {L"idle", L"pop"};
    static constexpr const wchar_t *happyNames[] = {L"yatta", L"happy", L"pop"};
    static constexpr const wchar_t *cheerNames[] = {L"hurray"};
    fillSlot(bubbleFrame, folder, bubbleNames);
    fillSlot(mainFrame, folder, mainNames);
    fillSlot(mainFrame, folder, fallbackNames);
    fillSlot(happyFrame, folder, happyNames);
    fillSlot(happyFrame, folder, fallbackNames);
    fillSlot(cheerFrame, folder, cheerNames);
}

void unloadMascotFrames()
{
    for (ImageFrame **slot : {&bubbleFrame, &mainFrame, &happyFrame, &cheerFrame}) {
        delete *slot;
        *slot = nullptr;
    }
}

struct FrameRect frameRect(const ImageFrame *frame, float x, float y, float height, float bob)
{
    UINT imageWidth = 100;
    UINT imageHeight = 100;
    if (frame) {
        GdipGetImageWidth(frame->image, &imageWidth);
        GdipGetImageHeight(frame->image, &imageHeight);
    }
    const float pixelsWide = float(std::max(imageWidth, 1u));
    const float pixelsHigh = float(std::max(imageHeight, 1u));
    const float scale = std::max(height, 40.0f) / pixelsHigh;
    const float drawnWidth = scale * pixelsWide;
    const float drawnHeight = scale * pixelsHigh;
    return {x - drawnWidth * 0.5f, y - drawnHeight + bob, drawnWidth, drawnHeight};
}
