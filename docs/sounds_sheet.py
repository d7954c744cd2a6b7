#!/usr/bin/python3
"""sounds_sheet.py FOLDER SHEET.png: draws the clips that the test tool `sounds FOLDER` wrote, each as a
waveform (stretched to its cell and to its own peak) over a spectrogram (80 Hz to 11 kHz, logarithmic, 54 dB),
labelled with its length and peak, and prints how long and how loud each is. Needs numpy and ImageMagick."""
import glob
import os
import subprocess
import sys

import numpy as np

WIDE, WAVE, SPECTRUM, LABEL, GAP, COLUMNS, RATE = 186, 44, 84, 18, 8, 10, 22050
INK = [40, 60, 110]
HEAT = np.array([[12, 10, 40], [80, 20, 120], [200, 50, 90], [250, 150, 50], [255, 250, 200]])
ORDER = ('tapClip', 'mark', 'actionClip', 'captureClip', 'startClips', 'spaceClips', 'keyClips', 'noteClips',
         'scatter', 'penClips', 'wipeClips', 'strokeLoops', 'mascotCall', 'mascotChatter', 'mascotFanfare',
         'mascotNotes', 'mascotRepertoire')


def waveform(x):
    picture = np.full((WAVE, WIDE, 3), 246)
    middle = (WAVE - 1) / 2
    edges = np.linspace(0, len(x), WIDE + 1).astype(int)
    for column, (a, b) in enumerate(zip(edges, edges[1:])):
        part = x[a:max(b, a + 1)] / abs(x).max() * middle
        picture[int(middle - part.max()):int(middle - part.min()) + 1, column] = INK
    return picture


def spectrogram(x, window=640, points=8192):
    padded = np.pad(x, window // 2)
    starts = np.linspace(0, len(x) - 1, WIDE).astype(int)
    frames = [padded[start:start + window] * np.hanning(window) for start in starts]
    power = abs(np.fft.rfft(frames, points)) ** 2
    bins = (np.geomspace(80, RATE / 2, SPECTRUM + 1) * points / RATE).astype(int)
    bands = np.array([power[:, a:max(b, a + 1)].max(1) for a, b in zip(bins, bins[1:])])[::-1]
    at = np.clip(10 * np.log10(bands / bands.max() + 1e-12) / 54 + 1, 0, 1) * (len(HEAT) - 1.001)
    share = (at % 1)[..., None]
    return HEAT[at.astype(int)] * (1 - share) + HEAT[at.astype(int) + 1] * share


folder, sheet = sys.argv[1:]
files = [file for name in ORDER for file in sorted(glob.glob('%s/%s*.wav' % (folder, name)))]
files = [file for file in files if not 'mascotRepertoire-00' <= os.path.basename(file)[:-4] <= 'mascotRepertoire-09']
cell_high = LABEL + WAVE + SPECTRUM + GAP
page = np.full((-(-len(files) // COLUMNS) * cell_high + GAP, COLUMNS * (WIDE + GAP) + GAP, 3), 255)
labels = []
for i, path in enumerate(files):
    x = np.fromfile(path, '<i2', offset=44).astype(float)
    name = os.path.basename(path)[:-4].replace('mascotR', 'r')
    ms, peak, rms = len(x) * 1000 // RATE, abs(x).max() / 32767, np.sqrt((x ** 2).mean()) / 32767
    print('%-20s %4d ms  peak %.3f  rms %.3f' % (name, ms, peak, rms))
    left, top = GAP + i % COLUMNS * (WIDE + GAP), GAP + i // COLUMNS * cell_high
    page[top + LABEL:top + LABEL + WAVE, left:left + WIDE] = waveform(x)
    page[top + LABEL + WAVE:top + LABEL + WAVE + SPECTRUM, left:left + WIDE] = spectrogram(x)
    labels += ['-annotate', '+%d+%d' % (left, top + 13), '%s  %d ms  %.2f' % (name, ms, peak)]
ppm = b'P6 %d %d 255\n' % page.shape[1::-1] + page.astype(np.uint8).tobytes()
subprocess.run(['convert', 'ppm:-', '-font', 'DejaVu-Sans', '-pointsize', '11', '-fill', '#222', *labels,
                '-colors', '128', 'png8:' + sheet], input=ppm, check=True)
