#include "sound/generators_a.h"

#include "sound/synthesis.h"

SoundClip genDecaySine(int freq, int ms, float amp)
{
    return buildWaveClip(
        render(sampleCount(ms), 1.0f, [&](float t) { return sine(float(freq), t) * decay(5.0f, t) * amp; }));
}

// The decay is slow, so the clip ends abruptly at a high level, on purpose.
SoundClip genChime(int freqA, int freqB, int ms, float amp)
{
    return buildWaveClip(render(sampleCount(ms), 0.98f, [&](float t) {
        const float a = float(freqA) * (1.0f + 0.004f * sine(5.3f, t));
        const float b = float(freqB) * (1.0f + 0.003f * sine(3.1f, t));
        const float chord = sine(a, t) + 0.12f * std::sin(tau * 2.5f * a * t) + 0.32f * sine(b, t);
        return chord * decay(3.2f, t) * rise(45.0f, t) * amp;
    }));
}

SoundClip genTrill(int ms, float amp)
{
    return buildWaveClip(render(sampleCount(ms), 0.98f, [&](float t) {
        const float low = 0.4f * sine(3120.0f + 380.0f * sine(21.0f, t), t);
        const float high = 0.26f * sine(4860.0f + 120.0f * sine(33.0f, t), t);
        const float body = low + high + 0.17f * sine(6580.0f, t);
        const float flutter = 0.55f + 0.45f * std::sin(tau * 41.0f * t + 0.9f);
        const float shiver = 0.48f + 0.52f * sine(58.0f, t);
        return body * flutter * shiver * decay(7.2f, t) * rise(130.0f, t) * amp;
    }));
}

// A falling blip with its lower octave and a slight tremolo.
SoundClip genBoop(int ms, float amp)
{
    Oscillator blip;
    return buildWaveClip(render(sampleCount(ms), 0.98f, [&](float t) {
        const float p = blip.step(820.0f - 560.0f * t);
        const float body = std::sin(p) + 0.22f * std::sin(p / 2.0f);
        const float tremolo = 1.0f + 0.055f * sine(31.0f, t);
        return 0.52f * body * decay(5.5f, t) * rise(95.0f, t) * tremolo * amp;
    }));
}

// A hollow knock; the stick is a few milliseconds of noise.
SoundClip genKnock(int boost, float amp)
{
    Oscillator wood;
    return buildWaveClip(render(926, 1.0f, [&](float t) {
        const float p = wood.step(110.0f + float(boost) * decay(34.0f, t));
        float stick = 0.0f;
        if (t < 0.0035f) stick = 0.75f * whiteNoise(soundRng) * decay(950.0f, t);
        return ((0.72f * std::sin(p) + 0.2f * std::sin(2.0f * p)) * decay(52.0f, t) + stick) * amp;
    }));
}

SoundClip genTick(float boost, float amp)
{
    Oscillator wood;
    return buildWaveClip(render(1984, 1.0f, [&](float t) {
        const float p = wood.step(120.0f + boost * decay(30.0f, t));
        float stick = 0.0f;
        if (t < 0.004f) stick = 0.7f * whiteNoise(soundRng) * decay(900.0f, t);
        return ((0.7f * std::sin(p) + 0.18f * std::sin(2.0f * p)) * decay(42.0f, t) + stick) * amp;
    }));
}

// A string that starts sharp; higher notes are shorter.
SoundClip genPluck(int freq, int ms, float amp)
{
    const float damping = 8.5f + float(freq) / 400.0f;
    return buildWaveClip(render(sampleCount(ms), 0.98f, [&](float t) {
        const float w = tau * float(freq) * (1.0f + 0.08f * decay(18.0f, t));
        return (std::sin(w * t) + 0.25f * std::sin(2.0f * w * t)) * decay(damping, t) * amp;
    }));
}

SoundClip genDropTone(float boost, float amp)
{
    Oscillator drop;
    return buildWaveClip(render(3969, 0.98f, [&](float t) {
        const float p = drop.step(90.0f + boost * decay(4.2f, t));
        return std::sin(p) * decay(2.8f, t) * rise(80.0f, t) * amp;
    }));
}

SoundClip genDrum(float amp)
{
    return buildWaveClip(render(4851, 0.98f, [&](float t) {
        const float skin = 0.75f * sine(45.0f + 110.0f * decay(6.0f, t), t);
        const float stick = 0.35f * whiteNoise(soundRng) * decay(40.0f, t);
        return (skin + stick) * decay(7.5f, t) * amp;
    }));
}

SoundClip genWobble(float amp)
{
    Oscillator wobble;
    return buildWaveClip(render(3528, 0.98f, [&](float t) {
        const float p = wobble.step((1.0f + 0.35f * sine(11.0f, t)) * (520.0f + 180.0f * sine(6.5f, t)));
        return std::sin(p) * decay(3.5f, t) * rise(60.0f, t) * amp;
    }));
}

SoundClip genSwish(float amp)
{
    Oscillator whistle;
    return buildWaveClip(render(1058, 0.98f, [&](float t) {
        const float p = whistle.step(1400.0f - 900.0f * t);
        const float air = 0.55f * whiteNoise(soundRng);
        return (0.25f * std::sin(p) + air) * decay(14.0f, t) * rise(120.0f, t) * amp;
    }));
}

SoundClip genRiser(float amp)
{
    Oscillator riser;
    return buildWaveClip(render(2646, 0.98f, [&](float t) {
        const float p = riser.step(280.0f + 2200.0f * t);
        return std::sin(p) * decay(4.0f, t) * rise(50.0f, t) * amp;
    }));
}

// Noise through a one-pole filter that closes with time.
SoundClip genBrushNoise(float amp)
{
    float v = 0.0f;
    return buildWaveClip(render(3087, 0.98f, [&](float t) {
        const float c = 0.22f + 0.55f * (1.0f - t / 0.14f);
        v = whiteNoise(soundRng) * (0.18f + 0.35f * c) + (0.82f - 0.25f * c) * v;
        return v * decay(9.0f, t) * rise(28.0f, t) * amp;
    }));
}

SoundClip genBuzz(float amp)
{
    Oscillator buzz;
    return buildWaveClip(render(3528, 0.98f, [&](float t) {
        const float p = buzz.step((95.0f + 55.0f * sine(3.2f, t)) * (1.0f + 0.08f * sine(14.0f, t)));
        const float squared = std::clamp(std::sin(p) * 1.35f, -1.0f, 1.0f);
        const float fade = 1.0f - t / 0.165f;
        return (0.72f * squared + 0.18f * std::sin(2.0f * p)) * fade * rise(22.0f, t) * amp;
    }));
}

SoundClip genZap(float amp)
{
    Oscillator low, high;
    return buildWaveClip(render(3307, 0.98f, [&](float t) {
        const float p = low.step(2400.0f - 1500.0f * t);
        const float q = high.step(3600.0f - 2100.0f * t);
        const float crackle = 0.55f + 0.45f * sine(47.0f, t);
        const float body = 0.42f * std::sin(p) + 0.28f * std::sin(q);
        return body * crackle * decay(7.5f, t) * rise(40.0f, t) * amp;
    }));
}

SoundClip genHum(float amp)
{
    Oscillator hum;
    return buildWaveClip(render(3969, 0.98f, [&](float t) {
        const float p = hum.step(180.0f + 70.0f * sine(2.4f, t));
        const float fall = std::clamp((0.18f - t) * 14.0f, 0.0f, 1.0f);
        return (0.78f * std::sin(p) + 0.22f * std::sin(p / 2.0f)) * fall * rise(12.0f, t) * amp;
    }));
}

// A low-pass mixed with its residue.
SoundClip genHiss(float amp)
{
    float v = 0.0f;
    return buildWaveClip(render(2425, 0.98f, [&](float t) {
        const float w = whiteNoise(soundRng);
        v = 0.86f * v + 0.14f * w;
        return (0.55f * v + 0.18f * (w - v)) * decay(11.0f, t) * rise(55.0f, t) * amp;
    }));
}

SoundClip genFuzzRiser(float amp)
{
    Oscillator riser;
    return buildWaveClip(render(2756, 0.98f, [&](float t) {
        const float p = riser.step(420.0f + 980.0f * t + 40.0f * sine(28.0f, t));
        const float squared = std::clamp(std::sin(p) * 1.6f, -1.0f, 1.0f);
        return squared * decay(8.0f, t) * rise(70.0f, t) * amp;
    }));
}

SoundClip genArpeggio(std::span<const int> notes, int noteMs, float amp)
{
    const int count = int(notes.size());
    const size_t noteLength = sampleCount(noteMs);
    SampleBuffer samples(size_t(noteMs * count * sampleRate / 1000));
    for (int i = 0; i < count; ++i) {
        const size_t start = size_t(noteMs * sampleRate * i / 1000);
        const float w = float(notes[size_t(i)]) * tau;
        for (size_t m = 0; m < noteLength && start + m < samples.size(); ++m) {
            const float d = float(m) / sampleRate;
            const float e = decay(9.0f, d) * rise(120.0f, d);
            const float y = std::sin(w * d) * e * amp + 0.3f * std::sin(2.0f * w * d) * e * amp;
            mixSaturated(samples[start + m], y);
        }
    }
    return buildWaveClip(samples);
}

SoundClip genStartJingle(int index)
{
    static constexpr int jingle0[] = {523, 659, 784, 1047};
    static constexpr int jingle1[] = {392, 494, 587, 784, 988};
    static constexpr int jingle2[] = {440, 554, 659, 880};
    switch (index % 3) {
    case 0: return genArpeggio(jingle0, 78, 0.13f);
    case 1: return genArpeggio(jingle1, 72, 0.13f);
    default: return genArpeggio(jingle2, 80, 0.14f);
    }
}

SoundClip genKnocks(float amp)
{
    struct Hit {
        float start, boost;
    };
    static constexpr Hit hits[] = {{0.0f, 980.0f}, {0.045f, 1240.0f}, {0.095f, 860.0f}, {0.14f, 1100.0f}};
    SampleBuffer samples(3748);
    for (const Hit &hit : hits) {
        Oscillator wood;
        for (size_t n = 0; n < samples.size(); ++n) {
            const float d = float(n) / sampleRate - hit.start;
            if (d < 0.0f || d > 0.055f) continue;
            const float p = wood.step(90.0f + hit.boost * decay(28.0f, d));
            float stick = 0.0f;
            if (d < 0.003f) stick = 0.35f * whiteNoise(soundRng) * decay(800.0f, d);
            mixLimited(samples[n], (0.7f * std::sin(p) + stick) * decay(48.0f, d) * amp);
        }
    }
    return buildWaveClip(samples);
}

SoundClip genPings(float amp)
{
    struct Hit {
        float start, freq;
    };
    static constexpr Hit hits[] = {{0.0f, 2093.0f}, {0.055f, 2637.0f}, {0.105f, 3136.0f}};
    SampleBuffer samples(3417);
    for (const Hit &hit : hits) {
        for (size_t n = 0; n < samples.size(); ++n) {
            const float d = float(n) / sampleRate - hit.start;
            if (d < 0.0f || d > 0.08f) continue;
            const float body = sine(hit.freq, d) + 0.22f * std::sin(2.0f * tau * hit.freq * d);
            mixLimited(samples[n], body * decay(22.0f, d) * amp);
        }
    }
    return buildWaveClip(samples);
}

static constexpr size_t loopSamples = 5512;

// A rustle of two sines; their rates are radians per second, not Hz.
static float rustle(float t)
{
    return 0.45f * std::sin(2711.3f * t) + 0.55f * std::sin(1543.7f * t);
}

static SampleBuffer loopTexture(int variant, float amp)
{
    Oscillator low, high;
    const auto texture = [](auto recipe) { return render(loopSamples, 0.98f, recipe); };
    switch (variant) {
    case 0: return texture([&](float t) { return (0.72f + 0.28f * sine(2.0f, t)) * sine(262.0f, t) * amp; });
    case 1:
        return texture([&](float t) {
            const float p = low.step(395.0f + 110.0f * sine(4.0f, t));
            return (0.62f * rustle(t) + 0.22f * std::sin(p)) * amp;
        });
    case 2:
        return texture([&](float t) {
            const float m = 0.55f + 0.45f * sine(4.0f, t);
            return sine(280.0f, t) * m * m * amp;
        });
    case 3:
        return texture(
            [&](float t) { return std::pow(std::abs(sine(4.0f, t)), 4.2f) * sine(520.0f, t) * amp; });
    case 4:
        return texture([&](float t) {
            const float e = 372.0f + 88.0f * sine(4.0f, t);
            const float p = low.step(e);
            const float q = high.step(1.09f * e);
            return std::tanh((0.7f * std::sin(p) + 0.3f * std::sin(q)) * 2.1f) * amp * 0.82f;
        });
    case 5:  // jumps between two notes at any phase
        return texture([&](float t) { return sine(sine(4.0f, t) < 0.0f ? 523.0f : 392.0f, t) * amp * 0.9f; });
    case 6:
        return texture([&](float t) {
            const float body = 0.78f * rustle(t + 0.13f) + 0.08f * sine(210.0f, t);
            return body * (0.18f + 0.12f * sine(13.0f, t)) * amp;
        });
    case 7:
        return texture(
            [&](float t) { return std::sin(low.step(188.0f + 38.0f * sine(2.0f, t))) * amp * 0.95f; });
    default:  // eight pulses a second
        return texture([&](float t) {
            const float pulse = std::exp(-11.0f * std::fmod(8.0f * t, 1.0f));
            return sine(392.0f, t) * (pulse > 0.18f ? pulse : 0.0f) * amp;
        });
    }
}

SoundClip genLoopVoice(int variant, float amp)
{
    struct Level {
        float rms, peak;  // rms 0: only the peak is normalised
    };
    static constexpr Level levels[] = {
        {0.105f, 0.2f}, {0.098f, 0.19f}, {0.105f, 0.2f}, {0.0f, 0.21f}, {0.105f, 0.2f},
        {0.0f, 0.21f},  {0.098f, 0.19f}, {0.105f, 0.2f}, {0.0f, 0.21f},
    };
    SampleBuffer samples = loopTexture(variant, amp);
    const Level &level = levels[variant];
    if (level.rms > 0.0f) normaliseRms(samples, level.rms);
    normalisePeak(samples, level.peak);
    return buildWaveClip(samples);
}

SoundClip genBirdChirps(float amp)
{
    struct Chirp {
        float start, freq, gain;
    };
    static constexpr Chirp chirps[] = {
        {0.0f, 1960.0f, 1.0f},   {0.05f, 2480.0f, 0.82f}, {0.1f, 2140.0f, 0.9f},
        {0.15f, 2860.0f, 0.74f}, {0.2f, 2320.0f, 0.86f},
    };
    SampleBuffer samples = render(loopSamples, 0.98f, [&](float t) {
        float sum = 0.0f;
        for (const Chirp &chirp : chirps) {
            const float d = t - chirp.start;
            if (d < 0.0f || d >= 0.048f) continue;
            const float f = chirp.freq;
            const float body = 0.62f * sine(f, d) + 0.28f * sine(2.02f * f, d) + 0.1f * sine(3.01f * f, d);
            const float swell = std::sin(pi * d / 0.048f);
            const float warble = 0.7f + 0.3f * sine(17.0f, d);
            sum += body * swell * decay(42.0f, d) * warble * chirp.gain;
        }
        return sum * amp;
    });
    normalisePeak(samples, 0.24f);
    return buildWaveClip(samples);
}
