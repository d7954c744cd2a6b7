#include "sound/bank_b.h"

#include "marks/random.h"
#include "sound/generators_b.h"

// The order is fixed, because the clips share one random stream.
void buildSoundBankB()
{
    static constexpr float scale[] = {523, 587, 659, 784, 880, 1047, 1175, 1319, 1568, 1760};

    for (size_t i = 0; i < mascotNotes.size(); ++i) {
        const int ms = drawInt(clipRng, 150, 190);
        mascotNotes[i] = genMascotNote(scale[i], ms, 0.16f);
    }
    mascotCall = genMascotCall(0.34f);
    for (SoundClip &clip : mascotChatter)
        clip = genMascotChatter(0.2f);
    mascotFanfare = genMascotFanfare();

    mascotRepertoire.reserve(28);  // two more than needed, harmless
    mascotRepertoire.assign(mascotNotes.begin(), mascotNotes.end());
    for (const float boost : {900.0f, 1200.0f, 1500.0f, 1800.0f})
        mascotRepertoire.push_back(genMascotKnock(boost, 0.4f));
    mascotRepertoire.push_back(genMascotDrop(420.0f, 0.14f));
    mascotRepertoire.push_back(genMascotDrop(560.0f, 0.13f));
    for (const float freq : {523.0f, 659.0f, 784.0f, 988.0f})
        mascotRepertoire.push_back(genMascotPluck(freq, 0.14f));
    mascotRepertoire.push_back(genMascotTrill(0.13f));
    mascotRepertoire.push_back(genMascotTrill(0.11f));
    mascotRepertoire.push_back(genMascotChirp(0.12f));
    mascotRepertoire.push_back(genMascotChirp(0.1f));
    mascotRepertoire.push_back(genMascotRiser(0.1f));
    mascotRepertoire.push_back(genMascotWobble(0.13f));
}
