"""heard.py RECORDING FROM SECONDS CLIP...: finds in that stretch of the recording (FROM in bytes) the clip
that it resembles most and prints its number, likeness and place in ms. A clip is a row of recipes.txt, after
"4*" four times end to end. "silence" as the only clip: prints the loudest sample."""
import os
import sys

import numpy as np

sys.path.insert(0, os.path.join(os.path.dirname(__file__), '..', 'sound'))
from reference import Noise, clip_of

RATE = 44100  # twice that of the clips
start, seconds, clips = int(sys.argv[2]) // 2, float(sys.argv[3]), sys.argv[4:]
sound = np.fromfile(sys.argv[1], '<i2')[start:start + int(seconds * RATE)].astype(float)


def likeness(row):
    times, _, words = row.rpartition('*')
    clip = np.tile(clip_of(Noise(1), words.split()), int(times or 1))
    spectrum = np.fft.rfft(clip)
    clip = np.fft.irfft(np.append(spectrum, np.zeros(len(clip) - len(spectrum) + 1)), 2 * len(clip))
    places = len(sound) - len(clip) + 1
    if places < 1:
        return 0.0, 0
    size = 1 << (len(sound) + len(clip)).bit_length()
    product = np.fft.irfft(np.fft.rfft(sound, size) * np.fft.rfft(clip, size).conj(), size)[:places]
    power = np.append(0, np.cumsum(sound ** 2))
    level = np.sqrt(power[len(clip):] - power[:places])
    share = product / np.maximum(level * np.sqrt((clip ** 2).sum()), 1e5)
    return share.max(), int(share.argmax()) * 1000 // RATE


if clips == ['silence']:
    print(int(abs(sound).max()))
else:
    (share, place), number = max((likeness(row), i) for i, row in enumerate(clips))
    print(f'{number} {share:.3f} {place}')
