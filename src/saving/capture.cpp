#include "saving/capture.h"

#include "hint/panel.h"
#include "saving/save_dialog.h"
#include "shell/base/surfaces.h"
#include "shell/shutdown.h"
#include "sound/bank_a.h"
#include "sound/playback.h"

// A real screenshot: unlike a saved picture it includes mascot, menu and hint. Null on failure.
static HBITMAP copyScreen()
{
    const VirtualScreen screen = virtualScreen();
    // A zero-size request returns a stock bitmap, which must not reach the clipboard.
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
    // cppcheck-suppress doubleFree ; the clipboard owns the bitmap only if it accepted it
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
    // Plays even if the capture failed: it confirms the key, not the result.
    if (soundEnabled) playClick(captureClip);
}
