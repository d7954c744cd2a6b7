"""reference.py TOOL: has the tool write every clip, recomputes each in double precision from recipes.txt
with the same noise, and fails where one is off by more than rounding. Only the time and the running phases
are rounded to single on the way, as the program's are."""
import os
import struct
import subprocess
import sys
import tempfile

import numpy as np

RATE, TAU, sin, exp = 22050, 2 * np.pi, np.sin, np.exp
text = open(os.path.join(os.path.dirname(__file__), 'recipes.txt')).read()
parts = [[line for line in part.splitlines() if line[0] != '#'] for part in text.strip().split('\n\n')]
recipe_lines, *banks = [part for part in parts if part]
recipes = {}
for line in recipe_lines:
    head, length, formula = (part.strip() for part in line.split('|'))
    recipes[head.split()[0]] = head.split()[1:], length, formula


class Noise(np.random.MT19937):
    def white(self, count):
        return 2 * (self.random_raw(count) >> 8) / 2**24 - 1

    def length(self):  # ms of a note, 150 to 190
        while True:
            product = int(self.random_raw()) * 41
            if product % 2**32 >= 2**32 % 41:
                return 150 + (product >> 32)


def seconds(count):
    return (np.arange(count, dtype='f4') / np.float32(RATE)).astype(float)


def lowpass(feed, keep):
    v = [0.0]
    for x, k in zip(feed, keep):
        v.append(x + k * v[-1])
    return np.array(v[1:])


def rustle(t):
    return .45 * sin(2711.3 * t) + .55 * sin(1543.7 * t)


def chirp(d, f):
    y = .62 * sin(TAU * f * d) + .28 * sin(TAU * 2.02 * f * d) + .1 * sin(TAU * 3.01 * f * d)
    y *= sin(np.pi * d / .048) * exp(-42 * d) * (.7 + .3 * sin(TAU * 17 * d))
    return np.where((d >= 0) & (d < .048), y, 0)


def compute(noise, formula, t, **given):
    def white(end=9):
        w = np.zeros(len(t))
        w[t < end] = noise.white(int((t < end).sum()))
        return w

    def acc(hz):
        return np.cumsum((hz * TAU / RATE).astype('f4'), dtype='f4').astype(float)

    env = dict(globals(), **given, t=t, white=white, acc=acc, tanh=np.tanh, where=np.where, clip=np.clip,
               S=lambda f: sin(TAU * f * t), D=lambda k: exp(-k * t), R=lambda k: np.minimum(k * t, 1))
    *steps, y = formula.split(';')
    for step in steps:
        exec(step.strip(), env)
    return eval(y.strip(), env)


def pcm(y, limit=.98):
    return np.trunc(np.clip(y, -limit, limit) * 32767)


def scaled(x, gain):
    return np.clip(np.rint(x * gain), -32768, 32767)


def mix(noise, name, freqs, starts, total, length, amp):
    out = np.zeros(int(total))
    for f, start in zip(freqs, starts):
        part = out[int(start):int(start + length)]
        part += pcm(compute(noise, recipes[name][2], seconds(len(part)), f=f) * amp, 1)
    return np.clip(out, -32768, 32767)


def arpeggio(noise, freqs, ms, amp):
    starts = [ms * RATE * i // 1000 for i in range(len(freqs))]
    return mix(noise, 'note', freqs, starts, ms * len(freqs) * RATE // 1000, ms * RATE // 1000, amp)


def hits(noise, name, freqs, starts, total, last, amp):
    out = np.zeros(int(total))
    for f, start in zip(freqs, starts):
        d = seconds(total).astype('f4') - np.float32(start)
        on = (d >= 0) & (d <= np.float32(last))
        out[on] = pcm(compute(noise, recipes[name][2], d[on].astype(float), f=f) * amp + out[on] / 32767)
    return out


def loop(noise, name, amp, rms, peak):
    x = single(noise, name, amp)
    x = scaled(x, rms / np.sqrt(np.mean((x / 32767) ** 2))) if rms else x
    return scaled(x, peak * 32767 / abs(x).max())


def single(noise, name, *numbers):
    names, length, formula = recipes[name]
    given = dict(zip(names, numbers))
    count = given['ms'] * RATE // 1000 if length[:2] == 'ms' else int(length.strip('!'))
    return pcm(compute(noise, formula, seconds(count), **given) * numbers[-1], 1 if '!' in length else .98)


def number(noise, word):
    if '/' in word: return [float(x) for x in word.split('/')]
    return word if word in recipes else noise.length() if word == '?' else float(word)


def clip_of(noise, words):
    numbers = [number(noise, word) for word in words[1:]]
    form = dict(mix=mix, arpeggio=arpeggio, hits=hits, loop=loop).get(words[0])
    return form(noise, *numbers) if form else single(noise, words[0], *numbers)


if __name__ == '__main__':
    wrong = []
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run(sys.argv[1:] + [folder], check=True)
        for seed, lines in enumerate(banks, 1):
            stream = Noise()
            stream._legacy_seeding(seed)  # as the program seeds
            for line in lines:
                slot, clips = line.split(': ')
                for i, clip in enumerate(clips.split(', '), 10 if slot == 'mascotRepertoire' else 0):
                    want = clip_of(stream, clip.split())
                    file = open('%s/%s-%02d.wav' % (folder, slot, i), 'rb').read()
                    got = np.frombuffer(file, '<i2', offset=44)
                    form = 16, 1, 1, RATE, 2 * RATE, 2, 16, b'data', 2 * len(got)
                    if file[:44] != struct.pack('<4sI8sIHHIIHH4sI', b'RIFF', len(file) - 8, b'WAVEfmt ', *form):
                        wrong.append('%s %d has a wrong header' % (slot, i))
                    off = abs(got - want).max() if len(got) == len(want) else np.inf
                    # Notes that overlap are each truncated; loops are amplified afterwards.
                    if not off <= {'strokeLoops': 6, 'mascotFanfare': 2}.get(slot, 1):
                        wrong.append('%s %d is off by %s' % (slot, i, off))
    print('\n'.join(wrong))
    sys.exit(bool(wrong))
