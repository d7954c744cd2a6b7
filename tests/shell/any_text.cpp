// What comes from outside may hold anything. Natively, so that the sanitizers see what is read.
#include <cwchar>
#include <random>
#include <sstream>

#include <gtest/gtest.h>

#include "hint/count_parser.h"
#include "settings/language_table.h"
#include "shell/base/launch_monitor.h"

TEST(Parsers, TakeWhatTheLibraryTakesAndNothingElse)
{
    std::mt19937 dice(1);
    for (int round = 0; round < 200'000; ++round) {
        // Up to four edits away from a good text.
        std::string text = std::array{"-640,100,0,580", " +0021474836470\r\n", " zh-TW\t"}[dice() % 3];
        for (auto edits = dice() % 5; edits > 0; --edits) {
            const size_t at = dice() % (text.size() + 1);
            dice() % 2 ? text.insert(at, 1, "0189 \t,-+;xZ"[dice() % 12]) : text.erase(at, 1);
        }
        int count = 0;
        if (!(std::istringstream(text) >> count) || count < 0) count = 0;
        FILE *const file = fmemopen(text.data(), text.size() + 1, "r");  // with its zero, so never empty
        ASSERT_EQ(parseHintCount(file), count) << text;
        fclose(file);

        const std::wstring wide(text.begin(), text.end());
        long left = 0, top = 0, right = 0, bottom = 0;
        int end = 0;
        const int numbers =
            std::swscanf(wide.c_str(), L"%ld,%ld,%ld,%ld%n", &left, &top, &right, &bottom, &end);
        const bool fits = numbers == 4 && (wide.c_str()[end] == L'\0' || wide[size_t(end)] == L' ') &&
                          left < right && top < bottom;
        MonitorBounds monitor = {};
        ASSERT_EQ(parseLaunchMonitor(wide.c_str(), monitor), fits) << text;
        ASSERT_EQ(monitor.bottom, fits ? bottom : 0) << text;
        int language = -1;
        const bool named = parseLanguageOverride(wide, language);
        ASSERT_EQ(language, named ? chinese : -1) << text;
    }
}
