#include <gtest/gtest.h>

#include <fstream>
#include <iomanip>

#include "mascot/fireworks.h"
#include "mascot/frames.h"
#include "mascot/pixels.h"
#include "mascot/walker.h"
#include "support/desk.h"
#include "support/draws.h"
#include "support/recorded.h"

// A frame whose pixels are 0xAARRGGBB by place.
struct Picture : ImageFrame {
    Picture(int width, int height, auto colorAt) : ImageFrame(newBitmap(width, height).release())
    {
        const LockedPixels pixels(static_cast<GpBitmap *>(image));
        for (int i = 0; i < width * height; ++i)
            *reinterpret_cast<uint32_t *>(pixels.at(i % width, i / width)) = colorAt(i % width, i / width);
    }
    ARGB at(int x, int y) const
    {
        ARGB argb = 0;
        GdipBitmapGetPixel(static_cast<GpBitmap *>(image), x, y, &argb);
        return argb;
    }
    // Encoders have 6 for PNG and 0 for BMP.
    void save(const std::filesystem::path &path, int encoder) const
    {
        const CLSID id = {
            0x557cf400u + unsigned(encoder), 0x1a04, 0x11d3, {0x9a, 0x73, 0, 0, 0xf8, 0x1e, 0xf3, 0x2e}};
        GdipSaveImageToFile(image, path.c_str(), &id, nullptr);
    }
};

TEST(Frames, LoseSpecksBelowAFortiethOfTheFigureOrTheFloor)
{
    // Width of the picture, pixels of the figure, height of the speck's two arms, and width of its foot.
    const std::array<int, 4> rows[] = {{100, 400, 10, 3},  {100, 400, 10, 4},  {100, 1600, 18, 3},
                                       {100, 1600, 18, 4}, {1000, 100, 29, 3}, {1000, 100, 29, 4}};
    for (const auto &[width, figure, arm, foot] : rows) {
        Picture picture(width, 1000, [&](int x, int y) {
            const bool arms = (x == 60 || x == 64) && y < arm;
            const bool feet = y == arm && x > 60 && x <= 60 + foot;  // it touches the arms at corners
            return arms || feet ? 0x10FF8090 : x < 50 && y * 50 + x < figure ? 0xFFFF8090 : 0;
        });
        removeSpecks(picture);
        for (const int x : {60, 64})
            EXPECT_EQ(picture.at(x, 0) != 0, foot == 4) << arm;
    }
}

// All is dark and opaque on the left and empty on the right, but for some pixels.
TEST(Frames, AreSoftenedWhereTheirRimIsDarkAndBleedFourPixelsFar)
{
    const std::array<uint32_t, 3> others[] = {{2, 2, 0x17FFFFFF}, {5, 2, 0x18FFFFFF}, {0, 0, 0xFF32302F},
                                              {1, 0, 0xFF2F322F}, {2, 0, 0xFF2F2F32}, {3, 0, 0xC731302F},
                                              {4, 0, 0xC831302F}, {9, 1, 0x0F010203}, {8, 4, 0x10214164}};
    Picture picture(15, 5, [&](uint32_t x, uint32_t y) {
        for (const auto &[otherX, otherY, argb] : others)
            if (otherX == x && otherY == y) return argb;
        return x < 7 ? 0xFF313131 : 0;
    });
    std::ostringstream text;
    for (void (*pass)(ImageFrame &) : {softenOutline, bleedColour}) {
        pass(picture);
        for (int i = 0; i < 15 * 5; ++i)
            text << std::hex << std::setw(8) << picture.at(i % 15, i / 15) << (i % 15 < 14 ? ' ' : '\n');
    }
    expectRecorded("mascot/softened, then bled", text.str());
}

TEST(MascotFiles, AreTakenUpTo4096PixelsASideAndNotAsMetafiles)
{
    Desk desk({});
    const std::filesystem::path file = desk.folder() / "x.png";
    for (const uint32_t head : {0x00000001u, 0x9AC6CDD7u, 0x00090001u, 0x00090002u, 0x00090003u}) {
        std::ofstream(file, std::ios::binary).write(reinterpret_cast<const char *>(&head), 4);
        EXPECT_EQ(loadFrameFile(file), nullptr);
        EXPECT_EQ(desk.count("LoadImageFromFile"), head == 0x00090003) << head;
    }
    const std::array<int, 3> sizes[] = {{4096, 3, 0}, {3, 4096, 6}, {4097, 3, 0},
                                        {3, 4097, 0}, {4097, 3, 6}, {3, 4097, 6}};
    for (const auto &[wide, high, encoder] : sizes) {
        Picture(wide, high, [](int, int) { return ~0u; }).save(file, encoder);
        desk.calls.clear();
        EXPECT_EQ(loadFrameFile(file) != nullptr, wide + high == 4099) << wide << " by " << high;
        EXPECT_EQ(desk.count("LoadImageFromFile"), wide + high == 4099 || encoder == 0) << "by a PNG's head";
    }
    Picture(40, 30, [](int, int) { return ~0u; }).save(file, 6);
    const Failing uncopied("GdipGetImageGraphicsContext");
    EXPECT_NE(loadFrameFile(file), nullptr) << "the uncleaned one";
}

TEST(MascotFiles, AreLookedForInTheirOrder)
{
    std::wstring asked;
    REPLACE(GetFileAttributesW, [&asked](LPCWSTR path) {
        asked += std::filesystem::path(path).stem().wstring() + L" ";
        return INVALID_FILE_ATTRIBUTES;
    });
    loadMascotFrames(L"f");
    const std::wstring others = L"start clean pick bubble spot board puzzle say pop ";
    EXPECT_EQ(asked, L"bubble idle pop " + others + L"yatta happy pop " + others + L"hurray ");
}

// Before its time, also while the tick counter wraps, at its time, and through the bow.
TEST(Walk, StartsBowsAndWalksOnByItsTimes)
{
    std::string text;
    for (const int side : {0, 1}) {
        Desk desk({{-900, 100, 0, 1100 + 1000 * side}});
        Draws draws(0.0, {12, side, 34, 35});
        mascotEnabled = true;
        nextWalkTick = 5;
        desk.tick = nextWalkTick - 10;
        for (const DWORD ms : {4, 5, 1, 33, 419, 1, 899, 1, 210, 210, 30, 189, 1}) {
            desk.calls.clear();
            desk.moveClocks(ms);
            mascotWalkTick();
            text += std::to_string(ms) + " ms: stage " + std::to_string(leanStage) + ", " +
                    std::to_string(int(leanAngle)) + " degrees" + joined({"Inv"}) + "\n";
            if (walkerActive && !peekDone) walkerX = peekX - walkerDir;
        }
    }
    expectRecorded("mascot/walks", text);
}

TEST(Penguin, IsHitOnItsPictureWithoutItsSides)
{
    Desk desk({{-900, 0, 0, 600}});
    mascotEnabled = walkerActive = true;
    walkerX = -400;
    walkerY = 592;
    walkerSize = 150;
    walkerPhase = 1.5707964f;  // 5 pixels down
    std::string reach;
    for (const auto &[x, y] : {POINT{-1, 0}, POINT{1, 0}, POINT{0, -1}, POINT{0, 1}}) {
        int distance = 0;
        while (mascotHit({-400 + x * distance, 500 + y * distance}))
            ++distance;
        reach += std::to_string(distance) + " ";
    }
    EXPECT_EQ(reach, "67 67 54 98 ");
    menuOpen = true;
    EXPECT_FALSE(mascotHit({-400, 500}));
}

TEST(Show, HasAtMost520SparksAndEndsAfter221Ticks)
{
    rockets = {{400, 200, -30, 300, 0}};
    sparks.assign(519, {0, 0, 0, 0, 900, 900, 0, 0, 10});
    showTick();
    EXPECT_EQ(sparks.size(), 520u);
    for (int tick = 2; tick <= 221; ++tick) {
        showTick();
        EXPECT_EQ(showAlive(), tick < 221) << tick;
    }
}
