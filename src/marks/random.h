#pragma once
// The random streams and the colours. Which stream is drawn from, and in which order, is part of the
// behaviour: every draw is a statement of its own, and a draw that nothing reads stays.
#include <array>
#include <cstdint>
#include <random>

using Rng = std::mt19937;

// Four independent streams, seeded once from the system's random device and never again.
inline Rng markRng{std::random_device{}()};   // every mark, auto-drawing, the geometry of the wipes
inline Rng soundRng{std::random_device{}()};  // sound bank A and the choice of what to play
inline Rng clipRng{std::random_device{}()};   // sound bank B and the mascot's choice among its clips
inline Rng spareRng{std::random_device{}()};  // seeded like the others and never drawn from

// The form of a colour between functions: 0x00BBGGRR, like a GDI COLORREF, without alpha.
using MarkColor = uint32_t;

constexpr MarkColor markColor(int red, int green, int blue)
{
    return uint32_t(red & 0xFF) | uint32_t(green & 0xFF) << 8 | uint32_t(blue & 0xFF) << 16;
}
constexpr int redOf(MarkColor color)
{
    return int(color & 0xFF);
}
constexpr int greenOf(MarkColor color)
{
    return int(color >> 8 & 0xFF);
}
constexpr int blueOf(MarkColor color)
{
    return int(color >> 16 & 0xFF);
}

// The form GDI+ takes, 0xAARRGGBB. alpha is 0 to 255.
constexpr uint32_t toArgb(MarkColor color, int alpha)
{
    return uint32_t(alpha) << 24 | uint32_t(redOf(color)) << 16 | uint32_t(greenOf(color)) << 8 |
           uint32_t(blueOf(color));
}

// Indexed by key code modulo 10.
inline constexpr std::array<MarkColor, 10> keyPalette = {
    0x00A078FF,  // pink
    0x0050CDFF,  // amber
    0x00FFC878,  // sky
    0x0082E196,  // leaf
    0x00FF96BE,  // violet
    0x0078A0FF,  // salmon
    0x0082EBFF,  // lemon
    0x00C8DC82,  // mint
    0x00D296F0,  // orchid
    0x00FFC8AA,  // pale blue
};

// Uniform integer from lo to hi, both included; lo must not exceed hi. Takes one output of the stream,
// more only if one is rejected (Lemire, "Fast Random Integer Generation in an Interval", 2019).
int32_t drawInt(Rng &stream, int32_t lo, int32_t hi);

inline int32_t randInt(int32_t lo, int32_t hi)
{
    return drawInt(markRng, lo, hi);
}
inline int32_t soundRand(int32_t lo, int32_t hi)
{
    return drawInt(soundRng, lo, hi);
}

// Uniform real from 0 up to but not including 1, in steps of 2 to the power -24.
float drawReal(Rng &stream);

// Red, green and blue drawn in this order from markRng, each from lo to hi.
MarkColor randColor(int32_t lo, int32_t hi);

// Each channel from 50 up: nothing very dark and nothing fully saturated.
inline MarkColor anyColor()
{
    return randColor(50, 255);
}

// Each channel from 120 to 245: medium to bright, never white.
inline MarkColor brightColor()
{
    return randColor(120, 245);
}

// The colour of a fresh canvas: mostly bright and calm, now and then white, cream or dusty blue.
MarkColor pickBackgroundColor();

// The colour of one button of the grown-ups menu: dark to middling, with one channel lifted.
MarkColor pickMenuColor();
