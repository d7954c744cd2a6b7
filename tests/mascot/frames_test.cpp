#include <gtest/gtest.h>

#include <fstream>

#include "mascot/pictures.h"

static const uint32_t ink = 0xFF31302F;  // every channel below 50

TEST(RemoveSpecks, DropsWhatIsSmallBesideTheFigureOrBelowTheFloor)
{
    // Width, pixels of the figure and of a speck, whether they stay: the least floor, a fortieth of the
    // figure, the floor of a large image, a limit of 101 and of 100, a figure that is too small itself.
    const std::array<int, 5> rows[] = {
        {100, 400, 23, 1, 0},    {100, 400, 24, 1, 1},    {100, 1600, 39, 1, 0},
        {100, 1600, 40, 1, 1},   {1000, 100, 61, 1, 0},   {1000, 100, 62, 1, 1},
        {1000, 4040, 100, 1, 0}, {1000, 4039, 100, 1, 1}, {100, 23, 20, 0, 0}};
    for (const auto &[width, figure, speck, figureStays, speckStays] : rows) {
        Picture picture(width, 1000, [&](int x, int y) {
            if (y >= 10 && x < 50 && (y - 10) * 50 + x < figure) return 0xFFFF8090;
            return x < speck && y == 4 + x % 2 ? 0x10FF8090 : 0u;  // joined by corners, just not too faint
        });
        removeSpecks(picture);
        EXPECT_EQ(pixelOf(picture, 1, 10) != 0, figureStays == 1) << figure << " and " << speck;
        EXPECT_EQ(pixelOf(picture, 0, 4) != 0, speckStays == 1) << figure << " and " << speck;
        EXPECT_EQ(pixelOf(picture, speck - 1, 5 - speck % 2), pixelOf(picture, 0, 4));
    }
}

TEST(RemoveSpecks, CountsArmsThatMeetFurtherDownAsOne)
{
    for (const int foot : {5, 6}) {  // 24 pixels and 25; a figure of 1000 asks for 25
        Picture picture(100, 100, [&](int x, int y) {
            const bool arms = (x == 60 || x == 64) && y < 10;
            const bool feet = y == 10 && x > 60 && x < 60 + foot;
            return arms || feet || (x < 50 && y >= 50 && y < 70) ? 0xFFFF8090 : 0u;
        });
        removeSpecks(picture);
        EXPECT_EQ(pixelOf(picture, 60, 0) != 0, foot == 6);
        EXPECT_EQ(pixelOf(picture, 64, 0) != 0, foot == 6);
    }
}

TEST(SoftenOutline, ThinsTheDarkOpaqueRimByItsOpenNeighbours)
{
    // x, y, before, alpha after: the border, where what is missing counts as open; one, two and three holes;
    // the interior, also beside alpha 24; only what is opaque; three that are not dark.
    const std::array<uint32_t, 4> rows[] = {
        {0, 0, ink, 150},        {5, 0, ink, 150},        {4, 4, ink, 200},        {5, 4, ink, 200},
        {5, 6, ink, 150},        {2, 2, ink, 255},        {7, 7, ink, 255},        {9, 5, 0xC831302F, 150},
        {9, 7, 0xC731302F, 199}, {6, 0, 0xFF32302F, 255}, {7, 0, 0xFF2F322F, 255}, {8, 0, 0xFF2F2F32, 255}};
    Picture picture(10, 10, [&](int x, int y) {
        for (const auto &row : rows) {
            if (int(row[0]) == x && int(row[1]) == y) return row[2];
        }
        const int place = 10 * x + y;
        return place == 55 || place == 65 || place == 47 ? 0x17FFFFFF : place == 88 ? 0x18FFFFFF : ink;
    });
    softenOutline(picture);
    for (const auto &[x, y, before, alpha] : rows)
        EXPECT_EQ(pixelOf(picture, int(x), int(y)), (before & 0xFFFFFF) | alpha << 24) << x << ", " << y;
    for (const auto &[width, height, alpha] : {std::array{2u, 2u, 150u}, {1, 5, 255}, {5, 1, 255}}) {
        Picture small(int(width), int(height), [](int, int) { return ink; });
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

TEST(MascotFiles, ThatCannotBeReadLeaveNothingAndOddOnesWork)
{
    const TestFolder folder;
    const std::filesystem::path file = folder.path / L"x.png";
    const auto load = [&](const std::string &hex) {
        std::ofstream out(file, std::ios::binary);
        for (size_t i = 0; i < hex.size(); i += 2)
            out.put(char(std::stoi(hex.substr(i, 2), nullptr, 16)));
        out.close();
        return loadFrameFile(file);
    };
    // 8 by 6 pixels of (200, 120, 60): by a palette, and in 16 bits a channel.
    const std::string start = "89504e470d0a1a0a0000000d49484452";
    for (const std::string body : {"00000008000000060803000000c9db2fc900000006504c5445000000c8783cf252f14e000"
                                   "0000274524e5300ff5b9122b50000"
                                   "000e4944415478da6360840206521800054600318416035a0000000049454e44ae426082",
                                   "00000008000000061006000000ae9503b8000000194944415478da633871a2a2c2c6e6ff7"
                                   "f7269865103283700004721ee21b2"
                                   "0c98de0000000049454e44ae426082"}) {
        const auto frame = load(start + body);
        ASSERT_NE(frame, nullptr) << body;
        EXPECT_EQ(pixelOf(*frame, 7, 5), 0xFFC8783C) << body;
        // Whatever the system makes of a cut or a lie about the size, it can be asked and let go.
        for (const auto &damaged :
             {load(start + body.substr(0, 90)), load(start + "000186a0" + body.substr(8))})
            EXPECT_EQ(frameRect(damaged.get(), 0, 0, 30, 0).height, 40.0f);
    }
    for (const std::string broken : {"", "89504e470d0a1a0a", "6e6f20706963747572652e6e6f20706963747572652e"})
        EXPECT_EQ(load(broken), nullptr) << broken;
    EXPECT_EQ(loadFrameFile(folder.path), nullptr);
    EXPECT_EQ(frameRect(nullptr, 0, 0, 30, 0).height, 40.0f);
    for (const auto &[wide, high] : {std::array{4096, 3}, {3, 4096}, {4097, 3}, {3, 4097}}) {
        for (const bool asPng : {true, false}) {  // by the file's head, and by what GDI+ reads
            Picture(wide, high, [](int, int) { return ink; }).save(file, asPng);
            EXPECT_EQ(loadFrameFile(file) != nullptr, wide + high == 4099) << wide << " by " << high;
        }
    }
    Picture(4000, 2000, [](int, int) { return 0x80406080; }).save(file);
    const auto large = loadFrameFile(file);
    ASSERT_NE(large, nullptr);
    EXPECT_EQ(pixelOf(*large, 3999, 1999), 0x80406080u);
    const auto [x, y, width, height] = frameRect(large.get(), 500, 400, 300, 5);
    EXPECT_EQ((std::array{x, y, width, height}), (std::array{200.0f, 105.0f, 600.0f, 300.0f}));
}

TEST(MascotFiles, FillTheSlotsInTheToldOrder)
{
    const TestFolder folder;
    float width = 30;
    // Each new file comes before those that are there already, if the slot takes it.
    for (const std::wstring name :
         {L"say", L"start", L"pop", L"happy", L"yatta", L"idle", L"bubble", L"hurray"}) {
        Picture(int(++width), 40, [](int, int) { return ink; }).save(folder.path / (name + L".png"));
        loadMascotFrames(folder.path);
        const auto filledNow = [&](const ImageFrame *frame) {
            return frame && frameRect(frame, 0, 0, 40, 0).width == width;
        };
        EXPECT_EQ(filledNow(mainFrame), width <= 33 || name == L"idle") << width;
        EXPECT_EQ(filledNow(happyFrame), width <= 35) << width;
        EXPECT_EQ(bubbleFrame != nullptr, width >= 37) << width;
        EXPECT_EQ(cheerFrame != nullptr, name == L"hurray") << width;
    }
    unloadMascotFrames();
    EXPECT_FALSE(bubbleFrame || mainFrame || happyFrame || cheerFrame);
}
