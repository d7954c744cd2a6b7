#include "settings/options.h"

#include <gtest/gtest.h>

#include <fstream>

#include "settings/folders.h"
#include "support/fakes.h"

static std::string bytesOf(const std::wstring &text)
{
    return "\xFF\xFE" + std::string(reinterpret_cast<const char *>(text.data()), 2 * text.size());
}

// config.ini, read and written as bytes.
struct OptionsFile : Desk, TestFolder {
    const std::filesystem::path path = std::filesystem::path(dataDirectory()) / "config.ini";
    OptionsFile() : Desk({}) { ensureDataDirectories(); }
    std::string content() const
    {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
};

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
    std::string noise(1 << 20, ' ');
    std::generate(noise.begin(), noise.end(), [] { return char(markRng()); });
    const std::wstring legacy = L"MasterVolumeClampPercent=50\nLlKeyboardHook=0\nShowIdleExitHint=0\n";
    const std::wstring renamed = L"VolumeClampPercent=0\nBlockSystemShortcuts=1\nShowExitHint=1\n";
    const std::pair<std::string, std::string> rows[] = {
        {"", "0 111 120 "},
        {noise, "0 111 120 "},
        {bytesOf(L"[UI]\r\nLanguage=\r\n[zubbly]\nsoundenabled = 0\n"), "0 101 120 "},
        {bytesOf(L"[Zubbly]\nVolumeClampPercent=250\nBlockSystemShortcuts=7\nSoundEnabled=-1\n"),
         "100 111 120 "},
        {bytesOf(L"[Zubbly]\nVolumeClampPercent=-5\nShowExitHint=no\n"), "0 110 120 "},
        {bytesOf(L"[Zubbly]\nAutoSaveIntervalSeconds=61\n[UI]\nLanguage= FR \n"), "0 111 61 FR"},
        {bytesOf(L"[Zubbly]\nAutoSaveIntervalSeconds=59\n"), "0 111 60 "},
        {bytesOf(L"[Zubbly]\n" + legacy), "50 010 120 "},
        {bytesOf(L"[Zubbly]\n" + legacy + renamed), "0 111 120 "},
        {bytesOf(L"[UI]\nLanguage=" + std::wstring(70, L'x')), "0 111 120 " + std::string(63, 'x')},
        {"\xEF\xBB\xBF; by hand\n[Zubbly]\nVolumeClampPercent=40\n[UI]\nLanguage=de\n", "40 111 120 de"}};
    for (const auto &[content, options] : rows) {
        for (const DWORD attributes : {FILE_ATTRIBUTE_NORMAL, FILE_ATTRIBUTE_READONLY}) {
            const OptionsFile file;
            std::ofstream(file.path, std::ios::binary) << content;
            SetFileAttributesW(file.path.c_str(), attributes);
            EXPECT_EQ(loaded(), options) << content.substr(0, 300);
            EXPECT_TRUE(file.content() == content) << content.substr(0, 300);
            SetFileAttributesW(file.path.c_str(), FILE_ATTRIBUTE_NORMAL);
        }
    }
}

TEST(Options, ComeWithATemplateWhereNoFileIs)
{
    const OptionsFile file;
    EXPECT_EQ(loaded(), "0 111 120 ");
    const std::string content = file.content();
    std::wstring text(content.size() / 2, 0);
    memcpy(text.data(), content.data(), content.size());
    ASSERT_EQ(text.substr(0, 9), L"\xFEFF[Zubbly]");
    EXPECT_EQ(hashOf(text.substr(1)), 0xB5F06E1Au);  // of the 1084 code units that follow
    std::filesystem::remove(file.path);
    std::filesystem::create_directory(file.path);
    EXPECT_EQ(loaded(), "0 111 120 ");
    fakes.folder /= L"no\"folder";
    EXPECT_EQ(loaded(), "0 111 120 ");
}
