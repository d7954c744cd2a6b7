#include "hint/panel.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

#include "settings/options.h"
#include "shell/base/surfaces.h"

static void dropBitmap()
{
    if (hintBitmap) GdipDisposeImage(hintBitmap);
    hintBitmap = nullptr;
}

static void renderHintPanel()
{
    dropBitmap();
    hintBitmapWidth = hintBox.right - hintBox.left;
    hintBitmapHeight = hintBox.bottom - hintBox.top;
    if (!hintBoxValid || hintBitmapWidth <= 0 || hintBitmapHeight <= 0) return;
    GpBitmap *bitmap = nullptr;
    GdipCreateBitmapFromScan0(hintBitmapWidth, hintBitmapHeight, 0, PixelFormat32bppPARGB, nullptr, &bitmap);
    GpGraphics *graphics = nullptr;
    GdipGetImageGraphicsContext(bitmap, &graphics);
    GdipSetSmoothingMode(graphics, SmoothingModeAntiAlias);
    GdipSetTextRenderingHint(graphics, TextRenderingHintAntiAliasGridFit);
    GdipSetCompositingMode(graphics, CompositingModeSourceOver);
    GdipGraphicsClear(graphics, 0);
    GdipTranslateWorldTransform(graphics, float(-hintBox.left), float(-hintBox.top), MatrixOrderPrepend);
    hintBitmap = bitmap;
    const bool drawn = drawHintPanel(graphics);
    GdipDeleteGraphics(graphics);  // before its bitmap
    if (!drawn) dropBitmap();
}

static LRESULT CALLBACK hintFloatProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message != WM_LBUTTONDOWN) return DefWindowProcW(window, message, wParam, lParam);
    hintPanelClick(short(LOWORD(lParam)) + hintBox.left, short(HIWORD(lParam)) + hintBox.top);
    return 0;
}

static bool floatClassRegistered = false;

static bool makeFloatWindow()
{
    if (!floatClassRegistered) {
        WNDCLASSEXW floatClass = {};
        floatClass.cbSize = sizeof floatClass;
        floatClass.lpfnWndProc = hintFloatProc;
        floatClass.hInstance = programInstance;
        floatClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        floatClass.lpszClassName = L"Zubbly.ExitHintFloat";
        if (!RegisterClassExW(&floatClass) && GetLastError() != ERROR_CLASS_ALREADY_EXISTS) return false;
        floatClassRegistered = true;
    }
    if (hintFloatWindow && IsWindow(hintFloatWindow)) return true;
    hintFloatWindow = CreateWindowExW(WS_EX_NOACTIVATE | WS_EX_LAYERED | WS_EX_TOOLWINDOW | WS_EX_TOPMOST,
                                      L"Zubbly.ExitHintFloat", L"", WS_POPUP, 0, 0, 1, 1, hintOwnerWindow,
                                      nullptr, programInstance, nullptr);
    return hintFloatWindow != nullptr;
}

// Makes the card the float window's content, with per-pixel alpha.
static bool updateFloatWindow(HBITMAP card)
{
    POINT position = {hintBox.left, hintBox.top};
    ClientToScreen(hintOwnerWindow, &position);
    SIZE size = {hintBitmapWidth, hintBitmapHeight};
    POINT source = {0, 0};
    BLENDFUNCTION blend = {AC_SRC_OVER, 0, hintAlpha, AC_SRC_ALPHA};
    HDC screenDC = GetDC(nullptr);
    HDC cardDC = CreateCompatibleDC(screenDC);
    BOOL updated = FALSE;
    if (cardDC) {  // a null source would leave the old content
        HGDIOBJ old = SelectObject(cardDC, card);
        updated = UpdateLayeredWindow(hintFloatWindow, screenDC, &position, &size, cardDC, &source, 0, &blend,
                                      ULW_ALPHA);
        SelectObject(cardDC, old);
        DeleteDC(cardDC);
    }
    ReleaseDC(nullptr, screenDC);
    return updated != FALSE;
}

static void presentHintPanel()
{
    if (!hintVisible || !hintOwnerWindow || !hintBitmap || !hintBoxValid) {
        if (hintFloatWindow) ShowWindow(hintFloatWindow, SW_HIDE);
        return;
    }
    if (!makeFloatWindow()) return;
    HBITMAP card = nullptr;
    if (GdipCreateHBITMAPFromBitmap(hintBitmap, &card, 0) != Ok) return;
    const bool updated = updateFloatWindow(card);
    DeleteObject(card);
    if (!updated) return;
    ShowWindow(hintFloatWindow, SW_SHOWNOACTIVATE);
    SetWindowPos(hintFloatWindow, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE);
}

static void placeHintBox(int width, int height)
{
    const RectF &card = hintPanelRect;
    const long margin = 6;
    hintBox.left = std::max(long(floorf(card.X)) - margin, 0l);
    hintBox.top = std::max(long(floorf(card.Y)) - margin, 0l);
    hintBox.right = std::min(long(ceilf(card.X + card.Width)) + margin, long(width));
    hintBox.bottom = std::min(long(ceilf(card.Y + card.Height)) + margin, long(height));
    hintBoxValid = hintBox.right > hintBox.left && hintBox.bottom > hintBox.top;
}

void showHintPanel(HWND window, int width, int height)
{
    if (!window || width < minOwnerSide || height < minOwnerSide) return;
    KillTimer(window, 9);
    hintOwnerWindow = window;
    hintVisible = true;
    hintOptOutChecked = false;
    hintAlpha = 255;
    hintBoxValid = false;
    HDC screenDC = GetDC(nullptr);
    GpGraphics *graphics = nullptr;
    GdipCreateFromHDC(screenDC, &graphics);
    GdipSetTextRenderingHint(graphics, TextRenderingHintClearTypeGridFit);
    const bool measured = measureHintPanel(graphics, width, height, hintPanelRect);
    GdipDeleteGraphics(graphics);
    ReleaseDC(nullptr, screenDC);
    if (measured) placeHintBox(width, height);
    renderHintPanel();
    hintNotBefore = GetTickCount() + 10250;
    SetTimer(window, 9, 10000, nullptr);
    presentHintPanel();
}

bool hintPanelClick(int x, int y)
{
    const RectF &row = hintCheckRect;
    if (!hintVisible || row.Width <= FLT_EPSILON || row.Height <= FLT_EPSILON) return false;
    if (float(x) < row.X || float(x) >= row.X + row.Width) return false;
    if (float(y) < row.Y || float(y) >= row.Y + row.Height) return false;
    hintOptOutChecked = !hintOptOutChecked;
    renderHintPanel();
    presentHintPanel();
    return true;
}

static void forgetShowing()
{
    hintVisible = false;
    hintAlpha = 0;
    dropBitmap();
    hintBitmapWidth = 0;
    hintBitmapHeight = 0;
}

static void optOut()
{
    turnOffExitHint();
    exitHintEnabled = false;
    if (idleHintWindow) KillTimer(idleHintWindow, 11);
}

void closeHintPanel()
{
    if (!hintVisible) return;
    if (hintOptOutChecked) optOut();
    if (hintOwnerWindow) KillTimer(hintOwnerWindow, 9);
    forgetShowing();
    lastInputTick = GetTickCount();
    hintNotBefore = lastInputTick + 8000;
    if (hintFloatWindow) ShowWindow(hintFloatWindow, SW_HIDE);
}

void discardHintPanel(HWND window)
{
    if (hintOwnerWindow == window) hintOwnerWindow = nullptr;
    if (idleHintWindow == window) idleHintWindow = nullptr;
    forgetShowing();
    hintOptOutChecked = false;
    hintBoxValid = false;
    if (!hintFloatWindow) return;
    ShowWindow(hintFloatWindow, SW_HIDE);
    DestroyWindow(hintFloatWindow);
    hintFloatWindow = nullptr;
}
