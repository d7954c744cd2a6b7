#include "sound/bank_a.h"

void buildSoundBankA() {}
SoundClip genChime(int, int, int, float)
{
    return {};
}
