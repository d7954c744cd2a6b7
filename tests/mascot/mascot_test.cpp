#include <gtest/gtest.h>

#include "mascot/frames.h"
#include "mascot/fireworks.h"
#include "mascot/sprites.h"
#include "mascot/walker.h"
#include "menu/menu.h"
#include "sound/bank_b.h"
#include "support/desk.h"
#include "support/draws.h"
#include "support/recorded.h"

// A desk and the penguin as it is shipped, its first walk just due.
struct Mascot : Desk {
    Draws draws;

    explicit Mascot(const std::vector<RECT> &all, double share = 0.0, double stride = 0.0)
        : Desk(all), draws(share, {}, stride)
    {
        wchar_t file[260] = {};
        GetModuleFileNameW(nullptr, file, 260);
        programFile = std::filesystem::path(file).parent_path().parent_path() / L"Zubbly.exe";
        mascotCall = SoundClip(44);
        mascotChatter.fill(mascotCall);
        for (DeskWindow &window : windows)
            window.visible = true;
        initMascot();
        tick = nextWalkTick;
        calls.clear();
    }
    ~Mascot() { shutdownMascot(); }

    // How many pixels that the windows show outside a virtual-screen rectangle are not black.
    int strays(const RECT &allowed)
    {
        int count = 0;
        for (const DeskWindow &window : windows) {
            const int width = window.rect.right - window.rect.left,
                      height = window.rect.bottom - window.rect.top;
            BITMAPINFO info = {{40, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0}, {}};
            std::vector<uint32_t> pixels(size_t(width * height));
            if (window.dc)
                GetDIBits(window.dc, window.shown, 0, UINT(height), pixels.data(), &info, DIB_RGB_COLORS);
            for (int i = 0; i < width * height; ++i) {
                const POINT point = {i % width + window.rect.left, i / width + window.rect.top};
                count += (pixels[size_t(i)] & 0xFFFFFF) != 0 && !PtInRect(&allowed, point);
            }
        }
        return count;
    }
};

TEST(Walk, StartsBesideTheLaunchMonitorWhenItsTimeHasCome)
{
    for (const auto &[height, drawn, size, x, direction, peek] :
         {std::tuple(500, std::vector{11, 0, 34, 35}, 150.0f, -1006.5f, 1.0f, -315.0f),
          {1000, {8, 1, 34, 0}, 220.0f, 145.0f, -1.0f, -270.0f},
          {2000, {12, 1, 35, 35}, 240.0f, 156.0f, -1.0f, -585.0f}}) {
        Mascot desk({{-900, 100, 0, 100 + height}});
        EXPECT_EQ(desk.draws.take(), "25000..55000 4000..9000");
        EXPECT_EQ(nextWalkTick, 1'004'000u);
        EXPECT_EQ(desk.timers.at({primaryWindow(), 13}).period, 33u);
        for (const DWORD due : {nextWalkTick, DWORD(3), DWORD(0xFFFFFFFE)}) {
            walkerActive = false;
            nextWalkTick = due;
            desk.tick = due - 10;
            mascotWalkTick();
            EXPECT_FALSE(walkerActive) << due;
            desk.draws.forced = drawn;
            desk.tick = due;
            mascotWalkTick();
            EXPECT_TRUE(walkerActive) << due;
        }
        EXPECT_TRUE(desk.draws.take().ends_with("8..12 0..1 0..99 0..35"));
        EXPECT_EQ((std::array{walkerSize, walkerX, walkerY, walkerSpeed, walkerDir}),
                  (std::array{size, x, 92.0f + float(height), float(drawn[0]), direction}));
        EXPECT_NEAR(peekX, peek, 0.01f);
        EXPECT_EQ(peekEnabled, drawn[2] < 35);
        surfaces[0].rect.right -= 2000;  // far beyond either edge
        surfaces[0].rect.left += 2000;
        mascotWalkTick();
        EXPECT_TRUE(!walkerActive && nextWalkTick == desk.tick + 25000);
        shutdownMascot();
        shutdownMascot();
        EXPECT_FALSE(mascotEnabled || mainFrame || spriteDC || glowSprites[0].bitmap || walkerActive);
        EXPECT_EQ(leaks(), "");
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
        Mascot desk(oneMonitor);
        mascotWalkTick();
        peekEnabled = true;
        walkerDir = direction;
        walkerX = peekX - direction * 1.5f * walkerSpeed;
        mascotWalkTick();
        EXPECT_EQ(leanStage, 0);
        mascotWalkTick();
        const float x = walkerX;
        for (const auto &[ms, before, after, share, wobble] : rows) {
            SCOPED_TRACE(testing::Message() << "stage " << before << " at " << ms << " ms");
            EXPECT_EQ(leanStage, before);
            desk.tick = leanClock + ms;
            mascotWalkTick();
            EXPECT_NEAR(leanAngle, direction * 82 * share + wobble, 0.01f);
            EXPECT_NEAR(leanX, direction * share * 24, 0.01f);
            EXPECT_NEAR(leanY, share * 7.5f, 0.01f);
            EXPECT_EQ(leanStage, after);
            if (ms != 210 || before != 1 || direction > 0) continue;
            desk.calls.clear();
            walkerX = 400.0f;
            walkerPhase = 1.0f;
            mascotWalkTick();
            desk.settle();
            expectRecorded("mascot/bow to the left", desk.text({"Inv", "Tr", "Ro", "Sc", "Draw", "SetI",
                                                                "SetP", "SetC", "SetS", "SetWorld"}));
            walkerX = x;
        }
        mascotWalkTick();
        EXPECT_EQ(walkerX, x + direction * walkerSpeed);
        EXPECT_EQ(leanStage, 0);  // once a walk
    }
}

TEST(Walk, LeavesNoTrailOnAnyMonitor)
{
    for (const auto &[side, bows] : {std::pair(0, false), {0, true}, {1, false}, {1, true}}) {
        Mascot desk(twoMonitors);
        desk.draws.forced = {11, side, bows ? 34 : 35, 20};
        for (int tick = 0; tick == 0 || (walkerActive && tick < 400); ++tick) {
            desk.moveClocks(33);
            mascotWalkTick();
            if (tick % 8 == 0) invalidateVirtualRect({-640, 0, 800, 600});
            desk.settle();
            if (tick % 8 != 7) continue;
            ASSERT_EQ(desk.strays(walkerRect), 0)
                << "tick " << tick << ", side " << side << ", bows " << bows;
        }
        EXPECT_EQ(peekDone, bows);
        EXPECT_FALSE(walkerActive);
        EXPECT_EQ(desk.strays({}), 0);
        for (const Told &call : desk.calls)
            ASSERT_EQ(call.canvas, -1) << call.text;
    }
}

TEST(Frame, IsThatOfTheStateElseTheFirstThereIs)
{
    Mascot desk(oneMonitor);
    GraphicsScope scope(surfaces[0]);
    for (const auto &[state, alpha] : {std::pair(0, 1.0f), {1, 0.999f}, {2, 0.5f}, {3, 1.0f}, {0, 0.001f}})
        drawFrame(scope, {.x = 200.0f, .y = 300.0f, .alpha = alpha, .state = state});
    for (ImageFrame **frame :
         {&bubbleFrame, &mainFrame, &cheerFrame}) {  // no such frame: the first of the rest
        delete std::exchange(*frame, nullptr);
        drawFrame(scope, {.x = 200.0f, .y = 300.0f, .state = 1});
    }
    expectRecorded("mascot/frames", desk.text({"DrawImage"}));
}

TEST(MascotHit, TakesThePictureWithoutItsSidesAndStopsTheWalkForTheShow)
{
    Mascot desk(oneMonitor);
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

TEST(Show, LaunchesAndBurstsByItsDraws)
{
    Mascot desk(oneMonitor, 0.5, 0.381966);
    desk.draws.take();
    std::string text;
    const auto add = [&](std::initializer_list<double> numbers, const std::string &what) {
        text += what;
        for (const double number : numbers) {
            char part[32];
            std::snprintf(part, sizeof part, " %.2f", number);
            text += part;
        }
        text += "\n";
    };
    startShow(123.0f);
    text += "drawn " + desk.draws.take() + "\n";
    for (const Rocket &r : rockets)
        add({double(r.x), double(r.y), double(r.vy), double(r.targetY), double(r.kind)}, "rocket");
    while (sparks.empty())
        showTick();
    add({double(showTicks), double(rockets.size()), double(sparks.size())},
        "burst, rockets and sparks after ticks");
    text += "drawn " + desk.draws.take(0, 24) + "\n";
    for (size_t i = 0; i < sparks.size(); i += i < 5 || i > sparks.size() - 4 ? 1 : sparks.size() - 8) {
        const Spark &s = sparks[i];
        add({double(s.x), double(s.y), double(s.vx), double(s.vy), double(s.life), double(s.maxLife),
             double(s.color), double(s.shape), double(s.size)},
            "spark " + std::to_string(i));
    }
    expectRecorded("mascot/first burst", text);
}

static const Spark lasting = {0, 0, 0, 0, 900, 900, 0, 0, 10};

TEST(Show, NeverHasMoreThan520SparksAndGoesWithEachRocketsVoice)
{
    for (const auto &[before, after] : {std::pair(400u, 516u), {408u, 520u}, {519u, 520u}, {520u, 520u}}) {
        Mascot desk(oneMonitor);
        rockets = {{400, 200, -30, 300, 0}};
        sparks.assign(before, lasting);
        showTick();
        EXPECT_EQ(sparks.size(), after);
        EXPECT_EQ(desk.count("PlaySound mascotChatter"), 1);
    }
}

TEST(Show, EndsAfter221TicksOrWhenEmptyAndTellsIt)
{
    for (const int ticks : {220, 221, 2}) {
        Mascot desk(oneMonitor);
        startShow(100);
        walkerClicked = true;
        startShow(100);  // the second click restarts the show silently
        EXPECT_TRUE(walkerClicked);
        rockets.resize(ticks == 2 ? 0 : rockets.size());
        sparks = {lasting};
        sparks[0].life = ticks == 2 ? 2 : 900;
        for (int i = 0; i < ticks; ++i) {
            EXPECT_TRUE(showActive && walkerClicked) << i << " of " << ticks;
            showTick();
        }
        EXPECT_EQ(showActive && walkerClicked && !sparks.empty(), ticks == 220);
        EXPECT_EQ(desk.timers.contains({primaryWindow(), 12}), ticks == 220);
    }
}

TEST(Show, IsDrawnFromItsSprites)
{
    Mascot desk({{-800, 0, 0, 600}});
    rockets = {
        {-700, 300, -30, 0, 2}, {-840.5f, 300, -30, 0, 7}, {-700, 640, -30, 0, 7}, {-700, 640.5f, -30, 0, 7}};
    for (const auto &[shape, color, life, size] :
         {std::tuple(0, 4, 100, 10), {1, 0, 39, 20}, {2, 7, 38, 20}, {1, 3, 19, 34}, {0, 1, 1, 0}})
        sparks.push_back({-499.5f, 200.9f, 0, 0, float(life), 100, color, shape, float(size)});
    sparks.push_back({40.5f, 200, 0, 0, 100, 100, 4, 0, 10});  // just out of view
    drawShow(surfaces[0].canvasDC, -800, 0, 800, 600, 5, 7);
    expectRecorded("mascot/rockets and sparks",
                   desk.text({"Fill", "AlphaBlend", "SelectObject elsewhere sprite"}));
    DIBSECTION glow = {};
    GetObjectW(glowSprites[4].bitmap, sizeof glow, &glow);
    const uint32_t *row = static_cast<const uint32_t *>(glow.dsBm.bmBits) + ptrdiff_t(23 * 48);
    EXPECT_EQ(row[23], 0xF2C0DCF2u);  // the core is nearly white
    EXPECT_EQ(row[12], 0x54173954u);  // the rim is faint and multiplied by its alpha
    shutdownMascot();
    desk.calls.clear();
    buildSprites();
    const std::string shapes = desk.text({"Fill"});
    expectRecorded("mascot/first star and heart",
                   shapes.substr(0, shapes.find("FillPolygon", shapes.find("FillPath"))));
}

TEST(Show, LeavesNoTrailAndNothingOnTheCanvases)
{
    Mascot desk(twoMonitors);
    for (const int ticks : {30, 300}) {  // cut short, or whole
        startShow(200);
        for (int i = 0; showActive && i < ticks; ++i) {
            showTick();
            desk.settle();
            if (i % 6 != 5) continue;
            ASSERT_EQ(desk.strays(showActive ? showRect : RECT{}), 0) << i;
        }
        EXPECT_EQ(desk.strays({}) > 1000, ticks == 30);
        stopShow(false);
        desk.settle();
        EXPECT_EQ(desk.strays({}), 0);
    }
    for (const Told &call : desk.calls)
        ASSERT_EQ(call.canvas, -1) << call.text;
}
