#include "autodraw/sequencer.h"

void onTimer3() {}
void autoDrawStep() {}
bool traceOutlineStep()
{
    return {};
}
void resetPen() {}
void stopAutoDrawing() {}
