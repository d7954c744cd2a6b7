// sounds FOLDER: writes every clip of both banks as a WAV file into the folder, with known noise.
#include <fstream>

#include "marks/random.h"
#include "sound/slots.h"

int main(int argc, char **argv)
{
    if (argc != 2) return 2;
    soundRng.seed(1);
    clipRng.seed(2);
    buildSoundBankA();
    buildSoundBankB();
    for (const auto &[name, clips] : slotsOfBanks()) {
        for (size_t i = 0; i < clips.size(); ++i) {
            const std::string number = (i < 10 ? "-0" : "-") + std::to_string(i);
            std::ofstream file(argv[1] + ("/" + name) + number + ".wav", std::ios::binary);
            file.write(reinterpret_cast<const char *>(clips[i].data()), std::streamsize(clips[i].size()));
        }
    }
}
