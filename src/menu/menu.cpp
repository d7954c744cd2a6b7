#include "menu/menu.h"

void openMenu(POINT) {}
void menuClick(POINT) {}
void dropMenu() {}
void drawMenu(HDC, const RECT &) {}
