#include "shell/lockdown.h"

#include <algorithm>
#include <bitset>

#include "shell/awake.h"
#include "shell/base/keys.h"
#include "shell/base/surfaces.h"
#include "shell/ease_of_access.h"
#include "shell/edge_swipes.h"
#include "shell/fullscreen_mark.h"
#include "shell/rotation_lock.h"

// Keys that were posted and are still held. Without this each auto-repeat would open another save dialog.
static std::bitset<256> postedKeys;

// Posts our own keys once per press, because a hook must return quickly. True if the event is handled. A
// PrintScreen that is marked as an extended key arrives as WM_KEYDOWN instead.
static bool postToProgram(const KBDLLHOOKSTRUCT &event, bool alt)
{
    if (event.flags & LLKHF_UP) return false;
    const bool ours =
        event.vkCode == VK_SNAPSHOT || (alt && (event.vkCode == VK_F1 || event.vkCode == VK_F4));
    if (!ours || !hookTargetWindow || (event.flags & LLKHF_EXTENDED)) return false;
    if (postedKeys[event.vkCode]) return true;
    if (!PostMessageW(hookTargetWindow, programKeyMessage, event.vkCode, 0)) return false;
    postedKeys.set(event.vkCode);
    return true;
}

static bool leadsOut(const KBDLLHOOKSTRUCT &event, bool alt)
{
    const DWORD key = event.vkCode;
    if (key == VK_LWIN || key == VK_RWIN) return true;
    if (isDown(VK_CONTROL) && isDown(VK_SHIFT)) return true;
    if (key == VK_ESCAPE && isDown(VK_CONTROL)) return true;
    if (alt && key != VK_SNAPSHOT && key != VK_F1 && key != VK_F4) return true;
    return !alt && key == VK_TAB && (isDown(VK_LWIN) || isDown(VK_RWIN));
}

LRESULT CALLBACK lowLevelKeyboardProc(int code, WPARAM message, LPARAM eventPointer)
{
    if (code == HC_ACTION) {
        const KBDLLHOOKSTRUCT &event = *reinterpret_cast<const KBDLLHOOKSTRUCT *>(eventPointer);
        if (message == WM_KEYDOWN || message == WM_SYSKEYDOWN) {
            const bool alt =
                (event.flags & LLKHF_ALTDOWN) || isDown(VK_MENU) || isDown(VK_LMENU) || isDown(VK_RMENU);
            if (postToProgram(event, alt) || leadsOut(event, alt)) return 1;
        } else {
            postedKeys.reset(event.vkCode & 0xFF);  // reset throws if the index is out of range
        }
    }
    return CallNextHookEx(keyboardHook, code, message, eventPointer);
}

void takeLock()
{
    hookTargetWindow = primaryWindow();
    if (blockShortcuts) {
        if (!keyboardHook)
            keyboardHook =
                SetWindowsHookExW(WH_KEYBOARD_LL, lowLevelKeyboardProc, GetModuleHandleW(nullptr), 0);
        silenceEaseOfAccess();
        stopEdgeSwipes();
        holdRotation();
        markFullscreen();
    }
    keepScreenAwake();
}

void releaseLock()
{
    ClipCursor(nullptr);
    if (keyboardHook) UnhookWindowsHookEx(keyboardHook);
    keyboardHook = nullptr;
    hookTargetWindow = nullptr;
    postedKeys.reset();
    restoreEaseOfAccess();
    allowEdgeSwipes();
    releaseRotation();
    unmarkFullscreen();
    letScreenSleep();
}

static bool surfaceInFront()
{
    const HWND front = GetForegroundWindow();
    if (!front) return false;
    return std::any_of(surfaces.begin(), surfaces.end(),
                       [front](const MonitorSurface &surface) { return surface.hwnd == front; });
}

void confineCursor()
{
    // A dialog or another program in front gets a free cursor.
    if (!surfaceInFront()) {
        ClipCursor(nullptr);
        return;
    }
    const VirtualScreen screen = virtualScreen();
    RECT clip = {screen.left, screen.top, screen.left + screen.width, screen.top + screen.height};
    if (screen.width < 1 || screen.height < 1) {
        clip = {};
        for (const MonitorSurface &surface : surfaces)
            UnionRect(&clip, &clip, &surface.rect);
    }
    ClipCursor(&clip);
}
