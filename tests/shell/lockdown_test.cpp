#include "shell/lockdown.h"

#include <gtest/gtest.h>

#include "hint/panel.h"
#include "saving/save_dialog.h"
#include "shell/window_order.h"
#include "support/desk.h"

// What is so while a key goes down: flags, modifiers, and whether the program can be told.
enum : unsigned { up = 1, extended = 2, alt = 4, ctrl = 8, shift = 16, win = 32, target = 64, posts = 128 };
static const unsigned told = target | posts, odd = up | extended;

// What grown-ups were promised, first match from the top: key (0 is any), what it needs, what bars it, and
// where it ends.
static const struct {
    DWORD key;
    unsigned needs, lacks;
    std::string fate;
} promises[] = {{VK_SNAPSHOT, told, odd, "posted"},
                {VK_F1, alt | told, odd, "posted"},
                {VK_F4, alt | told, odd, "posted"},
                {VK_LWIN, 0, 0, "swallowed"},
                {VK_RWIN, 0, 0, "swallowed"},
                {0, ctrl | shift, 0, "swallowed"},
                {VK_ESCAPE, ctrl, 0, "swallowed"},
                {VK_SNAPSHOT, 0, 0, "passed on"},
                {VK_F1, 0, 0, "passed on"},
                {VK_F4, 0, 0, "passed on"},
                {0, alt, 0, "swallowed"},
                {VK_TAB, win, 0, "swallowed"},
                {0, 0, 0, "passed on"}};

static std::string promised(DWORD key, unsigned world)
{
    for (const auto &row : promises)
        if ((row.key == 0 || row.key == key) && (world & row.needs) == row.needs && !(world & row.lacks))
            return row.fate;
    return "";
}

static bool postingWorks = true;
static size_t posted = 0, passedOn = 0;
static std::string fateOf(WPARAM message, const KBDLLHOOKSTRUCT &event, int code = HC_ACTION)
{
    posted = passedOn = 0;
    const LRESULT answer = lowLevelKeyboardProc(code, message, LPARAM(&event));
    return passedOn                 ? "passed on"
           : answer != 1            ? "answered"
           : posted && postingWorks ? "posted"
                                    : "swallowed";
}

struct KeyboardHook : testing::Test {
    Desk desk{oneMonitor};
    Replaced next{"CallNextHookEx", REPLACEMENT(CallNextHookEx, [] {
                      ++passedOn;
                      return LRESULT(77);
                  })};
    Replaced post{"PostMessageW", REPLACEMENT(PostMessageW, [](HWND window, UINT message) -> BOOL {
                      posted += window == windowHandle(0) && message == WM_APP + 1;
                      return postingWorks;
                  })};
};

TEST_F(KeyboardHook, DecidesEveryEventAsPromised)
{
    desk.telling = false;
    const std::tuple<int, DWORD, unsigned> sources[] = {
        {VK_MENU, 0, alt},    {VK_LMENU, 0, alt}, {VK_RMENU, 0, alt}, {VK_CONTROL, 0, ctrl},
        {VK_SHIFT, 0, shift}, {VK_LWIN, 0, win},  {VK_RWIN, 0, win},  {0, 0x01, extended},
        {0, 0x20, alt},       {0, 0x80, up}};
    const DWORD keys[] = {VK_SNAPSHOT, VK_F1, VK_F2, VK_F4, VK_LWIN, VK_RWIN, VK_ESCAPE, VK_TAB, 'A'};
    for (unsigned state = 0; state < 1u << 12; ++state) {
        KBDLLHOOKSTRUCT event = {};
        unsigned world = (state & 1 ? target : 0u) | (state & 2 ? posts : 0u);
        hookTargetWindow = state & 1 ? windowHandle(0) : nullptr;
        postingWorks = (state & 2) != 0;
        desk.keysDown.clear();
        unsigned bit = 1;
        for (const auto &[key, flag, meaning] : sources) {
            if (!(state & 1u << ++bit)) continue;
            if (key) desk.keysDown.insert(key);
            event.flags |= flag;
            world |= meaning;
        }
        for (const DWORD key : keys) {
            event.vkCode = key;
            for (const WPARAM message : {WM_KEYDOWN, WM_KEYUP, WM_SYSKEYDOWN, WM_SYSKEYUP}) {
                const bool down = message == WM_KEYDOWN || message == WM_SYSKEYDOWN;
                ASSERT_EQ(fateOf(message, event), down ? promised(key, world) : "passed on")
                    << "key " << key << ", flags " << event.flags << ", state " << state;
            }
            ASSERT_EQ(fateOf(WM_KEYDOWN, event, 3), "passed on");
        }
    }
}

TEST_F(KeyboardHook, PostsAHeldKeyOnce)
{
    hookTargetWindow = windowHandle(0);
    const KBDLLHOOKSTRUCT dialogKey = {VK_F1, 0, LLKHF_ALTDOWN, 0, 0};
    const KBDLLHOOKSTRUCT copyKey = {VK_SNAPSHOT, 0, 0, 0, 0};
    postingWorks = false;
    EXPECT_EQ(fateOf(WM_SYSKEYDOWN, dialogKey), "passed on");  // tried in vain, so not remembered
    postingWorks = true;
    for (const bool second : {false, true}) {
        EXPECT_EQ(fateOf(WM_SYSKEYDOWN, dialogKey), "posted");
        for (int repeat = 0; repeat < 3; ++repeat)
            EXPECT_EQ(fateOf(WM_SYSKEYDOWN, dialogKey), "swallowed");
        EXPECT_EQ(fateOf(WM_KEYDOWN, copyKey), second ? "swallowed" : "posted");  // held through both
        EXPECT_EQ(fateOf(second ? WM_KEYUP : WM_SYSKEYUP, dialogKey), "passed on");
    }
    releaseLock();
    hookTargetWindow = windowHandle(0);
    EXPECT_EQ(fateOf(WM_KEYDOWN, copyKey), "posted");
}

TEST(Lockdown, HoldsTheCursorOnlyWhileASurfaceIsInFront)
{
    Desk desk(twoMonitors);
    desk.screen = VirtualScreen{-700, -10, 1600, 700};
    const std::string held = "ClipCursor -700 -10 900 690\n", open = "ClipCursor all\n";
    for (const auto &[front, clip] : {std::pair{windowHandle(0), held},
                                      {windowHandle(1), held},
                                      {windowHandle(2), open},
                                      {HWND(), open}}) {
        desk.foreground = front;
        desk.calls.clear();
        confineCursor();
        EXPECT_EQ(desk.text(), clip);
    }
    desk.foreground = windowHandle(0);
    desk.screen->height = 0;  // the system does not report it
    desk.calls.clear();
    confineCursor();
    EXPECT_EQ(desk.text(), "ClipCursor -640 0 800 600\n");
}

TEST(Lockdown, PutsTheHintAboveTheSurfacesAndGivesWayToTheDialog)
{
    Desk desk(twoMonitors);
    hintFloatWindow =
        CreateWindowExW(0, L"ZubblyWindow", L"", 0, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
    for (const auto &[dialog, visible, calls] :
         {std::tuple{true, true, ""},
          {false, true,
           "SetWindowPos w0 topmost 0 0 800 600 x10\nSetWindowPos w1 topmost -640 100 640 480 x10\n"
           "SetWindowPos w2 topmost 0 0 0 0 x53\nClipCursor -640 0 800 600\n"},
          {false, false,
           "SetWindowPos w0 topmost 0 0 800 600 x10\nSetWindowPos w1 topmost -640 100 640 480 x10\n"
           "ClipCursor -640 0 800 600\n"}}) {
        dialogShowing = dialog;
        hintVisible = visible;
        desk.calls.clear();
        refreshTopmost();
        EXPECT_EQ(desk.text(), calls);
    }
}
