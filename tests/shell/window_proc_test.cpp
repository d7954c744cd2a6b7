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
#include "shell/clock.h"
#include "sound/bank_a.h"
#include "sound/playback.h"
#include "support/fakes.h"

static const LPARAM autoRepeat = 1 << 30;
static const LPARAM altDown = 1 << 29;

static LRESULT send(UINT message, WPARAM wParam, LPARAM lParam = 0, int window = 0)
{
    return windowProc(fakeWindow(window), message, wParam, lParam);
}
static LPARAM at(int x, int y)
{
    return MAKELPARAM(WORD(x), WORD(y));
}
static void press(uint32_t key)
{
    send(WM_KEYDOWN, key);
}

// A desk on which everything runs that an input may stop, and every key is long ago.
class Routing : public testing::Test {
  protected:
    Desk desk{twoMonitors};

    void SetUp() override
    {
        for (SoundClip *clip : {&tapClip, &actionClip})
            clip->assign(clipHeaderBytes, 0);
        calmDown();
    }
    void calmDown()
    {
        fakes.keysDown.clear();
        resetKeyState(fakeWindow(0));
        lastInputTick = 0;
        lastSpaceTick = 0;
        lastClearTick = 0;
        leftButtonDown = tapPending = dragMoved = hintVisible = false;
        autoMode = 1;
        autoStepsLeft = 5;
        wipeRunning = true;
        revealWipe = false;
        menuOpen = false;
        menuEntries.clear();
        recorded = {};
        fakes.passMs(5000);
    }
    bool stopped(int timer) const { return countCalls("KillTimer " + std::to_string(timer) + " w0") > 0; }
};

TEST_F(Routing, StopsAndClosesWhatEachInputMay)
{
    enum { no, yes };
    struct Row {
        const char *name;
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
        bool notes, stopsDrawing, stopsWipe, closesMenu;
    };
    const Row rows[] = {
        {"enter", WM_KEYDOWN, VK_RETURN, 0, yes, yes, yes, no},
        {"escape", WM_KEYDOWN, VK_ESCAPE, 0, yes, yes, yes, yes},
        {"apps key", WM_KEYDOWN, VK_APPS, 0, no, no, no, no},
        {"its release", WM_CONTEXTMENU, 0, -1, yes, yes, yes, no},
        {"a mouse's context menu", WM_CONTEXTMENU, 0, at(5, 5), no, no, no, no},
        {"space", WM_KEYDOWN, VK_SPACE, 0, yes, yes, yes, yes},
        {"arrow", WM_KEYDOWN, VK_LEFT, 0, yes, no, no, yes},
        {"keypad 8", WM_KEYDOWN, VK_NUMPAD8, 0, yes, no, no, yes},
        {"shift", WM_KEYDOWN, VK_SHIFT, 0, yes, yes, yes, yes},
        {"scroll lock", WM_KEYDOWN, VK_SCROLL, 0, yes, yes, yes, yes},
        {"right alt", WM_KEYDOWN, VK_RMENU, 0, yes, yes, yes, yes},
        {"letter", WM_KEYDOWN, 'Q', 0, yes, yes, yes, yes},
        {"keypad 5", WM_KEYDOWN, VK_NUMPAD5, 0, yes, yes, yes, yes},
        {"plain F4", WM_KEYDOWN, VK_F4, 0, yes, yes, yes, yes},
        {"tab", WM_KEYDOWN, VK_TAB, 0, yes, yes, yes, yes},
        {"a system key", WM_SYSKEYDOWN, 'Q', altDown, no, no, no, no},
        {"plain F10", WM_SYSKEYDOWN, VK_F10, 0, no, no, no, no},
        {"x button", WM_XBUTTONDOWN, 0, at(5, 5), yes, yes, yes, yes},
        {"app command", WM_APPCOMMAND, 0, 0, no, yes, yes, no},
        {"right press", WM_RBUTTONDOWN, 0, at(5, 5), yes, yes, yes, no},
        {"left press", WM_LBUTTONDOWN, 0, at(5, 5), yes, yes, yes, no},
        {"idle mouse", WM_MOUSEMOVE, 0, at(5, 5), no, no, no, no},
        {"wheel", WM_MOUSEWHEEL, 0, 0, no, no, no, no},
        {"middle button", WM_MBUTTONDOWN, 0, at(5, 5), no, no, no, no},
    };
    for (const Row &row : rows) {
        const bool isPress = row.message == WM_LBUTTONDOWN || row.message == WM_RBUTTONDOWN;
        for (const bool hint : {false, true}) {
            calmDown();
            hintVisible = hint;
            menuOpen = !isPress;  // a press belongs to an open menu: tested below
            send(row.message, row.wParam, row.lParam);
            EXPECT_EQ(lastInputTick != 0, row.notes && !hint) << row.name;
            EXPECT_EQ(stopped(3), row.stopsDrawing) << row.name;
            EXPECT_EQ(stopped(5), row.stopsWipe) << row.name;
            if (isPress) continue;
            EXPECT_EQ(!menuOpen, row.closesMenu) << row.name;
        }
    }
}

TEST_F(Routing, AnswersAndHandsToTheDefaultOnlyWhatItShould)
{
    struct Row {
        UINT message;
        WPARAM wParam;
        LRESULT answer;
        bool toDefault;
    };
    for (const Row &row : {Row{WM_CREATE, 0, 0, false},           Row{WM_DESTROY, 0, 0, false},
                           Row{WM_ACTIVATE, WA_ACTIVE, 77, true}, Row{WM_ACTIVATE, WA_INACTIVE, 77, true},
                           Row{WM_SETFOCUS, 0, 0, false},         Row{WM_ERASEBKGND, 0, 1, false},
                           Row{WM_ACTIVATEAPP, 1, 77, true},      Row{WM_KEYUP, 'A', 77, true},
                           Row{WM_SYSKEYUP, VK_F4, 77, true},     Row{WM_SYSKEYDOWN, VK_SPACE, 0, false},
                           Row{WM_TIMER, 99, 0, false},           Row{WM_CLOSE, 0, 77, true},
                           Row{WM_KILLFOCUS, 0, 77, true},        Row{WM_CHAR, 'a', 77, true},
                           Row{WM_MOUSEWHEEL, 0, 77, true},       Row{WM_MBUTTONDOWN, 0, 77, true},
                           Row{WM_XBUTTONUP, 0, 77, true},        Row{WM_DISPLAYCHANGE, 0, 77, true},
                           Row{WM_APPCOMMAND, 0, 1, false},       Row{WM_RBUTTONUP, 0, 0, false},
                           Row{WM_LBUTTONUP, 0, 0, false}}) {
        recorded.calls.clear();
        EXPECT_EQ(send(row.message, row.wParam), row.answer) << row.message;
        EXPECT_EQ(countCalls("DefWindowProc"), row.toDefault) << row.message;
        const bool takesInputMethod = row.message == WM_CREATE || row.message == WM_SETFOCUS ||
                                      (row.message == WM_ACTIVATE && row.wParam == WA_ACTIVE);
        EXPECT_EQ(countCalls("ImmAssociateContext w0"), takesInputMethod) << row.message << "/" << row.wParam;
        const bool confines = row.message == WM_ACTIVATE || row.message == WM_ACTIVATEAPP;
        EXPECT_EQ(countCalls("ClipCursor"), confines) << row.message;
    }
}

TEST_F(Routing, GivesPressesToAnOpenMenuAndNothingElse)
{
    for (const UINT message : {UINT(WM_LBUTTONDOWN), UINT(WM_RBUTTONDOWN)}) {
        calmDown();
        menuOpen = true;
        send(message, 0, at(5, 5));
        EXPECT_FALSE(menuOpen);
        EXPECT_FALSE(leftButtonDown || tapPending || stopped(3) || stopped(5));
        EXPECT_EQ(countCalls("SetCapture"), 0);
        EXPECT_EQ(rightPressSeen, message == WM_RBUTTONDOWN);
    }
    calmDown();
    send(WM_RBUTTONDOWN, 0, at(400, 300));
    EXPECT_TRUE(menuOpen && rightPressSeen);
    EXPECT_EQ(recorded.sounds.back().first, actionClip.data());
    EXPECT_EQ(lastSoundTick, fakes.tick);
    send(WM_RBUTTONUP, 0, at(400, 300));
    EXPECT_FALSE(rightPressSeen);
    EXPECT_TRUE(menuOpen);
}

TEST_F(Routing, HoldsTheSpaceBarFor300MillisecondsButStillClosesTheMenu)
{
    struct Row {
        DWORD after;
        bool passes;
    };
    press(VK_SPACE);
    const DWORD accepted = fakes.tick;
    for (const Row &row : {Row{299, false}, Row{300, true}}) {
        autoStepsLeft = 5;
        wipeRunning = true;
        menuOpen = true;
        recorded = {};
        fakes.tick = accepted + row.after;
        press(VK_SPACE);
        EXPECT_FALSE(menuOpen);
        EXPECT_EQ(lastInputTick, fakes.tick);
        EXPECT_EQ(stopped(3), row.passes) << row.after;
        EXPECT_EQ(!recorded.draws.empty() || !recorded.invalidations.empty(), true);
        EXPECT_EQ(!recorded.draws.empty(), row.passes);
    }
}

TEST_F(Routing, StartsAutoDrawingOrMarksAtEnterByItsDraw)
{
    for (uint32_t seed = 0; seed < 40; ++seed) {
        calmDown();
        markRng.seed(seed);
        press(VK_RETURN);
        markRng.seed(seed);
        EXPECT_EQ(autoMode, randInt(0, 84) < 40 ? 3 : 1) << seed;
        EXPECT_TRUE(recorded.timers.contains({fakeWindow(0), 3}));
    }
    calmDown();
    press(VK_ESCAPE);
    EXPECT_EQ(autoMode, 2);
    EXPECT_TRUE(wipeRunning && recorded.timers.contains({fakeWindow(0), 5}));
    calmDown();
    send(WM_XBUTTONDOWN, 0, at(5, 5));
    EXPECT_EQ(autoMode, 1);
}

TEST_F(Routing, TurnsAPressIntoATapOrAStrokePastEightPixels)
{
    send(WM_LBUTTONDOWN, 0, at(100, 100), 1);
    EXPECT_TRUE(leftButtonDown && tapPending && !dragMoved);
    EXPECT_EQ(lastStrokePoint.x, -540);  // the second monitor begins at -640, 100
    EXPECT_EQ(lastStrokePoint.y, 200);
    EXPECT_EQ(countCalls("SetCapture w1"), 1);
    send(WM_MOUSEMOVE, 0, at(107, 103), 1);  // 58 below 64
    EXPECT_TRUE(tapPending && recorded.draws.empty());
    send(WM_LBUTTONUP, 0, at(107, 103), 1);
    ASSERT_EQ(recorded.draws.size(), 1u);
    EXPECT_EQ(recorded.draws[0].what, "FillEllipse");
    EXPECT_EQ(recorded.sounds.back().first, tapClip.data());
    EXPECT_FALSE(leftButtonDown || tapPending);
    EXPECT_EQ(countCalls("ReleaseCapture"), 1);

    calmDown();
    send(WM_LBUTTONDOWN, 0, at(100, 100));
    send(WM_MOUSEMOVE, 0, at(108, 100));  // exactly 64
    EXPECT_TRUE(dragMoved && !tapPending);
    send(WM_MOUSEMOVE, 0, at(108, 101));   // no dead zone any more
    send(WM_MOUSEMOVE, 0, at(-50, 130));   // and on to the other monitor
    ASSERT_EQ(recorded.draws.size(), 8u);  // a tap and three segments, in reach of both monitors
    EXPECT_EQ(recorded.draws[2].numbers, (std::vector<float>{100, 100, 108, 100}));
    EXPECT_EQ(recorded.draws[6].numbers, (std::vector<float>{108, 101, -50, 130}));
    EXPECT_EQ(recorded.draws[7].dc, surfaces[1].canvasDC);
    EXPECT_EQ(lastInputTick, fakes.tick);
    const size_t sounds = recorded.sounds.size();
    send(WM_LBUTTONUP, 0, at(0, 0));
    EXPECT_EQ(recorded.draws.size(), 8u);
    for (size_t i = sounds; i < recorded.sounds.size(); ++i)
        EXPECT_EQ(recorded.sounds[i].second, 69u);
}

TEST_F(Routing, GatesTapSoundsAt30Milliseconds)
{
    for (const DWORD since : {29, 30}) {
        calmDown();
        lastSoundTick = fakes.tick - since;
        send(WM_LBUTTONDOWN, 0, at(100, 100));
        send(WM_LBUTTONUP, 0, at(100, 100));
        EXPECT_EQ(recorded.sounds.size(), since == 30 ? 1u : 0u);
    }
}

TEST_F(Routing, WindsTheSpiralWhileBothButtonsAreDown)
{
    fakes.keysDown = {VK_LBUTTON, VK_RBUTTON};
    send(WM_RBUTTONDOWN, 0, at(400, 300));
    EXPECT_FALSE(menuOpen || stopped(3));
    EXPECT_TRUE(leftButtonDown);
    EXPECT_EQ(recorded.timers[std::make_pair(fakeWindow(0), UINT_PTR(7))], 48u);
    EXPECT_EQ(recorded.timers[std::make_pair(fakeWindow(0), UINT_PTR(6))], 210u);
    EXPECT_EQ(keyMashCount, 1);
    const float radius = spiralRadius;
    for (const DWORD ms : {39, 1}) {
        fakes.passMs(ms);
        send(WM_MOUSEMOVE, 0, at(420, 300));
        EXPECT_EQ(spiralRadius, radius + (ms == 1 ? 7.0f : 0.0f));
    }
    EXPECT_FALSE(dragMoved);
    send(WM_LBUTTONUP, 0, at(0, 0));
    EXPECT_FALSE(recorded.timers.contains({fakeWindow(0), 7}));
    calmDown();
    menuOpen = true;  // the menu holds the chord off
    fakes.keysDown = {VK_LBUTTON, VK_RBUTTON};
    send(WM_MOUSEMOVE, 0, at(420, 300));
    EXPECT_TRUE(recorded.draws.empty());
}

TEST_F(Routing, LetsALetterWaitForItsReleaseOrTimerSix)
{
    press('Q');
    EXPECT_TRUE(pendingKey && recorded.draws.empty());
    EXPECT_EQ(recorded.timers[std::make_pair(fakeWindow(0), UINT_PTR(6))], 210u);
    send(WM_KEYUP, 'Q');
    EXPECT_FALSE(pendingKey || recorded.draws.empty() || recorded.timers.contains({fakeWindow(0), 6}));

    calmDown();  // held: timer 6 draws it, repeats make a mash that loses the next one
    press('Q');
    fakes.passMs(210);
    send(WM_TIMER, 6);
    const size_t drawn = recorded.draws.size();
    EXPECT_GT(drawn, 0u);
    for (int i = 0; i < 2; ++i) {
        fakes.passMs(40);
        send(WM_KEYDOWN, 'Q', autoRepeat);
        EXPECT_EQ(pendingKey, i == 0);
        EXPECT_EQ(recorded.draws.size() > drawn, i == 1);
    }
    EXPECT_EQ(keyMashCount, 2);
    send(WM_KEYUP, VK_NUMPAD4);  // any letter or digit ends it
    EXPECT_EQ(keyMashCount, 0);
}

TEST_F(Routing, DrawsOtherKeysOnlyWhenTheLastKeyIsLongAgoButSoundsThem)
{
    press(VK_OEM_COMMA);
    EXPECT_FALSE(recorded.draws.empty());
    EXPECT_EQ(lastKeySoundTick, fakes.tick);
    // Another key 520 ms later is a mash; one past that is calm again.
    for (const DWORD ms : {520, 521}) {
        calmDown();
        press(VK_TAB);
        recorded.draws.clear();
        fakes.passMs(ms);
        press(VK_OEM_COMMA);
        EXPECT_EQ(keyMashCount, ms == 520 ? 2 : 1);
        EXPECT_EQ(spiralCentreValid, ms == 520);
        EXPECT_FALSE(recorded.draws.empty());
    }
    for (const DWORD since : {54, 55}) {
        calmDown();
        lastKeySoundTick = fakes.tick - since;
        press(VK_OEM_COMMA);
        EXPECT_EQ(lastKeySoundTick == fakes.tick, since == 55);
    }
}

static TOUCHINPUT contact(int x, int y, DWORD flags)
{
    TOUCHINPUT touch = {};
    touch.x = x;
    touch.y = y;
    touch.dwFlags = flags;
    return touch;
}

TEST_F(Routing, PaintsAFanFromEachFinger)
{
    menuOpen = true;
    fakes.touches = {contact(-10099, 20050, TOUCHEVENTF_DOWN | TOUCHEVENTF_MOVE)};
    send(WM_TOUCH, 1);
    markRng.seed(7);
    const int dx = randInt(-70, 70);
    const int dy = randInt(-70, 70);
    EXPECT_TRUE(menuOpen && stopped(3) && stopped(5) && penDotVisible);
    EXPECT_EQ(penDotPoint.x, -100);  // truncated toward zero
    const std::vector<float> &line = recorded.draws.at(0).numbers;
    EXPECT_EQ(line, (std::vector<float>{-100, 200, float(-100 + dx), float(200 + dy)}));
    EXPECT_EQ(recorded.sounds.size(), 1u);
    EXPECT_EQ(countCalls("CloseTouchInputHandle"), 1);

    calmDown();
    markRng.seed(7);
    fakes.touches = {contact(30000, 30000, TOUCHEVENTF_MOVE), contact(0, 0, TOUCHEVENTF_UP)};
    send(WM_TOUCH, 2);
    markRng.seed(7);
    const int moveX = randInt(-30, 30);
    EXPECT_EQ(recorded.draws.at(0).numbers[2], float(300 + moveX));
    EXPECT_TRUE(stopped(3) && !stopped(5));
    EXPECT_FALSE(strokeLoopActive);

    for (const DWORD since : {39, 40}) {
        calmDown();
        lastSoundTick = fakes.tick - since;
        fakes.touches = {contact(0, 0, TOUCHEVENTF_DOWN)};
        send(WM_TOUCH, 1);
        EXPECT_EQ(recorded.sounds.size(), since == 40 ? 1u : 0u);
    }
    calmDown();
    fakes.touches.clear();  // the system does not tell: dropped, and the handle stays
    send(WM_TOUCH, 1);
    EXPECT_TRUE(recorded.draws.empty());
    EXPECT_EQ(countCalls("CloseTouchInputHandle"), 0);
}

TEST_F(Routing, ClearsAtEveryAppCommandUnlessJustCleared)
{
    send(WM_APPCOMMAND, 0);
    const MarkColor first = backgroundColor;
    EXPECT_EQ(lastClearTick, fakes.tick);
    EXPECT_EQ(lastKeySoundTick, fakes.tick);
    fakes.passMs(100);
    send(WM_APPCOMMAND, 0);
    EXPECT_EQ(backgroundColor, first);
    EXPECT_EQ(lastKeySoundTick, fakes.tick);
}
