#include "hint/panel.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "hint/count_file.h"
#include "hint/fonts.h"
#include "hint/idle.h"
#include "settings/folders.h"
#include "settings/language.h"
#include "support/desk.h"
#include "support/recorded.h"

namespace fs = std::filesystem;

TEST(HintPanel, CutsNoTextInAnyLanguageAtAnyWidth)
{
    Desk desk(oneMonitor);
    desk.programFile = fs::absolute("../../windows/Zubbly.exe");  // the typeface, if it was fetched
    float above = 0.0f;
    int texts = 0;
    REPLACE(GdipDrawString, [&](GpGraphics *graphics, const WCHAR *text, INT length, const GpFont *font,
                                const RectF *layout, const GpStringFormat *format) {
        RectF box;
        INT fitted = 0;
        GdipMeasureString(graphics, text, length, font, layout, format, &box, &fitted, nullptr);
        EXPECT_EQ(fitted, length) << "cut off";
        EXPECT_GE(box.Y, above);
        EXPECT_LE(box.X + box.Width, hintPanelRect.X + hintPanelRect.Width - 17);
        above = box.Y + box.Height;
        ++texts;
        return Ok;
    });
    GpGraphics *graphics = nullptr;
    GdipCreateFromHDC(surfaces[0].canvasDC, &graphics);
    for (const wchar_t *language : {L"ja", L"en", L"zh", L"fr", L"it", L"de", L"es"}) {
        chooseLanguage(language);
        for (const int width : {1920, 1280, 800}) {
            SCOPED_TRACE(testing::Message() << language << " " << width);
            above = 34.0f;
            texts = 0;
            measureHintPanel(graphics, width, 1080, hintPanelRect);
            drawHintPanel(graphics);
            EXPECT_EQ(texts, 3);
            EXPECT_LE(above, hintPanelRect.Y + hintPanelRect.Height - 13.0f);
        }
    }
    GdipDeleteGraphics(graphics);
}

TEST(HintPanel, IsDrawnInItsPlacesWhateverTheTypeface)
{
    Desk desk(oneMonitor);
    chooseLanguage(L"en");
    REPLACE(GdipMeasureString, [](GpGraphics *, const WCHAR *, INT, const GpFont *, const RectF *layout,
                                  const GpStringFormat *, RectF *box) {
        *box = RectF(layout->X, layout->Y, 200.0f, 40.0f);
        return Ok;
    });
    showHintPanel(primaryWindow(), 800, 600);
    desk.calls.clear();
    hintPanelClick(int(hintCheckRect.X), int(hintCheckRect.Y));
    expectRecorded("hint/card with its box checked",
                   desk.text({"Create", "SetString", "Draw", "Fill", "Set", "Graphics", "Update", "Show"}));
}

TEST(HintPanel, StandsTopCentreForTenSecondsAndTakesNothing)
{
    for (const auto &[width, height, cardWidth] : {std::tuple(63, 600, 0),
                                                   {800, 63, 0},
                                                   {64, 64, 24},
                                                   {959, 600, 919},
                                                   {960, 600, 920},
                                                   {1921, 600, 920}}) {
        SCOPED_TRACE(testing::Message() << width << " by " << height);
        Desk desk({{-100, 50, -100 + width, 50 + height}});
        showHintPanel(primaryWindow(), width, height);
        EXPECT_EQ(hintVisible, cardWidth > 0);
        if (!hintVisible) continue;
        const float left = float(width - cardWidth) / 2.0f;
        EXPECT_TRUE(hintPanelRect.X == left && hintPanelRect.Y == 20 &&
                    hintPanelRect.Width == float(cardWidth));
        EXPECT_TRUE(hintBox.left == int(left) - 6 && hintBox.top == 14 && hintBox.bottom <= height);
        EXPECT_EQ(hintBox.right, int(ceilf(left)) + cardWidth + 6);
        const DeskWindow *const card = desk.find(hintFloatWindow);
        EXPECT_TRUE(card->visible && card->extended == 0x8080088 && card->owner == primaryWindow());
        EXPECT_TRUE(card->rect.left == hintBox.left - 100 && card->rect.top == 64);
        EXPECT_EQ(desk.count("SetFo") + desk.count("SetActive"), 0);
        EXPECT_EQ(hintNotBefore, desk.tick + 10250);
        desk.wait(9999);
        EXPECT_TRUE(hintVisible);
        desk.wait(1);
        EXPECT_FALSE(hintVisible || hintBitmap || hintAlpha || desk.find(hintFloatWindow)->visible);
        EXPECT_TRUE(desk.timers.empty());
        EXPECT_EQ(lastInputTick, desk.tick);
        EXPECT_EQ(hintNotBefore, desk.tick + 8000);
    }
}

TEST(HintPanel, HasNoPixelOutsideItsCard)
{
    Desk desk(oneMonitor);
    showHintPanel(primaryWindow(), 800, 600);
    ARGB corner = 1;
    ARGB middle = 0;
    GdipBitmapGetPixel(hintBitmap, 0, 0, &corner);
    GdipBitmapGetPixel(hintBitmap, 400, 20, &middle);
    EXPECT_EQ(corner, 0u);
    EXPECT_EQ(middle >> 24, 0xD2u);
    const HWND card = hintFloatWindow;
    idleHintWindow = primaryWindow();
    discardHintPanel(primaryWindow());
    EXPECT_FALSE(desk.find(card) || hintFloatWindow || hintVisible || hintOwnerWindow || idleHintWindow ||
                 hintBitmap);
}

TEST(HintPanel, IsTurnedOffByItsCheckboxWhenItCloses)
{
    for (const int clicks : {0, 2, 1}) {
        Desk desk(oneMonitor);
        ensureDataDirectories();
        const std::wstring settings = (fs::path(dataDirectory()) / "config.ini").wstring();
        exitHintEnabled = true;
        chooseLanguage(L"en");
        EXPECT_FALSE(hintPanelClick(100, 100));  // hidden
        armIdleHint(surfaces[0]);
        showHintPanel(primaryWindow(), 800, 600);
        EXPECT_FALSE(hintOptOutChecked);
        const int left = int(hintCheckRect.X), top = int(ceilf(hintCheckRect.Y));
        const int right = int(ceilf(hintCheckRect.X + hintCheckRect.Width));
        const int bottom = int(ceilf(hintCheckRect.Y + hintCheckRect.Height));
        for (const POINT &off : {POINT{left - 1, top}, {left, top - 1}, {right, top}, {left, bottom}})
            EXPECT_FALSE(hintPanelClick(off.x, off.y)) << off.x << "," << off.y;
        for (int i = 0; i < clicks; ++i) {  // the box first, then the far end of its label's row
            const POINT point = i == 0 ? POINT{left, top} : POINT{right - 1, bottom - 1};
            desk.send(hintFloatWindow, WM_LBUTTONDOWN, 0,
                      MAKELPARAM(point.x - hintBox.left, point.y - hintBox.top));
            EXPECT_EQ(hintOptOutChecked, i == 0);
        }
        EXPECT_TRUE(exitHintEnabled);
        closeHintPanel();
        EXPECT_EQ(GetPrivateProfileIntW(L"Zubbly", L"ShowExitHint", 7, settings.c_str()),
                  clicks == 1 ? 0u : 7u);
        EXPECT_EQ(exitHintEnabled, clicks != 1);
        EXPECT_EQ(desk.timers.count({primaryWindow(), 11}), clicks != 1);
    }
}

TEST(HintCount, IsNothingUnlessTheFileBeginsWithANumber)
{
    Desk desk(oneMonitor);
    const fs::path file = fs::path(dataDirectory()) / "exit_hint_launches.txt";
    EXPECT_EQ(readHintCount(), 0);
    writeHintCount(1);  // makes the folders
    for (const auto &[content, count] : {std::pair("2\r\n", 2),
                                         {"3", 3},
                                         {" 99 bottles", 99},
                                         {"\t\n+0000000000000000000000002", 2},
                                         {"2147483647", 2147483647},
                                         {"2147483648", 0},
                                         {"18446744073709551618", 0},
                                         {"abc", 0},
                                         {"-5", 0},
                                         {"99999999999999", 0},
                                         {"", 0}}) {
        std::ofstream(file, std::ios::binary) << content;
        EXPECT_EQ(readHintCount(), count) << content;
    }
    writeHintCount(3);
    std::stringstream written;
    written << std::ifstream(file).rdbuf();
    EXPECT_EQ(written.str(), "3\n");
    fs::remove(file);
    fs::create_directory(file);
    writeHintCount(1);
    EXPECT_EQ(readHintCount(), 0);
}
