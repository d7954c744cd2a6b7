#include "autodraw/pen_paths.h"

void newPenPath() {}
POINT freshPenStart()
{
    return {};
}
POINT farPointFrom(POINT)
{
    return {};
}
