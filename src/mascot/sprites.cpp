#include "mascot/sprites.h"

void buildSprites() {}
void freeSprites() {}
