#include "settings/folders.h"

#include <gtest/gtest.h>

#include <fstream>

#include "support/fakes.h"

namespace fs = std::filesystem;

static std::string contentOf(const fs::path &path)
{
    std::string word;
    std::ifstream(path) >> word;
    return word;
}

TEST(Folders, LieWhereTheSystemSaysElseWhereTheEnvironmentSaysElseHere)
{
    const Desk desk({});
    const TestFolder folder;
    EXPECT_EQ(dataDirectory(), folder.path / "norvanta\\Zubworks\\Zubbly");
    fakes.failing = {"SHGetKnownFolderPath"};
    const std::wstring longest(259, L'x');
    const std::pair<std::wstring, std::wstring> rows[] = {
        {L"C:\\ふたば", L"C:\\ふたば"}, {longest, longest}, {longest + L"x", L"."}, {L"", L"."}};
    for (const auto &[variable, base] : rows) {
        SetEnvironmentVariableW(L"APPDATA", variable.empty() ? nullptr : variable.c_str());
        EXPECT_EQ(roamingAppData().wstring(), base);
    }
}

TEST(Folders, TakeTwoFilesOverAndKeepWhatStandsInTheWay)
{
    const Desk desk({});
    const TestFolder folder;
    fakes.folder /= L"ふたば";
    const fs::path family = fakes.folder / "norvanta";
    EXPECT_TRUE(ensureDataDirectories());
    EXPECT_TRUE(fs::is_directory(dataDirectory() / "SavedPictures"));
    fs::create_directories(family / "Zubbly");
    for (const char *name : {"config.ini", "display_name.txt", "other.txt"})
        std::ofstream(family / "Zubbly" / name) << name;
    std::ofstream(dataDirectory() / "display_name.txt") << "new";
    EXPECT_TRUE(ensureDataDirectories());
    EXPECT_EQ(contentOf(dataDirectory() / "config.ini"), "config.ini");
    EXPECT_EQ(contentOf(dataDirectory() / "display_name.txt"), "new");
    EXPECT_EQ(contentOf(family / "Zubbly\\display_name.txt"), "display_name.txt");
    EXPECT_FALSE(fs::exists(dataDirectory() / "other.txt"));
    for (const char *inTheWay : {"Zubworks\\Zubbly\\SavedPictures", "Zubworks"}) {
        fs::remove_all(family / inTheWay);
        std::ofstream(family / inTheWay) << "file";
        EXPECT_EQ(ensureDataDirectories(), std::string(inTheWay) != "Zubworks");
        EXPECT_EQ(contentOf(family / inTheWay), "file");
    }
}
