"""heard.py RECORDING FROM TO CLIPS [TIMES]: prints which of the clips the recording resembles most from byte FROM to TO.
CLIPS is a slot of recipes.txt or a row as they are there, TIMES end to end. Fails below 0.7: undisturbed the likeness
is above 0.95, that of unlike clips below 0.65. "silence" has to be nothing but zeros."""
import os
import sys

import numpy as np

sys.path.insert(0, os.path.join(os.path.dirname(__file__), '..', 'sound'))
from reference import Noise, clip_of, lines

recording, start, end, clips = sys.argv[1], int(sys.argv[2]), int(sys.argv[3]), sys.argv[4]
times = int(sys.argv[5]) if len(sys.argv) > 5 else 1
sound = np.fromfile(recording, '<i2', (end - start) // 2, offset=start // 2 * 2).astype(float)
if clips == 'silence':
    sys.exit(f'the loudest sample is {abs(sound).max()}' if sound.any() else 0)
sound = sound[::2]  # the card has twice the rate of the clips


def likeness(row):
    clip = np.tile(clip_of(Noise(1), row.split()), times)
    power = np.cumsum(np.append(0, sound ** 2))
    level = np.sqrt(power[len(clip):] - power[:-len(clip)])
    return np.max(np.correlate(sound, clip, 'valid') / np.maximum(level * np.sqrt(clip @ clip), 1e5))


slots = dict(part.split(': ') for line in lines if '|' not in line for part in line.split('; '))
share, number = max((likeness(row), i) for i, row in enumerate(slots.get(clips, clips).split(', ')))
print(f'{clips}: likeness {share:.3f} with clip {number}')
sys.exit(int(share < 0.7))
