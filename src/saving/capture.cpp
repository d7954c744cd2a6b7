#include "saving/capture.h"

#include "hint/panel.h"
#include "saving/save_dialog.h"
#include "shell/shutdown.h"
#include "shell/base/surfaces.h"
#include "sound/bank_a.h"
#include "sound/playback.h"

// A real screen shot: unlike a saved picture it has mascot, menu and hint in it. Null on failure.
static HBITMAP copyScreen()
{
    const VirtualScreen screen = virtualScreen();
    // For no size the system would give its own bitmap, which is not ours to hand over.
    if (screen.width < 1 || screen.height < 1) return nullptr;
    HDC screenDC = GetDC(nullptr);
    HDC copyDC = CreateCompatibleDC(screenDC);
    HBITMAP copy = copyDC ? CreateCompatibleBitmap(screenDC, screen.width, screen.height) : nullptr;
    if (copy) {
        HGDIOBJ old = SelectObject(copyDC, copy);
        BitBlt(copyDC, 0, 0, screen.width, screen.height, screenDC, screen.left, screen.top, SRCCOPY);
        SelectObject(copyDC, old);
    }
    if (copyDC) DeleteDC(copyDC);
    ReleaseDC(nullptr, screenDC);
    return copy;
}

static void copyScreenToClipboard(HWND window)
{
    HBITMAP copy = copyScreen();
    if (!copy) return;
    bool handedOver = false;
    if (OpenClipboard(window)) {
        EmptyClipboard();
        handedOver = SetClipboardData(CF_BITMAP, copy) != nullptr;
        CloseClipboard();
    }
    // cppcheck-suppress doubleFree ; the clipboard frees it only if it took it
    if (!handedOver) DeleteObject(copy);
}

void captureOrExit(uint32_t key, HWND window)
{
    switch (key) {
    case VK_SNAPSHOT: copyScreenToClipboard(window); break;
    case VK_F1: showSaveDialog(); break;
    case VK_F4:
        closeHintPanel();
        shutdownApp(false);
        return;
    default: return;
    }
    // Whether the capture worked or not: what the grown-up hears is that the key was taken.
    if (soundEnabled) playClick(captureClip);
}
