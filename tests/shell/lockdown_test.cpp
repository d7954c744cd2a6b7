#include "shell/lockdown.h"

#include <gtest/gtest.h>

#include <tuple>

#include "hint/panel.h"
#include "saving/save_dialog.h"
#include "shell/volume.h"
#include "shell/window_order.h"
#include "support/fakes.h"

using Calls = std::vector<std::string>;

// What is so while a key goes down: flags, modifiers, and whether the program can be told.
enum : unsigned { up = 1, extended = 2, alt = 4, ctrl = 8, shift = 16, win = 32, target = 64, posts = 128 };
static const unsigned told = target | posts, odd = up | extended;

// What grown-ups were promised, first match from the top: key (0 is any), what it needs, what bars it, and
// its fate: it goes to the program (p), is swallowed (s) or goes on to the next hook (n).
using Promise = std::tuple<DWORD, unsigned, unsigned, char>;
static const Promise promises[] = {{VK_SNAPSHOT, told, odd, 'p'},
                                   {VK_F1, alt | told, odd, 'p'},
                                   {VK_F4, alt | told, odd, 'p'},
                                   {VK_LWIN, 0, 0, 's'},
                                   {VK_RWIN, 0, 0, 's'},
                                   {0, ctrl | shift, 0, 's'},
                                   {VK_ESCAPE, ctrl, 0, 's'},
                                   {VK_SNAPSHOT, 0, 0, 'n'},
                                   {VK_F1, 0, 0, 'n'},
                                   {VK_F4, 0, 0, 'n'},
                                   {0, alt, 0, 's'},
                                   {VK_TAB, win, 0, 's'},
                                   {0, 0, 0, 'n'}};

static char promised(DWORD key, unsigned world)
{
    for (const auto &[of, needs, lacks, fate] : promises) {
        if ((of == 0 || of == key) && (world & needs) == needs && !(world & lacks)) return fate;
    }
    return '?';
}

static char fateOf(WPARAM message, const KBDLLHOOKSTRUCT &event, int code = HC_ACTION)
{
    recorded.calls.clear();
    const LRESULT answer = lowLevelKeyboardProc(code, message, LPARAM(&event));
    if (answer != 1) return countCalls("CallNextHook") == 1 ? 'n' : '?';
    const Calls post = {"PostMessage w0 32769 " + std::to_string(event.vkCode)};
    return fakes.postResult && recorded.calls == post ? 'p' : 's';
}

TEST(KeyboardHook, DecidesEveryEventAsPromised)
{
    const Desk desk(oneMonitor);
    const Having lent(hookTargetWindow, nullptr);
    const std::tuple<int, DWORD, unsigned> sources[] = {
        {VK_MENU, 0, alt},    {VK_LMENU, 0, alt}, {VK_RMENU, 0, alt}, {VK_CONTROL, 0, ctrl},
        {VK_SHIFT, 0, shift}, {VK_LWIN, 0, win},  {VK_RWIN, 0, win},  {0, 0x01, extended},
        {0, 0x20, alt},       {0, 0x80, up}};
    for (unsigned state = 0; state < 1u << 12; ++state) {
        KBDLLHOOKSTRUCT event = {};
        unsigned world = (state & 1 ? target : 0u) | (state & 2 ? posts : 0u);
        hookTargetWindow = state & 1 ? fakeWindow(0) : nullptr;
        fakes.postResult = (state & 2) != 0;
        fakes.keysDown.clear();
        unsigned bit = 1;
        for (const auto &[key, flag, meaning] : sources) {
            if (!(state & 1u << ++bit)) continue;
            if (key) fakes.keysDown.insert(key);
            event.flags |= flag;
            world |= meaning;
        }
        for (event.vkCode = 0; event.vkCode < 256; ++event.vkCode) {
            const char fate = promised(event.vkCode, world);
            for (const WPARAM message : {WM_KEYDOWN, WM_KEYUP, WM_SYSKEYDOWN, WM_SYSKEYUP}) {
                const bool down = message == WM_KEYDOWN || message == WM_SYSKEYDOWN;
                ASSERT_EQ(fateOf(message, event), down ? fate : 'n') << event.vkCode << " in " << world;
            }
            ASSERT_EQ(fateOf(WM_KEYDOWN, event, 3), 'n');
        }
    }
}

TEST(KeyboardHook, PostsAHeldKeyOnce)
{
    const Desk desk(oneMonitor);
    const Having lent(hookTargetWindow, fakeWindow(0));
    const KBDLLHOOKSTRUCT dialogKey = {VK_F1, 0, LLKHF_ALTDOWN, 0, 0};
    const KBDLLHOOKSTRUCT copyKey = {VK_SNAPSHOT, 0, 0, 0, 0};
    fakes.postResult = FALSE;
    EXPECT_EQ(fateOf(WM_SYSKEYDOWN, dialogKey), 'n');  // tried in vain, so not remembered
    fakes.postResult = TRUE;
    for (int press = 0; press < 2; ++press) {
        EXPECT_EQ(fateOf(WM_SYSKEYDOWN, dialogKey), 'p');
        for (int repeat = 0; repeat < 3; ++repeat)
            EXPECT_EQ(fateOf(WM_SYSKEYDOWN, dialogKey), 's');
        EXPECT_EQ(fateOf(WM_KEYDOWN, copyKey), press ? 's' : 'p');  // a key of its own, held through both
        EXPECT_EQ(fateOf(press ? WM_KEYUP : WM_SYSKEYUP, dialogKey), 'n');
    }
    releaseLock();
    hookTargetWindow = fakeWindow(0);
    EXPECT_EQ(fateOf(WM_KEYDOWN, copyKey), 'p');
    releaseLock();
}

TEST(Lockdown, HoldsTheCursorOnlyWhileASurfaceIsInFront)
{
    const Desk desk(twoMonitors);
    fakes.screen = {-700, -10, 1600, 700};
    for (const int front : {0, 1, 2, -1}) {
        fakes.foreground = front < 0 ? nullptr : fakeWindow(front);
        confineCursor();
        EXPECT_EQ(recorded.calls.back(),
                  front == 0 || front == 1 ? "ClipCursor -700,-10,900,690" : "ClipCursor free");
    }
    fakes.foreground = fakeWindow(0);
    fakes.screen.height = 0;  // the system does not tell
    confineCursor();
    EXPECT_EQ(recorded.calls.back(), "ClipCursor -640,0,800,600");
}

TEST(Lockdown, PutsTheHintAboveTheSurfacesAndGivesWayToTheDialog)
{
    const Desk desk(twoMonitors);
    const Having clamp(volumeClamp, 0.3f);
    const Having panel(hintFloatWindow, fakeWindow(2));
    for (const bool dialog : {true, false}) {
        const Having showing(dialogShowing, dialog);
        const Having hint(hintVisible, true);
        EXPECT_TRUE(recorded.calls.empty());
        refreshTopmost();
    }
    EXPECT_EQ(recorded.calls, (Calls{"SetWindowPos w0 topmost 16", "SetWindowPos w1 topmost 16",
                                     "SetWindowPos w2 topmost 83", "CoCreateInstance", "ClipCursor free"}));
    refreshTopmost();
    EXPECT_EQ(countCalls("SetWindowPos w2"), 1);
}

TEST(Lockdown, LowersALoudVolumeAndNeverRaisesOne)
{
    // One COM object plays enumerator, device and volume: the methods used stand at different places.
    static float level;
    static int failing, held;
    static void *methods[10];
    static void **object = methods;
    static const auto give = [](int call, void **out) {
        if (call == failing) return E_FAIL;
        ++held;
        *out = &object;
        return S_OK;
    };
    const auto put = [](int place, auto method) { methods[place] = reinterpret_cast<void *>(+method); };
    put(2, [](void *) { return --held; });
    put(3, [](void *, REFIID, DWORD, void *, void **out) { return give(3, out); });
    put(4, [](void *, int flow, int role, void **out) {
        return flow == eRender && role == eConsole ? give(2, out) : E_INVALIDARG;
    });
    put(7, [](void *, float value, const GUID *) { return level = value, S_OK; });
    put(9, [](void *, float *out) { return *out = level, failing == 4 ? E_FAIL : S_OK; });
    const Desk desk(oneMonitor);
    const Having lent(volumeClamp, 0.0f);
    fakes.makeObject = [](REFCLSID, void **out) { return give(1, out); };
    const float rows[][3] = {
        {0.3f, 0.2f, 0.2f}, {0.3f, 0.5f, 0.3f}, {1.0f, 1.2f, 1.0f}, {0.0f, 0.5f, 0.5f}, {1.1f, 1.2f, 1.2f}};
    for (const auto &[cap, before, after] : rows) {
        for (failing = 0; failing <= 4; ++failing) {
            volumeClamp = cap;
            level = before;
            clampMasterVolume();
            EXPECT_EQ(level, failing == 0 ? after : before) << cap << " " << failing;
            EXPECT_EQ(held, 0);
        }
    }
}
