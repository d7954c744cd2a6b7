#include "shell/timers.h"

#include "clearing/actions.h"
#include "hint/idle.h"
#include "hint/panel.h"
#include "marks/key_reactions.h"
#include "mascot/fireworks.h"
#include "mascot/walker.h"
#include "saving/auto_save.h"
#include "shell/base/keys.h"
#include "shell/shutdown.h"
#include "shell/window_order.h"

// Holding both buttons winds the spiral even when the mouse does not move.
static void chordTick(HWND window)
{
    if (!bothButtonsDown() || menuOpen) {
        KillTimer(window, 7);
        return;
    }
    updateKeyMash();
    stepSpiral(window);
}

static void hintTimeOver(HWND window)
{
    if (hintVisible && (!hintOwnerWindow || hintOwnerWindow == window)) closeHintPanel();
}

// Never during a stroke, because saving takes a while.
static void saveTick()
{
    if (canvasDirty && !leftButtonDown && !dragMoved) autoSaveTick();
}

void onTimer(HWND window, UINT_PTR id)
{
    switch (id) {
    case 1: refreshTopmost(); break;      // 1500 ms, the whole run
    case 3: onTimer3(); break;            // 72 to 128 ms, fresh at each tick; one action
    case 5: wipeTick(); break;            // 16 ms, one wipe
    case 6: settleKeys(window); break;    // 210 ms after the last key, one shot
    case 7: chordTick(window); break;     // 48 ms, while both buttons are down
    case 8: shutdownApp(true); break;     // the launch allowance ends the run
    case 9: hintTimeOver(window); break;  // 10 s, one showing of the hint
    case 10: saveTick(); break;           // the save interval, the whole run
    case 11: idleTick(window); break;     // 500 ms, while the hint may come back
    case 12: showTick(); break;           // 16 ms, one fireworks show
    case 13: mascotWalkTick(); break;     // 33 ms, the whole run
    }
}
