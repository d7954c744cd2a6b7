#include "sound/bank_a.h"

#include "sound/generators_a.h"

// In turn a plucked note, a blip that ignores freq, and a knock.
static SoundClip genNote(size_t index, int freq)
{
    switch (index % 3) {
    case 0: return genPluck(freq, 68, 0.16f);
    case 1: return genBoop(72, 0.15f);
    default: return genKnock(freq, 0.4f);
    }
}

// The order is fixed, because the clips share one random stream.
void buildSoundBankA()
{
    static constexpr int stars[] = {988, 1319, 1568};
    static constexpr int space[] = {262, 330, 392, 523};
    static constexpr int key6[] = {659, 784};
    static constexpr int key7[] = {440, 554, 659};
    // The last note is there twice, on purpose.
    static constexpr int noteScale[] = {294, 330, 349, 392, 440, 494, 523, 587, 659, 740, 784, 784};

    tapClip = genChime(1568, 2093, 62, 0.18f);
    markClipBell = genChime(1760, 2637, 108, 0.15f);
    markClipTrill = genTrill(95, 0.14f);
    actionClip = genChime(1318, 1760, 78, 0.14f);
    captureClip = genChime(1175, 1568, 126, 0.15f);

    wipeClips[0] = genChime(310, 460, 92, 0.11f);
    wipeClips[1] = genDecaySine(1320, 48, 0.052f);
    wipeClips[2] = genTrill(118, 0.058f);
    wipeClips[3] = genBoop(58, 0.092f);
    wipeClips[4] = genBrushNoise(0.095f);
    wipeClips[5] = genBuzz(0.095f);
    wipeClips[6] = genZap(0.062f);
    wipeClips[7] = genKnocks(0.1f);
    wipeClips[8] = genHum(0.1f);
    wipeClips[9] = genHiss(0.095f);
    wipeClips[10] = genFuzzRiser(0.07f);
    wipeClips[11] = genPings(0.055f);

    penClips[0] = genChime(784, 1175, 62, 0.14f);
    penClips[1] = genBoop(88, 0.14f);
    penClips[2] = genSwish(0.13f);
    penClips[3] = genPluck(880, 68, 0.13f);
    penClips[4] = genPluck(523, 72, 0.12f);
    penClips[5] = genChime(620, 930, 58, 0.13f);

    scatterClipHearts = genTrill(158, 0.125f);
    scatterClipAny = genWobble(0.14f);
    scatterClipStars = genArpeggio(stars, 55, 0.13f);

    for (size_t i = 0; i < startClips.size(); ++i)
        startClips[i] = genStartJingle(int(i));

    spaceClips[0] = genDrum(0.19f);
    spaceClips[1] = genDropTone(420.0f, 0.17f);
    spaceClips[2] = genArpeggio(space, 70, 0.15f);

    keyClips[0] = genChime(262, 392, 110, 0.13f);
    keyClips[1] = genChime(330, 523, 105, 0.13f);
    keyClips[2] = genPluck(523, 95, 0.14f);
    keyClips[3] = genPluck(392, 88, 0.13f);
    keyClips[4] = genTick(1400.0f, 0.5f);
    keyClips[5] = genTick(1050.0f, 0.48f);
    keyClips[6] = genArpeggio(key6, 60, 0.12f);
    keyClips[7] = genArpeggio(key7, 52, 0.11f);
    keyClips[8] = genDropTone(360.0f, 0.13f);
    keyClips[9] = genDecaySine(880, 55, 0.11f);
    keyClips[10] = genTrill(72, 0.1f);
    keyClips[11] = genChime(698, 1047, 98, 0.12f);
    keyClips[12] = genRiser(0.1f);
    keyClips[13] = genDrum(0.12f);

    for (size_t i = 0; i < noteClips.size(); ++i)
        noteClips[i] = genNote(i, noteScale[i]);

    for (size_t i = 0; i < 9; ++i)
        strokeLoops[i] = genLoopVoice(int(i), 0.16f);
    strokeLoops[9] = genBirdChirps(0.2f);
}
