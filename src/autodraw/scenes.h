#pragma once
// The open scene of auto-drawing: a sketch or a motif, laid out once and drawn a step at a time. A stop of
// the run leaves it open, and the next auto-drawing run continues it. All points are virtual-screen points.
#include <vector>

#include "marks/random.h"
#include "shell/base/windows_api.h"

inline bool sketchActive = false;  // at most one of the two is open
inline bool motifActive = false;

struct Scene {
    int form = 0;   // index into the forms of its kind
    int step = 0;   // the next one
    int steps = 0;  // how many there are
    POINT anchor = {};
    std::vector<POINT> points;

    // of a sketch
    int count = 0;      // poles or dots
    int spacing = 0;    // from pole to pole
    POINT target = {};  // the smile

    // of a motif
    int size = 0;  // of the shell, the head and the disc
    MarkColor colorA = 0, colorB = 0, colorC = 0;
    POINT head = {}, neck = {}, leftHip = {}, rightHip = {};  // of the stick body
};
inline Scene scene;

// Forgets the open scene, of either kind.
inline void clearScene()
{
    sketchActive = false;
    motifActive = false;
    scene = {};
}
