#pragma once
#include "shell/base/windows_api.h"

// The whole run, from the single-instance lock to the last release. The result is the exit code: 0 on
// every road but one, 1 when there is no monitor.
int runApp(HINSTANCE instance);
