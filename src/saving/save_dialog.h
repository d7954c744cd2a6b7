#pragma once
// The save dialog. Everything in the program is topmost and keeps itself so; the dialog gets above it,
// and afterwards everything is put back.
#include "shell/base/state.h"
#include "shell/base/windows_api.h"

inline HWND dialogHostWindow = nullptr;  // hidden owner of the dialog; made at first need

// Lets a grown-up save the picture as it is now. True if a file was written.
bool showSaveDialog();

// Surfaces enabled, whole and opaque again, repainted, cursor confined.
void restoreSurfaces();

void destroyDialogHost();
