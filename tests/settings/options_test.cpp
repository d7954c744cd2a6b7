#include "settings/options.h"

#include <gtest/gtest.h>

#include <fstream>

#include "settings/folders.h"
#include "support/fakes.h"

static std::string bytesOf(const std::wstring &text)
{
    return std::string(reinterpret_cast<const char *>(text.data()), 2 * text.size());
}
static std::string fileContent()
{
    std::ifstream file(dataDirectory() / "config.ini", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Volume, the three switches, interval and language, as loadOptions puts them over others.
static std::string loaded()
{
    AppOptions o = {77, false, false, false, 7, L"old"};
    loadOptions(o);
    return std::to_string(o.volumeClampPercent) + " " + "01"[o.blockSystemShortcuts] + "01"[o.soundEnabled] +
           "01"[o.showExitHint] + " " + std::to_string(o.autoSaveIntervalSeconds) + " " +
           std::string(o.language.begin(), o.language.end());
}

TEST(Options, ComeFromWhateverAParentsEditorLeft)
{
    const Desk desk({});
    std::string noise(1 << 20, ' ');
    std::generate(noise.begin(), noise.end(), [] { return char(markRng()); });
    const auto utf16 = [](const std::wstring &lines) { return bytesOf(L"\xFEFF[Zubbly]\r\n" + lines); };
    const std::pair<std::string, std::string> rows[] = {
        {"", "0 111 120 "},
        {noise, "0 111 120 "},
        {bytesOf(L"\xFEFF[Zubbly"), "0 111 120 "},
        {bytesOf(L"\xFEFF[UI]\r\nLanguage=\r\n[zubbly]\nsoundenabled = 0\n"), "0 101 120 "},
        {utf16(L"VolumeClampPercent=250\nBlockSystemShortcuts=7\nSoundEnabled=-1\n"
               L"AutoSaveIntervalSeconds=61\n[UI]\nLanguage= FR \n"),
         "100 111 61 FR"},
        {utf16(L"VolumeClampPercent=-5\nShowExitHint=no\nAutoSaveIntervalSeconds=10\n"), "0 110 60 "},
        {utf16(L"MasterVolumeClampPercent=50\nLlKeyboardHook=0\nShowIdleExitHint=0\n"), "50 010 120 "},
        {utf16(L"VolumeClampPercent=0\nBlockSystemShortcuts=1\nShowExitHint=1\n"
               L"MasterVolumeClampPercent=50\nLlKeyboardHook=0\nShowIdleExitHint=0\n"),
         "0 111 120 "},
        {utf16(L"VolumeClampPercent=30\nVolumeClampPercent=90\n"), "30 111 120 "},
        {bytesOf(L"\xFEFF[UI]\nLanguage=" + std::wstring(70, L'x')), "0 111 120 " + std::string(63, 'x')},
        {"[Zubbly]\nVolumeClampPercent=40\n[UI]\nLanguage=de\n", "40 111 120 de"},
        {"\xEF\xBB\xBF; by hand\n[Zubbly]\nVolumeClampPercent=40\n", "40 111 120 "},
    };
    for (const auto &[content, options] : rows) {
        for (const DWORD attributes : {FILE_ATTRIBUTE_NORMAL, FILE_ATTRIBUTE_READONLY}) {
            const TestFolder folder;
            ensureDataDirectories();
            const std::filesystem::path file = dataDirectory() / "config.ini";
            std::ofstream(file, std::ios::binary) << content;
            SetFileAttributesW(file.c_str(), attributes);
            EXPECT_EQ(loaded(), options) << content.substr(0, 300);
            EXPECT_TRUE(fileContent() == content) << content.substr(0, 300);
            SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL);
        }
    }
}

TEST(Options, ComeWithATemplateWhereNoFileIs)
{
    const Desk desk({});
    const TestFolder folder;
    EXPECT_EQ(loaded(), "0 111 120 ");
    const std::string content = fileContent();
    ASSERT_EQ(content.substr(0, 2), "\xFF\xFE");
    std::wstring text(content.size() / 2 - 1, 0);
    memcpy(text.data(), content.data() + 2, 2 * text.size());
    EXPECT_EQ(text.size(), 1084u);
    EXPECT_EQ(hashOf(text), 0xB5F06E1Au);
    std::filesystem::remove(dataDirectory() / "config.ini");
    std::filesystem::create_directory(dataDirectory() / "config.ini");
    EXPECT_EQ(loaded(), "0 111 120 ");
    fakes.folder /= L"no\"folder";
    EXPECT_EQ(loaded(), "0 111 120 ");
}
