#include "marks/key_reactions.h"

#include <algorithm>
#include <cmath>

#include "marks/bursts.h"
#include "marks/notes.h"
#include "marks/stamps.h"
#include "marks/strokes.h"
#include "sound/playback.h"
#include "sound/speech.h"

POINT keyPlacement(uint32_t key)
{
    const MonitorSurface *surface = launchSurface();
    if (!surface || surface->width <= 0 || surface->height <= 0) {
        const VirtualScreen screen = virtualScreen();
        const int x = randInt(screen.left, screen.left + screen.width - 1);
        const int y = randInt(screen.top, screen.top + screen.height - 1);
        return {x, y};
    }
    const uint32_t hash = (key + 1) * 2654435761u;  // golden ratio hash
    const int boxWidth = std::max(surface->width / 3, 120);
    const int boxHeight = std::max(surface->height / 3, 120);
    const POINT middle = middleOf(surface->rect);
    POINT point = {middle.x + int(hash % uint32_t(boxWidth)) - boxWidth / 2,
                   middle.y + int(hash / 97 % uint32_t(boxHeight)) - boxHeight / 2};
    clampToVirtualScreen(point);
    return point;
}

static void keyShape(Shape shape, POINT point, int size, MarkColor color)
{
    for (const MonitorSurface &surface : surfaces) {
        if (!inReach(surface, toLocal(surface, point), 2 * size)) continue;
        shapeOnSurface(surface, shape, point, size, color);
        invalidateWhole(surface);
    }
}

void keyReaction(uint32_t key, int repeat)
{
    static constexpr void (*stamps[])(POINT) = {stampFace, stampSun,  stampHouse,  stampBalloon,
                                                stampTree, stampFish, stampRocket, stampStickFigure};
    beginMark();
    const POINT point = keyPlacement(key);
    const uint32_t picture = key % 13;
    const int level = std::clamp(repeat - 1, 0, 5);
    const int growth = level * 6;
    MarkColor color = keyPalette[key % 10];
    if (level >= 4) color = brightColor();  // drawn even if the picture is a stamp, which ignores it
    if (picture < 5) {
        const int size = int(key * 17 % 40) + 56 + growth;
        keyShape(Shape(picture), point, size, color);
    } else {
        stamps[picture - 5](point);
    }
    if (level >= 4) {
        const int reachX = 70 + growth;
        const int reachY = 5 * (level + 11);
        for (int i = 0; i < 2; ++i)
            tapMark(strayFrom(point, -reachX, reachX, -reachY, reachY));
    }
    if (level == 5 && randInt(0, 99) < 28) scatterMarks(false);
}

bool updateKeyMash()
{
    const int64_t now = steadyNow();
    if (within(now, lastMashTime, 520)) {
        keyMashCount = std::min(keyMashCount + 1, 50);
    } else {
        keyMashCount = std::max(keyMashCount - 2, 1);  // decays instead of starting over
    }
    lastMashTime = now;
    return keyMashCount >= 2;
}

int countSameKey(uint32_t key, bool autoRepeat)
{
    if (autoRepeat) return key == lastKeyCode ? sameKeyCount : 1;
    const int64_t now = steadyNow();
    if (key == lastKeyCode && within(now, lastKeyTime, 900)) {
        // At most one step in half a second, however quickly the child presses.
        const bool bumpDue = lastBumpTime == noTime || now - lastBumpTime >= 500'000'000;
        if (sameKeyCount < 6 && bumpDue) {
            ++sameKeyCount;
            lastBumpTime = now;
        }
    } else {
        lastKeyCode = key;
        sameKeyCount = 1;
        lastBumpTime = now;
    }
    lastKeyTime = now;
    return sameKeyCount;
}

void flushPendingKey()
{
    if (!pendingKey) return;
    pendingKey = false;
    if (keyMashCount >= 2) {
        cutSpeech();
        return noteSpiral();
    }
    keyReaction(pendingKeyCode, sameKeyCount);
    if (soundEnabled && passGate(lastKeySoundTick, 55)) playKeySound(pendingKeyCode, sameKeyCount);
}

// One note, a golden angle on from the last. The spiral is flattened to 82 per cent of its height.
static void spiralNote(int index, int count)
{
    const float i = float(index);
    const float angle = sinf(i * 1.7f) * 0.08f + i * 2.3999631f + spiralAngle;
    const float wanted = (powf(i / float(count), 0.75f) * 0.78f + 0.22f) * spiralRadius + 52.0f + i * 26.0f;
    const float distance = std::min(wanted, 460.0f);
    const int jitter = randInt(-10, 10);  // of both coordinates
    const POINT point = {jitter + lroundf(cosf(angle) * distance) + spiralCentre.x,
                         jitter + lroundf(sinf(angle) * distance * 0.82f) + spiralCentre.y};
    MarkColor color = keyPalette[(lastKeyCode + uint32_t(sameKeyCount)) % 10];
    if (sameKeyCount < 5) color = brightColor();
    const int kind = randInt(0, 2);
    drawMusicNote(point, kind, color, sameKeyCount);
}

void noteSpiral()
{
    beginMark();
    POINT cursor = spiralCentre;
    GetCursorPos(&cursor);
    if (!spiralCentreValid) spiralCentre = cursor;
    spiralCentreValid = true;
    spiralRadius = std::min(spiralRadius + 7.0f, 420.0f);
    spiralAngle += 0.1f;
    spiralCentre.x += (cursor.x - spiralCentre.x) / 6;
    spiralCentre.y += (cursor.y - spiralCentre.y) / 6;
    const int count = std::clamp(keyMashCount / 4 + sameKeyCount / 3 + 2, 3, 10);
    for (int i = 0; i < count; ++i)
        spiralNote(i, count);
    if (randInt(0, 99) < std::min(sameKeyCount * 2 + 68, 90)) scatterMarks(false);
    if (soundEnabled) playMashVoice();
}

static void restartSettling(HWND window)
{
    KillTimer(window, 6);
    SetTimer(window, 6, 210, nullptr);
}

void stepSpiral(HWND window)
{
    const DWORD now = GetTickCount();
    if (lastSpiralTick == 0 || now - lastSpiralTick >= 40) {
        noteSpiral();
        lastSpiralTick = now;
    }
    restartSettling(window);
}

static void dropPendingKey()
{
    pendingKey = false;
    pendingKeyCode = 0;
    pendingKeyFlags = 0;
}

void holdKey(HWND window, uint32_t key, LPARAM flags)
{
    if (keyMashCount >= 2) {
        dropPendingKey();
        return stepSpiral(window);
    }
    pendingKey = true;
    pendingKeyCode = key;
    pendingKeyFlags = flags;
    restartSettling(window);
}

void settleKeys(HWND window)
{
    KillTimer(window, 6);
    flushPendingKey();
    if (within(steadyNow(), lastMashTime, 520)) {
        if (keyMashCount > 0) --keyMashCount;
        if (keyMashCount > 0) {
            SetTimer(window, 6, 210, nullptr);
            return;
        }
    }
    resetKeyState(window);
}

static void resetSpiral()
{
    spiralCentreValid = false;
    lastSpiralTick = 0;
    spiralRadius = spiralStartRadius;
    spiralAngle = 0.0f;
}

void releaseKey(HWND window)
{
    flushPendingKey();
    KillTimer(window, 6);
    if (keyMashCount >= 2) {
        resetKeyState(window);
    } else {
        resetSpiral();
    }
}

void resetKeyState(HWND window)
{
    KillTimer(window, 6);
    cutSpeech();
    dropPendingKey();
    keyMashCount = 0;
    lastKeyCode = 0;
    sameKeyCount = 0;
    lastKeyTime = noTime;
    lastBumpTime = noTime;
    lastMashTime = noTime;
    resetSpiral();
}
