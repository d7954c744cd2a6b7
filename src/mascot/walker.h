#pragma once
// A penguin that walks along the bottom of the launch monitor now and then. It is painted over the
// canvases during WM_PAINT and leaves no trace in the picture. Coordinates are virtual-screen.
#include "marks/gdi_plus.h"

inline bool mascotEnabled = false;  // at least one frame was loaded
inline bool walkerActive = false;   // the penguin is on its way
inline bool walkerClicked = false;  // a click started the show; it stands still
inline DWORD nextWalkTick = 0;      // GetTickCount at which the next walk may begin
inline float walkerX = 0.0f;        // its bottom centre
inline float walkerY = 0.0f;
inline float walkerDir = 1.0f;     // 1 to the right, -1 to the left
inline float walkerSpeed = 9.0f;   // pixels per tick
inline float walkerSize = 200.0f;  // height of the drawn frame
inline float walkerPhase = 0.0f;   // of its bobbing, radians
inline int leanStage = 0;          // 0 walking, 1 leaning, 2 holding, 3 returning
inline DWORD leanClock = 0;        // GetTickCount at the start of the stage
inline float leanAngle = 0.0f;     // degrees
inline float leanX = 0.0f;         // offsets of the lean
inline float leanY = 0.0f;
inline bool peekEnabled = false;  // this walk has a lean
inline bool peekDone = false;     // and it has been done
inline float peekX = 0.0f;        // where it starts
inline RECT walkerRect = {};      // what the last tick invalidated
inline bool walkerRectValid = false;

// Loads the frames, makes the sprites and starts timer 13. Once, after the surfaces exist.
void initMascot();

// Lets everything go and sets the start values again; harmless when called twice.
void shutdownMascot();

// Timer 13, every 33 ms.
void mascotWalkTick();

// Asked at each left press; true if the penguin was hit, and the show has begun.
bool mascotHit(POINT point);

// Paints the penguin on dc, whose origin is (originX, originY) in the surface's coordinates.
void drawWalker(HDC dc, const MonitorSurface &surface, int originX, int originY);

// One picture of the penguin, in the coordinates of the Graphics it is drawn on.
struct FrameRecord {
    float x = 0.0f;  // its bottom centre
    float y = 0.0f;
    float height = 200.0f;
    float bob = 0.0f;    // pixels downwards
    float alpha = 1.0f;  // 0 to 1
    int state = 0;       // 1 bubble, 2 happy, 3 cheering; else, or where that frame is missing, the main one
    bool mirrored = false;
};

// Draws it and leaves the Graphics as it was; nothing happens without frames.
void drawFrame(GraphicsScope &scope, const FrameRecord &record);
