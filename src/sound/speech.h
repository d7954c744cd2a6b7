#pragma once
// A speech voice that is cut at every key. It is never given a text.
#include "shell/base/windows_api.h"

inline ISpVoice *speechVoice = nullptr;  // null if the PC has no voice

// Creates the voice, an American English one if installed. COM must be initialised on this thread.
void createVoice();

void cutSpeech();

// Waits for silence and releases the voice; a second call does nothing.
void releaseVoice();
