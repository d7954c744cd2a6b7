#include "shell/lockdown.h"

#include <gtest/gtest.h>

#include <tuple>

#include "hint/panel.h"
#include "saving/save_dialog.h"
#include "support/fakes.h"

using Calls = std::vector<std::string>;

TEST(KeyboardHook, TellsTheProgramSwallowsOrPassesOn)
{
    const Desk desk(oneMonitor);
    const Having lent(hookTargetWindow, fakeWindow(0));
    // A key that goes down, its flags from bit 8 on and another key that is held from bit 16 on.
    const DWORD alt = LLKHF_ALTDOWN << 8, up = LLKHF_UP << 8, extended = LLKHF_EXTENDED << 8;
    const DWORD ctrl = VK_CONTROL << 16, shift = VK_SHIFT << 16, win = VK_LWIN << 16;
    const std::pair<int, std::vector<DWORD>> fates[] = {
        {'p',
         {VK_SNAPSHOT, alt | VK_SNAPSHOT, alt | VK_F1, alt | VK_F4, VK_MENU << 16 | VK_F4,
          VK_LMENU << 16 | VK_F4, VK_RMENU << 16 | VK_F1}},
        {'s',
         {VK_LWIN, VK_RWIN, ctrl | VK_LWIN, ctrl | VK_ESCAPE, alt | VK_ESCAPE, alt | VK_TAB, alt | ' ',
          win | VK_TAB, VK_RWIN << 16 | VK_TAB}},
        {'n',
         {VK_F1, VK_F4, VK_ESCAPE, VK_TAB, 'A', ctrl | 'A', shift | 'A', win | 'A', shift | VK_ESCAPE,
          ctrl | VK_TAB, up | VK_SNAPSHOT, extended | VK_SNAPSHOT, alt | extended | VK_F4}}};
    const auto fateOf = [](DWORD input, WPARAM message, int code) {
        const KBDLLHOOKSTRUCT event = {input & 255, 0, input >> 8 & 255, 0, 0};
        recorded.calls.clear();
        if (lowLevelKeyboardProc(code, message, LPARAM(&event)) != 1)
            return recorded.calls.back() == "CallNextHook" ? 'n' : '?';
        return recorded.calls == Calls{"PostMessage w0 32769 " + std::to_string(input & 255)} ? 'p' : 's';
    };
    for (const auto &[fate, inputs] : fates) {
        for (const DWORD input : inputs) {
            fakes.keysDown = {int(input >> 16)};
            for (const WPARAM message : {WM_KEYDOWN, WM_SYSKEYDOWN, WM_KEYUP, WM_SYSKEYUP}) {
                const bool down = message == WM_KEYDOWN || message == WM_SYSKEYDOWN;
                EXPECT_EQ(fateOf(input, message, HC_ACTION), down ? fate : 'n') << std::hex << input;
            }
            EXPECT_EQ(fateOf(input, WM_KEYDOWN, 3), 'n');
        }
    }
    fakes.keysDown = {VK_CONTROL, VK_SHIFT};
    EXPECT_EQ(fateOf('A', WM_KEYDOWN, HC_ACTION), 's');
    fakes.keysDown.clear();
    for (const bool untold : {true, false}) {
        fakes.postResult = untold;
        hookTargetWindow = untold ? nullptr : fakeWindow(0);
        EXPECT_EQ(fateOf(VK_SNAPSHOT, WM_KEYDOWN, HC_ACTION), 'n');
    }
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
