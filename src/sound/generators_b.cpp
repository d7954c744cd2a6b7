#include "sound/generators_b.h"

#include "sound/synthesis.h"

// A soft bell with stretched upper partials.
SoundClip genMascotNote(float freq, int ms, float amp)
{
    return buildWaveClip(render(sampleCount(ms), 0.98f, [&](float t) {
        const float w = tau * freq * (1.0f + 0.006f * sine(6.0f, t));
        const float low = 0.72f * std::sin(w * t) + 0.3f * std::sin(2.0f * w * t);
        const float body = low + 0.12f * std::sin(3.01f * w * t) + 0.06f * std::sin(4.02f * w * t);
        return body * decay(6.5f, t) * rise(240.0f, t) * amp;
    }));
}

// The long squawk. Its phase is computed from the time, so the pitch falls more than f does; the metallic
// overtones do not glide.
SoundClip genMascotCall(float amp)
{
    return buildWaveClip(render(10143, 0.98f, [&](float t) {
        const float f = 58.0f + 150.0f * decay(3.4f, t);
        const float e = decay(4.6f, t) * rise(90.0f, t);
        const float low = 0.9f * sine(f, t) * e + 0.6f * sine(0.5f * f, t) * e;
        const float high = (0.18f * sine(720.0f, t) + 0.12f * sine(1080.0f, t)) * decay(8.0f, t);
        return 0.85f * std::tanh((low + high) * amp * 1.4f);
    }));
}

SoundClip genMascotChatter(float amp)
{
    return buildWaveClip(render(5292, 0.98f, [&](float t) {
        const float e = decay(9.5f, t);
        const float body = 0.5f * sine(2600.0f + 500.0f * sine(19.0f, t), t) + 0.3f * sine(3700.0f, t);
        const float breath = 0.04f * whiteNoise(clipRng) * e * amp;
        return body * (0.5f + 0.5f * sine(47.0f, t)) * e * amp + breath;
    }));
}

// Five rising notes that overlap; the end cuts off the last two.
SoundClip genMascotFanfare()
{
    struct Note {
        float freq;
        size_t start;
    };
    static constexpr Note notes[] = {{523, 0}, {659, 2094}, {784, 4189}, {988, 6284}, {1319, 8379}};
    SampleBuffer samples(10473);
    for (const Note &note : notes) {
        for (size_t m = 0; m < 5622 && note.start + m < samples.size(); ++m) {
            const float d = float(m) / sampleRate;
            const float body = 0.7f * sine(note.freq, d) + 0.28f * std::sin(2.0f * tau * note.freq * d);
            mixSaturated(samples[note.start + m], body * decay(6.0f, d) * rise(200.0f, d) * 0.16f);
        }
    }
    return buildWaveClip(samples);
}

SoundClip genMascotKnock(float boost, float amp)
{
    Oscillator wood;
    return buildWaveClip(render(1764, 0.98f, [&](float t) {
        const float p = wood.step(120.0f + boost * decay(30.0f, t));
        float stick = 0.0f;
        if (t < 0.004f) stick = 0.6f * whiteNoise(clipRng) * decay(900.0f, t);
        return ((0.72f * std::sin(p) + 0.18f * std::sin(2.0f * p)) * decay(46.0f, t) + stick) * amp;
    }));
}

SoundClip genMascotDrop(float boost, float amp)
{
    Oscillator drop;
    return buildWaveClip(render(4410, 0.98f, [&](float t) {
        const float p = drop.step(90.0f + boost * decay(3.8f, t));
        return (std::sin(p) + 0.28f * std::sin(2.0f * p)) * decay(3.0f, t) * rise(70.0f, t) * amp;
    }));
}

SoundClip genMascotPluck(float freq, float amp)
{
    const float damping = 9.0f + freq / 400.0f;
    return buildWaveClip(render(2094, 0.98f, [&](float t) {
        const float w = tau * freq * (1.0f + 0.08f * decay(18.0f, t));
        const float low = 0.7f * std::sin(w * t) + 0.35f * std::sin(3.0f * w * t);
        return (low + 0.12f * std::sin(6.2f * w * t)) * decay(damping, t) * amp;
    }));
}

SoundClip genMascotTrill(float amp)
{
    return buildWaveClip(render(3307, 0.98f, [&](float t) {
        const float body = 0.4f * sine(3000.0f + 360.0f * sine(21.0f, t), t) + 0.26f * sine(4700.0f, t);
        return body * (0.48f + 0.52f * sine(58.0f, t)) * decay(9.0f, t) * rise(140.0f, t) * amp;
    }));
}

// Rises for 35 ms and falls for 55.
SoundClip genMascotChirp(float amp)
{
    Oscillator chirp;
    return buildWaveClip(render(1984, 0.98f, [&](float t) {
        const float r = t < 0.035f ? t / 0.035f : std::max(1.0f - (t - 0.035f) / 0.055f, 0.0f);
        const float p = chirp.step(1800.0f + 900.0f * r);
        const float d = t < 0.07f ? 1.0f : std::exp(-(t - 0.07f) * 30.0f);
        return (0.7f * std::sin(p) + 0.18f * std::sin(2.0f * p)) * rise(200.0f, t) * d * amp;
    }));
}

SoundClip genMascotRiser(float amp)
{
    Oscillator riser;
    return buildWaveClip(render(2866, 0.98f, [&](float t) {
        const float p = riser.step(500.0f + 2600.0f * t);
        return (0.85f * std::sin(p) + 0.08f * std::sin(2.0f * p)) * decay(4.5f, t) * rise(45.0f, t) * amp;
    }));
}

SoundClip genMascotWobble(float amp)
{
    Oscillator wobble;
    return buildWaveClip(render(3528, 0.98f, [&](float t) {
        const float p = wobble.step((1.0f + 0.3f * sine(13.0f, t)) * (520.0f + 160.0f * sine(7.0f, t)));
        return std::sin(p) * decay(3.6f, t) * rise(55.0f, t) * amp;
    }));
}
