#pragma once
// Fireworks across the whole virtual screen. The show changes the rest of the program only through
// PenguinHost, and is painted over the canvases like the penguin.
#include <cstdint>
#include <vector>

#include "shell/base/windows_api.h"

struct PenguinHost {
    void *context = nullptr;  // handed to each callback; always null
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
    int32_t kind;  // 0 to 7, index of its colour
};
struct Spark {
    float x, y, vx, vy, life, maxLife;  // life in ticks
    int32_t color;                      // 0 to 7
    int32_t shape;                      // 0 glow, 1 star, 2 heart
    float size;
};
inline constexpr size_t maxSparks = 520;

inline std::vector<Rocket> rockets;
inline std::vector<Spark> sparks;
inline bool showActive = false;
inline int showTicks = 0;
inline RECT showRect = {};  // virtual-screen; what the last tick invalidated
inline bool showRectValid = false;

// Starts the fireworks, the first rocket at clickX; a running show is replaced.
void startShow(float clickX);

// Ends the show; notify tells the host, if anything was alive.
void stopShow(bool notify);

// Timer 12, every 16 ms.
void showTick();

// Paints rockets and sparks on dc, whose origin is (originX, originY) in the surface's coordinates.
void drawShow(HDC dc, int surfaceLeft, int surfaceTop, int width, int height, int originX, int originY);
