#pragma once
#include "shell/base/windows_api.h"

// The whole run, from the single-instance lock to the last release. Returns the exit code: 1 if there is no
// monitor, else 0.
int runApp(HINSTANCE instance);
