#pragma once
// The fireworks show, across the whole virtual screen. It acts on the rest of the program only through
// PenguinHost, and it is painted over the windows like the penguin.
#include <cstdint>
#include <vector>

#include "shell/base/windows_api.h"

struct PenguinHost {
    void *context = nullptr;  // passed to each callback; always null
    int (*random)(void *context, int lo, int hi) = nullptr;
    void (*startTimer)(void *context) = nullptr;
    void (*stopTimer)(void *context) = nullptr;
    void (*invalidate)(void *context, const RECT &virtualRect) = nullptr;
    void (*playMascotCall)(void *context) = nullptr;
    void (*playMascotChatter)(void *context) = nullptr;
    void (*showFinished)(void *context) = nullptr;
};
inline PenguinHost penguinHost;

// Virtual-screen coordinates, pixels and pixels per tick.
struct Rocket {
    float x, y, vy, targetY;
    int32_t kind;  // its colour, an index of showPalette
};
enum SparkShape { glowSpark, starSpark, heartSpark };
struct Spark {
    float x, y, vx, vy, life, maxLife;  // life in ticks
    int32_t color;                      // an index of showPalette
    int32_t shape;                      // a SparkShape
    float size;
};
inline constexpr size_t maxSparks = 520;

inline std::vector<Rocket> rockets;
inline std::vector<Spark> sparks;
inline bool showActive = false;
inline int showTicks = 0;   // since the show began
inline RECT showRect = {};  // what the last tick covered, virtual-screen coordinates
inline bool showRectValid = false;

// Whether the show runs or anything of it is left.
inline bool showAlive()
{
    return showActive || !rockets.empty() || !sparks.empty();
}

// Starts the fireworks, with the first rocket at clickX; replaces a running show.
void startShow(float clickX);

// Ends the show. If anything was alive and notify is set, calls showFinished.
void stopShow(bool notify);

// Timer 12, every 16 ms: one step of everything alive.
void showTick();

// Paints rockets and sparks. The origin of dc is (originX, originY) in surface-local coordinates.
void drawShow(HDC dc, int surfaceLeft, int surfaceTop, int width, int height, int originX, int originY);
