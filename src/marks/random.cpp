#include "marks/random.h"

#include <algorithm>

int32_t drawInt(Rng &stream, int32_t lo, int32_t hi)
{
    const uint32_t span = uint32_t(hi) - uint32_t(lo);
    if (span == 0xFFFFFFFFu) return int32_t(uint32_t(lo) + uint32_t(stream()));
    const uint32_t count = span + 1;
    uint64_t product = uint64_t(uint32_t(stream())) * count;
    if (uint32_t(product) < count) {
        const uint32_t threshold = (0u - count) % count;
        while (uint32_t(product) < threshold)
            product = uint64_t(uint32_t(stream())) * count;
    }
    return int32_t(uint32_t(lo) + uint32_t(product >> 32));
}

float drawReal(Rng &stream)
{
    return float(uint32_t(stream()) >> 8) * 5.9604645e-8f;  // 2 to the power -24
}

MarkColor randColor(int32_t lo, int32_t hi)
{
    const int red = randInt(lo, hi);
    const int green = randInt(lo, hi);
    const int blue = randInt(lo, hi);
    return markColor(red, green, blue);
}

// A channel moved towards the grey of its colour and kept bright.
static int soften(int channel, int average)
{
    const float softened = float(channel) * 0.68f + float(average) * 0.32f;
    return std::clamp(int(softened), 120, 245);
}

MarkColor pickBackgroundColor()
{
    const int rare = randInt(0, 19);
    if (rare <= 1) return 0x00FFFFFF;
    if (rare == 2) return 0x00EBF8FC;
    if (rare == 3) return 0x00DABEAC;
    for (int attempt = 0; attempt < 5; ++attempt) {
        const MarkColor color = brightColor();
        const auto [darkest, brightest] = std::minmax({redOf(color), greenOf(color), blueOf(color)});
        if (brightest < 230 || brightest - darkest < 48) return color;  // either dim or pale
    }
    const MarkColor gaudy = brightColor();
    const int average = (redOf(gaudy) + greenOf(gaudy) + blueOf(gaudy)) / 3;
    return markColor(soften(redOf(gaudy), average), soften(greenOf(gaudy), average),
                     soften(blueOf(gaudy), average));
}

MarkColor pickMenuColor()
{
    int channels[3];
    for (int &channel : channels)
        channel = randInt(35, 165);
    const int pick = randInt(0, 2);
    const int lift = randInt(40, 85);
    channels[pick] = std::clamp(channels[pick] + lift, 0, 220);
    return markColor(channels[0], channels[1], channels[2]);
}
