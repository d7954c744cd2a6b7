#pragma once
#include "shell/base/windows_api.h"

// What each tick does; an id that is not in the table is ignored.
void onTimer(HWND window, UINT_PTR id);
