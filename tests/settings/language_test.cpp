#include "settings/language.h"

#include <gtest/gtest.h>

#include "support/fakes.h"

TEST(Language, FollowsWindowsWhereTheSettingNamesNone)
{
    // Each language's eleven labels in order, a bar behind each; made from the translators' sheet.
    const uint32_t sheet[] = {0xC21010DB, 0xA5F9E0E6, 0x8DBE367F, 0x97AEE11B,
                              0x47B88680, 0x564B9F76, 0x1AF4E9CE};
    const Desk desk({});
    const std::pair<LANGID, int> rows[] = {{0x0411, 0}, {0x0409, 1}, {0x0412, 1}, {0x0804, 2},
                                           {0x1004, 2}, {0x0404, 1}, {0x0C04, 1}, {0x0C0C, 3},
                                           {0x0410, 4}, {0x0C07, 5}, {0x0C0A, 6}};
    for (const auto &[windowsLanguage, index] : rows) {
        fakes.uiLanguage = windowsLanguage;
        for (const std::wstring setting : {L" korean ", L"It"}) {
            chooseLanguage(setting);
            const LabelSet &l = labels;
            std::wstring all;
            for (const std::wstring_view label :
                 {l.stampTitle, l.eraserTitle, l.doodleTitle, l.stampSubtitle, l.eraserSubtitle,
                  l.doodleSubtitle, l.purchaseLine, l.hintHeading, l.hintBody, l.hintSpare, l.hintOptOut})
                all.append(label) += L"|";
            EXPECT_EQ(hashOf(all), sheet[setting == L"It" ? 4 : index]) << std::hex << windowsLanguage;
        }
    }
}

TEST(Language, IsNamedByAWordOrItsFirstTwoLetters)
{
    const std::vector<std::wstring> names[] = {
        {L"ja-JP", L"JAPANESE"},
        {L"\tEnGlish\r\n"},
        {L"zh-TW", L"Chinese", L"simplified CHINESE"},
        {L"français"},
        {L"italian"},
        {L"german", L"desk"},
        {L" Spanish ", L"espresso"},
        {L"chinesisch", L"germany", L" \t\r\n", L"d", L"ＦＲ", L"\u00A0fr"}};
    for (int i = 0; i < 8; ++i) {
        for (const std::wstring &name : names[i]) {
            int index = 7;
            EXPECT_EQ(parseLanguageOverride(name, index), i < 7);
            EXPECT_EQ(index, i) << name;
        }
    }
}
