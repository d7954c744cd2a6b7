#pragma once
// The pictures of the sparks, made once: blitting is far cheaper than drawing up to 520 shapes.
#include <array>

#include "marks/random.h"
#include "shell/base/windows_api.h"

struct Sprite {
    HBITMAP bitmap = nullptr;  // 32-bit, top-down, premultiplied alpha; null if it could not be made
    int size = 0;              // pixels, square
};
// Indexed by a rocket's kind and a spark's colour.
inline constexpr std::array<MarkColor, 8> showPalette = {
    0x8C52FF,  // rose
    0x2896FF,  // orange
    0x3CD6FF,  // yellow
    0x6ECD5A,  // green
    0xFFAF46,  // blue
    0xFF6EA5,  // violet
    0xBE69FF,  // pink
    0xC3E65A,  // mint
};
inline std::array<Sprite, showPalette.size()> glowSprites, starSprites, heartSprites;
inline HDC spriteDC = nullptr;  // selects each sprite in turn

void buildSprites();  // does nothing if they exist
void freeSprites();   // none may be selected
void freeSpriteDC();
