#include "mascot/fireworks.h"

#include <gtest/gtest.h>

#include "mascot/pictures.h"
#include "mascot/sprites.h"
#include "mascot/walker.h"
#include "sound/bank_b.h"

static const Spark lasting = {0, 0, 0, 0, 900, 900, 0, 0, 10};

// A show over two monitors, with its host and sprites but no penguin.
struct Show : testing::Test {
    const Desk desk{twoMonitors};
    Show()
    {
        mascotCall = SoundClip(44);
        mascotChatter.fill(mascotCall);
        fakes.programFile = L"C:\\nowhere\\Zubbly.exe";
        initMascot();
    }
    ~Show() override { shutdownMascot(); }
};

// Every number was compared once with a replay of the draws by hand: those of four rockets at the start, of
// the first burst with its inner ring and flash, and of the last bursts, cut at 520.
TEST_F(Show, LaunchesAndBurstsByItsDraws)
{
    startShow(123.0f);
    EXPECT_EQ(recorded.timers.at({fakeWindow(0), 12}), 16u);
    EXPECT_EQ(rockets[0].x, 123.0f);
    EXPECT_EQ(rockets[3].y, 600.0f);
    const std::array<uint32_t, 4> rows[] = {
        {0, 4, 0, 0xaf21a80c}, {10, 3, 128, 0xbc7493ba}, {15, 0, 520, 0xc4e584c7}, {30, 0, 502, 0x25bf1f78}};
    for (const auto &[tick, flying, glowing, expected] : rows) {
        while (showTicks < int(tick))
            showTick();
        EXPECT_EQ(rockets.size(), flying) << tick;
        EXPECT_EQ(sparks.size(), glowing) << tick;
        uint32_t hash = 2166136261u;
        const auto fold = [&](const auto &record) {
            for (size_t i = 0; i < sizeof record / 4; ++i)
                hash = (hash ^ reinterpret_cast<const uint32_t *>(&record)[i]) * 16777619u;
        };
        std::ranges::for_each(rockets, fold);
        std::ranges::for_each(sparks, fold);
        EXPECT_EQ(hash, expected) << tick << std::hex << " " << hash;
    }
    ASSERT_EQ(recorded.sounds.size(), 5u);  // a call, then the chatter of every rocket, even without room
    EXPECT_EQ(recorded.sounds[0], (std::pair<const void *, DWORD>(mascotCall.data(), 7)));
    EXPECT_EQ(recorded.sounds[4].second, 23u);
}

TEST_F(Show, EndsAfter221TicksOrWhenEmptyAndTellsIt)
{
    for (const int ticks : {220, 221, 2}) {
        startShow(100);  // the second click finds the first show and restarts it silently
        EXPECT_EQ(walkerClicked, ticks == 221);
        if (ticks == 2) rockets.clear();
        sparks = {lasting};
        sparks[0].life = ticks == 2 ? 2 : 900;
        walkerClicked = true;
        for (int i = 0; i < ticks; ++i) {
            EXPECT_TRUE(showActive && walkerClicked) << i << " of " << ticks;
            showTick();
        }
        EXPECT_EQ(showActive && walkerClicked && !sparks.empty(), ticks == 220);
        EXPECT_EQ(recorded.timers.contains({fakeWindow(0), 12}), ticks == 220);
    }
}

TEST_F(Show, DrawsEachSparkInItsSizeShapeAndFade)
{
    // Shape, size, life of 100, how far it is seen upwards (a star's tip, a heart's notch, a glow), alpha.
    const std::array<float, 5> rows[] = {{1, 20, 100, 22, 255}, {2, 20, 100, 4, 255}, {1, 20, 39, 22, 255},
                                         {2, 20, 19, 4, 125},   {1, 20, 0.1f, 0, 0},  {0, 10, 100, 16, 242}};
    for (const auto &[shape, size, life, height, alpha] : rows) {
        PatBlt(surfaces[0].canvasDC, 0, 0, 800, 600, BLACKNESS);
        sparks = {{300.5f, 200.9f, 0, 0, life, 100, 4, int(shape), size}};
        drawShow(surfaces[0].canvasDC, 0, 0, 800, 600, 0, 0);
        int seen = 0;
        while (desk.pixel(300, 200 - seen))
            ++seen;
        EXPECT_NEAR(seen, height, 1) << shape << " with " << life;
        EXPECT_NEAR(blueOf(desk.pixel(300, 200)), alpha, 2) << shape << " with " << life;
    }
    DIBSECTION glow = {};
    GetObjectW(glowSprites[4].bitmap, sizeof glow, &glow);
    const uint32_t *row = static_cast<const uint32_t *>(glow.dsBm.bmBits) + ptrdiff_t(23 * 48);
    EXPECT_EQ(row[23], 0xF2C0DCF2u);  // the core is nearly white
    EXPECT_EQ(row[12], 0x54173954u);  // the rim is faint and multiplied by its alpha
}

TEST_F(Show, LeavesNoTrailAndNothingOnTheCanvases)
{
    Screens screens;
    for (const int ticks : {30, 300}) {  // cut short, or whole
        startShow(200);
        for (int i = 0; showActive && i < ticks; ++i) {
            showTick();
            screens.paint();
            ASSERT_EQ(screens.strays(showActive ? showRect : RECT{}), 0) << i;
        }
        EXPECT_EQ(screens.strays({}) > 1000, ticks == 30);
        stopShow(false);
        screens.paint();
        EXPECT_EQ(screens.strays({}), 0);
    }
    for (int x = -640; x < 800; x += 7)
        ASSERT_EQ(desk.pixel(x, 100 + x * x % 480), 0u);
}
