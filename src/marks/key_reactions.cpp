#include "marks/key_reactions.h"

POINT keyPlacement(uint32_t)
{
    return {};
}
void keyReaction(uint32_t, int) {}
bool updateKeyMash()
{
    return {};
}
int countSameKey(uint32_t, bool)
{
    return {};
}
void flushPendingKey() {}
void noteSpiral() {}
void resetSpiral() {}
void resetKeyState(HWND) {}
