#include "shell/window_proc.h"

#include <algorithm>
#include <vector>

#include "clearing/actions.h"
#include "hint/idle.h"
#include "marks/bursts.h"
#include "marks/cursor_pen.h"
#include "marks/key_reactions.h"
#include "marks/strokes.h"
#include "mascot/walker.h"
#include "menu/menu.h"
#include "saving/capture.h"
#include "shell/allowance.h"
#include "shell/base/clock.h"
#include "shell/base/keys.h"
#include "shell/lockdown.h"
#include "shell/painting.h"
#include "shell/shutdown.h"
#include "shell/timers.h"
#include "sound/bank_a.h"
#include "sound/playback.h"
#include "sound/speech.h"

static void stopWhatRuns()
{
    stopAutoDrawing();
    stopWipe();
}

static POINT screenPoint(HWND window, LPARAM lParam)
{
    POINT point = {short(LOWORD(lParam)), short(HIWORD(lParam))};
    ClientToScreen(window, &point);
    return point;
}

static void disableInputMethod(HWND window)
{
    ImmAssociateContext(window, nullptr);
}

static void onCreate(HWND window)
{
    RegisterTouchWindow(window, 0);
    disableInputMethod(window);
}

static void onActivate(HWND window, bool activated)
{
    if (activated) disableInputMethod(window);
    confineCursor();
}

template <size_t n> static bool isOneOf(const uint32_t (&keys)[n], uint32_t key)
{
    return std::find(keys, keys + n, key) != keys + n;
}

static bool isLetterOrDigit(uint32_t key)
{
    return (key >= '0' && key <= '9') || (key >= 'A' && key <= 'Z') ||
           (key >= VK_NUMPAD0 && key <= VK_NUMPAD9);
}

enum class KeyClass { capture, enter, escape, apps, space, cursor, modifier, letterOrDigit, other };

// The keypad's 2, 4, 6 and 8 steer the pen like the arrow keys.
static constexpr uint32_t cursorKeys[] = {VK_LEFT,    VK_UP,      VK_RIGHT,   VK_DOWN,
                                          VK_NUMPAD2, VK_NUMPAD4, VK_NUMPAD6, VK_NUMPAD8};
static constexpr uint32_t modifierKeys[] = {VK_SHIFT,    VK_CONTROL,  VK_MENU,   VK_CAPITAL, VK_LWIN,
                                            VK_RWIN,     VK_NUMLOCK,  VK_SCROLL, VK_LSHIFT,  VK_RSHIFT,
                                            VK_LCONTROL, VK_RCONTROL, VK_LMENU,  VK_RMENU};

static KeyClass keyClass(uint32_t key, bool altDown)
{
    switch (key) {
    case VK_SNAPSHOT: return KeyClass::capture;
    case VK_F1:
    case VK_F4: return altDown ? KeyClass::capture : KeyClass::other;
    case VK_RETURN: return KeyClass::enter;
    case VK_ESCAPE: return KeyClass::escape;
    case VK_APPS: return KeyClass::apps;
    case VK_SPACE: return KeyClass::space;
    }
    if (isOneOf(cursorKeys, key)) return KeyClass::cursor;
    if (isOneOf(modifierKeys, key)) return KeyClass::modifier;
    return isLetterOrDigit(key) ? KeyClass::letterOrDigit : KeyClass::other;
}

// Bits of a key message's lParam.
static bool altHeld(LPARAM flags)
{
    return (flags & (1 << 29)) != 0;
}
static bool isAutoRepeat(LPARAM flags)
{
    return (flags & (1 << 30)) != 0;
}

static void onEnter()
{
    noteChildInput();
    stopWhatRuns();
    const int choice = randInt(0, 84);
    startAction(choice < 40 ? drawAction : scatterAction);
}

static void onEscape(HWND window)
{
    noteChildInput();
    dropMenu();
    stopWhatRuns();
    startAction(wipeAction);
    consultAllowance(window);
}

static void onSpace(HWND window)
{
    noteChildInput();
    dropMenu();
    const DWORD now = GetTickCount();
    if (lastSpaceTick != 0 && now - lastSpaceTick < 300) return;
    lastSpaceTick = now;
    stopWhatRuns();
    spaceBurst();
    if (soundEnabled) playSpaceClip();
    if (randInt(0, 99) < 82) scatterMarks(false);
    consultAllowance(window);
}

static void onCursorKey(HWND window, uint32_t key)
{
    noteChildInput();
    dropMenu();
    penKey(key);
    consultAllowance(window);
}

static void onModifier()
{
    noteChildInput();
    dropMenu();
    stopWhatRuns();
}

static void onLetterOrDigit(HWND window, uint32_t key, LPARAM flags)
{
    cutSpeech();
    holdKey(window, key, flags);
    consultAllowance(window);
}

// A fast key makes a sound but leaves no mark.
static void onOtherKey(HWND window, uint32_t key, int pressCount, bool recent)
{
    if (keyMashCount >= 2) {
        stepSpiral(window);
    } else {
        if (!recent) keyReaction(key, pressCount);
        if (soundEnabled && passGate(lastKeySoundTick, 55)) playKeySound(key, pressCount);
    }
    consultAllowance(window);
}

static void onPressedKey(HWND window, uint32_t key, LPARAM flags)
{
    noteChildInput();
    dropMenu();
    stopWhatRuns();
    const int64_t previousMash = lastMashTime;
    updateKeyMash();
    const int pressCount = countSameKey(key, isAutoRepeat(flags));
    const bool recent = within(steadyNow(), previousMash, 420);
    if (isLetterOrDigit(key)) {
        onLetterOrDigit(window, key, flags);
    } else {
        onOtherKey(window, key, pressCount, recent);
    }
}

// A held key is one press.
static void onCaptureKey(HWND window, uint32_t key, LPARAM flags)
{
    if (!isAutoRepeat(flags)) captureOrExit(key, window);
}

static void onKeyDown(HWND window, uint32_t key, LPARAM flags)
{
    switch (keyClass(key, altHeld(flags))) {
    case KeyClass::capture: onCaptureKey(window, key, flags); break;
    case KeyClass::enter: onEnter(); break;
    case KeyClass::escape: onEscape(window); break;
    case KeyClass::apps: break;  // its release becomes WM_CONTEXTMENU
    case KeyClass::space: onSpace(window); break;
    case KeyClass::cursor: onCursorKey(window, key); break;
    case KeyClass::modifier: onModifier(); break;
    case KeyClass::letterOrDigit:
    case KeyClass::other: onPressedKey(window, key, flags); break;
    }
}

// All other system keys are swallowed.
static void onSystemKeyDown(HWND window, uint32_t key, LPARAM flags)
{
    if (keyClass(key, altHeld(flags)) == KeyClass::capture) onCaptureKey(window, key, flags);
}

// Unlike at key-down, the keypad's pen digits count here: they flush a waiting letter.
static void onKeyUp(HWND window, uint32_t key)
{
    if (isLetterOrDigit(key)) releaseKey(window);
}

// Only the keyboard's context menu key starts an action; its message has no position.
static bool onContextMenu(LPARAM lParam)
{
    if (short(LOWORD(lParam)) != -1 || short(HIWORD(lParam)) != -1) return false;
    noteChildInput();
    stopWhatRuns();
    onEnter();
    return true;
}

// Both buttons together wind the spiral of notes, like mashed keys.
static void chordCheck(HWND window)
{
    if (menuOpen || !bothButtonsDown()) return;
    updateKeyMash();
    stepSpiral(window);
    KillTimer(window, 7);
    SetTimer(window, 7, 48, nullptr);
}

static void onLeftDown(HWND window, POINT point)
{
    noteChildInput();
    if (menuOpen) return menuClick(point);
    stopWhatRuns();
    if (mascotHit(point)) return;
    leftButtonDown = true;
    lastStrokePoint = point;
    tapPending = true;
    dragMoved = false;
    chordCheck(window);
    chooseStrokeStyle();
    SetCapture(window);
}

// Within 8 pixels a shaky press stays a tap.
static bool inDeadZone(POINT point)
{
    const int64_t dx = int64_t(point.x) - lastStrokePoint.x;
    const int64_t dy = int64_t(point.y) - lastStrokePoint.y;
    return dx * dx + dy * dy < 64;
}

static void onMouseMove(HWND window, POINT point)
{
    if (bothButtonsDown() && !menuOpen) {
        noteChildInput();
        return stepSpiral(window);
    }
    if (!leftButtonDown) return;
    stopAutoDrawing();
    if (!dragMoved) {
        if (inDeadZone(point)) return;
        dragMoved = true;
        if (tapPending) {
            tapMark(lastStrokePoint);
            tapPending = false;
        }
    }
    brushStroke(lastStrokePoint, point);
    lastStrokePoint = point;
    startStrokeLoop();
    noteChildInput();
}

static void onLeftUp(HWND window)
{
    KillTimer(window, 7);
    stopStrokeLoop();
    if (tapPending && !dragMoved) {
        tapMark(lastStrokePoint);
        if (soundEnabled && passGate(lastSoundTick, 30)) playClip(tapClip);
        consultAllowance(window);
    }
    leftButtonDown = false;
    dragMoved = false;
    tapPending = false;
    ReleaseCapture();
}

static void onRightDown(HWND window, POINT point)
{
    noteChildInput();
    if (menuOpen) {
        rightPressSeen = true;
        return menuClick(point);
    }
    leftButtonDown = isDown(VK_LBUTTON);
    if (leftButtonDown) return chordCheck(window);
    openMenu(point);
    if (soundEnabled) playClick(actionClip);
    stopWhatRuns();
    rightPressSeen = true;
}

static void onRightUp(HWND window)
{
    KillTimer(window, 7);
    rightPressSeen = false;
    leftButtonDown = isDown(VK_LBUTTON);
}

static void onXButtonDown(HWND window)
{
    noteChildInput();
    stopWhatRuns();
    dropMenu();
    startAction(scatterAction);
    consultAllowance(window);
}

// Multimedia keys and the extra mouse buttons: every command clears the picture.
static void onAppCommand()
{
    stopWhatRuns();
    newBackground(false);
    if (soundEnabled && passGate(lastKeySoundTick, 55)) playKeySound(0, 0);
}

// A short stroke from the finger, up to reach pixels in each direction.
static void strokeFromFinger(POINT finger, int reach)
{
    penDotPoint = finger;
    penDotVisible = true;
    brushStroke(finger, strayFrom(finger, -reach, reach, -reach, reach));
}

static void onFingerDown(POINT finger)
{
    noteChildInput();
    stopWhatRuns();
    strokeFromFinger(finger, 70);
    if (soundEnabled && passGate(lastSoundTick, 40)) playClip(tapClip);
}

static void onFingerMove(POINT finger)
{
    noteChildInput();
    stopAutoDrawing();
    strokeFromFinger(finger, 30);
    startStrokeLoop();
}

static void onTouch(UINT count, HTOUCHINPUT handle)
{
    std::vector<TOUCHINPUT> contacts(count);
    if (!GetTouchInputInfo(handle, count, contacts.data(), sizeof(TOUCHINPUT))) return;
    for (const TOUCHINPUT &contact : contacts) {
        const POINT finger = {contact.x / 100, contact.y / 100};  // from hundredths of a pixel
        if (contact.dwFlags & TOUCHEVENTF_DOWN) {
            onFingerDown(finger);
        } else if (contact.dwFlags & TOUCHEVENTF_MOVE) {
            onFingerMove(finger);
        } else if (contact.dwFlags & TOUCHEVENTF_UP) {
            stopStrokeLoop();
        }
    }
    CloseTouchInputHandle(handle);
}

// Windows also makes mouse messages from touches, although a touch window gets its own messages. They carry
// a signature with bit 7 set; a pen's messages have it clear and count as the mouse's.
static bool isMouseOfFinger(UINT message)
{
    if (message < WM_MOUSEFIRST || message > WM_MOUSELAST) return false;
    return (uint32_t(GetMessageExtraInfo()) & 0xFFFFFF80) == 0xFF515780;
}

LRESULT CALLBACK windowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (isMouseOfFinger(message)) return 0;
    switch (message) {
    case WM_CREATE: onCreate(window); return 0;
    case WM_DESTROY: return 0;  // every exit path posts WM_QUIT itself
    case WM_ACTIVATE: onActivate(window, LOWORD(wParam) != 0); break;
    case WM_SETFOCUS: disableInputMethod(window); return 0;
    case WM_PAINT: paintSurface(window); return 0;
    case WM_QUERYENDSESSION: prepareSessionEnd(); return 1;
    case WM_ERASEBKGND: return 1;  // paintSurface covers every pixel
    case WM_ENDSESSION:
        if (wParam) endSession();
        return 0;
    case WM_ACTIVATEAPP: confineCursor(); break;
    case WM_CONTEXTMENU:
        if (onContextMenu(lParam)) return 0;
        break;
    case WM_KEYDOWN: onKeyDown(window, uint32_t(wParam), lParam); return 0;
    case WM_KEYUP:
    case WM_SYSKEYUP: onKeyUp(window, uint32_t(wParam)); break;
    case WM_SYSKEYDOWN: onSystemKeyDown(window, uint32_t(wParam), lParam); return 0;
    case WM_TIMER: onTimer(window, wParam); return 0;
    case WM_MOUSEMOVE: onMouseMove(window, screenPoint(window, lParam)); return 0;
    case WM_LBUTTONDOWN: onLeftDown(window, screenPoint(window, lParam)); return 0;
    case WM_LBUTTONUP: onLeftUp(window); return 0;
    case WM_RBUTTONDOWN: onRightDown(window, screenPoint(window, lParam)); return 0;
    case WM_RBUTTONUP: onRightUp(window); return 0;
    case WM_XBUTTONDOWN: onXButtonDown(window); return 0;
    case WM_TOUCH: onTouch(LOWORD(wParam), HTOUCHINPUT(lParam)); return 0;
    case WM_APPCOMMAND: onAppCommand(); return 1;
    case programKeyMessage: captureOrExit(uint32_t(wParam), window); return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}
