#pragma once
#include "shell/base/windows_api.h"

// Whether a key or mouse button is down at this moment, by its virtual-key code. The left button is the one
// that acts as such, as in messages: GetAsyncKeyState reports physical buttons, which a left-handed mouse has
// the other way round.
inline bool isDown(int key)
{
    if ((key == VK_LBUTTON || key == VK_RBUTTON) && GetSystemMetrics(SM_SWAPBUTTON))
        key = key == VK_LBUTTON ? VK_RBUTTON : VK_LBUTTON;
    return (GetAsyncKeyState(key) & 0x8000) != 0;
}

inline bool bothButtonsDown()
{
    return isDown(VK_LBUTTON) && isDown(VK_RBUTTON);
}
