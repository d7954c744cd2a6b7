#include "hint/panel.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "hint/fonts.h"
#include "hint/idle.h"
#include "settings/folders.h"
#include "settings/language.h"
#include "support/fakes.h"

namespace fs = std::filesystem;

// A real window for the card to float over, and no card after it.
struct Owner {
    HWND window =
        CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 800, 600, nullptr, nullptr, nullptr, nullptr);
    ~Owner()
    {
        discardHintPanel(window);
        DestroyWindow(window);
    }
};

TEST(HintPanel, CutsNoTextInAnyLanguageAtAnyWidth)
{
    Desk desk(oneMonitor);
    fakes.programFile = fs::absolute("../../windows/Zubbly.exe");  // the typeface, if it was fetched
    GpGraphics *graphics = nullptr;
    GdipCreateFromHDC(surfaces[0].canvasDC, &graphics);
    for (const wchar_t *language : {L"ja", L"en", L"zh", L"fr", L"it", L"de", L"es"}) {
        chooseLanguage(language);
        for (const int width : {1920, 1280, 800}) {
            recorded.draws.clear();
            measureHintPanel(graphics, width, 1080, hintPanelRect);
            drawHintPanel(graphics);
            EXPECT_EQ(std::count_if(recorded.draws.begin(), recorded.draws.end(),
                                    [](const DrawCall &call) {
                                        return call.what == "DrawLine" && call.argb == 0x5AFFFFFF &&
                                               call.penWidth == 1.0f;
                                    }),
                      1);
            std::erase_if(recorded.draws, [](const DrawCall &call) { return call.what != "DrawString"; });
            ASSERT_EQ(recorded.draws.size(), 3u);
            float above = 34.0f;
            for (const DrawCall &text : recorded.draws) {
                const RectF box(text.numbers[4], text.numbers[5], text.numbers[6], text.numbers[7]);
                EXPECT_EQ(text.numbers[8], text.numbers[9]) << "cut off: " << language << width;
                EXPECT_GE(box.Y, above) << language << width;
                EXPECT_LE(box.X + box.Width, hintPanelRect.X + hintPanelRect.Width - 17) << language << width;
                above = box.Y + box.Height;
            }
            EXPECT_LE(above, hintPanelRect.Y + hintPanelRect.Height - 13.0f) << language << width;
        }
    }
    GdipDeleteGraphics(graphics);
}

TEST(HintPanel, StandsTopCentreForTenSecondsAndTakesNothing)
{
    Desk desk(oneMonitor);
    Owner owner;
    for (const auto &[width, height, cardWidth] : {std::tuple(63, 600, 0),
                                                   {800, 63, 0},
                                                   {64, 64, 24},
                                                   {959, 600, 919},
                                                   {960, 600, 920},
                                                   {1921, 600, 920}}) {
        recorded = {};
        showHintPanel(owner.window, width, height);
        EXPECT_EQ(hintVisible, cardWidth > 0);
        if (!hintVisible) continue;
        const float left = float(width - cardWidth) / 2.0f;
        EXPECT_TRUE(hintPanelRect.X == left && hintPanelRect.Y == 20 &&
                    hintPanelRect.Width == float(cardWidth));
        EXPECT_TRUE(hintBox.left == int(left) - 6 && hintBox.top == 14 && hintBox.bottom <= height);
        EXPECT_EQ(hintBox.right, int(ceilf(left)) + cardWidth + 6);
        EXPECT_EQ((recorded.timers[{owner.window, 9}]), 10000u);
        EXPECT_EQ(hintNotBefore, fakes.tick + 10250);
        closeHintPanel();
        EXPECT_TRUE(recorded.timers.empty());
        EXPECT_EQ(lastInputTick, fakes.tick);
        EXPECT_EQ(hintNotBefore, fakes.tick + 8000);
        EXPECT_FALSE(hintBitmap || hintVisible || hintAlpha || IsWindowVisible(hintFloatWindow));
    }
    showHintPanel(owner.window, 800, 600);
    ARGB corner = 1;
    ARGB middle = 0;
    GdipBitmapGetPixel(hintBitmap, 0, 0, &corner);
    GdipBitmapGetPixel(hintBitmap, 400, 20, &middle);
    EXPECT_EQ(corner, 0u);
    EXPECT_EQ(middle >> 24, 0xD2u);
    EXPECT_EQ(GetWindowLongW(hintFloatWindow, GWL_EXSTYLE), 0x8080088);
    EXPECT_EQ(GetWindow(hintFloatWindow, GW_OWNER), owner.window);
    EXPECT_EQ(countCalls("SetFo"), 0);  // neither focus nor foreground
    EXPECT_TRUE(IsWindowVisible(hintFloatWindow));
    HWND old = hintFloatWindow;
    idleHintWindow = owner.window;
    discardHintPanel(owner.window);
    EXPECT_FALSE(IsWindow(old) || hintFloatWindow || hintVisible || hintOwnerWindow || idleHintWindow ||
                 hintBitmap);
}

TEST(HintPanel, IsTurnedOffByItsCheckboxWhenItCloses)
{
    Desk desk(oneMonitor);
    TestFolder folder;
    Owner owner;
    ensureDataDirectories();
    const std::wstring settings = (std::filesystem::path(dataDirectory()) / "config.ini").wstring();
    Having enabled(exitHintEnabled, true);
    Having idle(idleHintWindow, owner.window);
    chooseLanguage(L"en");
    EXPECT_FALSE(hintPanelClick(100, 100));  // hidden
    for (const int clicks : {0, 2, 1}) {
        SetTimer(owner.window, 11, 500, nullptr);
        showHintPanel(owner.window, 800, 600);
        EXPECT_FALSE(hintOptOutChecked);
        const int left = int(hintCheckRect.X), top = int(ceilf(hintCheckRect.Y));
        const int right = int(ceilf(hintCheckRect.X + hintCheckRect.Width));
        const int bottom = int(ceilf(hintCheckRect.Y + hintCheckRect.Height));
        for (const POINT &off : {POINT{left - 1, top}, {left, top - 1}, {right, top}, {left, bottom}})
            EXPECT_FALSE(hintPanelClick(off.x, off.y)) << off.x << "," << off.y;
        for (int i = 0; i < clicks; ++i) {  // the box first, then the far end of its label's row
            const POINT point = i == 0 ? POINT{left, top} : POINT{right - 1, bottom - 1};
            const LPARAM inFloat = MAKELPARAM(point.x - hintBox.left, point.y - hintBox.top);
            SendMessageW(hintFloatWindow, WM_LBUTTONDOWN, 0, inFloat);
            EXPECT_EQ(hintOptOutChecked, i == 0);
        }
        EXPECT_TRUE(exitHintEnabled);
        closeHintPanel();
        EXPECT_EQ(GetPrivateProfileIntW(L"Zubbly", L"ShowExitHint", 7, settings.c_str()),
                  clicks == 1 ? 0u : 7u);
        EXPECT_EQ(exitHintEnabled, clicks != 1);
        EXPECT_EQ(recorded.timers.count({owner.window, 11}), clicks != 1);
    }
}

TEST(HintCount, IsNothingUnlessTheFileBeginsWithANumber)
{
    Desk desk(oneMonitor);
    TestFolder folder;
    const fs::path file = std::filesystem::path(dataDirectory()) / "exit_hint_launches.txt";
    EXPECT_EQ(readHintCount(), 0);
    writeHintCount(1);  // makes the folders
    for (const auto &[content, count] : {std::pair("2\r\n", 2),
                                         {"3", 3},
                                         {" 99 bottles", 99},
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
