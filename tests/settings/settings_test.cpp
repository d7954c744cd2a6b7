#include <gtest/gtest.h>

#include <fstream>

#include "settings/folders.h"
#include "settings/language.h"
#include "settings/options.h"
#include "shell/base/files.h"
#include "support/desk.h"
#include "support/recorded.h"

namespace fs = std::filesystem;

static std::string bytesIn(const fs::path &path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

static void put(const fs::path &path, const std::string &bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
}

static std::string utf16(const std::wstring &text)
{
    return "\xFF\xFE" + std::string(reinterpret_cast<const char *>(text.data()), 2 * text.size());
}

static std::string utf8(const std::wstring &text)
{
    const std::u8string bytes = fs::path(text).u8string();
    return {bytes.begin(), bytes.end()};
}

static auto loaded()
{
    AppOptions o = {77, false, false, false, 7, L"old"};
    loadOptions(o);
    return std::tuple(o.volumeClampPercent, o.blockSystemShortcuts, o.soundEnabled, o.showExitHint,
                      o.autoSaveIntervalSeconds, o.language);
}
static const std::tuple defaults(0, true, true, true, 120, std::wstring());

TEST(Options, ComeFromWhateverAParentsEditorLeft)
{
    const std::wstring legacy =
        L"[Zubbly]\nMasterVolumeClampPercent=50\nLlKeyboardHook=0\nShowIdleExitHint=0\n";
    // Volume, hook, sound, hint, seconds between saves, language.
    const std::pair<std::string, decltype(loaded())> rows[] = {
        {"", defaults},
        {std::string(1 << 20, '\xA7'), defaults},
        {utf16(L"[UI]\r\nLanguage=\r\n[zubbly]\nsoundenabled = 0\n"), {0, true, false, true, 120, L""}},
        {utf16(L"[Zubbly]\nVolumeClampPercent=101\nBlockSystemShortcuts=7\nSoundEnabled=-1\n"),
         {100, true, true, true, 120, L""}},
        {utf16(L"[Zubbly]\nVolumeClampPercent=-1\nShowExitHint=no\n"), {0, true, true, false, 120, L""}},
        {utf16(L"[Zubbly]\nAutoSaveIntervalSeconds=61\n[UI]\nLanguage= FR \n"),
         {0, true, true, true, 61, L"FR"}},
        {utf16(L"[Zubbly]\nAutoSaveIntervalSeconds=59\n[UI]\nSoundEnabled=0\n"),
         {0, true, true, true, 60, L""}},
        {utf16(legacy), {50, false, true, false, 120, L""}},
        {utf16(legacy + L"VolumeClampPercent=0\nBlockSystemShortcuts=1\nShowExitHint=1\n"), defaults},
        {utf16(L"[UI]\nLanguage=" + std::wstring(64, L'x')),
         {0, true, true, true, 120, std::wstring(63, L'x')}},
        {"\xEF\xBB\xBF; by hand\n[Zubbly]\nVolumeClampPercent=40\n[UI]\nLanguage=de\n",
         {40, true, true, true, 120, L"de"}}};
    for (const auto &[content, expected] : rows) {
        Desk desk({});
        ensureDataDirectories();
        const fs::path path = fs::path(dataDirectory()) / "config.ini";
        put(path, content);
        EXPECT_EQ(loaded(), expected) << testing::PrintToString(content.substr(0, 160));
        EXPECT_TRUE(bytesIn(path) == content)
            << "changed: " << testing::PrintToString(content.substr(0, 160));
    }
}

TEST(Options, ComeWithATemplateWhereNoFileIs)
{
    Desk desk({});
    const fs::path path = fs::path(dataDirectory()) / "config.ini";
    EXPECT_EQ(loaded(), defaults);
    const std::string bytes = bytesIn(path);
    std::wstring text(bytes.size() / 2, 0);
    memcpy(text.data(), bytes.data(), bytes.size());
    ASSERT_EQ(text.substr(0, 1), L"\xFEFF");
    std::string lines;
    for (const char letter : utf8(text.substr(1)))
        lines += letter != '\n' ? std::string(1, letter) : lines.ends_with('\r') ? "\n" : " (line feed)\n";
    std::erase(lines, '\r');
    expectRecorded("settings/template", lines);
    for (const fs::path &obstacle : {path, path.parent_path()}) {
        fs::remove_all(path.parent_path());
        fs::create_directories(path.parent_path().parent_path());
        obstacle == path ? void(fs::create_directories(path)) : put(obstacle, "a file");
        EXPECT_EQ(loaded(), defaults) << obstacle;
    }
}

TEST(Folders, LieWhereTheSystemSaysElseWhereTheEnvironmentSaysElseHere)
{
    Desk desk({});
    EXPECT_EQ(dataDirectory(), desk.folder() / "Roaming\\norvanta\\Zubworks\\Zubbly");
    const Failing unknown("SHGetKnownFolderPath");
    const std::wstring longest(259, L'x');
    for (const auto &[variable, base] : std::map<std::wstring, std::wstring>{
             {L"C:\\ふたば", L"C:\\ふたば"}, {longest, longest}, {longest + L"x", L"."}, {L"", L"."}}) {
        desk.environment[L"APPDATA"] = variable;
        EXPECT_EQ(roamingAppData(), base);
    }
    for (const auto &[path, above] : {std::pair(L"C:/a/b.exe", L"C:/a"),
                                      {L"C:\\b.exe", L"C:\\"},
                                      {L"C:\\", L"C:\\"},
                                      {L"\\\\server\\share\\x.exe", L"\\\\server\\share"},
                                      {L"b.exe", L""}})
        EXPECT_EQ(parentFolder(path), above);
}

TEST(Folders, TakeTwoFilesOverAndKeepWhatStandsInTheWay)
{
    Desk desk({});
    const fs::path family = desk.folder() / "Roaming\\norvanta", older = family / "Zubbly",
                   data = dataDirectory();
    const std::string bytes =
        utf16(L"[Zubbly]\r\nAutoSaveIntervalSeconds=99\n\x1A");  // no text mode keeps these
    fs::create_directories(older);
    for (const char *name : {"config.ini", "display_name.txt", "other.txt"})
        put(older / name, bytes);
    EXPECT_EQ(std::get<4>(loaded()), 99);  // before the template is written
    EXPECT_TRUE(bytesIn(data / "config.ini") == bytes && bytesIn(older / "config.ini") == bytes);
    EXPECT_TRUE(bytesIn(data / "display_name.txt") == bytes && !fs::exists(data / "other.txt"));
    put(data / "display_name.txt", "new");
    EXPECT_TRUE(ensureDataDirectories());
    EXPECT_EQ(bytesIn(data / "display_name.txt"), "new");
    EXPECT_TRUE(fs::is_directory(data / "SavedPictures"));
    for (const char *inTheWay : {"Zubworks\\Zubbly\\SavedPictures", "Zubworks"}) {
        fs::remove_all(family / inTheWay);
        put(family / inTheWay, "file");
        EXPECT_EQ(ensureDataDirectories(), std::string(inTheWay) != "Zubworks");
        EXPECT_EQ(bytesIn(family / inTheWay), "file");
    }
}

TEST(Language, IsNamedByTheSettingElseByWindows)
{
    struct {
        const wchar_t *language;
        std::vector<std::wstring> settings;
        std::vector<LANGID> windows;
    } rows[] = {{L"ja", {L"ja-JP", L"JAPANESE"}, {0x0411}},
                {L"en", {L"\tEnGlish\r\n"}, {0x0409, 0x0412, 0x0404, 0x0C04}},
                {L"zh", {L"zh-TW", L"Chinese", L"simplified CHINESE"}, {0x0804, 0x1004}},
                {L"fr", {L"français", L"french"}, {0x0C0C}},
                {L"it", {L"italian"}, {0x0410}},
                {L"de", {L"german", L"desk"}, {0x0C07}},
                {L"es", {L" Spanish ", L"espresso"}, {0x0C0A}}};
    const Desk desk({});
    std::wstring all;
    for (const auto &[language, settings, windows] : rows) {
        chooseLanguage(language);
        const LabelSet &l = labels;
        const std::string heading = utf8(std::wstring(l.hintHeading));
        for (const auto &label :
             {l.stampTitle, l.eraserTitle, l.doodleTitle, l.stampSubtitle, l.eraserSubtitle, l.doodleSubtitle,
              l.purchaseLine, l.hintHeading, l.hintBody, l.hintSpare, l.hintOptOut})
            all.append(all.empty() || all.back() == L'\n' ? L"" : L" | ").append(label);
        all += L"\n";
        for (const std::wstring &setting : settings) {
            chooseLanguage(setting);
            EXPECT_EQ(utf8(std::wstring(labels.hintHeading)), heading) << setting;
        }
        for (const LANGID windowsLanguage : windows) {
            for (const wchar_t *nothing :
                 {L"", L" \t\r\n", L"chinesisch", L"germany", L"d", L"ＦＲ", L"\u00A0fr"}) {
                Desk::current->uiLanguage = windowsLanguage;
                chooseLanguage(nothing);
                EXPECT_EQ(utf8(std::wstring(labels.hintHeading)), heading)
                    << std::hex << windowsLanguage << " " << nothing;
            }
        }
    }
    expectRecorded("settings/labels", utf8(all));
}
