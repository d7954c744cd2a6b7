#include "saving/auto_save.h"

void autoSaveTick() {}
HBITMAP captureCanvases()
{
    return {};
}
int findPngEncoder(CLSID &)
{
    return {};
}
