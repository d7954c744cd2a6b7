#include "settings/folders.h"

#include <gtest/gtest.h>

#include <fstream>

#include "shell/base/files.h"
#include "support/fakes.h"

namespace fs = std::filesystem;

static std::string bytesIn(const fs::path &path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(Paths, JoinAndPartAtEitherSeparator)
{
    EXPECT_EQ(inFolder(L"C:\\toys", L"a.png"), L"C:\\toys\\a.png");
    EXPECT_EQ(inFolder(L"C:\\", L"a.png"), L"C:\\a.png");
    EXPECT_EQ(inFolder(L".", L"a\\b"), L".\\a\\b");
    for (const auto &[path, above] :
         std::map<std::wstring, std::wstring>{{L"C:\\a\\b.exe", L"C:\\a"},
                                              {L"C:/a/b.exe", L"C:/a"},
                                              {L"C:\\b.exe", L"C:\\"},
                                              {L"C:\\", L"C:\\"},
                                              {L"\\\\server\\share\\x.exe", L"\\\\server\\share"},
                                              {L"C:\\a\\", L"C:\\a"},
                                              {L"b.exe", L""}})
        EXPECT_EQ(parentFolder(path), above);
}

TEST(Folders, LieWhereTheSystemSaysElseWhereTheEnvironmentSaysElseHere)
{
    const Desk desk({});
    const TestFolder folder;
    EXPECT_EQ(dataDirectory(), folder.path / "norvanta\\Zubworks\\Zubbly");
    fakes.failing = {"SHGetKnownFolderPath"};
    const std::wstring longest(259, L'x');
    for (const std::wstring &variable :
         {std::wstring(L"C:\\ふたば"), longest, longest + L"x", std::wstring()}) {
        SetEnvironmentVariableW(L"APPDATA", variable.empty() ? nullptr : variable.c_str());
        EXPECT_EQ(roamingAppData(), variable.empty() || variable.size() > 259 ? L"." : variable);
    }
}

TEST(Folders, TakeTwoFilesOverAndKeepWhatStandsInTheWay)
{
    const Desk desk({});
    const TestFolder folder;
    fakes.folder /= L"ふたば";
    const fs::path family = fakes.folder / "norvanta", older = family / "Zubbly", data = dataDirectory();
    const std::string bytes("\xFF\xFE\r\0\n\0\x1A\0", 8);  // a text mode would change each of them
    fs::create_directories(older);
    for (const char *name : {"config.ini", "display_name.txt", "other.txt"})
        std::ofstream(older / name, std::ios::binary) << bytes;
    EXPECT_TRUE(ensureDataDirectories());  // into a folder that is not there yet
    EXPECT_TRUE(bytesIn(data / "config.ini") == bytes && bytesIn(older / "config.ini") == bytes);
    EXPECT_TRUE(bytesIn(data / "display_name.txt") == bytes && !fs::exists(data / "other.txt"));
    std::ofstream(data / "display_name.txt") << "new";
    EXPECT_TRUE(ensureDataDirectories());
    EXPECT_EQ(bytesIn(data / "display_name.txt"), "new");
    EXPECT_TRUE(fs::is_directory(data / "SavedPictures"));
    for (const char *inTheWay : {"Zubworks\\Zubbly\\SavedPictures", "Zubworks"}) {
        fs::remove_all(family / inTheWay);
        std::ofstream(family / inTheWay) << "file";
        EXPECT_EQ(ensureDataDirectories(), std::string(inTheWay) != "Zubworks");
        EXPECT_EQ(bytesIn(family / inTheWay), "file");
    }
}
