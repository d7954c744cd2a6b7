#include "menu/menu.h"

#include <algorithm>
#include <cmath>

#include "clearing/actions.h"
#include "marks/angles.h"
#include "marks/primitives.h"
#include "settings/language.h"

// Pixels.
static const int buttonWidth = 300;
static const int buttonHeight = 178;
static const int buttonPitch = buttonWidth + 20;
static const int screenGap = 12;  // to the edges of the virtual screen

static void addEntry(int left, int top, int id, std::wstring_view title, std::wstring_view subtitle)
{
    MenuEntry entry;
    entry.rect = {left, top, left + buttonWidth, top + buttonHeight};
    entry.id = id;
    entry.title = title;
    entry.subtitle = subtitle;
    entry.color = pickMenuColor();
    menuEntries.push_back(entry);
}

// The box of all buttons, grown by around.
static RECT menuBounds(int around)
{
    RECT bounds = {};
    for (const MenuEntry &entry : menuEntries)
        UnionRect(&bounds, &bounds, &entry.rect);
    InflateRect(&bounds, around, around);
    return bounds;
}

static bool meetsButton(const RECT &rect)
{
    return std::any_of(menuEntries.begin(), menuEntries.end(), [&](const MenuEntry &entry) {
        RECT common = {};
        return IntersectRect(&common, &entry.rect, &rect) != FALSE;
    });
}

void openMenu(POINT point)
{
    menuOpen = true;
    menuEntries.clear();
    const int chance = randInt(0, 99);
    const int button = chance < 40 ? 0 : chance < 85 ? 1 : 2;  // the button under the point
    const VirtualScreen screen = virtualScreen();
    const int lowest = screen.left + screenGap;
    const int highest = screen.left + screen.width - screenGap;
    const int rowWidth = 2 * buttonPitch + buttonWidth;
    int left = int(point.x) - button * buttonPitch - buttonWidth / 2;
    left = std::max(left, lowest);
    left = std::min(left, highest - rowWidth);  // applied last: on a narrow screen the right edge wins
    int top = std::max(int(point.y) - buttonHeight / 2, screen.top + screenGap);
    top = std::min(top, screen.top + screen.height - screenGap - buttonHeight);
    addEntry(left, top, drawAction, labels.doodleTitle, labels.doodleSubtitle);
    addEntry(left + buttonPitch, top, scatterAction, labels.stampTitle, labels.stampSubtitle);
    addEntry(left + 2 * buttonPitch, top, wipeAction, labels.eraserTitle, labels.eraserSubtitle);
    for (const MonitorSurface &surface : surfaces) {
        if (!surface.hwnd || !meetsButton(surface.rect)) continue;
        HDC dc = GetDC(surface.hwnd);
        drawMenu(dc, surface.rect);
        GdiFlush();
        ReleaseDC(surface.hwnd, dc);
    }
}

void menuClick(POINT point)
{
    if (!menuOpen) return;
    const auto hit = std::find_if(menuEntries.begin(), menuEntries.end(), [&](const MenuEntry &entry) {
        return PtInRect(&entry.rect, point) != FALSE;
    });
    const RECT bounds = menuBounds(28);  // a little more than drawMenu's backdrop
    menuOpen = false;
    for (const MonitorSurface &surface : surfaces) {
        RECT part = {};
        if (!surface.hwnd || !IntersectRect(&part, &bounds, &surface.rect)) continue;
        OffsetRect(&part, -surface.rect.left, -surface.rect.top);
        InvalidateRect(surface.hwnd, &part, FALSE);
        UpdateWindow(surface.hwnd);  // the menu is gone before the action starts
    }
    if (hit != menuEntries.end()) startAction(hit->id);
}

void dropMenu()
{
    if (!menuOpen) return;
    menuOpen = false;
    for (const MonitorSurface &surface : surfaces)
        invalidateWhole(surface);
}

// A star with a small heart at its side.
static void drawStampIcon(GraphicsScope &scope, const OwnedBrush &white, float x, float y)
{
    GpPointF star[10];
    for (int i = 0; i < 10; ++i) {
        const float angle = float(i) * pi / 5.0f - pi / 2.0f;
        const float radius = i % 2 == 0 ? 19.0f : 8.0f;
        star[i] = {x + cosf(angle) * radius, y + sinf(angle) * radius};
    }
    scope.note(GdipFillPolygon(scope.graphics, white.get(), star, 10, FillModeAlternate));
    const OwnedPath heart = newPath();
    GdipAddPathBezier(heart.get(), x + 26.0f, y + 16.0f, x + 10.0f, y + 2.0f, x + 12.0f, y - 10.0f, x + 26.0f,
                      y - 2.0f);
    GdipAddPathBezier(heart.get(), x + 26.0f, y - 2.0f, x + 36.0f, y - 10.0f, x + 42.0f, y + 2.0f, x + 26.0f,
                      y + 16.0f);
    GdipClosePathFigure(heart.get());
    scope.note(GdipFillPath(scope.graphics, white.get(), heart.get()));
}

static void drawEraserIcon(GraphicsScope &scope, const OwnedBrush &white, float x, float y)
{
    const OwnedPen edge = plainPen(0xEBFFFFFF, 4.0f);
    paintRect(scope, white, edge, x - 30.0f, y - 15.0f, 60.0f, 30.0f);
    drawLine(scope, edge, x - 16.0f, y - 15.0f, x + 16.0f, y + 15.0f);
}

static void drawDoodleIcon(GraphicsScope &scope, float x, float y)
{
    const OwnedPen line = plainPen(0xF0FFFFFF, 4.0f);
    scope.note(GdipDrawBezier(scope.graphics, line.get(), x - 30.0f, y + 8.0f, x - 10.0f, y - 16.0f, x + 8.0f,
                              y + 26.0f, x + 30.0f, y + 2.0f));
}

static void drawIcon(GraphicsScope &scope, int id, float x, float y)
{
    const OwnedBrush white = solidBrush(0xF0FFFFFF);
    switch (id) {
    case scatterAction: drawStampIcon(scope, white, x, y); break;
    case wipeAction: drawEraserIcon(scope, white, x, y); break;
    case drawAction: drawDoodleIcon(scope, x, y); break;
    }
}

// Null fonts if the family is missing: the menu then has no text.
struct MenuFonts {
    OwnedFontFamily family;
    OwnedFont title, subtitle;
    OwnedStringFormat centred;
};

static OwnedFont menuFont(const OwnedFontFamily &family, float size, FontStyle style)
{
    GpFont *font = nullptr;
    GdipCreateFont(family.get(), size, style, UnitPixel, &font);
    return OwnedFont(font);
}

static MenuFonts createMenuFonts()
{
    MenuFonts fonts;
    GpFontFamily *family = nullptr;
    GdipCreateFontFamilyFromName(L"Yu Gothic UI", nullptr, &family);
    fonts.family.reset(family);
    fonts.title = menuFont(fonts.family, 38.0f, FontStyleBold);
    fonts.subtitle = menuFont(fonts.family, 23.0f, FontStyleRegular);
    GpStringFormat *format = nullptr;
    GdipCreateStringFormat(StringFormatFlagsLineLimit, LANG_NEUTRAL, &format);
    GdipSetStringFormatAlign(format, StringAlignmentCenter);
    GdipSetStringFormatLineAlign(format, StringAlignmentCenter);
    GdipSetStringFormatTrimming(format, StringTrimmingWord);
    fonts.centred.reset(format);
    return fonts;
}

static void drawText(GraphicsScope &scope, const MenuFonts &fonts, const OwnedFont &font,
                     std::wstring_view text, const GpRectF &box, uint32_t argb)
{
    const OwnedBrush ink = solidBrush(argb);
    scope.note(GdipDrawString(scope.graphics, text.data(), int(text.size()), font.get(), &box,
                              fonts.centred.get(), ink.get()));
}

static void drawEntry(GraphicsScope &scope, const MenuFonts &fonts, const MenuEntry &entry, float left,
                      float top)
{
    const float width = float(entry.rect.right - entry.rect.left);
    const float height = float(entry.rect.bottom - entry.rect.top);
    const OwnedPath shape = roundedRect(left, top, left + width, top + height, 20.0f);
    const OwnedBrush fill = solidBrush(entry.color, 0xE1);
    const OwnedPen outline = plainPen(0xF0FFFFFF, 3.0f);
    paintPath(scope, fill, outline, shape);
    drawIcon(scope, entry.id, left + width / 2.0f, top + 28.0f);
    drawText(scope, fonts, fonts.title, entry.title, {left, top + 54.0f, width, 56.0f}, 0xFFFFFFFF);
    drawText(scope, fonts, fonts.subtitle, entry.subtitle, {left, top + 112.0f, width, 60.0f}, 0xFFF6F6C8);
}

void drawMenu(HDC dc, const RECT &rect)
{
    if (!menuOpen) return;
    GraphicsScope scope(dc);
    scope.note(GdipSetTextRenderingHint(scope.graphics, TextRenderingHintClearTypeGridFit));
    RECT bounds = menuBounds(24);
    OffsetRect(&bounds, -rect.left, -rect.top);
    const OwnedPath backdrop =
        roundedRect(float(bounds.left), float(bounds.top), float(bounds.right), float(bounds.bottom), 24.0f);
    const OwnedBrush shade = solidBrush(0x6E000000);
    scope.note(GdipFillPath(scope.graphics, shade.get(), backdrop.get()));
    const MenuFonts fonts = createMenuFonts();
    for (const MenuEntry &entry : menuEntries)
        drawEntry(scope, fonts, entry, float(entry.rect.left - rect.left), float(entry.rect.top - rect.top));
}
