#pragma once
// The mascot's pictures: optional PNG files beside the program, cleaned when they load.
#include <filesystem>
#include <memory>

#include "marks/gdi_plus.h"

struct ImageFrame {
    GpImage *image = nullptr;
    GpStatus lastStatus = Ok;

    explicit ImageFrame(GpImage *owned) : image(owned) {}
    ~ImageFrame() { GdipDisposeImage(image); }
    ImageFrame(const ImageFrame &) = delete;
    ImageFrame &operator=(const ImageFrame &) = delete;
};

// Each holds a frame or nothing; all are let go before GDI+ shuts down.
inline std::unique_ptr<ImageFrame> bubbleFrame;
inline std::unique_ptr<ImageFrame> mainFrame;  // of walking, and the default
inline std::unique_ptr<ImageFrame> happyFrame;
inline std::unique_ptr<ImageFrame> cheerFrame;

// Windows has a function of this name, so uses say "struct".
struct FrameRect {
    float x, y, width, height;
};

// Drops the old frames and fills the four slots from the folder; a missing file leaves its slot empty.
void loadMascotFrames(const std::filesystem::path &folder);
void unloadMascotFrames();

// Loads and cleans one file; null if it does not exist or cannot be read.
std::unique_ptr<ImageFrame> loadFrameFile(const std::filesystem::path &path);

// Where a frame stands whose bottom centre is (x, y), height pixels high (40 at least), moved by bob.
struct FrameRect frameRect(const ImageFrame *frame, float x, float y, float height, float bob);
