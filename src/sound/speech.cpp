#include "sound/speech.h"

void createVoice() {}
void cutSpeech() {}
void releaseVoice() {}
