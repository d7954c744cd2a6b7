#include "marks/stamps.h"

void stampFace(POINT) {}
void stampSun(POINT) {}
void stampRainbow(POINT) {}
void stampHouse(POINT) {}
void stampBalloon(POINT) {}
void stampTree(POINT) {}
void stampCat(POINT) {}
void stampBlushFace(POINT) {}
void stampCar(POINT) {}
void stampTrain(POINT) {}
void stampRocket(POINT) {}
void stampFish(POINT) {}
void stampBigFace(POINT) {}
void stampStickFigure(POINT) {}
