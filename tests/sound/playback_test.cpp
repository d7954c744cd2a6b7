#include "sound/playback.h"

#include <gtest/gtest.h>

#include "autodraw/sequencer.h"
#include "sound/generators_a.h"
#include "sound/slots.h"
#include "support/desk.h"

// A draw of a stream: from 0 or more to so much, and what it shall give.
using Draw = std::array<int, 3>;

// Clips of no length, so that nothing sounds on, every gate long open, and the next draws as wanted.
struct Playing : Desk {
    Rng *stream, replay{0};  // as the stream has to go on

    explicit Playing(const std::vector<Draw> &draws = {}, Rng &drawn = soundRng)
        : Desk(oneMonitor), stream(&drawn)
    {
        for (const auto &[name, clips] : slotsOfBanks())
            std::ranges::fill(clips, SoundClip(44));
        for (DWORD *each : {&lastSoundTick, &lastKeySoundTick, &lastSpaceTick, &lastScatterTick,
                            &lastPenStepTick, &lastNoteTick})
            *each = tick - 1000;
        const auto asWanted = [&](const Draw &draw) { return drawInt(replay, draw[0], draw[1]) == draw[2]; };
        for (uint32_t seed = 0; seed == 0 || !std::ranges::all_of(draws, asWanted); ++seed) {
            drawn.seed(seed);
            replay.seed(seed);
        }
    }
    bool drewNoMore() const { return sameStream(*stream, replay); }
};

static std::function<void()> scatter(int mode, int shape)
{
    return [=] {
        autoMode = mode;
        scatterShape = shape;
        playScatterSound();
    };
}

TEST(Sounds, AreChosenByTheirDraws)
{
    const auto key = [](uint32_t code, int presses) { return [=] { playKeySound(code, presses); }; };
    const std::tuple<std::function<void()>, std::vector<Draw>, const char *> rows[] = {
        {playStartClip, {{0, 2, 2}}, "startClips 2 23"},
        {playSpaceClip, {{0, 2, 2}}, "spaceClips 2 23"},
        {startStrokeLoop, {{0, 9, 9}}, "strokeLoops 9 15"},
        {startWipeLoop, {{0, 11, 11}}, "wipeClips 11 15"},
        {[] { playPenSound(VK_LEFT); }, {{0, 99, 21}}, "penClips 2 23"},
        {scatter(1, 0), {}, "scatterClipAny 0 23"},
        {scatter(1, 1), {}, "scatterClipStars 0 23"},
        {scatter(1, 2), {}, "scatterClipHearts 0 23"},
        {scatter(1, 3), {{0, 1, 0}}, "markClipBell 0 23"},
        {scatter(3, 0), {{0, 1, 1}}, "markClipTrill 0 23"},
        {key(0, 0), {}, "keyClips 0 23"},
        {key(65, 1), {}, "keyClips 9 23"},
        {key(65, 3), {}, "keyClips 11 23"},
        {key(65, 4), {{0, 99, 49}}, "keyClips 12 23"},
        // A leap takes one more output; its upper two bits are those of an integer from 0 to 3.
        {key(65, 4), {{0, 99, 48}, {0, 3, 0}}, "keyClips 13 23"},
        {key(65, 4), {{0, 99, 0}, {0, 3, 3}}, "keyClips 2 23"}};
    for (const auto &[play, draws, clip] : rows) {
        Playing desk(draws);
        play();
        EXPECT_EQ(desk.text(), std::string("PlaySound ") + clip + "\n");
        EXPECT_TRUE(desk.drewNoMore()) << clip;
        EXPECT_EQ(lastSoundTick == desk.tick, *clip == 'm' && clip[1] == 'a') << clip;
    }
    Playing desk({{0, 2, 2}}, clipRng);
    playMascotChatter();
    EXPECT_EQ(desk.text(), "PlaySound mascotChatter 2 23\n");
    EXPECT_TRUE(desk.drewNoMore());
}

// Expects two notes of that length, with a gain in thousandths, up to the rounding of a sample.
static void expectNotes(const std::string &what, const std::vector<Draw> &draws,
                        const std::function<void()> &play, int freqA, int freqB, int ms, int gain)
{
    SCOPED_TRACE(what);
    Playing desk(draws);
    play();
    ASSERT_EQ(desk.sounds.size(), 1u);
    EXPECT_TRUE(desk.drewNoMore());
    const SoundClip wanted = genChime(freqA, freqB, ms, float(gain) / 1000.0f);
    const auto *bytes = static_cast<const uint8_t *>(desk.sounds[0].first);
    ASSERT_TRUE(std::equal(wanted.begin(), wanted.begin() + 44, bytes)) << "another length";
    int most = 0;
    for (size_t i = 44; i < wanted.size(); i += 2)
        most = std::max(most, std::abs(*reinterpret_cast<const int16_t *>(bytes + i) -
                                       *reinterpret_cast<const int16_t *>(&wanted[i])));
    EXPECT_LE(most, 1);
}

TEST(FreshSounds, HaveTheirNotes)
{
    // Key, its press, the draw of the leap; what is heard.
    const std::array<int, 7> keys[] = {{65, 5, 57, 659, 330, 181, 171},
                                       {65, 6, 65, 784, 349, 187, 180},
                                       {65, 7, 99, 784, 349, 187, 180},
                                       {255, 5, 99, 523, 262, 179, 171}};
    for (const auto &[key, press, chance, freqA, freqB, ms, gain] : keys)
        expectNotes(
            "key " + std::to_string(key) + ", press " + std::to_string(press), {{0, 99, chance}},
            [&] { playKeySound(uint32_t(key), press); }, freqA, freqB, ms, gain);
    const std::array<int, 3> penKeys[] = {{37, 392, 494},  {100, 392, 494}, {38, 659, 784},
                                          {104, 659, 784}, {39, 523, 659},  {102, 523, 659},
                                          {40, 330, 392},  {98, 330, 392},  {1, 440, 554}};
    for (const auto &[key, freqA, freqB] : penKeys)
        expectNotes(
            "pen key " + std::to_string(key), {{0, 99, 22}}, [&] { playPenSound(uint32_t(key)); }, freqA,
            freqB, 92, 120);
    // Mashed keys, presses of the same one, both draws; what is heard.
    const std::array<int, 8> mashes[] = {
        {0, 0, 1, 2, 392, 440, 104, 118},   {8, 2, 1, 2, 440, 587, 152, 150},
        {14, 1, 1, 4, 440, 784, 182, 170},  {20, 4, 1, 4, 659, 1175, 236, 170},
        {20, 5, 1, 4, 659, 1175, 240, 170}, {31, 5, 2, 3, 1568, 2349, 240, 170},
        {50, 6, 3, 4, 1319, 2349, 240, 170}};
    for (const auto &[mash, same, above, below, freqA, freqB, ms, gain] : mashes)
        expectNotes(
            "mash " + std::to_string(mash + same), {{1, 3, above}, {2, 4, below}},
            [&] { keyMashCount = mash, sameKeyCount = same, playMashVoice(); }, freqA, freqB, ms, gain);
}

TEST(FreshSounds, KeepTheBytesOfAReplacedClipWhileItMaySound)
{
    Playing desk;
    std::vector<std::pair<const uint8_t *, SoundClip>> copies;
    for (uint32_t play = 0; play < 120; ++play) {
        const unsigned before = play % 2 ? mashVoiceNext : keyVoiceNext;
        desk.moveClocks(300);
        play % 2 ? playMashVoice() : playKeySound(play, 6);
        EXPECT_EQ(play % 2 ? mashVoiceNext : keyVoiceNext, (before + 1) % (play % 2 ? 4 : 6));
        const auto *bytes = static_cast<const uint8_t *>(desk.sounds.back().first);
        copies.push_back({bytes, SoundClip(bytes, bytes + 4000)});
        if (copies.size() > 20) copies.erase(copies.begin());
        for (const auto &[place, copy] : copies)
            ASSERT_TRUE(std::equal(copy.begin(), copy.end(), place)) << play;
    }
}

TEST(PenStep, PassesItsDrawnGateAndKeepsTheDrawsInSilence)
{
    const int none = 0, mark = 1, note = 2;
    // The drawn form and gate, ms since the last click, step and note; what is heard.
    const std::array<int, 6> rows[] = {
        {1, 70, 69, 999, 999, none}, {1, 70, 70, 0, 0, mark},   {1, 120, 119, 999, 999, none},
        {1, 120, 120, 0, 0, mark},   {0, 32, 0, 31, 999, none}, {0, 32, 0, 32, 999, note},
        {0, 60, 0, 59, 999, none},   {0, 60, 0, 60, 43, none},  {0, 60, 0, 60, 44, note},
        {0, 32, 0, 20, 20, note}};  // 20 since: at tick 0, which means never
    for (const auto &[form, gate, soundAgo, stepAgo, noteAgo, heard] : rows) {
        for (const bool audible : {true, false}) {
            SCOPED_TRACE(testing::Message()
                         << "gate " << gate << " after " << soundAgo << ", " << stepAgo << ", " << noteAgo);
            Playing desk({{0, 1, form}, {form ? 70 : 32, form ? 120 : 60, gate}}, markRng);
            desk.tick = 20;  // the differences wrap around
            soundEnabled = audible;
            lastSoundTick = desk.tick - DWORD(soundAgo);
            lastPenStepTick = desk.tick - DWORD(stepAgo);
            lastNoteTick = desk.tick - DWORD(noteAgo);
            playPenStepSound();
            EXPECT_TRUE(desk.drewNoMore());
            EXPECT_EQ(desk.count("PlaySound mark"), audible && heard == mark);
            EXPECT_EQ(desk.count("PlaySound noteClips 1 "), audible && heard == note);
            EXPECT_EQ(desk.count("PlaySound"), audible && heard != none);
        }
    }
}

TEST(Gates, OpenAtTheirMillisecondEvenWhenTheTickWraps)
{
    const auto send = [](UINT message, WPARAM wParam) {
        Desk::current->send(primaryWindow(), message, wParam);
    };
    TOUCHINPUT finger = {};
    finger.dwFlags = TOUCHEVENTF_DOWN;
    const std::tuple<const char *, DWORD, DWORD *, std::function<void()>> rows[] = {
        {"tap", 30, &lastSoundTick, [=] { send(WM_LBUTTONDOWN, 0), send(WM_LBUTTONUP, 0); }},
        {"finger", 40, &lastSoundTick, [=] { Desk::current->touches = {finger}, send(WM_TOUCH, 1); }},
        {"Space", 300, &lastSpaceTick, [=] { send(WM_KEYDOWN, VK_SPACE); }},
        {"letter", 55, &lastKeySoundTick, [=] { send(WM_KEYDOWN, 'A'), send(WM_KEYUP, 'A'); }},
        {"other key", 55, &lastKeySoundTick, [=] { send(WM_KEYDOWN, VK_F5); }},
        {"command", 55, &lastKeySoundTick, [=] { send(WM_APPCOMMAND, 0); }},
        {"pen", 36, &lastPenStepTick, [=] { send(WM_KEYDOWN, VK_LEFT); }},
        {"scatter", 95, &lastScatterTick, [] { playScatterSound(); }}};
    for (const auto &[name, ms, tick, event] : rows) {
        for (const auto &[base, past] :
             {std::pair(5'000'000u, ms), {5'000'000u, ms - 1}, {~5u, ms}, {~5u, ms - 1}}) {
            SCOPED_TRACE(testing::Message() << name << " after " << past);
            Playing desk;
            desk.tick = base + past;
            *tick = base;
            event();
            EXPECT_EQ(desk.count("PlaySound"), past == ms);
            EXPECT_EQ(*tick, past == ms ? desk.tick : base);
            soundEnabled = false;
            desk.tick += 1000;
            event();
            EXPECT_EQ(desk.count("PlaySound"), past == ms) << "in silence";
        }
    }
}

TEST(Loops, CutInStopEachOtherAndStopOnce)
{
    Playing desk({{0, 11, 4}, {0, 9, 5}, {0, 9, 6}, {0, 11, 7}});
    tapClip = SoundClip(43);
    playClip(tapClip);
    startWipeLoop();
    playMascotCall();
    {
        REPLACE(PlaySoundW, [] { return FALSE; });
        startStrokeLoop();  // refused, so it is tried again with a fresh draw
    }
    startStrokeLoop();
    startStrokeLoop();
    playClip(captureClip);  // dropped
    startWipeLoop();
    stopStrokeLoop();
    stopWipeLoop();
    stopWipeLoop();
    EXPECT_EQ(desk.text(),
              "PlaySound wipeClips 4 15\nPlaySound mascotCall 0 7\nPlaySound wipeClips 4 69\n"
              "PlaySound strokeLoops 5 15\nPlaySound strokeLoops 6 15\nPlaySound captureClip 0 23\n"
              "PlaySound strokeLoops 6 69\nPlaySound wipeClips 7 15\nPlaySound wipeClips 7 69\n");
    wipeClips = {};
    strokeLoops = {};
    mascotCall.clear();
    desk.calls.clear();
    for (const auto play : {startWipeLoop, stopWipeLoop, startStrokeLoop, stopStrokeLoop, playMascotCall})
        play();
    EXPECT_EQ(desk.text(), "") << "an absent clip";
}
