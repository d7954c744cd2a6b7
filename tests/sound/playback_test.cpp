#include <gtest/gtest.h>

#include "sound/playback.h"
#include "sound/slots.h"
#include "sound/speech.h"
#include "support/draws.h"
#include "support/objects.h"

// Clips of no length, so that nothing sounds on.
struct BriefSounds : Desk {
    BriefSounds() : Desk(oneMonitor)
    {
        for (const auto &[name, clips] : slotsOfBanks())
            std::ranges::fill(clips, SoundClip(44));
    }
};

TEST(Sounds, AreOffWithoutChangingADraw)
{
    BriefSounds desk;
    Draws draws(0.0);
    soundEnabled = false;
    for (const auto play : {playMascotCall, playMascotChatter, startStrokeLoop, startWipeLoop,
                            playScatterSound, playPenStepSound})
        play();
    EXPECT_EQ(desk.count("PlaySound"), 0);
    EXPECT_EQ(draws.take(), "0..1 32..60");
}

TEST(PenStep, PassesItsGatesEvenWhenTheTickWraps)
{
    // The drawn form and gate, ms since the last mark, step and note, and whether one of both is heard.
    const std::array<int, 6> rows[] = {{1, 70, 69, 99, 99, 0}, {1, 70, 70, 0, 0, 1},  {0, 32, 0, 31, 99, 0},
                                       {0, 32, 0, 32, 99, 1},  {0, 60, 0, 60, 43, 0}, {0, 60, 0, 60, 44, 1},
                                       {0, 32, 0, 20, 20, 1}};  // tick 0 means never
    for (const auto &[form, gate, mark, step, note, heard] : rows) {
        BriefSounds desk;
        desk.tick = 20;
        lastSoundTick = desk.tick - DWORD(mark);
        lastPenStepTick = desk.tick - DWORD(step);
        lastNoteTick = desk.tick - DWORD(note);
        const Draws draws(0.5, {form, gate});
        playPenStepSound();
        EXPECT_EQ(desk.count(form ? "PlaySound mark" : "PlaySound noteClips 1 "), heard)
            << mark << note << gate;
    }
}

TEST(Sounds, KeepTheBytesOfAReplacedClipWhileItMaySound)
{
    BriefSounds desk;
    std::vector<std::pair<const uint8_t *, SoundClip>> copies;
    for (uint32_t play = 0; play < 60; ++play) {
        desk.wait(300);
        play % 2 ? playMashVoice() : playKeySound(play, 6);
        const auto *bytes = static_cast<const uint8_t *>(desk.sounds.back().first);
        copies.emplace_back(bytes, SoundClip(bytes, bytes + 4000));
        if (copies.size() > 20) copies.erase(copies.begin());
        for (const auto &[place, copy] : copies)
            ASSERT_TRUE(std::equal(copy.begin(), copy.end(), place)) << play;
    }
}

TEST(Loops, StopEachOtherAndAreTriedAgainOnlyAfterARefusal)
{
    BriefSounds desk;
    for (const char *failing : {"PlaySoundW", "LoadIconW", "LoadIconW"}) {
        const Failing refusing(failing);
        startStrokeLoop();
    }
    EXPECT_EQ(desk.count("PlaySound strokeLoops"), 1);
    startWipeLoop();
    startStrokeLoop();
    EXPECT_EQ(desk.count("PlaySound strokeLoops"), 3);  // stopped, and started again
    EXPECT_EQ(desk.count("PlaySound wipeClips"), 2);    // started and stopped
}

TEST(Speech, IsOnlySilencedAndNeedsNoEnglishVoice)
{
    Desk desk({});
    static Object category = {objectMethods, "category"};
    static Object voice = {objectMethods, "voice", [](Object &, int, const Call &call) {
                               const bool words = call.get<const wchar_t *>(1);
                               Desk::current->calls.back().text +=
                                   (words ? " words " : " silence ") + std::to_string(call.get<DWORD>(2));
                               return S_OK;
                           }};
    desk.makeObject = [](REFCLSID id, void **out) {
        return give(id == CLSID_SpVoice ? voice : category, out);
    };
    for (const auto call : {createVoice, cutSpeech, releaseVoice, releaseVoice})
        call();
    EXPECT_EQ(desk.text({"voice"}), "voice 20 silence 3\nvoice 20 silence 2\n");
    EXPECT_EQ(Object::held, 0);
}
