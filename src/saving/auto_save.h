#pragma once
// Saves the picture without asking. It reads the back buffers only, so no overlay is ever in a saved
// picture.
#include "marks/gdi_plus.h"
#include "shell/base/windows_api.h"

using OwnedPicture = std::unique_ptr<GpBitmap, FreedBy<GdipDisposeImage>>;

// Timer 10: saves a PNG unless nothing changed or an action or wipe runs, and keeps the last ten files.
void autoSaveTick();

// All canvases in one bitmap of the virtual screen's size; gaps have the background colour. The caller
// deletes it. Null on failure.
HBITMAP captureCanvases();

// Index of the PNG encoder; negative if there is none.
int findPngEncoder(CLSID &clsid);

// A GDI+ copy of a bitmap; null on failure.
OwnedPicture pictureOf(HBITMAP bitmap);

// Writes a PNG and overwrites any existing file. False on failure, which may leave part of a file.
bool writePng(GpBitmap *picture, const wchar_t *path);
