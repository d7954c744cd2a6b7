#include "shell/window_proc.h"

#include <gtest/gtest.h>

#include "autodraw/sequencer.h"
#include "clearing/wipes.h"
#include "hint/idle.h"
#include "hint/panel.h"
#include "marks/cursor_pen.h"
#include "marks/key_reactions.h"
#include "marks/strokes.h"
#include "menu/menu.h"
#include "sound/bank_a.h"
#include "sound/playback.h"
#include "support/fakes.h"

static LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0, int window = 0)
{
    return windowProc(fakeWindow(window), message, wParam, lParam);
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
class Routing : public testing::Test {
  protected:
    Desk desk{twoMonitors};

    Routing()
    {
        tapClip = actionClip = SoundClip(clipHeaderBytes);
        strokeLoops.fill(tapClip);
        calmDown();
    }
    ~Routing() override { autoStepsLeft = wipeRunning = false; }
    void calmDown()
    {
        fakes.keysDown.clear();
        resetKeyState(fakeWindow(0));
        stopStrokeLoop();
        lastInputTick = lastSpaceTick = lastClearTick = lastSoundTick = lastKeySoundTick = 0;
        leftButtonDown = tapPending = dragMoved = hintVisible = menuOpen = false;
        autoMode = 0;
        autoStepsLeft = 5;
        wipeRunning = true;
        menuEntries.clear();
        recorded = {};
        fakes.passMs(5000);
        markRng.seed(7);
    }
    // What an input has done, a letter for each thing, and the action that it has begun.
    static std::string effects()
    {
        std::string text;
        const bool states[] = {lastInputTick == fakes.tick,
                               lastClearTick == fakes.tick,
                               keyMashCount > 0,
                               !recorded.draws.empty(),
                               leftButtonDown,
                               menuOpen};
        for (int i = 0; i < 6; ++i)
            if (states[i]) text += "nbkplm"[i];
        const char *calls[] = {"KillTimer 3 w0", "KillTimer 5 w0", "ImmAssociateContext w0",
                               "ClipCursor",     "RegisterTouch",  "OpenClipboard"};
        for (int i = 0; i < 6; ++i)
            if (countCalls(calls[i]) > 0) text += "dwictx"[i];
        for (const auto &sound : recorded.sounds)
            if (sound.first == actionClip.data()) text += 's';
        return autoMode ? text + std::to_string(autoMode) : text;
    }
};

TEST_F(Routing, GivesEachInputItsEffectsAndNoOther)
{
    // What comes of it with the menu open, and the answer (77 is the system's own). An input is a key that
    // goes down, or a message with its wParam in the low byte.
    const std::pair<std::string, std::vector<UINT>> rows[] = {
        {"nmdws3 0", {VK_RETURN, WM_CONTEXTMENU << 8}},
        {"ndws2 0", {VK_ESCAPE}},
        {"npdw 0", {VK_SPACE}},
        {"np 0", {VK_LEFT, VK_UP, VK_RIGHT, VK_DOWN, VK_NUMPAD2, VK_NUMPAD4, VK_NUMPAD6, VK_NUMPAD8}},
        {"ndw 0",
         {VK_SHIFT, VK_CONTROL, VK_MENU, VK_CAPITAL, VK_LWIN, VK_RWIN, VK_NUMLOCK, VK_SCROLL, VK_LSHIFT,
          VK_RSHIFT, VK_LCONTROL, VK_RCONTROL, VK_LMENU, VK_RMENU}},
        {"nkdw 0", {'0', '9', 'A', 'Z', VK_NUMPAD0, VK_NUMPAD9}},
        {"nkpdw 0", {VK_TAB, VK_F1, VK_F4, VK_MULTIPLY}},
        {"mx 0", {VK_SNAPSHOT, WM_SYSKEYDOWN << 8 | VK_SNAPSHOT, (WM_APP + 1) << 8 | VK_SNAPSHOT}},
        {"m 0",
         {VK_APPS, WM_SYSKEYDOWN << 8 | 'Q', WM_DESTROY << 8, WM_TIMER << 8 | 99, WM_MOUSEMOVE << 8,
          WM_LBUTTONUP << 8, WM_RBUTTONUP << 8}},
        {"m 1", {WM_ERASEBKGND << 8}},
        {"m 77", {WM_CLOSE << 8, WM_MOUSEWHEEL << 8}},
        {"n 0", {WM_LBUTTONDOWN << 8, WM_RBUTTONDOWN << 8}},
        {"ndws1 0", {WM_XBUTTONDOWN << 8}},
        {"bmdw 1", {WM_APPCOMMAND << 8}},
        {"mit 0", {WM_CREATE << 8}},
        {"mi 0", {WM_SETFOCUS << 8}},
        {"mic 77", {WM_ACTIVATE << 8 | WA_ACTIVE}},
        {"mc 77", {WM_ACTIVATE << 8 | WA_INACTIVE, WM_ACTIVATEAPP << 8}}};
    for (const auto &[wanted, inputs] : rows) {
        for (const UINT input : inputs) {
            calmDown();
            menuOpen = true;
            const UINT message = input < 256 ? WM_KEYDOWN : input >> 8;
            const LPARAM flags = message == WM_CONTEXTMENU ? -1 : message == WM_SYSKEYDOWN ? 1 << 29 : 0;
            const LRESULT answer = send(message, input & 255, flags);
            EXPECT_EQ(effects() + " " + std::to_string(answer), wanted) << message << " " << (input & 255);
        }
    }
    calmDown();
    send(WM_KEYDOWN, VK_SNAPSHOT, 1 << 30);  // repeats of a held key
    send(WM_SYSKEYDOWN, VK_F4, 3 << 29);
    EXPECT_EQ(effects(), "");
    EXPECT_EQ(send(WM_CONTEXTMENU, 0, at(-1, 5)) + send(WM_CONTEXTMENU, 0, at(5, -1)), 2 * 77);
}

TEST_F(Routing, GatesSoundsAndTheSpaceBar)
{
    fakes.touches = {finger(TOUCHEVENTF_DOWN)};
    const std::tuple<DWORD &, DWORD, UINT, WPARAM> rows[] = {{lastSpaceTick, 300, WM_KEYDOWN, VK_SPACE},
                                                             {lastKeySoundTick, 55, WM_KEYDOWN, VK_TAB},
                                                             {lastKeySoundTick, 55, WM_APPCOMMAND, 0},
                                                             {lastSoundTick, 40, WM_TOUCH, 1},
                                                             {lastSoundTick, 30, WM_LBUTTONUP, 0}};
    for (const auto &[last, gate, message, wParam] : rows) {
        for (const DWORD since : {gate - 1, gate}) {
            calmDown();
            tapPending = message == WM_LBUTTONUP;
            lastClearTick = fakes.tick - 1;  // too short ago to clear again
            last = fakes.tick - since;
            send(message, wParam);
            EXPECT_EQ(last == fakes.tick, since == gate) << gate;
            EXPECT_EQ(recorded.draws.empty(), since == 299 || message == WM_APPCOMMAND) << gate;
            EXPECT_NE(lastClearTick, fakes.tick);
        }
    }
}

TEST_F(Routing, StartsAutoDrawingOrMarksAtEnterByItsDraw)
{
    for (uint32_t seed = 0; seed < 400; ++seed) {  // the limit itself comes up among them
        markRng.seed(seed);
        send(WM_KEYDOWN, VK_RETURN);
        markRng.seed(seed);
        EXPECT_EQ(autoMode, randInt(0, 84) < 40 ? 3 : 1) << seed;
    }
}

TEST_F(Routing, TurnsAPressIntoATapOrAStrokePastEightPixels)
{
    send(WM_LBUTTONDOWN, 0, at(100, 100), 1);
    send(WM_MOUSEMOVE, 0, at(107, 103), 1);  // 58 below 64
    EXPECT_EQ(effects(), "nldw");
    EXPECT_EQ(lastStrokePoint.x * 1000 + lastStrokePoint.y, -540 * 1000 + 200);
    send(WM_LBUTTONUP, 0, at(107, 103), 1);
    EXPECT_EQ(effects(), "npdw");
    EXPECT_EQ(recorded.draws[0].dc, surfaces[1].canvasDC);
    EXPECT_EQ(recorded.sounds.back().first, tapClip.data());
    EXPECT_EQ(countCalls("SetCapture w1") + countCalls("ReleaseCapture"), 2);
    calmDown();
    send(WM_LBUTTONDOWN, 0, at(100, 100));
    autoStepsLeft = 5;
    fakes.passMs(50);
    for (const auto &[x, y] : {POINT{108, 100}, {108, 101}, {-50, 130}})  // exactly 64, then no dead zone
        send(WM_MOUSEMOVE, 0, at(x, y));
    EXPECT_TRUE(lastInputTick == fakes.tick && autoStepsLeft == 0 && strokeLoopActive);
    send(WM_LBUTTONUP);
    EXPECT_FALSE(tapPending || dragMoved || strokeLoopActive);
    ASSERT_EQ(recorded.draws.size(), 8u);  // a tap and three segments, in reach of both monitors
    EXPECT_EQ(recorded.draws[2].numbers, (std::vector<float>{100, 100, 108, 100}));
    EXPECT_EQ(recorded.draws[6].numbers, (std::vector<float>{108, 101, -50, 130}));
}

TEST_F(Routing, OpensTheMenuWithTheRightButtonAndTheSpiralWithBoth)
{
    send(WM_RBUTTONDOWN, 0, at(400, 300));
    EXPECT_EQ(effects(), "npmdws");
    recorded = {};
    fakes.keysDown = {VK_LBUTTON, VK_RBUTTON};
    send(WM_MOUSEMOVE, 0, at(420, 300));
    EXPECT_EQ(effects(), "nm");  // the menu holds the spiral off
    for (const UINT second : {WM_RBUTTONDOWN, WM_LBUTTONDOWN}) {
        calmDown();
        fakes.keysDown = {VK_LBUTTON, VK_RBUTTON};
        send(second, 0, at(400, 300));
        EXPECT_EQ(effects(), second == WM_RBUTTONDOWN ? "nkpl" : "nkpldw");
        EXPECT_EQ(countCalls("SetTimer 7 48 w0") + countCalls("SetTimer 6 210 w0"), 2);
        for (const DWORD ms : {39, 1}) {
            fakes.passMs(ms);
            send(WM_MOUSEMOVE, 0, at(420, 300));
            EXPECT_EQ(spiralRadius, ms == 1 ? 84.0f : 77.0f);
        }
        EXPECT_TRUE(!dragMoved && lastInputTick == fakes.tick);
        send(second + 1);  // its release
        EXPECT_FALSE(recorded.timers.contains({fakeWindow(0), 7}));
    }
}

TEST_F(Routing, LetsALetterWaitForItsReleaseOrTimerSix)
{
    for (const UINT end : {WM_KEYUP, WM_TIMER}) {
        calmDown();
        send(WM_KEYDOWN, 'Q');
        send(WM_KEYUP, VK_TAB);
        EXPECT_TRUE(pendingKey && recorded.draws.empty() && countCalls("SetTimer 6 210 w0") == 1);
        fakes.passMs(210);
        send(end, end == WM_KEYUP ? 'Q' : 6);
        EXPECT_FALSE(pendingKey || recorded.draws.empty() || !recorded.timers.empty());
    }
    recorded = {};
    for (const int key : {int('Q'), int('Q'), VK_TAB}) {  // held on: a mash, which loses the letter
        fakes.passMs(40);
        send(WM_KEYDOWN, WPARAM(key), key == 'Q' ? 1 << 30 : 0);
    }
    EXPECT_TRUE(!pendingKey && keyMashCount == 3 && spiralRadius == 84.0f);
    send(WM_KEYUP, VK_NUMPAD4);  // any letter or digit ends it
    EXPECT_TRUE(keyMashCount == 0 && !spiralCentreValid);
}

TEST_F(Routing, PaintsAFanFromEachFinger)
{
    for (const DWORD flags : {TOUCHEVENTF_DOWN | TOUCHEVENTF_MOVE, TOUCHEVENTF_MOVE}) {
        calmDown();
        const bool moves = flags == TOUCHEVENTF_MOVE;
        fakes.touches = {finger(flags), finger(TOUCHEVENTF_UP)};
        send(WM_TOUCH, 2);
        EXPECT_EQ(effects(), moves ? "npd" : "npdw");
        EXPECT_TRUE(penDotVisible && penDotPoint.x == -100 && penDotPoint.y == 200);
        markRng.seed(7);
        const int toX = -100 + (moves ? randInt(-30, 30) : randInt(-70, 70));
        const int toY = 200 + (moves ? randInt(-30, 30) : randInt(-70, 70));
        EXPECT_EQ(recorded.draws[0].numbers, (std::vector<float>{-100, 200, float(toX), float(toY)}));
        EXPECT_EQ(recorded.sounds.size(), moves ? 2u : 1u);  // a loop and its end, or a tap
        EXPECT_EQ(countCalls("CloseTouchInputHandle"), 1);
    }
    send(WM_TOUCH, 1);  // the system does not tell: dropped, and the handle stays
    EXPECT_EQ(countCalls("CloseTouchInputHandle"), 1);
}

TEST_F(Routing, DropsTheMouseOfAFingerAndKeepsThatOfAPen)
{
    const std::tuple<LPARAM, bool> rows[] = {{0xFF515780, false}, {0xFF5157FF, false},
                                             {-0xAEA880, false},  // the first one with its sign
                                             {0xFF515700, true},  // a pen
                                             {0xFF515800, true},  {0, true}};
    for (const auto &[information, isMouse] : rows) {
        calmDown();
        fakes.extraInfo = information;
        const auto marks = [&](UINT message, LPARAM place = 0) {
            EXPECT_EQ(send(message, 0, place), 0);
            return !recorded.draws.empty() || leftButtonDown || menuOpen || autoMode == 1;
        };
        EXPECT_EQ(marks(WM_RBUTTONDOWN, at(90, 90)), isMouse) << information;
        calmDown();
        EXPECT_EQ(marks(WM_XBUTTONDOWN), isMouse) << information;
        calmDown();
        EXPECT_EQ(marks(WM_LBUTTONDOWN, at(90, 90)), isMouse) << information;
        EXPECT_EQ(marks(WM_MOUSEMOVE, at(150, 90)), isMouse) << information;
        EXPECT_EQ(!recorded.draws.empty(), isMouse) << information;
        leftButtonDown = true;
        send(WM_LBUTTONUP);
        EXPECT_EQ(!leftButtonDown, isMouse) << information;
        fakes.touches = {finger(TOUCHEVENTF_DOWN)};
        recorded.draws.clear();
        send(WM_TOUCH, 1);
        EXPECT_FALSE(recorded.draws.empty()) << "a finger's own message";
    }
}

TEST_F(Routing, TakesTheButtonsAsEachHandHasThem)
{
    for (const bool leftHanded : {false, true}) {
        fakes.buttonsSwapped = leftHanded;
        calmDown();
        fakes.keysDown = {leftHanded ? VK_LBUTTON : VK_RBUTTON};  // the physical one
        send(WM_RBUTTONDOWN, 0, at(90, 90));
        EXPECT_TRUE(menuOpen && !leftButtonDown);
        calmDown();
        fakes.keysDown = {leftHanded ? VK_RBUTTON : VK_LBUTTON};
        send(WM_RBUTTONDOWN, 0, at(90, 90));
        EXPECT_TRUE(!menuOpen && leftButtonDown);
    }
}
