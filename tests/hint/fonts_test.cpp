#include "hint/fonts.h"

#include <gtest/gtest.h>

#include <fstream>

#include "support/desk.h"

namespace fs = std::filesystem;

// Makes a tree; a name with a slash at its end is a folder.
static void makeTree(const fs::path &root, const std::vector<std::string> &names)
{
    fs::remove_all(root);
    fs::create_directories(root / "toy");
    for (const std::string &name : names) {
        fs::create_directories((root / name).parent_path());
        if (name.back() != '/') std::ofstream(root / name) << "no font";
    }
}

TEST(HintFonts, LieInTheSharedFolderOrElseBesideTheProgram)
{
    Desk desk(oneMonitor);
    struct Row {
        std::vector<std::string> names;
        const char *found;
    } rows[] = {{{"toy/Fonts/f.ttf"}, "toy/Fonts/f.ttf"},
                {{"Fonts/f.ttf"}, ""},
                {{"Zubworks.exe", "Fonts/f.ttf", "toy/Fonts/f.ttf"}, "Fonts/f.ttf"},
                {{"Zubworks.exe", "Fonts/", "toy/Fonts/f.ttf"}, ""},
                {{"Zubworks.exe", "Fonts", "toy/Fonts/f.ttf"}, "toy/Fonts/f.ttf"},
                {{"Zubworks.exe/", "toy/Fonts/f.ttf/"}, "toy/Fonts/f.ttf"},
                {{"Zubworks.exe", "toy/Zubworks.exe", "Fonts/f.ttf", "toy/Fonts/f.ttf"}, "toy/Fonts/f.ttf"}};
    for (const Row &row : rows) {
        makeTree(desk.folder(), row.names);
        desk.programFile = (desk.folder() / "toy" / "Zubbly.exe").wstring();
        const fs::path expected = *row.found ? desk.folder() / row.found : fs::path();
        EXPECT_EQ(fs::path(resolveFontPath(L"f.ttf")).generic_string(), expected.generic_string());
        desk.programFile += std::wstring(260, L'x');
        EXPECT_EQ(resolveFontPath(L"f.ttf"), L"");
    }
}

TEST(HintFonts, AreTriedOnceAndEachFallsBackAlone)
{
    Desk desk(oneMonitor);
    makeTree(desk.folder(), {"toy/Fonts/MPLUSRounded1c-Regular.ttf"});
    desk.programFile = (desk.folder() / "toy" / "Zubbly.exe").wstring();
    const fs::path fonts = desk.folder() / "toy" / "Fonts";
    fs::copy_file("Z:/usr/share/wine/fonts/tahoma.ttf", fonts / "MPLUSRounded1c-Black.ttf");
    EXPECT_EQ(usableHeadingFamily(), &blackFontHolder.family);
    EXPECT_EQ(usableTextFamily(), systemFamily(false));
    fs::remove(fonts / "MPLUSRounded1c-Regular.ttf");  // garbage until now
    fs::copy_file("Z:/usr/share/wine/fonts/tahoma.ttf", fonts / "MPLUSRounded1c-Regular.ttf");
    EXPECT_EQ(loadPrivateFamily(regularFontHolder, L"MPLUSRounded1c-Regular.ttf"), nullptr);
    EXPECT_TRUE(regularFontHolder.tried && regularFontHolder.bytes.empty() && !regularFontHolder.collection);
    EXPECT_EQ(headingStyle(nullptr), 0);
    EXPECT_EQ(headingStyle(&blackFontHolder.family), 0);
    EXPECT_EQ(headingStyle(systemFamily(true)), 1);
    HintFamily broken;
    EXPECT_EQ(headingStyle(&broken), 0);
    hintHeadingFamily = systemFamily(true);
    hintHeadingFamily->lastStatus = broken.lastStatus;
    EXPECT_EQ(usableHeadingFamily(), nullptr);  // a failed question spoils one showing
    EXPECT_EQ(usableHeadingFamily(), hintHeadingFamily);
}
