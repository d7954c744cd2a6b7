#include "shell/window_proc.h"

#include <gtest/gtest.h>

#include "autodraw/sequencer.h"
#include "clearing/wipes.h"
#include "hint/idle.h"
#include "marks/cursor_pen.h"
#include "marks/key_reactions.h"
#include "marks/strokes.h"
#include "menu/menu.h"
#include "sound/bank_a.h"
#include "sound/playback.h"
#include "support/desk.h"

static LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0, int window = 0)
{
    return windowProc(windowHandle(window), message, wParam, lParam);
}
static LPARAM at(int x, int y)
{
    return MAKELPARAM(WORD(x), WORD(y));
}
static TOUCHINPUT finger(DWORD flags)
{
    return {-10099, 20050, nullptr, 0, flags, 0, 0, 0, 0, 0};  // hundredths, cut off toward zero
}

// A desk on which everything runs that an input may stop, and every key is long ago.
struct Playing : Desk {
    Playing() : Desk(twoMonitors)
    {
        tapClip = actionClip = SoundClip(clipHeaderBytes);
        strokeLoops.fill(tapClip);
        autoStepsLeft = 5;
        wipeRunning = true;
        calls.clear();
        moveClocks(5000);
    }
    bool drew() const
    {
        return std::any_of(calls.begin(), calls.end(), [](auto &call) { return call.argb != 0; });
    }

    // What inputs have done so far.
    std::string effects() const
    {
        const bool clicked = std::any_of(sounds.begin(), sounds.end(),
                                         [](auto &sound) { return sound.first == actionClip.data(); });
        std::string text;
        for (const auto &[what, done] : {std::pair{"heard", lastInputTick == tick},
                                         {"background", lastClearTick == tick},
                                         {"mash", keyMashCount > 0},
                                         {"draws", drew()},
                                         {"press", leftButtonDown},
                                         {"menu", menuOpen},
                                         {"stops drawing", count("KillTimer w0 3") > 0},
                                         {"stops wipe", count("KillTimer w0 5") > 0},
                                         {"no input method", count("ImmAssociateContext w0") > 0},
                                         {"clips", count("ClipCursor") > 0},
                                         {"touch", count("RegisterTouchWindow w0") > 0},
                                         {"copies", count("OpenClipboard") > 0},
                                         {"action sound", clicked}})
            if (done) text += std::string(text.empty() ? "" : ", ") + what;
        return autoMode ? text + ", action " + std::to_string(autoMode) : text;
    }
};

TEST(WindowProc, GivesEachInputItsEffectsAndNoOther)
{
    const auto key = [](WPARAM code) { return MSG{nullptr, WM_KEYDOWN, code, 0, 0, {}}; };
    const auto held = [](WPARAM code) { return MSG{nullptr, WM_KEYDOWN, code, 1 << 30, 0, {}}; };
    const auto alt = [](WPARAM code, LPARAM more = 0) {
        return MSG{nullptr, WM_SYSKEYDOWN, code, 1 << 29 | more, 0, {}};
    };
    const auto message = [](UINT number, WPARAM wParam = 0, LPARAM lParam = 0) {
        return MSG{nullptr, number, wParam, lParam, 0, {}};
    };
    // What comes of it with the menu open, and whether the system's own answer follows.
    const struct {
        std::string effects;
        LRESULT answer;
        std::vector<MSG> inputs;
    } rows[] = {
        {"heard, menu, stops drawing, stops wipe, action sound, action 3",
         0,
         {key(VK_RETURN), message(WM_CONTEXTMENU, 0, -1)}},
        {"heard, stops drawing, stops wipe, action sound, action 2", 0, {key(VK_ESCAPE)}},
        {"heard, draws, stops drawing, stops wipe", 0, {key(VK_SPACE)}},
        {"heard, draws",
         0,
         {key(VK_LEFT), key(VK_UP), key(VK_RIGHT), key(VK_DOWN), key(VK_NUMPAD2), key(VK_NUMPAD4),
          key(VK_NUMPAD6), key(VK_NUMPAD8)}},
        {"heard, stops drawing, stops wipe",
         0,
         {key(VK_SHIFT), key(VK_CONTROL), key(VK_MENU), key(VK_CAPITAL), key(VK_LWIN), key(VK_RWIN),
          key(VK_NUMLOCK), key(VK_SCROLL), key(VK_LSHIFT), key(VK_RSHIFT), key(VK_LCONTROL), key(VK_RCONTROL),
          key(VK_LMENU), key(VK_RMENU)}},
        {"heard, mash, stops drawing, stops wipe",
         0,
         {key('0'), key('9'), key('A'), key('Z'), key(VK_NUMPAD0), key(VK_NUMPAD9)}},
        {"heard, mash, draws, stops drawing, stops wipe",
         0,
         {key(VK_TAB), key(VK_F1), key(VK_F4), key(VK_MULTIPLY)}},
        {"menu, copies", 0, {key(VK_SNAPSHOT), alt(VK_SNAPSHOT), message(WM_APP + 1, VK_SNAPSHOT)}},
        {"menu",
         0,
         {held(VK_SNAPSHOT), alt(VK_F4, 1 << 30), key(VK_APPS), alt('Q'), message(WM_DESTROY),
          message(WM_TIMER, 99), message(WM_MOUSEMOVE), message(WM_LBUTTONUP), message(WM_RBUTTONUP)}},
        {"menu", 1, {message(WM_ERASEBKGND)}},
        {"menu",
         77,
         {message(WM_CLOSE), message(WM_MOUSEWHEEL), message(WM_CONTEXTMENU, 0, at(-1, 5)),
          message(WM_CONTEXTMENU, 0, at(5, -1))}},
        {"heard", 0, {message(WM_LBUTTONDOWN), message(WM_RBUTTONDOWN)}},
        {"heard, stops drawing, stops wipe, action sound, action 1", 0, {message(WM_XBUTTONDOWN)}},
        {"background, menu, stops drawing, stops wipe", 1, {message(WM_APPCOMMAND)}},
        {"menu, no input method, touch", 0, {message(WM_CREATE)}},
        {"menu, no input method", 0, {message(WM_SETFOCUS)}},
        {"menu, no input method, clips", 77, {message(WM_ACTIVATE, WA_ACTIVE)}},
        {"menu, clips", 77, {message(WM_ACTIVATE, WA_INACTIVE), message(WM_ACTIVATEAPP)}}};
    for (const auto &row : rows) {
        for (const MSG &input : row.inputs) {
            Playing desk;
            REPLACE(DefWindowProcW, [] { return LRESULT(77); });
            menuOpen = true;
            EXPECT_EQ(send(input.message, input.wParam, input.lParam), row.answer)
                << std::hex << input.message << " " << input.wParam;
            EXPECT_EQ(desk.effects(), row.effects) << std::hex << input.message << " " << input.wParam;
        }
    }
}

TEST(WindowProc, GatesSoundsAndTheSpaceBar)
{
    for (const auto &[last, gate, message, wParam] :
         {std::tuple{&lastSpaceTick, 300u, WM_KEYDOWN, WPARAM(VK_SPACE)},
          {&lastKeySoundTick, 55u, WM_KEYDOWN, WPARAM(VK_TAB)},
          {&lastKeySoundTick, 55u, WM_APPCOMMAND, WPARAM(0)},
          {&lastSoundTick, 40u, WM_TOUCH, WPARAM(1)},
          {&lastSoundTick, 30u, WM_LBUTTONUP, WPARAM(0)}}) {
        for (const DWORD since : {gate - 1, gate}) {
            SCOPED_TRACE(testing::Message() << "message " << message << ", " << since << " ms");
            Playing desk;
            desk.touches = {finger(TOUCHEVENTF_DOWN)};
            tapPending = message == WM_LBUTTONUP;
            lastClearTick = desk.tick - 1;  // too short ago to clear again
            *last = desk.tick - since;
            send(message, wParam);
            EXPECT_EQ(*last == desk.tick, since == gate);
            EXPECT_EQ(desk.drew(), since != 299 && message != WM_APPCOMMAND);
            EXPECT_NE(lastClearTick, desk.tick);
        }
    }
}

TEST(WindowProc, StartsAutoDrawingOrMarksAtEnterByItsDraw)
{
    Playing desk;
    for (uint32_t seed = 0; seed < 400; ++seed) {  // the limit itself comes up among them
        markRng.seed(seed);
        send(WM_KEYDOWN, VK_RETURN);
        markRng.seed(seed);
        EXPECT_EQ(autoMode, randInt(0, 84) < 40 ? 3 : 1) << seed;
    }
}

TEST(WindowProc, TurnsAPressIntoATap)
{
    Playing desk;
    send(WM_LBUTTONDOWN, 0, at(100, 100), 1);
    send(WM_MOUSEMOVE, 0, at(107, 103), 1);  // 58 below 64
    EXPECT_EQ(desk.effects(), "heard, press, stops drawing, stops wipe");
    EXPECT_EQ(lastStrokePoint.x, -540);
    EXPECT_EQ(lastStrokePoint.y, 200);
    send(WM_LBUTTONUP, 0, at(107, 103), 1);
    EXPECT_EQ(desk.effects(), "heard, draws, stops drawing, stops wipe");
    EXPECT_EQ(desk.sounds.back().first, tapClip.data());
    EXPECT_EQ(desk.text({"SetCapture", "ReleaseCapture"}), "SetCapture w1\nReleaseCapture\n");
}

TEST(WindowProc, TurnsAPressIntoAStrokePastEightPixels)
{
    Playing desk;
    send(WM_LBUTTONDOWN, 0, at(100, 100));
    autoStepsLeft = 5;
    desk.moveClocks(50);
    for (const auto &[x, y] : {POINT{108, 100}, {108, 101}, {-50, 130}})  // exactly 64, then no dead zone
        send(WM_MOUSEMOVE, 0, at(x, y));
    EXPECT_TRUE(lastInputTick == desk.tick && autoStepsLeft == 0 && strokeLoopActive);
    send(WM_LBUTTONUP);
    EXPECT_FALSE(tapPending || dragMoved || strokeLoopActive);
    EXPECT_EQ(desk.count("FillEllipse c0"), 1);  // the tap
    for (const auto &[canvas, segment] :
         {std::pair{0, "100 100 108 100"}, {0, "108 100 108 101"}, {0, "108 101 -50 130"}})
        EXPECT_NE(desk.text({"DrawLine c" + std::to_string(canvas)}).find(segment), std::string::npos)
            << segment;
}

TEST(WindowProc, OpensTheMenuWithTheRightButtonAndTheSpiralWithBoth)
{
    {
        Playing desk;
        send(WM_RBUTTONDOWN, 0, at(400, 300));
        EXPECT_EQ(desk.effects(), "heard, draws, menu, stops drawing, stops wipe, action sound");
        desk.hold(VK_LBUTTON);
        desk.hold(VK_RBUTTON);
        send(WM_MOUSEMOVE, 0, at(420, 300));
        EXPECT_EQ(keyMashCount, 0);  // the menu holds the spiral off
    }
    for (const UINT second : {WM_RBUTTONDOWN, WM_LBUTTONDOWN}) {
        Playing desk;
        desk.hold(VK_LBUTTON);
        desk.hold(VK_RBUTTON);
        send(second, 0, at(400, 300));
        EXPECT_EQ(desk.effects(), second == WM_RBUTTONDOWN
                                      ? "heard, mash, draws, press"
                                      : "heard, mash, draws, press, stops drawing, stops wipe");
        EXPECT_EQ(desk.text({"SetTimer"}), "SetTimer w0 6 210\nSetTimer w0 7 48\n");
        for (const DWORD ms : {39, 1}) {  // every 40 ms a step
            desk.moveClocks(ms);
            send(WM_MOUSEMOVE, 0, at(420, 300));
            EXPECT_EQ(spiralRadius, ms == 1 ? 84.0f : 77.0f);
        }
        EXPECT_TRUE(!dragMoved && lastInputTick == desk.tick);
        send(second + 1);  // its release
        EXPECT_FALSE(desk.timers.contains({windowHandle(0), 7}));
    }
}

TEST(WindowProc, LetsALetterWaitForItsReleaseOrTimerSix)
{
    for (const UINT end : {WM_KEYUP, WM_TIMER}) {
        Playing desk;
        send(WM_KEYDOWN, 'Q');
        send(WM_KEYUP, VK_TAB);
        EXPECT_TRUE(pendingKey && !desk.drew());
        EXPECT_EQ(desk.count("SetTimer w0 6 210"), 1);
        desk.moveClocks(210);
        send(end, end == WM_KEYUP ? 'Q' : 6);
        EXPECT_TRUE(!pendingKey && desk.drew() && !desk.timers.contains({windowHandle(0), 6}));
    }
    Playing desk;
    for (const WPARAM key :
         {WPARAM('Q'), WPARAM('Q'), WPARAM(VK_TAB)}) {  // held on: a mash, which loses the letter
        desk.moveClocks(40);
        send(WM_KEYDOWN, key, key == 'Q' ? 1 << 30 : 0);
    }
    EXPECT_TRUE(!pendingKey && keyMashCount == 3 && spiralRadius == 84.0f);
    send(WM_KEYUP, VK_NUMPAD4);  // any letter or digit ends it
    EXPECT_TRUE(keyMashCount == 0 && !spiralCentreValid);
}

TEST(WindowProc, PaintsAFanFromEachFinger)
{
    for (const auto &[flags, reach, effects] :
         {std::tuple{TOUCHEVENTF_DOWN | TOUCHEVENTF_MOVE, 70, "heard, draws, stops drawing, stops wipe"},
          {TOUCHEVENTF_MOVE, 30, "heard, draws, stops drawing"}}) {
        Playing desk;
        desk.touches = {finger(DWORD(flags)), finger(TOUCHEVENTF_UP)};
        send(WM_TOUCH, 2);
        EXPECT_EQ(desk.effects(), effects);
        EXPECT_TRUE(penDotVisible && penDotPoint.x == -100 && penDotPoint.y == 200);
        markRng.seed(7);
        const int dx = randInt(-reach, reach);
        const int dy = randInt(-reach, reach);
        const std::string line = "-100 200 " + std::to_string(-100 + dx) + " " + std::to_string(200 + dy);
        EXPECT_NE(desk.text({"DrawLine c0"}).find(line), std::string::npos) << line;
        EXPECT_EQ(strokeLoopClip != nullptr || desk.sounds.size() > 1, reach == 30);  // a loop, or one tap
        EXPECT_EQ(desk.count("CloseTouchInputHandle"), 1);
        desk.touches.clear();
        send(WM_TOUCH, 1);  // the system does not report it: dropped, and the handle stays
        EXPECT_EQ(desk.count("CloseTouchInputHandle"), 1);
    }
}

TEST(WindowProc, DropsTheMouseOfAFingerAndKeepsThatOfAPen)
{
    for (const auto &[information, isMouse] : {std::pair{LPARAM(0xFF515780), false},
                                               {LPARAM(0xFF5157FF), false},
                                               {LPARAM(-0xAEA880), false},  // the first one with its sign
                                               {LPARAM(0xFF515700), true},  // a pen
                                               {LPARAM(0xFF515800), true},
                                               {LPARAM(0), true}}) {
        for (const auto &[message, effects] :
             {std::pair{UINT(WM_RBUTTONDOWN), "heard, draws, menu, stops drawing, stops wipe, action sound"},
              {WM_XBUTTONDOWN, "heard, stops drawing, stops wipe, action sound, action 1"},
              {WM_LBUTTONDOWN, "heard, press, stops drawing, stops wipe"},
              {WM_LBUTTONUP, "draws"},
              {WM_MOUSEMOVE, "heard, draws, stops drawing"}}) {
            Playing desk;
            desk.extraInfo = information;
            tapPending = message == WM_LBUTTONUP;
            leftButtonDown = dragMoved = message == WM_MOUSEMOVE;
            EXPECT_EQ(send(message, 0, at(90, 90)), 0);
            leftButtonDown = message == WM_LBUTTONDOWN && leftButtonDown;
            EXPECT_EQ(desk.effects(), isMouse ? effects : "") << std::hex << information << " " << message;
        }
        Playing desk;
        desk.extraInfo = information;
        desk.touches = {finger(TOUCHEVENTF_DOWN)};
        send(WM_TOUCH, 1);
        EXPECT_TRUE(desk.drew()) << "a finger's own message";
    }
}

TEST(WindowProc, TakesTheButtonsAsEachHandHasThem)
{
    for (const bool leftHanded : {false, true}) {
        for (const bool leftHeld : {false, true}) {
            Playing desk;
            desk.buttonsSwapped = leftHanded;
            desk.hold(leftHeld != leftHanded ? VK_LBUTTON : VK_RBUTTON);  // the physical one
            send(WM_RBUTTONDOWN, 0, at(90, 90));
            EXPECT_EQ(menuOpen, !leftHeld) << leftHanded;
            EXPECT_EQ(leftButtonDown, leftHeld) << leftHanded;
        }
    }
}
