#include "mascot/frames.h"

#include <gtest/gtest.h>

#include <fstream>

#include "mascot/pixels.h"
#include "support/desk.h"

static const uint32_t ink = 0xFF31302F;  // every channel below 50

static uint32_t pixelOf(const ImageFrame &frame, int x, int y)  // 0xAARRGGBB
{
    ARGB argb = 0;
    GdipBitmapGetPixel(static_cast<GpBitmap *>(frame.image), x, y, &argb);
    return argb;
}

// A frame whose pixels are 0xAARRGGBB by place.
struct Picture : ImageFrame {
    Picture(int width, int height, auto colorAt) : ImageFrame(newBitmap(width, height).release())
    {
        const LockedPixels pixels(static_cast<GpBitmap *>(image));
        for (int i = 0; i < width * height; ++i)
            *reinterpret_cast<uint32_t *>(pixels.at(i % width, i / width)) = colorAt(i % width, i / width);
    }
    void save(const std::filesystem::path &path, bool asPng = true) const
    {
        const CLSID encoder = {
            asPng ? 0x557cf406u : 0x557cf400u, 0x1a04, 0x11d3, {0x9a, 0x73, 0, 0, 0xf8, 0x1e, 0xf3, 0x2e}};
        GdipSaveImageToFile(image, path.c_str(), &encoder, nullptr);
    }
};

TEST(RemoveSpecks, DropsWhatIsSmallBesideTheFigureOrBelowTheFloor)
{
    // The image's width, pixels of the figure and of a speck, whether they stay.
    const std::array<int, 5> rows[] = {
        {100, 400, 23, 1, 0},    {100, 400, 24, 1, 1},    {100, 1600, 39, 1, 0},
        {100, 1600, 40, 1, 1},   {1000, 100, 61, 1, 0},   {1000, 100, 62, 1, 1},
        {1000, 4040, 100, 1, 0}, {1000, 4039, 100, 1, 1}, {100, 23, 20, 0, 0}};
    for (const auto &[width, figure, speck, figureStays, speckStays] : rows) {
        Picture picture(width, 1000, [&](int x, int y) {
            if (y >= 10 && x < 50 && (y - 10) * 50 + x < figure) return 0xFFFF8090;
            return x < speck && y == 4 + x % 2 ? 0x10FF8090 : x == 99 ? 0x0FFF8090 : 0u;  // joined by corners
        });
        removeSpecks(picture);
        EXPECT_EQ(pixelOf(picture, 1, 10) != 0, figureStays == 1) << figure << " and " << speck;
        EXPECT_EQ(pixelOf(picture, 0, 4) != 0, speckStays == 1) << figure << " and " << speck;
        EXPECT_EQ(pixelOf(picture, speck - 1, 5 - speck % 2), pixelOf(picture, 0, 4));
        EXPECT_EQ(pixelOf(picture, 99, 900), 0x0FFF8090u) << "too faint for a blob";
    }
    for (const int foot : {5, 6}) {  // arms that meet further down: 24 pixels and 25; the figure asks for 25
        Picture picture(100, 100, [&](int x, int y) {
            const bool arms = (x == 60 || x == 64) && y < 10, feet = y == 10 && x > 60 && x < 60 + foot;
            return arms || feet || (x < 50 && y >= 50 && y < 70) ? 0xFFFF8090 : 0u;
        });
        removeSpecks(picture);
        EXPECT_EQ(pixelOf(picture, 60, 0) != 0, foot == 6);
        EXPECT_EQ(pixelOf(picture, 64, 0) != 0, foot == 6);
    }
}

TEST(SoftenOutline, ThinsTheDarkOpaqueRimByItsOpenNeighbours)
{
    // x, y, before, alpha after: the border; one, two and three holes; the interior, also beside alpha 24;
    // only what is opaque; three that are not dark.
    const std::array<uint32_t, 4> rows[] = {
        {0, 0, ink, 150},        {5, 0, ink, 150},        {4, 4, ink, 200},        {5, 4, ink, 200},
        {5, 6, ink, 150},        {2, 2, ink, 255},        {7, 7, ink, 255},        {9, 5, 0xC831302F, 150},
        {9, 7, 0xC731302F, 199}, {6, 0, 0xFF32302F, 255}, {7, 0, 0xFF2F322F, 255}, {8, 0, 0xFF2F2F32, 255}};
    Picture picture(10, 10, [&](int x, int y) {
        for (const auto &row : rows)
            if (int(row[0]) == x && int(row[1]) == y) return row[2];
        const int place = 10 * x + y;
        return place == 55 || place == 65 || place == 47 ? 0x17FFFFFF : place == 88 ? 0x18FFFFFF : ink;
    });
    softenOutline(picture);
    for (const auto &[x, y, before, alpha] : rows)
        EXPECT_EQ(pixelOf(picture, int(x), int(y)), (before & 0xFFFFFF) | alpha << 24) << x << ", " << y;
    for (const auto &[width, height, alpha] : {std::tuple(2, 2, 150u), {1, 5, 255u}, {5, 1, 255u}}) {
        Picture small(width, height, [](int, int) { return ink; });
        for (auto *pass : {removeSpecks, softenOutline, bleedColour})
            pass(small);
        EXPECT_EQ(pixelOf(small, 0, 0), (ink & 0xFFFFFF) | alpha << 24) << width << " by " << height;
    }
}

TEST(BleedColour, SpreadsFourPixelsFarAndLeavesAlphaAlone)
{
    Picture picture(14, 3, [](int x, int y) {
        if (x == 8 && y == 0) return 0xFF214164;
        return x == 0 ? 0x10204060 : x == 2 ? 0x0F010203u : 0u;
    });
    bleedColour(picture);
    const uint32_t after[] = {0x10204060, 0x204060, 0x0F204060, 0x204060, 0x204062, 0x214164, 0x214164,
                              0x214164,   0x214164, 0x214164,   0x214164, 0x214164, 0x214164, 0};
    for (int x = 0; x < 14; ++x)
        EXPECT_EQ(pixelOf(picture, x, 1), after[x]) << x;  // place 4 is the mean of both sides, truncated
}

TEST(MascotFiles, AreTakenUpTo4096PixelsASideIfTheyCanBeRead)
{
    Desk desk({});
    const std::filesystem::path file = desk.folder() / "x.png";
    for (const std::string broken : {"", "\x89PNG\r\n\x1A\n", "no picture. no picture."}) {
        std::ofstream(file, std::ios::binary) << broken;
        EXPECT_EQ(loadFrameFile(file), nullptr) << broken;
    }
    EXPECT_EQ(loadFrameFile(desk.folder()), nullptr);
    DeleteEnhMetaFile(CloseEnhMetaFile(CreateEnhMetaFileW(nullptr, file.c_str(), nullptr, nullptr)));
    EXPECT_EQ(loadFrameFile(file), nullptr) << "a metafile";
    for (const auto &[wide, high] : {std::array{4096, 3}, {3, 4096}, {4097, 3}, {3, 4097}}) {
        for (const bool asPng : {true, false}) {  // by the file's head, and by what GDI+ reads
            Picture(wide, high, [](int, int) { return ink; }).save(file, asPng);
            EXPECT_EQ(loadFrameFile(file) != nullptr, wide + high == 4099) << wide << " by " << high;
        }
    }
    Picture(40, 20, [](int x, int) { return x < 2 ? 0u : ink; }).save(file);
    const auto cleaned = loadFrameFile(file);
    EXPECT_EQ(pixelOf(*cleaned, 2, 9), (ink & 0xFFFFFF) | 150u << 24) << "softened";
    EXPECT_EQ(pixelOf(*cleaned, 0, 9), ink & 0xFFFFFF) << "bled";
    for (const auto &[frame, asked, x, y, width, height] :
         {std::tuple<ImageFrame *, float, float, float, float, float>(cleaned.get(), 300.0f, 200.0f, 105.0f,
                                                                      600.0f, 300.0f),
          {cleaned.get(), 39.0f, 460.0f, 365.0f, 80.0f, 40.0f},
          {nullptr, 50.0f, 475.0f, 355.0f, 50.0f, 50.0f}}) {
        const auto rect = frameRect(frame, 500, 400, asked, 5);
        EXPECT_EQ((std::array{rect.x, rect.y, rect.width, rect.height}), (std::array{x, y, width, height}));
    }
}

TEST(MascotFiles, FillTheSlotsInTheirOrder)
{
    Desk desk({});
    float width = 30;
    // Each new file comes before those that are there already, if the slot takes it.
    for (const std::wstring name : {L"say", L"puzzle", L"board", L"spot", L"pick", L"clean", L"start", L"pop",
                                    L"happy", L"yatta", L"idle", L"bubble", L"hurray"}) {
        Picture(int(++width), 40, [](int, int) { return ink; }).save(desk.folder() / (name + L".png"));
        loadMascotFrames(desk.folder());
        const auto filledNow = [&](const ImageFrame *frame) {
            return frame && frameRect(frame, 0, 0, 40, 0).width == width;
        };
        EXPECT_EQ(filledNow(mainFrame), width <= 38 || name == L"idle") << width;
        EXPECT_EQ(filledNow(happyFrame), width <= 40) << width;
        EXPECT_EQ(bubbleFrame != nullptr, width >= 42) << width;
        EXPECT_EQ(cheerFrame != nullptr, name == L"hurray") << width;
    }
    unloadMascotFrames();
    EXPECT_FALSE(bubbleFrame || mainFrame || happyFrame || cheerFrame);
    EXPECT_EQ(leaks(), "");
}
