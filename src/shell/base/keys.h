#pragma once
#include "shell/base/windows_api.h"

// Whether a key or mouse button, given by its virtual-key code, is down now. Left and right are the logical
// buttons, as in messages: GetAsyncKeyState reports physical ones, which a left-handed mouse swaps.
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
