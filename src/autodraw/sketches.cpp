#include "autodraw/sketches.h"

void startSketch() {}
bool stepSketch()
{
    return {};
}
void clearSketch() {}
