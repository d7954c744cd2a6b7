#include "mascot/frames.h"

void loadMascotFrames(const std::filesystem::path &) {}
void unloadMascotFrames() {}
std::unique_ptr<ImageFrame> loadFrameFile(const std::filesystem::path &)
{
    return {};
}
struct FrameRect frameRect(const ImageFrame *, float, float, float, float)
{
    return {};
}
