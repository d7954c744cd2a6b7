#pragma once
// Small pictures, each drawn in one go. A stamp takes a virtual-screen point, draws its sizes and colours
// once for all monitors and repaints whole windows. Callers have set canvasDirty.
#include "marks/primitives.h"

void stampFace(POINT centre);
void stampSun(POINT centre);
void stampRainbow(POINT innerLeft);  // the left end of the innermost arc
void stampHouse(POINT lowerLeft);    // of the wall
void stampBalloon(POINT neck);
void stampTree(POINT foot);  // of the trunk
void stampCat(POINT centre);
void stampBlushFace(POINT centre);
void stampCar(POINT foot);     // the middle of its foot
void stampTrain(POINT foot);   // the middle of its foot
void stampRocket(POINT foot);  // the middle of its foot
void stampFish(POINT centre);
void stampBigFace(POINT centre);
void stampStickFigure(POINT point);  // a tap and strokes, in the colours of the last press
