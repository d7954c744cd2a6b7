#pragma once
#include "shell/base/windows_api.h"

// Whether a key or mouse button is down at this moment, by its virtual-key code.
inline bool isDown(int key)
{
    return (GetAsyncKeyState(key) & 0x8000) != 0;
}

inline bool bothButtonsDown()
{
    return isDown(VK_LBUTTON) && isDown(VK_RBUTTON);
}
