#pragma once
// A sheet of small pictures to look at: each cell is the first canvas of a desk, scaled down.
#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "support/desk.h"

inline void seedAll(uint32_t seed)
{
    markRng.seed(seed);
    soundRng.seed(seed + 1);
    clipRng.seed(seed + 2);
}

class Sheet {
  public:
    static constexpr int cellWidth = 192, cellHeight = 120, labelHeight = 16;
    static constexpr POINT middle = {cellWidth * 3, cellHeight * 3};

    // The size of the desk that a cell shows whole, at a sixth of its size.
    static RECT desk() { return {0, 0, cellWidth * 6, cellHeight * 6}; }

    explicit Sheet(int columnCount) : columns(columnCount) {}

    // The part of the canvas around a point of which scale pixels make one of the sheet.
    void add(const MonitorSurface &surface, const std::wstring &label, int scale = 6, POINT around = middle)
    {
        BITMAPINFO info = {};
        info.bmiHeader = {
            sizeof info.bmiHeader, surface.width, -surface.height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        std::vector<uint8_t> from(size_t(surface.width * surface.height * 4));
        GetDIBits(surface.canvasDC, surface.canvasBitmap, 0, UINT(surface.height), from.data(), &info,
                  DIB_RGB_COLORS);
        const int left =
            std::clamp<int>(around.x - cellWidth * scale / 2, 0, surface.width - cellWidth * scale);
        const int top =
            std::clamp<int>(around.y - cellHeight * scale / 2, 0, surface.height - cellHeight * scale);
        std::vector<uint8_t> to(size_t(cellWidth * cellHeight * 4));
        for (size_t i = 0; i < to.size(); ++i) {
            const int x = left + int(i / 4) % cellWidth * scale;
            const int y = top + int(i / 4) / cellWidth * scale;
            int sum = 0;
            for (int k = 0; k < scale * scale; ++k)
                sum += from[size_t((y + k / scale) * surface.width + x + k % scale) * 4 + i % 4];
            to[i] = uint8_t(sum / (scale * scale));
        }
        cells.push_back({label, std::move(to)});
    }

    void save(const std::wstring &path) const
    {
        const int rows = (int(cells.size()) + columns - 1) / columns;
        const int pitchX = cellWidth + 4;
        const int pitchY = cellHeight + labelHeight;
        GpBitmap *sheet = nullptr;
        GpGraphics *graphics = nullptr;
        GdipCreateBitmapFromScan0(columns * pitchX, rows * pitchY, 0, PixelFormat24bppRGB, nullptr, &sheet);
        GdipGetImageGraphicsContext(sheet, &graphics);
        GdipGraphicsClear(graphics, 0xFFFFFFFF);
        for (size_t i = 0; i < cells.size(); ++i) {
            const auto &[label, pixels] = cells[i];
            if (pixels.empty()) continue;
            const int x = int(i) % columns * pitchX;
            const int y = int(i) / columns * pitchY;
            GpBitmap *cell = nullptr;
            GdipCreateBitmapFromScan0(cellWidth, cellHeight, cellWidth * 4, PixelFormat32bppRGB,
                                      const_cast<BYTE *>(pixels.data()), &cell);
            GdipDrawImageRectI(graphics, cell, x, y, cellWidth, cellHeight);
            GdipDisposeImage(cell);
            write(graphics, label, float(x), float(y + cellHeight));
        }
        const CLSID png = {0x557cf406, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};
        GdipDeleteGraphics(graphics);
        GdipSaveImageToFile(sheet, path.c_str(), &png, nullptr);
        GdipDisposeImage(sheet);
    }

  private:
    static void write(GpGraphics *graphics, const std::wstring &text, float x, float y)
    {
        GpFontFamily *family = nullptr;
        GpFont *font = nullptr;
        GpSolidFill *ink = nullptr;
        GdipCreateFontFamilyFromName(L"Tahoma", nullptr, &family);
        GdipCreateFont(family, 11.0f, FontStyleRegular, UnitPixel, &font);
        GdipCreateSolidFill(0xFF000000, &ink);
        const RectF place = {x, y, float(cellWidth), float(labelHeight)};
        GdipDrawString(graphics, text.c_str(), int(text.size()), font, &place, nullptr, ink);
        GdipDeleteBrush(ink);
        GdipDeleteFont(font);
        GdipDeleteFontFamily(family);
    }

    int columns;
    std::vector<std::pair<std::wstring, std::vector<uint8_t>>> cells;
};
