#include "settings/language.h"

#include <gtest/gtest.h>

#include "support/fakes.h"

// Each language's eleven labels in order, a bar behind each; made from the translators' sheet.
static const uint32_t sheet[] = {0xC21010DB, 0xA5F9E0E6, 0x8DBE367F, 0x97AEE11B,
                                 0x47B88680, 0x564B9F76, 0x1AF4E9CE};

static int chosenLanguage()
{
    std::wstring all;
    for (const std::wstring &label :
         {labels.stampTitle, labels.eraserTitle, labels.doodleTitle, labels.stampSubtitle,
          labels.eraserSubtitle, labels.doodleSubtitle, labels.purchaseLine, labels.hintHeading,
          labels.hintBody, labels.hintSpare, labels.hintOptOut})
        all += label + L"|";
    return int(std::find(sheet, sheet + 7, hashOf(all)) - sheet);
}

TEST(Language, FollowsWindowsWhereTheSettingNamesNone)
{
    const Desk desk({});
    const std::pair<LANGID, int> rows[] = {{0x0411, 0}, {0x0409, 1}, {0x0412, 1}, {0x0804, 2},
                                           {0x1004, 2}, {0x0404, 1}, {0x0C04, 1}, {0x0004, 1},
                                           {0x0C0C, 3}, {0x0410, 4}, {0x0C07, 5}, {0x0C0A, 6}};
    for (const auto &[windowsLanguage, index] : rows) {
        fakes.uiLanguage = windowsLanguage;
        chooseLanguage(L" korean ");
        EXPECT_EQ(chosenLanguage(), index) << std::hex << windowsLanguage;
        chooseLanguage(L"It");
        EXPECT_EQ(chosenLanguage(), 4);
    }
}

TEST(Language, IsNamedByAWordOrItsFirstTwoLetters)
{
    const std::pair<const wchar_t *, int> rows[] = {{L"ja-JP", 0},
                                                    {L"JAPANESE", 0},
                                                    {L"\tEnGlish\r\n", 1},
                                                    {L"zh-TW", 2},
                                                    {L"Chinese", 2},
                                                    {L"chinesisch", 9},
                                                    {L"simplified CHINESE", 2},
                                                    {L"français", 3},
                                                    {L"italian", 4},
                                                    {L"german", 5},
                                                    {L"germany", 9},
                                                    {L"desk", 5},
                                                    {L" Spanish ", 6},
                                                    {L"espresso", 6},
                                                    {L" \t\r\n", 9},
                                                    {L"d", 9},
                                                    {L"ＦＲ", 9},
                                                    {L"\u00A0fr", 9}};
    for (const auto &[text, expected] : rows) {
        int index = 9;
        EXPECT_EQ(parseLanguageOverride(text, index), expected != 9);
        EXPECT_EQ(index, expected) << std::string(text, text + wcslen(text));
    }
}
