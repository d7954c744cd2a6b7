#pragma once
// The mascot's pictures: optional PNG files beside the program, cleaned on loading.
#include <memory>
#include <string>

#include "marks/gdi_plus.h"

struct ImageFrame {
    GpImage *image = nullptr;
    GpStatus lastStatus = Ok;  // of the last pass that failed; the frame is used anyway

    explicit ImageFrame(GpImage *owned) : image(owned) {}
    ~ImageFrame() { GdipDisposeImage(image); }
    ImageFrame(const ImageFrame &) = delete;
    ImageFrame &operator=(const ImageFrame &) = delete;
};

// Null if there is no such picture. Plain pointers, freed by unloadMascotFrames: static destructors would run
// after GDI+ is shut down.
inline ImageFrame *bubbleFrame = nullptr;
inline ImageFrame *mainFrame = nullptr;  // walking, and the default
inline ImageFrame *happyFrame = nullptr;
inline ImageFrame *cheerFrame = nullptr;

// Windows has a function of this name, so uses need "struct".
struct FrameRect {
    float x, y, width, height;
};

// Replaces the frames by those of the folder; a slot without a file stays empty.
void loadMascotFrames(const std::wstring &folder);
void unloadMascotFrames();

// Loads and cleans one file; null if it does not exist, cannot be read, is a metafile or has more than 4096
// pixels a side.
std::unique_ptr<ImageFrame> loadFrameFile(const std::wstring &path);

// The rectangle of a frame with its bottom centre at (x, y), height pixels high (at least 40), moved down by
// bob pixels.
struct FrameRect frameRect(const ImageFrame *frame, float x, float y, float height, float bob);

// The three passes of loadFrameFile, on a 32-bit ARGB bitmap. A pass that cannot lock it does nothing.
void removeSpecks(ImageFrame &frame);   // makes small islands beside the figure transparent
void softenOutline(ImageFrame &frame);  // makes the dark opaque rim of a cut-out partly transparent
void bleedColour(ImageFrame &frame);    // gives its colour to transparent pixels beside the figure
