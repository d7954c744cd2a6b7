#include "mascot/walker.h"

#include <gtest/gtest.h>

#include "mascot/pictures.h"
#include "mascot/fireworks.h"
#include "mascot/sprites.h"
#include "menu/menu.h"

// A desk and the penguin as it is shipped, its first walk just due.
struct Walk {
    Desk desk;

    explicit Walk(const std::vector<RECT> &monitors) : desk(monitors)
    {
        wchar_t file[260] = {};
        GetModuleFileNameW(nullptr, file, 260);
        fakes.programFile = std::filesystem::path(file).parent_path().parent_path() / L"Zubbly.exe";
        initMascot();
        EXPECT_TRUE(mainFrame && mascotEnabled);
        EXPECT_EQ(recorded.timers.at({fakeWindow(0), 13}), 33u);
        fakes.tick = nextWalkTick;
    }
    ~Walk() { shutdownMascot(); }
};

TEST(Walk, StartsOutsideTheLaunchMonitorWhenItsTimeHasCome)
{
    for (const auto &[height, size, x] :
         {std::tuple{500, 150.0f, -1006.5f}, {1000, 220.0f, -1045.0f}, {2000, 240.0f, -1056.0f}}) {
        const Walk walk({{-900, 100, 0, 100 + height}});
        --fakes.tick;
        mascotWalkTick();
        EXPECT_FALSE(walkerActive);
        ++fakes.tick;
        mascotWalkTick();
        EXPECT_EQ(fakes.tick, Fakes{}.tick + 5136);  // as this stream has it, and the next four
        EXPECT_EQ((std::array{walkerSpeed, walkerDir, float(peekEnabled), peekX}),
                  (std::array{11.0f, 1.0f, 0.0f, -315.0f}));
        EXPECT_EQ((std::array{walkerSize, walkerX, walkerY}), (std::array{size, x, 92.0f + float(height)}));
    }
    shutdownMascot();  // a second time, with nothing there any more
    EXPECT_FALSE(mascotEnabled || mainFrame || spriteDC || glowSprites[0].bitmap || walkerActive);
}

TEST(Walk, KeepsItsTimeWhenTheTickCounterWraps)
{
    for (const auto &[due, early, late] :
         {std::tuple<DWORD, DWORD, DWORD>{3, 0xFFFFFFFF, 3}, {~2u, ~3u, 5}}) {
        const Walk walk(oneMonitor);
        nextWalkTick = due;
        fakes.tick = early;
        mascotWalkTick();
        EXPECT_FALSE(walkerActive) << due;
        fakes.tick = late;
        mascotWalkTick();
        EXPECT_TRUE(walkerActive) << due;
    }
}

TEST(Walk, BowsOnceThroughAllStagesAndWalksOn)
{
    struct {
        DWORD ms;           // since the stage began
        int before, after;  // stages
        float share, wobble = 0.0f;
    } rows[] = {{210, 1, 1, 0.25f},      {419, 1, 1, 0.99524f}, {420, 1, 2, 1}, {899, 2, 2, 1},
                {900, 2, 3, 1},          {210, 3, 3, 0.25f},    {420, 3, 3, 0}, {447, 3, 3, 0, 4.386f},
                {502, 3, 3, 0, -3.135f}, {640, 3, 0, 0}};
    for (const float direction : {1.0f, -1.0f}) {
        const Walk walk(oneMonitor);
        mascotWalkTick();
        peekEnabled = true;
        walkerDir = direction;
        walkerX = peekX - direction * 1.5f * walkerSpeed;
        mascotWalkTick();
        EXPECT_EQ(leanStage, 0);
        mascotWalkTick();
        const float x = walkerX;
        for (const auto &[ms, before, after, share, wobble] : rows) {
            EXPECT_EQ(leanStage, before) << ms;
            fakes.tick = leanClock + ms;
            mascotWalkTick();
            EXPECT_NEAR(leanAngle, direction * 82 * share + wobble, 0.01f) << before << " at " << ms;
            EXPECT_NEAR(leanX, direction * share * 24, 0.01f) << before << " at " << ms;
            EXPECT_NEAR(leanY, share * 7.5f, 0.01f) << before << " at " << ms;
            EXPECT_EQ(leanStage, after) << before << " at " << ms;
        }
        mascotWalkTick();
        EXPECT_EQ(walkerX, x + direction * walkerSpeed);
        EXPECT_EQ(leanStage, 0);  // once a walk
    }
}

TEST(Frame, LeavesTheGraphicsAsItWas)
{
    const Walk walk(oneMonitor);
    GraphicsScope scope(surfaces[0]);
    GpGraphics *const graphics = scope.graphics;
    const auto traits = [graphics] {
        InterpolationMode interpolation = {};
        PixelOffsetMode pixelOffset = {};
        CompositingQuality compositing = {};
        SmoothingMode smoothing = {};
        GpPointF corner = {1.0f, 1.0f};
        GdipGetInterpolationMode(graphics, &interpolation);
        GdipGetPixelOffsetMode(graphics, &pixelOffset);
        GdipGetCompositingQuality(graphics, &compositing);
        GdipGetSmoothingMode(graphics, &smoothing);
        GdipTransformPoints(graphics, CoordinateSpaceDevice, CoordinateSpaceWorld, &corner, 1);
        return std::array{int(interpolation), int(pixelOffset), int(compositing),
                          int(smoothing),     int(corner.X),    int(corner.Y)};
    };
    GdipSetInterpolationMode(graphics, InterpolationModeNearestNeighbor);
    GdipSetPixelOffsetMode(graphics, PixelOffsetModeHighSpeed);
    GdipSetCompositingQuality(graphics, CompositingQualityGammaCorrected);
    GdipSetSmoothingMode(graphics, SmoothingModeNone);
    GdipTranslateWorldTransform(graphics, 30.0f, 40.0f, MatrixOrderPrepend);
    const auto before = traits();
    for (const float alpha : {1.0f, 0.5f, 0.0f})
        drawFrame(scope, {.x = 200.0f, .y = 300.0f, .alpha = alpha, .mirrored = true});
    EXPECT_EQ(traits(), before);
    EXPECT_EQ(before[4], 31);
}

TEST(Walk, LeavesNoTrailOnAnyMonitor)
{
    for (const int kind : {0, 1, 2, 3}) {  // with a bow, to the left
        const Walk walk(twoMonitors);
        Screens screens;
        for (; !walkerActive || (walkerDir < 0) != (kind >= 2); mascotWalkTick())
            walkerActive = false;
        peekEnabled = kind % 2 == 1;
        int crayons = 0;
        int stages = 0;
        for (int tick = 0; walkerActive && tick < 400; ++tick) {
            fakes.tick += 33;
            mascotWalkTick();
            if (tick % 8 == 0) invalidateVirtualRect({-640, 0, 800, 600});
            screens.paint();
            ASSERT_EQ(screens.strays(walkerRect), 0) << "tick " << tick << " of kind " << kind;
            stages |= 1 << leanStage;
            // It holds up a crayon on the side it walks to.
            const LONG crayon = LONG(walkerX + walkerDir * 0.38f * walkerSize);
            crayons += screens.strays({}) - screens.strays({crayon - 3, 480, crayon + 3, 500}) > 60;
        }
        EXPECT_EQ(stages, kind % 2 == 1 ? 15 : 1);
        EXPECT_GT(crayons, 40);
        EXPECT_FALSE(walkerActive);
        EXPECT_EQ(screens.strays({}), 0);
        EXPECT_GE(nextWalkTick, fakes.tick + 25000);
    }
}

TEST(MascotHit, TakesThePictureWithoutItsSidesAndStopsTheWalkForTheShow)
{
    const Walk walk(oneMonitor);
    mascotWalkTick();
    walkerX = 400;
    walkerPhase = 1.5707964f;  // the bob is 5 pixels down; the picture is 132 wide and 150 high
    const std::array<int, 3> rows[] = {{342, 500, 1}, {341, 500, 0}, {458, 500, 1}, {459, 500, 0},
                                       {400, 447, 1}, {400, 446, 0}, {400, 597, 1}, {400, 598, 0}};
    for (const auto &[x, y, hit] : rows) {
        menuOpen = true;
        EXPECT_FALSE(mascotHit({x, y}));
        menuOpen = false;
        EXPECT_EQ(mascotHit({x, y}), hit == 1) << x << ", " << y;
        EXPECT_EQ(walkerClicked && showActive && rockets.front().x == float(x), hit == 1);
        if (hit) mascotWalkTick();  // it stands still
        stopShow(true);
    }
    mascotWalkTick();
    EXPECT_EQ(walkerX, 400 + walkerDir * walkerSpeed);  // on from where it stood
}
