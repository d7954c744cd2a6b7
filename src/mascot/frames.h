#pragma once
// The mascot's pictures: optional PNG files beside the program, cleaned when they load.
#include <memory>
#include <string>

#include "marks/gdi_plus.h"

struct ImageFrame {
    GpImage *image = nullptr;
    GpStatus lastStatus = Ok;  // of the last pass that could not clean it; the frame is used all the same

    explicit ImageFrame(GpImage *owned) : image(owned) {}
    ~ImageFrame() { GdipDisposeImage(image); }
    ImageFrame(const ImageFrame &) = delete;
    ImageFrame &operator=(const ImageFrame &) = delete;
};

// Each holds a frame or nothing. Plain pointers: unloadMascotFrames frees them before GDI+ shuts down,
// which a static destructor would come too late for.
inline ImageFrame *bubbleFrame = nullptr;
inline ImageFrame *mainFrame = nullptr;  // of walking, and the default
inline ImageFrame *happyFrame = nullptr;
inline ImageFrame *cheerFrame = nullptr;

// Windows has a function of this name, so uses say "struct".
struct FrameRect {
    float x, y, width, height;
};

// Drops the old frames and fills the four slots from the folder; a missing file leaves its slot empty.
void loadMascotFrames(const std::wstring &folder);
void unloadMascotFrames();

// Loads and cleans one file; null if it does not exist, cannot be read or has more than 4096 pixels a side.
std::unique_ptr<ImageFrame> loadFrameFile(const std::wstring &path);

// Where a frame stands whose bottom centre is (x, y), height pixels high (40 at least), moved by bob.
struct FrameRect frameRect(const ImageFrame *frame, float x, float y, float height, float bob);

// The three passes of loadFrameFile, on a 32-bit ARGB bitmap; one that cannot lock it does nothing.
void removeSpecks(ImageFrame &frame);   // small islands beside the figure become transparent
void softenOutline(ImageFrame &frame);  // the dark opaque rim of a cut-out becomes partly transparent
void bleedColour(ImageFrame &frame);    // transparent pixels beside the figure take its colour
