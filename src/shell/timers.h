#pragma once
#include "shell/base/windows_api.h"

// WM_TIMER: what each tick does. Unknown ids are ignored.
void onTimer(HWND window, UINT_PTR id);
