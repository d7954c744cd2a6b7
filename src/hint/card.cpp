#include "hint/card.h"

#include <algorithm>

#include "hint/fonts.h"
#include "marks/gdi_plus.h"
#include "settings/language.h"

// Pixels.
static constexpr float cardTop = 20.0f;
static constexpr float sideMargin = 18.0f;
static constexpr float endMargin = 14.0f;    // above the first text and below the last
static constexpr float textGap = 8.0f;       // below each text, and below the divider
static constexpr float dividerGap = 12.0f;   // above the divider
static constexpr float boxSide = 18.0f;      // of the checkbox
static constexpr float labelOffset = 26.0f;  // from the left of the checkbox to its label
static constexpr float cornerRadius = 16.0f;

static constexpr ARGB noteColor = 0xDCDCE0EB;

struct HintFonts {
    OwnedFont heading, body, note;
    OwnedStringFormat format;
};

static OwnedFont makeFont(HintFamily *family, float size, int style)
{
    GpFont *font = nullptr;
    GdipCreateFont(family->family, size, style, UnitPixel, &font);
    return OwnedFont(font);
}

// GDI+ shares the generic default with the whole process, so this changes a copy.
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

// The size of a text laid out in a rectangle.
static RectF measureText(GpGraphics *graphics, const HintFonts &fonts, const OwnedFont &font,
                         std::wstring_view text, const RectF &layout)
{
    RectF bounds;
    GdipMeasureString(graphics, text.data(), INT(text.size()), font.get(), &layout, fonts.format.get(),
                      &bounds, nullptr, nullptr);
    return bounds;
}

static void drawText(GpGraphics *graphics, const HintFonts &fonts, const OwnedFont &font,
                     std::wstring_view text, const RectF &layout, ARGB color)
{
    const OwnedBrush brush = solidBrush(color);
    GdipDrawString(graphics, text.data(), INT(text.size()), font.get(), &layout, fonts.format.get(),
                   brush.get());
}

// Measures the texts above the checkbox from the top of layout down, draws each one if asked to, and returns
// the y below the last.
static float layOutTexts(GpGraphics *graphics, const HintFonts &fonts, RectF layout, bool draw)
{
    const struct {
        const OwnedFont &font;
        std::wstring_view text;
        ARGB color;
    } texts[] = {{fonts.heading, labels.hintHeading, 0xFFFFFFFF},
                 {fonts.body, labels.hintBody, 0xFFF5F5F5},
                 {fonts.note, labels.hintSpare, noteColor}};
    for (const auto &[font, text, color] : texts) {
        if (text.empty()) continue;
        const RectF measured = measureText(graphics, fonts, font, text, layout);
        if (draw) drawText(graphics, fonts, font, text, layout, color);
        layout.Y += measured.Height + textGap;
    }
    return layout.Y;
}

// The size of the checkbox's label, for a box at left, top and a row of that width.
static RectF measureOptOut(GpGraphics *graphics, const HintFonts &fonts, float left, float top, float width)
{
    const RectF layout(left + labelOffset, top, width - labelOffset, 400.0f);
    return measureText(graphics, fonts, fonts.note, labels.hintOptOut, layout);
}

bool measureHintPanel(GpGraphics *graphics, int width, int height, RectF &rect)
{
    if (width < minOwnerSide || height < minOwnerSide) return false;
    HintFonts fonts;
    if (!makeFonts(fonts)) return false;
    const float cardWidth = std::min(float(width) - 40.0f, 920.0f);
    const float x = (float(width) - cardWidth) / 2.0f;
    const float textLeft = x + sideMargin;
    const float textWidth = cardWidth - 2.0f * sideMargin;
    const RectF texts(textLeft, cardTop + endMargin, textWidth, float(height));
    float y = layOutTexts(graphics, fonts, texts, false);
    if (!labels.hintOptOut.empty()) {
        y += dividerGap + textGap;
        const RectF label = measureOptOut(graphics, fonts, textLeft, y, textWidth);
        const float rowHeight = std::max(label.Height, boxSide);
        hintCheckRect = RectF(textLeft, y, std::max(textWidth, label.Width + labelOffset), rowHeight);
        y += rowHeight;
    }
    rect = RectF(x, cardTop, cardWidth, y + endMargin - cardTop);
    return true;
}

static void drawCard(GpGraphics *graphics, const RectF &card)
{
    const OwnedPath path =
        roundedRect(card.X, card.Y, card.X + card.Width, card.Y + card.Height, cornerRadius);
    if (!path) return;  // GdipDrawPath may not check for null
    const OwnedBrush fill = solidBrush(0xD2181C2Cu);
    const OwnedPen outline = plainPen(0xDCFFFFFF, 2.0f);
    GdipFillPath(graphics, fill.get(), path.get());
    GdipDrawPath(graphics, outline.get(), path.get());
}

static void drawOptOutRow(GpGraphics *graphics, const HintFonts &fonts, float left, float top, float width)
{
    const RectF label = measureOptOut(graphics, fonts, left, top, width);
    const float rowHeight = std::max(label.Height, boxSide);
    const OwnedPen box = plainPen(0xDCFFFFFF, 1.5f);
    GdipDrawRectangle(graphics, box.get(), left, top, boxSide, boxSide);
    if (hintOptOutChecked) {
        const OwnedPen tick = plainPen(0xFFFFFFFF, 2.0f);
        GdipDrawLine(graphics, tick.get(), left + 3.0f, top + 9.900001f, left + 7.56f, top + 14.0f);
        GdipDrawLine(graphics, tick.get(), left + 6.84f, top + 14.0f, left + 15.0f, top + 3.0f);
    }
    const RectF layout(left + labelOffset, top, width - labelOffset, rowHeight);
    drawText(graphics, fonts, fonts.note, labels.hintOptOut, layout, noteColor);
}

bool drawHintPanel(GpGraphics *graphics)
{
    HintFonts fonts;
    if (!makeFonts(fonts)) return false;
    const RectF &card = hintPanelRect;
    drawCard(graphics, card);
    const float left = card.X + sideMargin;
    const float width = card.Width - 2.0f * sideMargin;
    float y = layOutTexts(graphics, fonts, RectF(left, card.Y + endMargin, width, card.Height), true);
    if (!labels.hintOptOut.empty()) {
        y += dividerGap;
        const OwnedPen divider = plainPen(0x5AFFFFFF, 1.0f);
        GdipDrawLine(graphics, divider.get(), left, y, left + width, y);
        y += textGap;
        drawOptOutRow(graphics, fonts, left, y, width);
    }
    return true;
}
