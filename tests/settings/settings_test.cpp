#include <gtest/gtest.h>

#include <fstream>

#include "settings/folders.h"
#include "settings/language.h"
#include "settings/options.h"
#include "support/desk.h"
#include "support/recorded.h"

namespace fs = std::filesystem;

// Volume, what is on, seconds between saves, language.
static std::wstring loaded()
{
    AppOptions o = {77, false, false, false, 7, L"old"};  // nothing of it stays
    loadOptions(o);
    return std::to_wstring(o.volumeClampPercent) + (o.blockSystemShortcuts ? L" hook" : L"") +
           (o.soundEnabled ? L" sound" : L"") + (o.showExitHint ? L" hint " : L" ") +
           std::to_wstring(o.autoSaveIntervalSeconds) + L" " + o.language;
}

TEST(Options, ComeFromATemplateOrAnOlderFileInTheRightFolder)
{
    Desk desk({});
    const fs::path family = desk.folder() / "Roaming\\norvanta", data = family / "Zubworks\\Zubbly";
    EXPECT_EQ(loaded(), L"0 hook sound hint 120 ");
    const std::string bytes(
        std::istreambuf_iterator<char>(std::ifstream(data / "config.ini", std::ios::binary).rdbuf()), {});
    EXPECT_TRUE(bytes.starts_with(std::string("\xFF\xFE[\0", 4)) && bytes.size() == 2170);
    std::string text;
    std::ranges::copy_if(bytes.substr(2), std::back_inserter(text), [](char c) { return c && c != '\r'; });
    expectRecorded("settings/template", text);
    EXPECT_EQ(std::ranges::count(bytes, '\n') - std::ranges::count(bytes, '\r'), 2) << "bare line feeds";
    fs::create_directories(family / "Zubbly");
    for (const char *name : {"config.ini", "display_name.txt", "other.txt"})
        std::ofstream(family / "Zubbly" / name)
            << "[Zubbly]\nMasterVolumeClampPercent=50\nLlKeyboardHook=0\n";
    EXPECT_EQ(loaded(), L"0 hook sound hint 120 ") << "what the template says";
    fs::remove(data / "config.ini");
    EXPECT_EQ(loaded(), L"50 sound hint 120 ") << "before the template is written";
    EXPECT_TRUE(fs::exists(data / "display_name.txt") && !fs::exists(data / "other.txt"));
    std::ofstream(data / "config.ini", std::ios::app)
        << "VolumeClampPercent=101\nBlockSystemShortcuts=1\nShowIdleExitHint=0\n[UI]\nLanguage="
        << std::string(64, 'x');
    EXPECT_EQ(loaded(), L"100 hook sound 120 " + std::wstring(63, L'x')) << "newer names count";
    const Failing unknown("SHGetKnownFolderPath");
    const std::wstring longest(259, L'x');
    for (const auto &[variable, base] : {std::pair{longest, longest}, {longest + L"x", L"."}, {L"", L"."}}) {
        desk.environment[L"APPDATA"] = variable;
        EXPECT_EQ(dataDirectory(), base + L"\\norvanta\\Zubworks\\Zubbly");
    }
}

TEST(Language, IsNamedByTheSettingElseByWindows)
{
    Desk desk({});
    std::map<std::wstring, std::wostringstream> names;  // by the labels
    const auto choose = [&](const wchar_t *setting, int windows) {
        desk.uiLanguage = LANGID(windows);
        chooseLanguage(setting);
        std::wstring all;
        for (const auto &label : std::bit_cast<std::array<std::wstring_view, 11>>(labels))
            all.append(label).append(L" | ");
        names[all] << trimWhitespace(setting) << L"/" << std::hex << windows << L" ";
    };
    for (const int windows : {0x411, 0x412, 0x404, 0x804, 0xC04, 0x1004, 0x1404, 0xC0C, 0x810, 0xC07, 0xC0A})
        choose(L" \t\r\n", windows);
    for (const wchar_t *setting :
         {L"ja-JP", L"\tEnGlish\r\n", L"Chinese", L"simplified CHINESE", L"ZH-TW", L"français", L"it",
          L"german", L"germany", L"chinesisch", L"d", L"\u00A0fr"})
        choose(setting, 0xC0A);
    std::wstring text;
    for (const auto &[all, name] : names)
        text += all + name.str() + L"\n";
    const std::u8string bytes = fs::path(text).u8string();
    expectRecorded("settings/labels and who gets them", {bytes.begin(), bytes.end()});
}
