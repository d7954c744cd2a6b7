// hint_sheet OUT.png [WIDTH...]: the exit hint's card in all seven languages over owners of these widths,
// drawn by the program's own code with the fonts that lie beside this tool, else the installed ones.
// Prints what was drawn where and fails if a text was cut off, left its card or touched the next one.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "hint/fonts.h"
#include "hint/panel.h"
#include "saving/auto_save.h"
#include "settings/language.h"

struct DrawnText {
    RectF place;
    int fitted;
    int length;
    int lines;
};
static std::vector<DrawnText> drawn;

extern "C" {
GpStatus WINGDIPAPI __real_GdipDrawString(GpGraphics *, const WCHAR *, INT, const GpFont *, const RectF *,
                                          const GpStringFormat *, const GpBrush *);
GpStatus WINGDIPAPI __wrap_GdipDrawString(GpGraphics *, const WCHAR *, INT, const GpFont *, const RectF *,
                                          const GpStringFormat *, const GpBrush *);
}
GpStatus WINGDIPAPI __wrap_GdipDrawString(GpGraphics *graphics, const WCHAR *text, INT length,
                                          const GpFont *font, const RectF *layout,
                                          const GpStringFormat *format, const GpBrush *brush)
{
    DrawnText made = {{}, 0, length, 0};
    GdipMeasureString(graphics, text, length, font, layout, format, &made.place, &made.fitted, &made.lines);
    drawn.push_back(made);
    return __real_GdipDrawString(graphics, text, length, font, layout, format, brush);
}

static const wchar_t *const languages[] = {L"ja", L"en", L"zh", L"fr", L"it", L"de", L"es"};

static bool measureCard(int width)
{
    HDC screen = GetDC(nullptr);
    GpGraphics *graphics = nullptr;
    GdipCreateFromHDC(screen, &graphics);
    GdipSetTextRenderingHint(graphics, TextRenderingHintClearTypeGridFit);
    const bool measured = measureHintPanel(graphics, width, 1080, hintPanelRect);
    GdipDeleteGraphics(graphics);
    ReleaseDC(nullptr, screen);
    return measured;
}

// How many faults the card just drawn has.
static int faults(const wchar_t *language, int width)
{
    int count = 0;
    const float right = hintPanelRect.X + hintPanelRect.Width - 18.0f;
    for (size_t i = 0; i < drawn.size(); ++i) {
        const RectF &place = drawn[i].place;
        const bool last = i + 1 == drawn.size();
        const float end = last ? hintPanelRect.Y + hintPanelRect.Height - 14.0f : drawn[i + 1].place.Y - 8.0f;
        const bool good = drawn[i].fitted == drawn[i].length && place.X + place.Width <= right + 1.0f &&
                          place.Y + place.Height <= end + 1.0f;
        count += !good;
        std::printf("%ls %4d text %zu: %2d of %2d characters, %d lines, %.0f,%.0f %.0fx%.0f%s\n", language,
                    width, i, drawn[i].fitted, drawn[i].length, drawn[i].lines, place.X, place.Y, place.Width,
                    place.Height, good ? "" : " BAD");
    }
    return count;
}

int main(int argc, char **argv)
{
    if (argc < 2) return 2;
    std::vector<int> widths;
    for (int i = 2; i < argc; ++i)
        widths.push_back(std::atoi(argv[i]));
    GdiplusStartupInput input;
    ULONG_PTR token = 0;
    GdiplusStartup(&token, &input, nullptr);
    int sheetWidth = 20;
    for (const int width : widths)
        sheetWidth += std::min(width - 40, 920) + 20;
    GpBitmap *sheet = nullptr;
    GdipCreateBitmapFromScan0(sheetWidth, 7 * 270, 0, PixelFormat32bppRGB, nullptr, &sheet);
    GpGraphics *graphics = nullptr;
    GdipGetImageGraphicsContext(sheet, &graphics);
    GdipGraphicsClear(graphics, 0xFF58A0C8);
    GdipSetSmoothingMode(graphics, SmoothingModeAntiAlias);
    GdipSetTextRenderingHint(graphics, TextRenderingHintAntiAliasGridFit);
    int bad = 0;
    float top = 0.0f;
    for (const wchar_t *language : languages) {
        chooseLanguage(language);
        float left = 20.0f;
        float rowHeight = 0.0f;
        for (const int width : widths) {
            if (!measureCard(width)) return 3;
            drawn.clear();
            hintOptOutChecked = width == widths.front();
            GdipResetWorldTransform(graphics);
            GdipTranslateWorldTransform(graphics, left - hintPanelRect.X, top, MatrixOrderPrepend);
            if (!drawHintPanel(graphics)) return 3;
            bad += faults(language, width);
            left += hintPanelRect.Width + 20.0f;
            rowHeight = std::max(rowHeight, hintPanelRect.Height + 20.0f);
        }
        top += rowHeight;
    }
    std::printf("private fonts: heading %d, text %d; height %.0f; %d faults\n", blackFontHolder.loaded,
                regularFontHolder.loaded, top + 20.0f, bad);
    const std::filesystem::path path = argv[1];
    if (!writePng(sheet, path.c_str())) return 4;
    return bad != 0;
}
