#include "mascot/show.h"

void startShow(float) {}
void stopShow(bool) {}
void showTick() {}
void drawShow(HDC, int, int, int, int, int, int) {}
