// sounds FOLDER: writes every clip of both banks as a WAV file into the folder, with known noise.
#include <fstream>

#include "marks/random.h"
#include "sound/slots.h"

int main(int, char **argv)
{
    soundRng.seed(1);
    clipRng.seed(2);
    buildSoundBankA();
    buildSoundBankB();
    for (const auto &[name, clips] : slotsOfBanks())
        for (size_t i = 0; i < clips.size(); ++i)
            std::ofstream(argv[1] + ("/" + name + " ") + std::to_string(i) + ".wav", std::ios::binary)
                .write(reinterpret_cast<const char *>(clips[i].data()), std::streamsize(clips[i].size()));
}
