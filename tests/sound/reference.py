"""reference.py TOOL: has the tool write every clip, recomputes each in double precision from recipes.txt
with the same noise, and fails where one is off by more than rounding. Only the time and the running phases
are rounded to single on the way, as the program's are."""
import itertools
import os
import subprocess
import sys
import tempfile
import wave

import numpy as np
from numpy import abs, clip, exp, sin, tanh, where

RATE, TAU = 22050, 2 * np.pi
text = open(os.path.join(os.path.dirname(__file__), 'recipes.txt')).read()
lines = [line for line in text.splitlines() if line and line[0] != '#']
recipes = {line.split()[0]: [part.strip() for part in line.split('|')] for line in lines if '|' in line}


def single(numbers):  # rounded to it
    return np.array(numbers, 'f4').astype(float)


def lowpass(feed, keep):
    return np.array([*itertools.accumulate(zip(feed, keep), lambda v, x: x[0] + x[1] * v, initial=0)][1:])


class Noise(np.random.MT19937):
    def white(self, count):
        return 2 * (self.random_raw(count) >> 8) / 2**24 - 1

    def length(self):  # ms of a note, 150 to 190
        product = int(self.random_raw()) * 41
        return 150 + (product >> 32) if product % 2**32 >= 2**32 % 41 else self.length()

    def compute(self, name, t, **given):
        env = dict(globals(), **given, t=t, S=lambda f: sin(TAU * f * t), D=lambda k: exp(-k * t),
                   R=lambda k: np.minimum(k * t, 1),
                   acc=lambda hz: np.cumsum((hz * TAU / RATE).astype('f4'), dtype='f4').astype(float),
                   white=lambda end=9: np.append(self.white(int((t < end).sum())), 0 * t[t >= end]))
        steps, semicolon, y = recipes[name][2].rpartition(';')
        exec(steps + semicolon + 'y = ' + y.strip(), env)
        return env['y']

    def mix(self, name, freqs, starts, total, last, amp):  # in samples; a note may begin between two
        out = np.zeros(int(total))
        for f, start in zip(freqs, starts):
            n = np.arange(np.ceil(start), min(total, start + last + 1 / 8))
            out[n.astype(int)] += np.trunc(self.compute(name, single((n - start) / RATE), f=f) * amp * 32767)
        return clip(out, -32768, 32767)

    def arpeggio(self, freqs, ms, amp):
        starts = [ms * RATE * i // 1000 for i in range(len(freqs) + 1)]
        return self.mix('note', freqs, starts, starts[-1], ms * RATE // 1000 - 1, amp)

    def loop(self, name, amp, rms, peak):
        x = self.plain(name, amp)
        x = np.rint(x * rms / np.sqrt(np.mean((x / 32767) ** 2))) if rms else x
        return np.rint(x * peak * 32767 / abs(x).max())

    def plain(self, name, *numbers):
        head, length, _ = recipes[name]
        given = dict(zip(head.split()[1:], numbers))
        count = given['ms'] * RATE // 1000 if length[:2] == 'ms' else int(length.strip('!'))
        y = self.compute(name, single(np.arange(count) / RATE), **given) * numbers[-1]
        return np.trunc(clip(y, *((-1, 1) if '!' in length else (-.98, .98))) * 32767)

    def meaning(self, word):
        if '/' in word: return [float(x) for x in word.split('/')]
        return word if word in recipes else self.length() if word == '?' else float(word)


def clip_of(noise, words):
    if words[0] in recipes: words = ['plain', *words]
    return getattr(noise, words[0])(*map(noise.meaning, words[1:]))


if __name__ == '__main__':
    wrong, a, b = [], Noise(), Noise()
    a._legacy_seeding(1)  # as the program seeds
    b._legacy_seeding(2)
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run(sys.argv[1:] + [folder], check=True)
        for slot, clips in (part.split(': ') for line in lines if '|' not in line for part in line.split('; ')):
            for i, words in enumerate(clips.split(', '), 10 * (slot == 'mascotRepertoire')):  # after its copies
                want = clip_of(b if slot[:6] == 'mascot' else a, words.split())
                with wave.open('%s/%s %d.wav' % (folder, slot, i)) as file:
                    form, got = file.getparams()[:3], np.frombuffer(file.readframes(10**6), '<i2')
                off = abs(got - want).max() if len(got) == len(want) else np.inf
                # Notes that overlap are each truncated; loops are amplified afterwards.
                most = dict(strokeLoops=6, wipeClips=2, mascotFanfare=2).get(slot, 1)
                if form != (1, 2, RATE) or off > most:
                    wrong.append('%s %d is off by %s, form %s' % (slot, i, off, form))
    sys.exit('\n'.join(wrong) or 0)
