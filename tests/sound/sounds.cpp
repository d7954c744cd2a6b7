// sounds FOLDER: writes every clip of both banks as a WAV file into the folder, with known noise.
#include <fstream>
#include <span>
#include <string>

#include "marks/random.h"
#include "sound/bank_a.h"
#include "sound/bank_b.h"

static std::string folder;

static void write(const char *name, std::span<const SoundClip> clips)
{
    for (size_t i = 0; i < clips.size(); ++i) {
        const std::string path = folder + "/" + name + (i < 10 ? "-0" : "-") + std::to_string(i) + ".wav";
        std::ofstream file(path, std::ios::binary);
        file.write(reinterpret_cast<const char *>(clips[i].data()), std::streamsize(clips[i].size()));
    }
}

static void write(const char *name, const SoundClip &clip)
{
    write(name, {&clip, 1});
}

int main(int argc, char **argv)
{
    if (argc != 2) return 2;
    folder = argv[1];
    soundRng.seed(1);
    clipRng.seed(2);
    buildSoundBankA();
    buildSoundBankB();
    write("tapClip", tapClip);
    write("markClipBell", markClipBell);
    write("markClipTrill", markClipTrill);
    write("actionClip", actionClip);
    write("captureClip", captureClip);
    write("wipeClips", wipeClips);
    write("penClips", penClips);
    write("scatterClipHearts", scatterClipHearts);
    write("scatterClipAny", scatterClipAny);
    write("scatterClipStars", scatterClipStars);
    write("startClips", startClips);
    write("spaceClips", spaceClips);
    write("keyClips", keyClips);
    write("noteClips", noteClips);
    write("strokeLoops", strokeLoops);
    write("mascotNotes", mascotNotes);
    write("mascotCall", mascotCall);
    write("mascotChatter", mascotChatter);
    write("mascotFanfare", mascotFanfare);
    write("mascotRepertoire", mascotRepertoire);
}
