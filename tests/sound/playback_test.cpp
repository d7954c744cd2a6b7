#include <gtest/gtest.h>

#include <functional>

#include "autodraw/sequencer.h"
#include "marks/bursts.h"
#include "marks/cursor_pen.h"
#include "marks/key_reactions.h"
#include "shell/window_proc.h"
#include "sound/bank_a.h"
#include "sound/bank_b.h"
#include "sound/generators_a.h"
#include "sound/playback.h"
#include "support/fakes.h"

using Sounds = std::vector<std::pair<const void *, DWORD>>;

// Whether one clip was handed over, to be played once. A header tells a shorter clip before its end.
static bool played(const SoundClip &clip)
{
    if (recorded.sounds.size() != 1 || recorded.sounds[0].second != 23) return false;
    return std::equal(clip.begin(), clip.end(), static_cast<const uint8_t *>(recorded.sounds[0].first));
}

// A desk with both banks built, nothing sounding and every gate long open.
struct Playing : Desk {
    explicit Playing(uint32_t seed = 7) : Desk(oneMonitor)
    {
        if (tapClip.empty()) buildSoundBankA();
        if (mascotCall.empty()) buildSoundBankB();
        seedAll(seed);
        soundRng.seed(seed);
        for (DWORD *tick : {&lastSoundTick, &lastKeySoundTick, &lastSpaceTick, &lastScatterTick,
                            &lastPenStepTick, &lastNoteTick})
            *tick = fakes.tick - 1000;
        resetKeyState(fakeWindow(0));
        strokeLoopActive = wipeLoopPlaying = tapPending = penDotVisible = false;
        strokeLoopClip = nullptr;
        autoMode = scatterShape = noteClipCounter = 0;
        recorded = {};
    }
};

static void send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
{
    windowProc(fakeWindow(0), message, wParam, lParam);
}

TEST(Playback, OneShotsYieldLoopsCutInAndAStrokeStopsTheWipe)
{
    Playing desk;
    playClip(SoundClip(43));
    playClip(tapClip);
    playMascotCall();
    startWipeLoop();
    startStrokeLoop();
    startStrokeLoop();  // one loop for one stroke
    stopStrokeLoop();
    stopStrokeLoop();
    stopWipeLoop();
    Rng replay(7);
    const void *wipe = wipeClips[size_t(drawInt(replay, 0, 11))].data();
    const void *loop = strokeLoops[size_t(drawInt(replay, 0, 9))].data();
    EXPECT_EQ(
        recorded.sounds,
        Sounds(
            {{tapClip.data(), 23}, {mascotCall.data(), 7}, {wipe, 15}, {wipe, 69}, {loop, 15}, {loop, 69}}));
}

TEST(Playback, ARefusedStrokeLoopIsTriedAgainAndAWipeStopsIt)
{
    Playing desk;
    fakes.playResult = FALSE;
    startStrokeLoop();
    EXPECT_FALSE(strokeLoopActive || strokeLoopClip);
    fakes.playResult = TRUE;
    startStrokeLoop();
    startWipeLoop();
    Rng replay(7);
    drawInt(replay, 0, 9);
    const void *loop = strokeLoops[size_t(drawInt(replay, 0, 9))].data();
    ASSERT_EQ(recorded.sounds.size(), 4u);
    EXPECT_EQ(recorded.sounds[1].first, loop);
    EXPECT_EQ(recorded.sounds[2].first, loop);
    EXPECT_EQ(recorded.sounds[2].second, 69u);
    EXPECT_TRUE(wipeLoopPlaying && !strokeLoopActive && !strokeLoopClip);
}

TEST(Playback, GatesOpenAtTheirMillisecondEvenWhenTheTickWraps)
{
    TOUCHINPUT finger = {};
    finger.dwFlags = TOUCHEVENTF_DOWN;
    const struct {
        const char *name;
        DWORD ms;
        DWORD &tick;
        std::function<void()> event;
    } rows[] = {
        {"tap", 30, lastSoundTick, [] { tapPending = true, send(WM_LBUTTONUP); }},
        {"finger", 40, lastSoundTick, [&] { fakes.touches = {finger}, send(WM_TOUCH, 1); }},
        {"Space", 300, lastSpaceTick, [] { send(WM_KEYDOWN, VK_SPACE); }},
        {"letter", 55, lastKeySoundTick, [] { send(WM_KEYDOWN, 'A'), send(WM_KEYUP, 'A'); }},
        {"other key", 55, lastKeySoundTick, [] { send(WM_KEYDOWN, VK_F5); }},
        {"command", 55, lastKeySoundTick, [] { send(WM_APPCOMMAND); }},
        {"pen", 36, lastPenStepTick, [] { send(WM_KEYDOWN, VK_LEFT); }},
        {"scatter", 95, lastScatterTick, [] { playScatterSound(); }},
    };
    for (const auto &row : rows) {
        for (const DWORD base : {5'000'000u, 0xFFFFFFF0u}) {
            for (const DWORD past : {row.ms - 1, row.ms}) {
                Playing desk;
                fakes.tick = base + past;
                row.tick = base;
                row.event();
                const bool open = past == row.ms;
                EXPECT_EQ(recorded.sounds.size(), open ? 1u : 0u) << row.name << " after " << past;
                EXPECT_EQ(row.tick, open ? fakes.tick : base) << row.name << " after " << past;
                Having silence(soundEnabled, false);
                fakes.tick += 1000;
                row.event();
                EXPECT_EQ(recorded.sounds.size(), open ? 1u : 0u) << row.name << " in silence";
            }
        }
    }
}

TEST(Playback, KeysClimbFromClipToClipThenLeapThenSing)
{
    const struct {
        uint32_t key;
        int presses;
        size_t entry;
        int chance;      // of a leap, percent
        SoundClip song;  // empty: plays keyClips
    } rows[] = {{0, 0, 0, 0, {}},
                {65, 1, 9, 0, {}},
                {65, 2, 10, 0, {}},
                {65, 3, 11, 0, {}},
                {65, 4, 12, 49, {}},
                {65, 5, 0, 57, genChime(659, 330, 181, 0.171f)},
                {65, 6, 0, 65, genChime(784, 349, 187, 0.18f)},
                {65, 7, 0, 65, genChime(784, 349, 187, 0.18f)}};
    for (const auto &row : rows) {
        for (uint32_t seed = 0; seed < 60; ++seed) {
            Playing desk(seed);
            playKeySound(row.key, row.presses);
            Rng replay(seed);
            size_t entry = row.entry;
            const bool leaps = row.chance && drawInt(replay, 0, 99) < row.chance;
            if (leaps) entry = (entry + 1 + (replay() >> 30)) % 14;
            EXPECT_TRUE(played(row.song.empty() ? keyClips[entry] : row.song))
                << row.key << " " << row.presses;
            EXPECT_EQ(soundRng, replay);
        }
    }
}

TEST(Playback, PenKeysHaveTwoNotesEachOrSwish)
{
    const int rows[][3] = {{37, 392, 494},  {100, 392, 494}, {38, 659, 784}, {104, 659, 784}, {39, 523, 659},
                           {102, 523, 659}, {40, 330, 392},  {98, 330, 392}, {1, 440, 554}};
    for (const auto [key, freqA, freqB] : rows) {
        for (uint32_t seed = 0; seed < 20; ++seed) {
            Playing desk(seed);
            playPenSound(uint32_t(key));
            Rng replay(seed);
            const bool swish = drawInt(replay, 0, 99) < 22;
            EXPECT_TRUE(played(swish ? penClips[2] : genChime(freqA, freqB, 92, 0.12f))) << key;
        }
    }
}

TEST(Playback, MashingClimbs)
{
    static constexpr int scale[] = {392,  440,  523,  587,  659,  784,  880,
                                    1047, 1175, 1319, 1568, 1760, 2093, 2349};
    const struct {
        int presses, mash, third, ms;  // third: a third of the heat above 2
        float amp;
    } rows[] = {
        {0, 0, 0, 104, 0.118f}, {2, 11, 3, 170, 0.162f}, {4, 20, 7, 236, 0.17f}, {6, 50, 11, 240, 0.17f}};
    for (const auto &row : rows) {
        for (uint32_t seed = 0; seed < 20; ++seed) {
            Playing desk(seed);
            Having presses(sameKeyCount, row.presses);
            Having mash(keyMashCount, row.mash);
            playMashVoice();
            Rng replay(seed);
            const int top = std::min(row.third + drawInt(replay, 1, 3), 13);
            const int low = std::max(top - drawInt(replay, 2, 4), 0);
            EXPECT_TRUE(played(genChime(scale[low], scale[top], row.ms, row.amp))) << row.mash;
        }
    }
}

TEST(Playback, NoByteOfAReplacedClipGoesWhileItMaySound)
{
    Playing desk;
    std::vector<std::pair<const uint8_t *, SoundClip>> copies;
    for (uint32_t play = 0; play < 120; ++play) {
        play % 2 ? playMashVoice() : playKeySound(play, 6);
        const auto bytes = static_cast<const uint8_t *>(recorded.sounds.back().first);
        copies.push_back({bytes, SoundClip(bytes, bytes + 4000)});
        if (copies.size() > 20) copies.erase(copies.begin());
        for (const auto &[place, copy] : copies)
            ASSERT_TRUE(std::equal(copy.begin(), copy.end(), place)) << play;
    }
}

TEST(Playback, ScatteredMarksSoundByTheirShape)
{
    Rng replay(7);
    const SoundClip &mark = drawInt(replay, 0, 1) == 1 ? markClipTrill : markClipBell;
    const std::tuple<int, int, const SoundClip &> rows[] = {{1, 0, scatterClipAny},
                                                            {1, 1, scatterClipStars},
                                                            {1, 2, scatterClipHearts},
                                                            {1, 3, mark},
                                                            {3, 0, mark}};
    for (const auto &[mode, shape, clip] : rows) {
        Playing desk;
        autoMode = mode;
        scatterShape = shape;
        playScatterSound();
        EXPECT_TRUE(played(clip)) << mode << " " << shape;
        EXPECT_EQ(lastSoundTick == fakes.tick, &clip == &mark);
    }
}

TEST(Playback, PenStepsDrawTheSameInSilence)
{
    for (uint32_t seed = 0; seed < 60; ++seed) {
        Rng replay(seed);
        const bool pair = drawInt(replay, 0, 1) == 1;
        const DWORD gate = DWORD(pair ? drawInt(replay, 70, 120) : drawInt(replay, 32, 60));
        const struct {
            bool audible;
            DWORD step, note;  // ms since the last, 0: never
            bool sounds;
        } rows[] = {{true, gate - 1, 99, false}, {true, gate, 99, true}, {false, gate, 99, false},
                    {true, gate, 44, true},      {true, gate, 43, pair}, {true, gate, 0, true},
                    {true, 0, 99, !pair}};
        for (const auto &row : rows) {
            Playing desk;
            Having sound(soundEnabled, row.audible);
            markRng.seed(seed);
            fakes.tick = 20;  // so soon after the wrap that a tick of 0 is no long time ago
            noteClipCounter = 11;
            lastPenStepTick = row.step ? fakes.tick - row.step : 0;
            lastSoundTick = fakes.tick - row.step;
            lastNoteTick = row.note ? fakes.tick - row.note : 0;
            playPenStepSound();
            EXPECT_EQ(markRng, replay);
            EXPECT_EQ(recorded.sounds.size(), row.sounds ? 1u : 0u)
                << seed << " " << row.step << " " << row.note;
            EXPECT_TRUE(pair || played(noteClips[0]) == row.sounds);
        }
    }
}
