#include "marks/bursts.h"

void burst(POINT) {}
void spaceBurst() {}
void scatterMarks(bool) {}
void popShape(POINT) {}
void bezierStroke(POINT, POINT, POINT, POINT) {}
void wobblyStroke(POINT, POINT) {}
void spiralStroke(POINT) {}
void catParade(POINT) {}
void stampRayBurst(POINT) {}
