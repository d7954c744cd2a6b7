#pragma once
// A penguin that now and then walks along the bottom of the launch monitor. It is painted over the windows
// during WM_PAINT and never into a canvas. Coordinates are virtual-screen coordinates.
#include "marks/gdi_plus.h"

enum LeanStage { walking, leaning, holding, returning };

inline bool mascotEnabled = false;  // at least one frame is loaded
inline bool walkerActive = false;   // a walk is under way
inline bool walkerClicked = false;  // a click started the fireworks; it stands still until they end
inline DWORD nextWalkTick = 0;      // GetTickCount at which the next walk may begin
inline float walkerX = 0.0f;        // its bottom centre
inline float walkerY = 0.0f;
inline constexpr float walkerStartDir = 1.0f;
inline constexpr float walkerStartSpeed = 9.0f;
inline constexpr float walkerStartSize = 200.0f;
inline float walkerDir = walkerStartDir;      // 1 to the right, -1 to the left
inline float walkerSpeed = walkerStartSpeed;  // pixels per tick
inline float walkerSize = walkerStartSize;    // height of the drawn frame, pixels
inline float walkerPhase = 0.0f;              // of its bobbing, radians
inline int leanStage = walking;
inline DWORD leanClock = 0;     // GetTickCount at the start of the stage
inline float leanAngle = 0.0f;  // degrees
inline float leanX = 0.0f;      // offsets of the lean
inline float leanY = 0.0f;
inline bool peekEnabled = false;  // this walk has a lean
inline bool peekDone = false;     // the lean of this walk is done
inline float peekX = 0.0f;        // where the lean starts
inline RECT walkerRect = {};      // what the last tick covered
inline bool walkerRectValid = false;

// Loads the frames, makes the sprites and starts timer 13. Called once, after the surfaces exist.
void initMascot();

// Frees everything and restores the start values; a second call is harmless.
void shutdownMascot();

// Timer 13, every 33 ms: a step of the walk or the lean, or the start of a walk.
void mascotWalkTick();

// Called at each left press. On a hit starts the fireworks and returns true.
bool mascotHit(POINT point);

// Paints the penguin. The origin of dc is (originX, originY) in surface-local coordinates.
void drawWalker(HDC dc, const MonitorSurface &surface, int originX, int originY);

enum Pose { mainPose, bubblePose, happyPose, cheerPose };

// One picture of the penguin, in the coordinates of the Graphics it is drawn on.
struct FrameRecord {
    float x = 0.0f;  // its bottom centre
    float y = 0.0f;
    float height = walkerStartSize;
    float bob = 0.0f;      // pixels downwards
    float alpha = 1.0f;    // 0 to 1
    int state = mainPose;  // a Pose; one whose frame is missing falls back on the main frame
    bool mirrored = false;
};

// Draws it and restores the state of the Graphics; does nothing without frames.
void drawFrame(GraphicsScope &scope, const FrameRecord &record);
