#pragma once
// A voice is held ready and cut at every key, so that speech could never trail behind the child's hands.
// Nothing ever gives it a text.
#include "shell/base/windows_api.h"

inline ISpVoice *speechVoice = nullptr;  // null when the machine has no voice

// Makes the voice, an American English one where there is one. COM is initialised on the thread.
void createVoice();

void cutSpeech();

// Waits for the voice to fall silent and lets it go; a second call does nothing.
void releaseVoice();
