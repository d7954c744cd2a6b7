// Counts large-area flashes in whatever a child can cause, in frames of 16 ms on a scripted clock, drawn and
// painted by the program itself. A flash is a pair of opposing changes of relative luminance by a
// tenth of white's or more, of which the darker end is below 0.80; at most three a second is the accepted
// limit where they cover more than a quarter of the screen. It is counted in two ways:
//   as a whole      from frame to frame the mean over the quarter of the screen that gets most brighter, less
//                   that of the quarter that gets most darker, add up to a curve, whose swings are counted
//   place by place  how often at least a quarter of the screen flashed in one second, where each place counts
//                   by itself: an upper bound, because passing sparks count as flashes. The same for any
//                   field a third as wide and as high, about what the eye sees sharply.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <deque>
#include <numeric>

#include "clearing/actions.h"
#include "clearing/wipes.h"
#include "mascot/fireworks.h"
#include "mascot/walker.h"
#include "shell/window_proc.h"
#include "sound/playback.h"
#include "support/desk.h"

static const int width = 1280;
static const int height = 800;
static const int frameMs = 16;
static const size_t framesOfSecond = 63;
static const int grid = 12;   // blocks across and down
static const int field = 4;   // blocks of a field across and down
static const int stride = 2;  // every second pixel of every second row is looked at
static const int columns = width / stride;
static const int rows = height / stride;
static const size_t mostFlashes = 32;

// A brightness over time, and where it turns.
struct Swings {
    float darkest = 1e9f;     // since the last change to a darker one
    float brightest = -1e9f;  // since the last change to a brighter one
    int direction = 0;        // of the last change

    // True if a change is complete with this frame.
    bool take(float now, float tooBright)
    {
        brightest = std::max(brightest, now);
        darkest = std::min(darkest, now);
        const bool fell = direction >= 0 && brightest - now >= 0.1f && now < tooBright;
        const bool rose = direction <= 0 && now - darkest >= 0.1f && darkest < tooBright;
        if (fell || rose) {
            direction = fell ? -1 : 1;
            darkest = brightest = now;
        }
        return fell || rose;
    }
};
static const float dazzling = 0.8f;  // a place that never gets darker than this does not flash

class FlashCount {
  public:
    // The next frame: 32-bit pixels, rows from the top.
    void look(const uint32_t *pixels)
    {
        std::vector<uint32_t> changed;
        for (uint32_t i = 0; i < places.size(); ++i) {
            const int x = int(i) % columns * stride;
            const int y = int(i) / columns * stride;
            const float now = luminance(pixels[y * width + x]);
            if (places[i].take(now, dazzling)) changed.push_back(i);
            const float by = now - before[i];
            if (by != 0.0f && std::min(now, before[i]) < dazzling)
                (by > 0.0f ? brighter : darker).push_back(std::abs(by));
            before[i] = now;
        }
        lookAtWhole();
        for (const uint32_t i : changed)
            if (++changes[i] % 2 == 0) count(i, changes[i] / 2, 1);
        lastSecond.push_back(std::move(changed));
        if (lastSecond.size() > framesOfSecond) {
            for (const uint32_t i : lastSecond.front())
                if (changes[i]-- % 2 == 0) count(i, changes[i] / 2 + 1, -1);
            lastSecond.pop_front();
        }
        judge();
    }

    // Flashes in the worst second.
    int asWhole = 0;
    int byPlaces = 0;       // over a quarter of the screen
    int inField = 0;        // over a quarter of a field
    double tooOften = 0.0;  // share of the screen that had more than three, place by place

    void takeWorst(const FlashCount &other)
    {
        asWhole = std::max(asWhole, other.asWhole);
        byPlaces = std::max(byPlaces, other.byPlaces);
        inField = std::max(inField, other.inField);
        tooOften = std::max(tooOften, other.tooOften);
    }

  private:
    using Blocks = std::array<int, grid * grid>;
    size_t frame = 0;
    float curve = 0.0f;
    Swings whole;
    std::deque<size_t> wholeChanges;      // frames of the last second
    std::vector<float> brighter, darker;  // this frame's changes
    std::vector<float> before = std::vector<float>(columns * rows);
    std::vector<Swings> places = std::vector<Swings>(columns * rows);
    std::vector<size_t> changes = std::vector<size_t>(columns * rows);  // in the last second
    std::deque<std::vector<uint32_t>> lastSecond;                       // places that changed, by frame
    std::array<Blocks, mostFlashes> flashed = {};  // places of each block with at least so many flashes

    static float luminance(uint32_t pixel)
    {
        static const std::array<float, 256> linear = [] {
            std::array<float, 256> table;
            for (size_t i = 0; i < table.size(); ++i) {
                const float v = float(i) / 255.0f;
                table[i] = v <= 0.04045f ? v / 12.92f : powf((v + 0.055f) / 1.055f, 2.4f);
            }
            return table;
        }();
        return 0.2126f * linear[pixel >> 16 & 255] + 0.7152f * linear[pixel >> 8 & 255] +
               0.0722f * linear[pixel & 255];
    }

    // Mean over that quarter of the screen that changed most; empties the list.
    static float quarterMean(std::vector<float> &list)
    {
        const size_t quarter = columns * rows / 4;
        if (list.size() > quarter) {
            std::nth_element(list.begin(), list.begin() + quarter, list.end(), std::greater());
            list.resize(quarter);
        }
        const float mean = std::reduce(list.begin(), list.end()) / float(quarter);
        list.clear();
        return mean;
    }

    void lookAtWhole()
    {
        const float up = quarterMean(brighter);
        const float down = quarterMean(darker);
        if (frame > 0) curve += up - down;
        if (whole.take(curve, 1e9f)) wholeChanges.push_back(frame);
        ++frame;
        while (!wholeChanges.empty() && wholeChanges.front() + framesOfSecond < frame)
            wholeChanges.pop_front();
        asWhole = std::max(asWhole, int(wholeChanges.size()) / 2);
    }

    void count(uint32_t place, size_t flashes, int by)
    {
        const size_t row = place / columns * grid / rows;
        const size_t column = place % columns * grid / columns;
        flashed.at(flashes - 1)[row * grid + column] += by;
    }

    void judge()
    {
        for (int often = 1; often <= int(mostFlashes); ++often) {
            const Blocks &blocks = flashed[size_t(often - 1)];
            int all = 0;
            for (const int block : blocks)
                all += block;
            if (all * 4 > columns * rows) byPlaces = std::max(byPlaces, often);
            if (often == 4) tooOften = std::max(tooOften, double(all) / (columns * rows));
            if (often > inField && all > 0 && fullestField(blocks) * 4 > columns * rows / 9) inField = often;
        }
    }

    static int fullestField(const Blocks &blocks)
    {
        int most = 0;
        for (int corner = 0; corner < grid * grid; ++corner) {
            if (corner % grid > grid - field || corner / grid > grid - field) continue;
            int sum = 0;
            for (int i = 0; i < field * field; ++i)
                sum += blocks[size_t(corner + i / field * grid + i % field)];
            most = std::max(most, sum);
        }
        return most;
    }
};

// Passes one frame; what its timers change shows in the next one.
static void passFrame(Desk &desk)
{
    desk.moveClocks(frameMs);
    const auto timers = desk.timers;
    for (const auto &[of, timer] : timers) {
        const auto found = desk.timers.find(of);
        if (found == desk.timers.end() || found->second.due + frameMs * 1'000'000 > desk.steady) continue;
        found->second.due += int64_t(found->second.period) * 1'000'000;
        windowProc(of.first, WM_TIMER, of.second, 0);
    }
}

// 32-bit pixels, rows from the top.
static std::vector<uint32_t> screenOf(const Desk &desk)
{
    std::vector<uint32_t> pixels(width * height);
    BITMAPINFO info = {};
    info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    const DeskWindow &window = desk.windows.at(primaryWindow());
    GetDIBits(window.dc, window.shown, 0, height, pixels.data(), &info, DIB_RGB_COLORS);
    return pixels;
}

// A scene is seconds long and begins anew with each of several seeds; each frame begins with atFrame(number).
static FlashCount watch(const char *name, int seconds, uint32_t seeds, auto begin, auto atFrame)
{
    FlashCount worst;
    for (uint32_t seed = 1; seed <= seeds; ++seed) {
        Desk desk({{0, 0, width, height}});
        desk.recording = false;
        soundEnabled = false;
        markRng.seed(seed);
        soundRng.seed(seed + 1);
        clipRng.seed(seed + 2);
        initMascot();
        newBackground(true);
        FlashCount seen;
        begin();
        for (int frame = 0; frame < seconds * 1000 / frameMs; ++frame) {
            passFrame(desk);
            atFrame(frame);
            InvalidateRect(primaryWindow(), nullptr, FALSE);
            desk.settle();
            GdiFlush();
            seen.look(screenOf(desk).data());
        }
        stopShow(false);
        stopWipe();
        shutdownMascot();
        worst.takeWorst(seen);
    }
    std::printf("%-46s %2u x %2d s %7d %7d %7d %9.1f %%\n", name, seeds, seconds, worst.asWhole,
                worst.byPlaces, worst.inField, 100.0 * worst.tooOften);
    std::fflush(stdout);
    return worst;
}

static void hit(WPARAM key)
{
    windowProc(surfaces[0].hwnd, WM_KEYDOWN, key, 0);
    windowProc(surfaces[0].hwnd, WM_KEYUP, key, 0);
}

static void nothing() {}

// flashes [LIMIT]: at most three in any second are accepted; fireworks may have more place by place.
int main(int argc, char **argv)
{
    const int limit = argc > 1 ? std::atoi(argv[1]) : 3;
    beginDesks();
    std::puts("flashes in the worst second                     length      whole  places   field  over 3 on");
    const FlashCount known = watch("five flashes a second, for comparison", 3, 1, nothing, [](int frame) {
        const RECT all = {0, 0, width, height};
        FillRect(surfaces[0].canvasDC, &all,
                 HBRUSH(GetStockObject(frame * frameMs % 200 < 100 ? BLACK_BRUSH : WHITE_BRUSH)));
    });
    if (known.asWhole != 5 || known.byPlaces != 5 || known.inField != 5) return 1;
    const FlashCount fireworks = watch("fireworks", 5, 20, [] { startShow(640.0f); }, [](int) {});
    FlashCount worst;
    worst.asWhole = fireworks.asWhole;
    const auto take = [&](const FlashCount &seen) { worst.takeWorst(seen); };
    static const char *const wipes[] = {"wipe from left",   "wipe from right",  "wipe from top",
                                        "wipe from bottom", "wipe from corner", "wipe by a ring",
                                        "wipe by a band",   "wipe by bubbles"};
    for (int style = 0; style < 8; ++style) {
        const auto begin = [style] {
            startWipe();
            wipeStyle = style;
            revealWipe = style == 5 || style == 7;
        };
        take(watch(wipes[style], 4, 6, begin, [](int) {}));
    }
    static const struct {
        const char *what;
        WPARAM key;
        int frames;  // from press to press
    } hammered[] = {{"Esc, ten times a second", VK_ESCAPE, 6},
                    {"Esc, four times a second", VK_ESCAPE, 15},
                    {"Esc, twice a second", VK_ESCAPE, 31},
                    {"Space, ten times a second", VK_SPACE, 6},
                    {"Enter, ten times a second", VK_RETURN, 6}};
    for (const auto &[what, key, frames] : hammered) {
        take(watch(what, 20, 3, nothing, [key = key, frames = frames](int frame) {
            if (frame % frames == 0) hit(key);
        }));
    }
    take(watch("a multimedia key, ten times a second", 20, 2, nothing, [](int frame) {
        if (frame % 6 == 0) windowProc(surfaces[0].hwnd, WM_APPCOMMAND, 0, 0);
    }));
    take(watch("both hands on the letters, 20 a second", 20, 2, nothing, [](int frame) {
        if (frame % 3 != 0) return;
        const int key = randInt('A', 'Z');
        hit(WPARAM(key));
    }));
    take(watch("both hands on the whole keyboard, 20 a second", 30, 2, nothing, [](int frame) {
        static const WPARAM others[] = {VK_ESCAPE, VK_SPACE, VK_RETURN, VK_UP,
                                        VK_LEFT,   VK_TAB,   VK_SHIFT,  VK_BACK};
        if (frame % 3 != 0) return;
        const int key = randInt('A', 'Z' + 8);
        hit(key > 'Z' ? others[key - 'Z' - 1] : WPARAM(key));
    }));
    const int most = std::max({worst.asWhole, worst.byPlaces, worst.inField});
    std::printf(
        "At most %d flashes in any second; sparks of fireworks flash up to %d times place by place.\n", most,
        fireworks.byPlaces);
    if (most > limit) std::printf("REFUSED: at most %d are accepted.\n", limit);
    return most > limit;
}
