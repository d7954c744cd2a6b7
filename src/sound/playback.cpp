#include "sound/playback.h"

void playClip(const SoundClip &) {}
bool passGate(DWORD &, DWORD)
{
    return {};
}
void playMarkPair() {}
void playClick(const SoundClip &) {}
void playStartClip() {}
void playSpaceClip() {}
void playKeySound(uint32_t, int) {}
void playPenSound(uint32_t) {}
void playMashVoice() {}
void playScatterSound() {}
void playPenStepSound() {}
void startStrokeLoop() {}
void stopStrokeLoop() {}
void startWipeLoop() {}
void stopWipeLoop() {}
void playMascotCall() {}
void playMascotChatter() {}
