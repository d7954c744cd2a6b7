#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <fstream>

#include "autodraw/sequencer.h"
#include "marks/bursts.h"
#include "marks/cursor_pen.h"
#include "marks/key_reactions.h"
#include "shell/window_proc.h"
#include "sound/playback.h"
#include "sound/slots.h"
#include "support/fakes.h"

// A desk with both banks built, nothing sounding and every gate long open.
struct Playing : Desk {
    explicit Playing(uint32_t seed = 7) : Desk(oneMonitor)
    {
        if (tapClip.empty()) buildSoundBankA();
        if (mascotCall.empty()) buildSoundBankB();
        seedAll(seed);
        for (DWORD *tick : {&lastSoundTick, &lastKeySoundTick, &lastSpaceTick, &lastScatterTick,
                            &lastPenStepTick, &lastNoteTick})
            *tick = fakes.tick - 1000;
        resetKeyState(fakeWindow(0));
        tapPending = penDotVisible = false;
        autoMode = scatterShape = noteClipCounter = 0;
        recorded = {};
    }
};

static void send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
{
    windowProc(fakeWindow(0), message, wParam, lParam);
}

// What an event plays for many seeds and how the streams go on, against choices.txt. With
// ZUBBLY_WRITE_CHOICES=FILE it is appended there.
static void tell(const std::string &name, const std::function<void()> &event)
{
    static const std::string known =
#include "sound/choices.txt"
        ;
    std::string text = "= " + name + "\n";
    for (uint32_t seed = 0; seed < 60; ++seed) {
        Playing desk(seed);
        event();
        for (const auto &[bytes, flags] : recorded.sounds)
            text += nameOf(bytes) + (flags == 23 ? "" : " flags " + std::to_string(flags)) + ", ";
        text += std::to_string(soundRng() % 100) + " " + std::to_string(markRng() % 100) + "\n";
    }
    EXPECT_NE(known.find(text), std::string::npos) << text;
    if (const char *file = std::getenv("ZUBBLY_WRITE_CHOICES"))
        std::ofstream(file, std::ios::binary | std::ios::app) << text;
}

TEST(Playback, ChoosesWhatItAlwaysDid)
{
    for (const int presses : {0, 1, 2, 3, 4, 5, 6, 7})
        tell("key pressed " + std::to_string(presses), [=] { playKeySound(65, presses); });
    for (const uint32_t key : {37u, 38u, 39u, 40u, 98u, 100u, 102u, 104u, 1u})
        tell("pen key " + std::to_string(key), [=] { playPenSound(key); });
    for (const int mash : {0, 11, 20, 30, 50}) {
        tell("mash " + std::to_string(mash), [=] {
            keyMashCount = mash;
            sameKeyCount = mash / 8;
            playMashVoice();
        });
    }
    for (const int form : {10, 11, 12, 13, 30}) {
        tell("scattered " + std::to_string(form), [=] {
            autoMode = form / 10;
            scatterShape = form % 10;
            playScatterSound();
        });
    }
    for (const DWORD since : {0u, 32u, 43u, 44u, 60u, 70u, 95u, 120u}) {
        for (const bool audible : {true, false}) {
            tell("pen step after " + std::to_string(since) + (audible ? "" : " in silence"), [=] {
                const Having sound(soundEnabled, audible);
                lastPenStepTick = lastSoundTick = fakes.tick - since;
                lastNoteTick = fakes.tick - std::min<DWORD>(since, 44);
                playPenStepSound();
            });
        }
    }
    tell("start", playStartClip);
    tell("Space", playSpaceClip);
    tell("mascot", playMascotChatter);
    tell("loops", [] {  // they cut in, stop each other, and stop once
        playClip(SoundClip(43));
        playClip(tapClip);
        playMascotCall();
        startWipeLoop();
        fakes.playResult = FALSE;
        startStrokeLoop();  // refused, so it is tried again
        fakes.playResult = TRUE;
        startStrokeLoop();
        startStrokeLoop();
        startWipeLoop();
        stopStrokeLoop();
        stopWipeLoop();
        stopWipeLoop();
    });
}

TEST(Playback, GatesOpenAtTheirMillisecondEvenWhenTheTickWraps)
{
    TOUCHINPUT finger = {};
    finger.dwFlags = TOUCHEVENTF_DOWN;
    const std::tuple<const char *, DWORD, DWORD *, std::function<void()>> rows[] = {
        {"tap", 30, &lastSoundTick, [] { tapPending = true, send(WM_LBUTTONUP); }},
        {"finger", 40, &lastSoundTick, [&] { fakes.touches = {finger}, send(WM_TOUCH, 1); }},
        {"Space", 300, &lastSpaceTick, [] { send(WM_KEYDOWN, VK_SPACE); }},
        {"letter", 55, &lastKeySoundTick, [] { send(WM_KEYDOWN, 'A'), send(WM_KEYUP, 'A'); }},
        {"other key", 55, &lastKeySoundTick, [] { send(WM_KEYDOWN, VK_F5); }},
        {"command", 55, &lastKeySoundTick, [] { send(WM_APPCOMMAND); }},
        {"pen", 36, &lastPenStepTick, [] { send(WM_KEYDOWN, VK_LEFT); }},
        {"scatter", 95, &lastScatterTick, [] { playScatterSound(); }},
    };
    for (const auto &[name, ms, tick, event] : rows) {
        for (const DWORD base : {5'000'000u, 0xFFFFFFF0u}) {
            for (const DWORD past : {ms - 1, ms}) {
                Playing desk;
                fakes.tick = base + past;
                *tick = base;
                event();
                const size_t sounds = past == ms ? 1 : 0;
                EXPECT_EQ(recorded.sounds.size(), sounds) << name << " after " << past;
                EXPECT_EQ(*tick, base + past * DWORD(sounds)) << name << " after " << past;
                const Having silence(soundEnabled, false);
                fakes.tick += 1000;
                event();
                EXPECT_EQ(recorded.sounds.size(), sounds) << name << " in silence";
            }
        }
    }
}

TEST(Playback, NeverHandsAnAbsentLoopToThePlayer)
{
    Playing desk;
    const Having wipes(wipeClips, decltype(wipeClips)());
    const Having strokes(strokeLoops, decltype(strokeLoops)());
    startWipeLoop();
    stopWipeLoop();
    startStrokeLoop();
    stopStrokeLoop();
    EXPECT_TRUE(recorded.sounds.empty());
}

TEST(Playback, NoByteOfAReplacedClipGoesWhileItMaySound)
{
    Playing desk;
    std::vector<std::pair<const uint8_t *, SoundClip>> copies;
    for (uint32_t play = 0; play < 120; ++play) {
        unsigned &next = play % 2 ? mashVoiceNext : keyVoiceNext;
        const unsigned before = next;
        play % 2 ? playMashVoice() : playKeySound(play, 6);
        EXPECT_EQ(next, (before + 1) % (play % 2 ? 4 : 6));
        const auto bytes = static_cast<const uint8_t *>(recorded.sounds.back().first);
        copies.push_back({bytes, SoundClip(bytes, bytes + 4000)});
        if (copies.size() > 20) copies.erase(copies.begin());
        for (const auto &[place, copy] : copies)
            ASSERT_TRUE(std::equal(copy.begin(), copy.end(), place)) << play;
    }
}
