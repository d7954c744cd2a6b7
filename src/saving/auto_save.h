#pragma once
// What a child draws is kept without anyone asking, from the back buffers alone, so that nothing that
// lies over them is ever in a picture.
#include "marks/gdi_plus.h"
#include "shell/base/windows_api.h"

using OwnedPicture = std::unique_ptr<GpBitmap, FreedBy<GdipDisposeImage>>;

// Timer 10: saves a PNG if the picture changed and nothing is being drawn by itself, and keeps ten.
void autoSaveTick();

// All canvases as one bitmap of the virtual screen's size; gaps have the background colour. The caller
// deletes it. Null on failure.
HBITMAP captureCanvases();

// Index of the PNG encoder; negative if there is none.
int findPngEncoder(CLSID &clsid);

// A GDI+ copy of a bitmap; null on failure.
OwnedPicture pictureOf(HBITMAP bitmap);

// Writes a PNG over whatever file is there. False on failure; a part of the file may stand by then.
bool writePng(GpBitmap *picture, const wchar_t *path);
