#include "hint/panel.h"

#include <algorithm>
#include <cctype>
#include <cfloat>
#include <cmath>
#include <climits>
#include <cstdio>
#include <memory>
#include <string>

#include "hint/fonts.h"
#include "hint/idle.h"
#include "marks/gdi_plus.h"
#include "shell/base/files.h"
#include "settings/folders.h"
#include "settings/language.h"

static FILE *openHintCount(const wchar_t *mode)
{
    return _wfopen(inFolder(dataDirectory(), L"exit_hint_launches.txt").c_str(), mode);
}

// Reads white space, a sign and digits, as many as there are, and nothing further, as the stream operator of
// the library does. The C functions are no help: they wrap around a number that is too large.
static int parseHintCount(FILE *file)
{
    int next = std::fgetc(file);
    while (std::isspace(next))
        next = std::fgetc(file);
    const bool negative = next == '-';
    if (next == '-' || next == '+') next = std::fgetc(file);
    const int64_t tooLarge = int64_t(INT_MAX) + 1;
    int64_t count = 0;
    for (; std::isdigit(next); next = std::fgetc(file))
        count = std::min(count * 10 + (next - '0'), tooLarge);
    return negative || count == tooLarge ? 0 : int(count);
}

int readHintCount()
{
    FILE *file = openHintCount(L"r");
    if (!file) return 0;
    const int count = parseHintCount(file);
    std::fclose(file);
    return count;
}

void writeHintCount(int count)
{
    ensureDataDirectories();
    FILE *file = openHintCount(L"w");
    if (!file) return;
    std::fprintf(file, "%d\n", count);
    std::fclose(file);
}

struct HintFonts {
    OwnedFont heading;
    OwnedFont body;
    OwnedFont note;
    OwnedStringFormat format;
};

static OwnedFont makeFont(HintFamily *family, float size, int style)
{
    GpFont *font = nullptr;
    GdipCreateFont(family->family, size, style, UnitPixel, &font);
    return OwnedFont(font);
}

// The generic default belongs to GDI+ and everybody in the process: it is copied before it is changed.
static OwnedStringFormat makeFormat()
{
    GpStringFormat *generic = nullptr;
    GpStringFormat *format = nullptr;
    GdipStringFormatGetGenericDefault(&generic);
    GdipCloneStringFormat(generic, &format);
    GdipSetStringFormatAlign(format, StringAlignmentNear);
    GdipSetStringFormatLineAlign(format, StringAlignmentNear);
    GdipSetStringFormatFlags(format, StringFormatFlagsLineLimit);
    return OwnedStringFormat(format);
}

static bool makeFonts(HintFonts &fonts)
{
    HintFamily *heading = usableHeadingFamily();
    HintFamily *text = usableTextFamily();
    if (!heading || !text) return false;
    fonts.heading = makeFont(heading, 30.0f, headingStyle(heading));
    fonts.body = makeFont(text, 26.0f, FontStyleRegular);
    text = usableTextFamily();
    if (!text) return false;
    fonts.note = makeFont(text, 15.0f, FontStyleRegular);
    fonts.format = makeFormat();
    return true;
}

// Size of a text laid out in a rectangle.
static RectF measureText(GpGraphics *graphics, const HintFonts &fonts, const OwnedFont &font,
                         const std::wstring &text, const RectF &layout)
{
    RectF bounds;
    GdipMeasureString(graphics, text.c_str(), INT(text.size()), font.get(), &layout, fonts.format.get(),
                      &bounds, nullptr, nullptr);
    return bounds;
}

static void drawText(GpGraphics *graphics, const HintFonts &fonts, const OwnedFont &font,
                     const std::wstring &text, const RectF &layout, ARGB color)
{
    const OwnedBrush brush = solidBrush(color);
    GdipDrawString(graphics, text.c_str(), INT(text.size()), font.get(), &layout, fonts.format.get(),
                   brush.get());
}

// The label of the checkbox, laid out right of the box at left, top.
static RectF measureOptOut(GpGraphics *graphics, const HintFonts &fonts, float left, float top, float width)
{
    const RectF layout(left + 26.0f, top, width - 26.0f, 400.0f);
    return measureText(graphics, fonts, fonts.note, labels.hintOptOut, layout);
}

bool measureHintPanel(GpGraphics *graphics, int width, int height, RectF &rect)
{
    if (width < 64 || height < 64) return false;
    HintFonts fonts;
    if (!makeFonts(fonts)) return false;
    const float cardWidth = std::min(float(width) - 40.0f, 920.0f);
    const float x = (float(width) - cardWidth) / 2.0f;
    const float textLeft = x + 18.0f;
    const float textWidth = cardWidth - 36.0f;
    float y = 34.0f;
    const auto addText = [&](const OwnedFont &font, const std::wstring &text) {
        if (text.empty()) return;
        const RectF layout(textLeft, y, textWidth, float(height));
        y += measureText(graphics, fonts, font, text, layout).Height + 8.0f;
    };
    addText(fonts.heading, labels.hintHeading);
    addText(fonts.body, labels.hintBody);
    addText(fonts.note, labels.hintSpare);
    if (!labels.hintOptOut.empty()) {
        y += 20.0f;
        const RectF label = measureOptOut(graphics, fonts, textLeft, y, textWidth);
        const float rowHeight = std::max(label.Height, 18.0f);
        hintCheckRect = RectF(textLeft, y, std::max(textWidth, label.Width + 26.0f), rowHeight);
        y += rowHeight;
    }
    rect = RectF(x, 20.0f, cardWidth, y + 14.0f - 20.0f);
    return true;
}

static void drawCard(GpGraphics *graphics, const RectF &card)
{
    const float right = card.X + card.Width - 32.0f;
    const float bottom = card.Y + card.Height - 32.0f;
    const OwnedPath path = newPath();
    if (!path) return;  // GdipDrawPath may not look
    GdipAddPathArc(path.get(), card.X, card.Y, 32.0f, 32.0f, 180.0f, 90.0f);
    GdipAddPathArc(path.get(), right, card.Y, 32.0f, 32.0f, 270.0f, 90.0f);
    GdipAddPathArc(path.get(), right, bottom, 32.0f, 32.0f, 0.0f, 90.0f);
    GdipAddPathArc(path.get(), card.X, bottom, 32.0f, 32.0f, 90.0f, 90.0f);
    GdipClosePathFigure(path.get());
    const OwnedBrush fill = solidBrush(0xD2181C2Cu);
    const OwnedPen outline = plainPen(0xDCFFFFFF, 2.0f);
    GdipFillPath(graphics, fill.get(), path.get());
    GdipDrawPath(graphics, outline.get(), path.get());
}

static void drawOptOutRow(GpGraphics *graphics, const HintFonts &fonts, float left, float top, float width)
{
    const RectF label = measureOptOut(graphics, fonts, left, top, width);
    const float rowHeight = std::max(label.Height, 18.0f);
    const OwnedPen box = plainPen(0xDCFFFFFF, 1.5f);
    GdipDrawRectangle(graphics, box.get(), left, top, 18.0f, 18.0f);
    if (hintOptOutChecked) {
        const OwnedPen tick = plainPen(0xFFFFFFFF, 2.0f);
        GdipDrawLine(graphics, tick.get(), left + 3.0f, top + 9.900001f, left + 7.56f, top + 14.0f);
        GdipDrawLine(graphics, tick.get(), left + 6.84f, top + 14.0f, left + 15.0f, top + 3.0f);
    }
    const RectF layout(left + 26.0f, top, width - 26.0f, rowHeight);
    drawText(graphics, fonts, fonts.note, labels.hintOptOut, layout, 0xDCDCE0EB);
}

bool drawHintPanel(GpGraphics *graphics)
{
    HintFonts fonts;
    if (!makeFonts(fonts)) return false;
    const RectF &card = hintPanelRect;
    drawCard(graphics, card);
    const float left = card.X + 18.0f;
    const float width = card.Width - 36.0f;
    const float height = card.Height;
    float y = card.Y + 14.0f;
    const auto addText = [&](const OwnedFont &font, const std::wstring &text, ARGB color) {
        if (text.empty()) return;
        const RectF layout(left, y, width, height);
        const RectF measured = measureText(graphics, fonts, font, text, layout);
        drawText(graphics, fonts, font, text, layout, color);
        y += measured.Height + 8.0f;
    };
    addText(fonts.heading, labels.hintHeading, 0xFFFFFFFF);
    addText(fonts.body, labels.hintBody, 0xFFF5F5F5);
    addText(fonts.note, labels.hintSpare, 0xDCDCE0EB);
    if (!labels.hintOptOut.empty()) {
        y += 12.0f;
        const OwnedPen divider = plainPen(0x5AFFFFFF, 1.0f);
        GdipDrawLine(graphics, divider.get(), left, y, left + width, y);
        y += 8.0f;
        drawOptOutRow(graphics, fonts, left, y, width);
    }
    return true;
}

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
    GdipDeleteGraphics(graphics);  // before the bitmap that it draws on
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

// Gives the float window the card as its content, with the alpha of every pixel.
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
    if (cardDC) {  // no source would mean: leave the content as it is
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
    hintBox.left = std::max(long(floorf(card.X)) - 6, 0l);
    hintBox.top = std::max(long(floorf(card.Y)) - 6, 0l);
    hintBox.right = std::min(long(ceilf(card.X + card.Width)) + 6, long(width));
    hintBox.bottom = std::min(long(ceilf(card.Y + card.Height)) + 6, long(height));
    hintBoxValid = hintBox.right > hintBox.left && hintBox.bottom > hintBox.top;
}

void showHintPanel(HWND window, int width, int height)
{
    if (!window || width < 64 || height < 64) return;
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

static void optOut()
{
    const std::wstring settings = inFolder(dataDirectory(), L"config.ini");
    WritePrivateProfileStringW(L"Zubbly", L"ShowExitHint", L"0", settings.c_str());
    exitHintEnabled = false;
    if (idleHintWindow) KillTimer(idleHintWindow, 11);
}

void closeHintPanel()
{
    if (!hintVisible) return;
    if (hintOptOutChecked) optOut();
    if (hintOwnerWindow) KillTimer(hintOwnerWindow, 9);
    hintVisible = false;
    hintAlpha = 0;
    dropBitmap();
    hintBitmapWidth = 0;
    hintBitmapHeight = 0;
    lastInputTick = GetTickCount();
    hintNotBefore = lastInputTick + 8000;
    if (hintFloatWindow) ShowWindow(hintFloatWindow, SW_HIDE);
}

void discardHintPanel(HWND window)
{
    if (hintOwnerWindow == window) hintOwnerWindow = nullptr;
    if (idleHintWindow == window) idleHintWindow = nullptr;
    hintVisible = false;
    hintOptOutChecked = false;
    hintBoxValid = false;
    hintAlpha = 0;
    dropBitmap();
    hintBitmapWidth = 0;
    hintBitmapHeight = 0;
    if (!hintFloatWindow) return;
    ShowWindow(hintFloatWindow, SW_HIDE);
    DestroyWindow(hintFloatWindow);
    hintFloatWindow = nullptr;
}
