#include "sound/bank_b.h"

void buildSoundBankB() {}
