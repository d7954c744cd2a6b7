#include <gtest/gtest.h>

#include <fstream>

#include "hint/fonts.h"
#include "hint/idle.h"
#include "hint/panel.h"
#include "settings/language.h"
#include "support/desk.h"

namespace fs = std::filesystem;

TEST(HintCard, CutsNoTextInAnyLanguage)
{
    Desk desk(oneMonitor);
    desk.programFile = fs::absolute("../../windows/Zubbly.exe");  // the typeface, if it was fetched
    REPLACE(GdipDrawString, [](GpGraphics *graphics, const WCHAR *text, INT length, const GpFont *font,
                               const RectF *layout, const GpStringFormat *format) {
        RectF box, room = hintPanelRect;
        INT fitted = 0;
        GdipMeasureString(graphics, text, length, font, layout, format, &box, &fitted, nullptr);
        room.Inflate(-17.0f, -13.0f);
        EXPECT_TRUE(fitted == length && room.Contains(box));
        return Ok;
    });
    for (const wchar_t *language : {L"ja", L"en", L"zh", L"fr", L"it", L"de", L"es"}) {
        SCOPED_TRACE(language);
        chooseLanguage(language);
        showHintPanel(primaryWindow(), 800, 600);  // on wider windows there is more room
    }
}

TEST(HintCard, StandsTopCentreWhereItHasRoomAndIsTickedInItsRow)
{
    REPLACE(GdipMeasureString, [](GpGraphics *, const WCHAR *, INT, const GpFont *, const RectF *layout,
                                  const GpStringFormat *, RectF *box) {
        *box = RectF(layout->X, layout->Y, 200.0f, 16.0f);  // whatever the machine's fonts are
        return Ok;
    });
    std::string places;
    for (const auto &[width, height] : {std::pair{63, 600}, {800, 63}, {64, 64}, {1921, 600}, {959, 600}}) {
        Desk desk({{-100, 50, -100 + width, 50 + height}});
        chooseLanguage(L"en");
        showHintPanel(primaryWindow(), width, height);
        places += desk.text({"UpdateL"});
        if (hintPanelClick(200, 110)) places += "with a box there\n";
    }
    EXPECT_EQ(places, "UpdateLayeredWindow w1 -86 64 36 50 255 x2\nwith a box there\n"
                      "UpdateLayeredWindow w1 394 64 933 126 255 x2\n"
                      "UpdateLayeredWindow w1 -86 64 931 126 255 x2\nwith a box there\n");
    Desk desk(oneMonitor);
    chooseLanguage(L"en");
    showHintPanel(primaryWindow(), 800, 600);
    const std::array<int, 3> clicks[] = {{37, 102, 0},  {38, 101, 0},  {38, 102, 1}, {400, 110, 1},
                                         {762, 119, 0}, {761, 120, 0}, {761, 119, 1}};
    for (const auto &[x, y, ticks] : clicks)
        EXPECT_EQ(hintPanelClick(x, y), ticks) << x << "," << y;
    closeHintPanel();
    EXPECT_FALSE(exitHintEnabled);
}

TEST(IdleHint, ComesAfterHalfARoundOfTheTickCounterToo)
{
    Desk desk(oneMonitor);
    armIdleHint(surfaces[0]);
    hintNotBefore = desk.tick + 1;
    for (const DWORD ms : {1u, 7998u, 0x80000000u}) {
        EXPECT_FALSE(hintVisible);
        desk.moveClocks(ms);
        idleTick(primaryWindow());
    }
    EXPECT_TRUE(hintVisible);
    discardHintPanel(primaryWindow());
    EXPECT_FALSE(hintVisible || idleHintWindow || hintOwnerWindow);
}

TEST(HintFonts, LieInTheSharedFolderElseBesideTheProgramAndAreTriedOnce)
{
    Desk desk(oneMonitor);
    const fs::path top = desk.folder(), fonts = top / "toy\\Fonts";
    desk.programFile = (top / "toy\\Zubbly.exe").wstring();
    fs::create_directories(fonts);
    fs::copy_file("Z:/usr/share/wine/fonts/tahoma.ttf", fonts / "MPLUSRounded1c-Black.ttf");
    std::ofstream(fonts / "MPLUSRounded1c-Regular.ttf") << "no font";
    REPLACE(GdipCreateFontFamilyFromName, [](const WCHAR *, GpFontCollection *all, GpFontFamily **family) {
        return SYSTEM(GdipCreateFontFamilyFromName)(L"Tahoma", all, family);
    });
    EXPECT_EQ(usableHeadingFamily(), &blackFontHolder.family);
    EXPECT_EQ(usableTextFamily(), systemFamily(false)) << "each falls back alone";
    EXPECT_EQ(loadPrivateFamily(regularFontHolder, L"MPLUSRounded1c-Regular.ttf"), nullptr);
    HintFamily broken;
    hintHeadingFamily = systemFamily(true);
    EXPECT_EQ(headingStyle(&blackFontHolder.family) + headingStyle(&broken), 0);
    EXPECT_EQ(headingStyle(hintHeadingFamily), 1);
    hintHeadingFamily->lastStatus = broken.lastStatus;
    EXPECT_EQ(usableHeadingFamily(), nullptr) << "a failed question spoils one showing";
    EXPECT_EQ(usableHeadingFamily(), hintHeadingFamily);
    const Failing noBold("GdipIsStyleAvailable");
    EXPECT_EQ(systemFamily(true), systemFamily(false) + 4) << "the last one";
    fs::create_directory(top / "Fonts");
    // The nearest launcher counts.
    for (const char *launcher : {"none.exe", "Zubworks.exe", "toy\\Zubworks.exe"}) {
        std::ofstream(top / launcher) << "launcher";
        const bool own = std::string(launcher) != "Zubworks.exe";
        EXPECT_EQ(resolveFontPath(L"MPLUSRounded1c-Black.ttf") != L"", own) << launcher;
    }
}
