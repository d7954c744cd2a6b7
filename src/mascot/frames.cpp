#include "mascot/frames.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <new>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "mascot/pixels.h"
#include "shell/base/files.h"

// Pictures that replace a missing one, in this order.
static constexpr const wchar_t *fallbackNames[] = {L"start", L"clean",  L"pick", L"bubble", L"spot",
                                                   L"board", L"puzzle", L"say",  L"pop"};

// One byte per pixel with a border of one, so that every pixel has eight neighbours without a test: the
// passes take much of the start-up time.
struct PixelMask {
    std::vector<uint8_t> bytes;
    size_t stride;  // from a pixel to the one below

    explicit PixelMask(const LockedPixels &pixels)
        : bytes(size_t(pixels.width + 2) * size_t(pixels.height + 2)), stride(size_t(pixels.width + 2))
    {
    }
    size_t indexOf(int x, int y) const { return size_t(y + 1) * stride + size_t(x + 1); }
    void markBorder()
    {
        std::fill_n(bytes.begin(), stride, 1);
        std::fill_n(bytes.end() - ptrdiff_t(stride), stride, 1);
        for (size_t left = 0; left < bytes.size(); left += stride)
            bytes[left] = bytes[left + stride - 1] = 1;
    }
    int xOf(size_t index) const { return int(index % stride) - 1; }
    int yOf(size_t index) const { return int(index / stride) - 1; }
    std::array<size_t, 8> neighbours(size_t index) const
    {
        return {index - stride - 1, index - stride,     index - stride + 1, index - 1,
                index + 1,          index + stride - 1, index + stride,     index + stride + 1};
    }
};

// Marks the pixels with at least this alpha; the border is 0.
static PixelMask maskOf(const LockedPixels &pixels, uint8_t leastAlpha)
{
    PixelMask mask(pixels);
    for (int y = 0; y < pixels.height; ++y) {
        for (int x = 0; x < pixels.width; ++x)
            mask.bytes[mask.indexOf(x, y)] = pixels.at(x, y)[3] >= leastAlpha;
    }
    return mask;
}

// A horizontal run of pixels in a union-find; the root holds the size of the blob.
struct Run {
    int y, first, last;
    size_t parent;
    size_t size;
};

static size_t rootOf(std::vector<Run> &runs, size_t run)
{
    while (runs[run].parent != run)
        run = runs[run].parent = runs[runs[run].parent].parent;
    return run;
}

static void join(std::vector<Run> &runs, size_t a, size_t b)
{
    a = rootOf(runs, a);
    b = rootOf(runs, b);
    if (a == b) return;
    runs[a].size += runs[b].size;
    runs[b].parent = a;
}

// The runs of all rows, joined where they touch, also at corners.
static std::vector<Run> blobRuns(const LockedPixels &pixels)
{
    std::vector<Run> runs;
    size_t above = 0;     // the first run of the row above
    size_t rowBegin = 0;  // the first run of this row
    for (int y = 0; y < pixels.height; ++y) {
        size_t candidate = above;
        for (int x = 0; x < pixels.width; ++x) {
            if (pixels.at(x, y)[3] < 16) continue;
            const int first = x;
            while (x + 1 < pixels.width && pixels.at(x + 1, y)[3] >= 16)
                ++x;
            const size_t run = runs.size();
            runs.push_back({y, first, x, run, size_t(x - first + 1)});
            while (candidate < rowBegin && runs[candidate].last < first - 1)
                ++candidate;
            for (size_t other = candidate; other < rowBegin && runs[other].first <= x + 1; ++other)
                join(runs, other, run);
        }
        above = rowBegin;
        rowBegin = runs.size();
    }
    return runs;
}

void removeSpecks(ImageFrame &frame)
{
    const LockedPixels pixels(static_cast<GpBitmap *>(frame.image));
    if (pixels.status != Ok) frame.lastStatus = pixels.status;
    if (pixels.width < 3 || pixels.height < 3) return;

    std::vector<Run> runs = blobRuns(pixels);
    size_t largest = 0;
    for (const Run &run : runs)
        largest = std::max(largest, run.size);  // the root has the size of the whole blob
    const size_t sizeFloor = std::max<size_t>(size_t(pixels.width) * size_t(pixels.height) / 16000, 24);
    const size_t limit = std::max(sizeFloor, largest / 40);
    for (size_t i = 0; i < runs.size(); ++i) {
        if (runs[rootOf(runs, i)].size >= limit) continue;
        std::memset(pixels.at(runs[i].first, runs[i].y), 0, 4 * size_t(runs[i].last - runs[i].first + 1));
    }
}

void softenOutline(ImageFrame &frame)
{
    const LockedPixels pixels(static_cast<GpBitmap *>(frame.image));
    if (pixels.status != Ok) frame.lastStatus = pixels.status;
    if (pixels.width < 2 || pixels.height < 2) return;

    // The mask is made first, because a softened pixel must not count as transparent for its neighbours.
    const PixelMask solid = maskOf(pixels, 24);
    for (int y = 0; y < pixels.height; ++y) {
        for (int x = 0; x < pixels.width; ++x) {
            uint8_t *pixel = pixels.at(x, y);
            if (pixel[3] < 200) continue;
            if (pixel[0] >= 50 || pixel[1] >= 50 || pixel[2] >= 50) continue;
            int open = 0;
            for (const size_t beside : solid.neighbours(solid.indexOf(x, y)))
                open += !solid.bytes[beside];
            if (open >= 3) {
                pixel[3] = 150;
            } else if (open >= 1) {
                pixel[3] = 200;
            }
        }
    }
}

// Gives a pixel the mean colour of its coloured neighbours; it has at least one.
static void takeColour(const LockedPixels &pixels, const PixelMask &coloured, size_t index)
{
    int blue = 0;
    int green = 0;
    int red = 0;
    int count = 0;
    for (const size_t neighbour : coloured.neighbours(index)) {
        if (!coloured.bytes[neighbour]) continue;
        const uint8_t *beside = pixels.at(coloured.xOf(neighbour), coloured.yOf(neighbour));
        blue += beside[0];
        green += beside[1];
        red += beside[2];
        ++count;
    }
    uint8_t *pixel = pixels.at(coloured.xOf(index), coloured.yOf(index));
    pixel[0] = uint8_t(blue / count);  // NOLINT(clang-analyzer-core.DivideZero): it has at least one
    pixel[1] = uint8_t(green / count);
    pixel[2] = uint8_t(red / count);
}

void bleedColour(ImageFrame &frame)
{
    const LockedPixels pixels(static_cast<GpBitmap *>(frame.image));
    if (pixels.status != Ok) frame.lastStatus = pixels.status;
    if (pixels.width < 3 || pixels.height < 3) return;

    PixelMask coloured = maskOf(pixels, 16);
    PixelMask taken = coloured;  // coloured, border, or candidate: may not become one
    taken.markBorder();
    std::vector<size_t> candidates;
    const auto askNeighbours = [&](size_t index) {
        for (const size_t beside : coloured.neighbours(index)) {
            if (taken.bytes[beside]) continue;
            taken.bytes[beside] = 1;
            candidates.push_back(beside);
        }
    };
    for (size_t index = 0; index < coloured.bytes.size(); ++index) {
        if (coloured.bytes[index]) askNeighbours(index);
    }
    for (int pass = 0; pass < 4 && !candidates.empty(); ++pass) {
        for (const size_t index : candidates)
            takeColour(pixels, coloured, index);
        const std::vector<size_t> added = std::move(candidates);
        candidates.clear();
        for (const size_t index : added)
            coloured.bytes[index] = 1;
        for (const size_t index : added)
            askNeighbours(index);
    }
}

// A copy that can be locked and does not keep the file open; null on failure.
static OwnedBitmap copyOf(GpImage *image)
{
    const PixelSize size = pixelSize(image);
    const int width = int(size.width);
    const int height = int(size.height);
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

// A picture of a few kilobytes can decode to gigabytes: no side may be longer than this.
static constexpr uint32_t longestSide = 4096;

// The first bytes of EMF and WMF files. They are lists of drawing calls, and a damaged one can crash the
// system's player or keep it in a loop.
static constexpr uint8_t metafileHeads[][4] = {
    {1, 0, 0, 0}, {0xD7, 0xCD, 0xC6, 0x9A}, {1, 0, 9, 0}, {2, 0, 9, 0}};

// False for a metafile, and if the header of a PNG file states a side that is too long. GDI+ may decode all
// of a picture when it opens it, so this check comes first.
static bool headAllows(const std::wstring &path)
{
    uint8_t head[24] = {};
    FILE *file = _wfopen(path.c_str(), L"rb");
    if (!file) return false;
    std::fread(head, 1, sizeof head, file);
    std::fclose(file);
    const auto sideAt = [&](size_t at) {
        return uint32_t(head[at]) << 24 | head[at + 1] << 16 | head[at + 2] << 8 | head[at + 3];
    };
    for (const auto &metafile : metafileHeads)
        if (std::memcmp(head, metafile, 4) == 0) return false;
    if (std::memcmp(head, "\x89PNG", 4) != 0) return true;
    return sideAt(16) <= longestSide && sideAt(20) <= longestSide;
}

static bool hasFittingSides(GpImage *image)
{
    const PixelSize size = pixelSize(image);
    return size.width <= longestSide && size.height <= longestSide;
}

std::unique_ptr<ImageFrame> loadFrameFile(const std::wstring &path)
{
    if (path.empty() || !pathExists(path) || !headAllows(path)) return nullptr;
    GpImage *image = nullptr;
    if (GdipLoadImageFromFile(path.c_str(), &image) != Ok || !hasFittingSides(image)) {
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
        cleaned->lastStatus = OutOfMemory;  // short of memory: shown as far as it was cleaned
    }
    return cleaned;
}

static void fillSlot(ImageFrame *&slot, const std::wstring &folder, std::span<const wchar_t *const> names)
{
    for (const wchar_t *name : names) {
        if (!slot) slot = loadFrameFile(inFolder(folder, std::wstring(name) + L".png")).release();
    }
}

void loadMascotFrames(const std::wstring &folder)
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
    const PixelSize size = frame ? pixelSize(frame->image) : PixelSize{100, 100};
    const float pixelsWide = float(std::max(size.width, 1u));
    const float pixelsHigh = float(std::max(size.height, 1u));
    const float scale = std::max(height, 40.0f) / pixelsHigh;
    const float drawnWidth = scale * pixelsWide;
    const float drawnHeight = scale * pixelsHigh;
    return {x - drawnWidth * 0.5f, y - drawnHeight + bob, drawnWidth, drawnHeight};
}
