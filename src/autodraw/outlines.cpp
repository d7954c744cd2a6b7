#include "autodraw/outlines.h"

void placeOutline(POINT) {}
void beginOutline(bool) {}
void appendSpaced(std::vector<POINT> &, POINT, int) {}
void appendBezier(std::vector<POINT> &, POINT, POINT, POINT, POINT) {}
void appendArc(POINT, int, double, double, int, int) {}
void outlineStar(POINT) {}
void outlineSquare(POINT) {}
void outlineDiamond(POINT) {}
void outlineHeart(POINT) {}
void outlineEllipse(POINT) {}
void outlineTriangle(POINT) {}
void outlineFlower(POINT) {}
void outlineSun(POINT) {}
void outlineFace(POINT) {}
void outlineHouse(POINT) {}
void outlineRocket(POINT) {}
void outlineStickFigure(POINT) {}
void outlineRainbow(POINT) {}
