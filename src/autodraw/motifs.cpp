#include "autodraw/motifs.h"

void startMotif() {}
bool stepMotif()
{
    return {};
}
void clearMotif() {}
