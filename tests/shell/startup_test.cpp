#include "shell/startup.h"

#include <gtest/gtest.h>

#include <sstream>

#include "settings/language.h"
#include "shell/lockdown.h"
#include "shell/tablet.h"
#include "support/recorded.h"

namespace fs = std::filesystem;

// All that was done but drawing and making objects, a line for calls of the same function in a row.
static std::string done(Desk &desk)
{
    static const std::string left =
        " DeleteDC DeleteObject CreateCompatibleDC CreateCompatibleBitmap CreateDIBSection SelectObject "
        "CreateSolidBrush CreateRectRgn CombineRgn SetWindowRgn SetLayeredWindowAttributes FillRect "
        "InvalidateRect GdiFlush UpdateLayeredWindow GetPrivateProfileInt GetPrivateProfileString "
        "SHGetKnownFolderPath CreateDirectory RegisterTouchWindow ImmAssociateContext DefWindowProc "
        "CoCreateInstance shell speech ";
    std::string lines, before;
    for (const auto &[text, numbers] : desk.calls) {
        const std::string name = text.substr(0, text.find(' '));
        const bool method = name == "volume" && text.size() == 8;  // levels have two digits
        if (imports().contains("Gdip" + name) || left.find(" " + name + " ") < left.size() || method)
            continue;
        if (name != before) lines += "\n" + text;
        if (name == before && text != name) lines += "," + text.substr(name.size());
        before = name;
    }
    desk.calls.clear();
    return lines.erase(0, 1) + "\n";
}

static std::string facts, undone;  // of the last run: what came of it, and what was done at its end

static std::string startUp(const std::string &settings, const std::string &launches)
{
    Tablet desk;
    desk.monitors = twoMonitors;
    const fs::path counted = desk.settings(settings) / "exit_hint_launches.txt";
    std::ofstream(counted) << launches;
    std::string text;
    desk.play = [&] {
        std::string count;
        std::ifstream(counted) >> count;
        text = done(desk);
        facts = " to " + count + ", a menu title of " + std::to_string(labels.stampTitle.size()) +
                (canvasDirty ? ", to be saved\n" : "\n");
    };
    EXPECT_EQ(runApp(nullptr), 0);
    undone = done(desk);
    return text;
}

// Lines of one that the other has not.
static std::string linesOnlyIn(const std::string &text, const std::string &other, const char *mark)
{
    std::istringstream lines(text);
    std::string found;
    for (std::string line; std::getline(lines, line);)
        if (("\n" + other).find("\n" + line + "\n") == std::string::npos) found += mark + line + "\n";
    return found;
}

TEST(Startup, AsksTheSystemForWhatTheSettingsSay)
{
    const std::string usual = startUp("", "3");
    std::string table = usual + "when the loop ends\n" + undone + "launches 3" + facts;
    for (const std::string row :
         {"VolumeClampPercent=49, launches 3", "VolumeClampPercent=50, launches 3",
          "SoundEnabled=0, launches 3", "BlockSystemShortcuts=0, launches 3",
          "AutoSaveIntervalSeconds=59, launches 3", "AutoSaveIntervalSeconds=2147484, launches 3",
          "ShowExitHint=0, launches 0", "ShowExitHint=1, launches 2", "[UI]\nLanguage=fr, launches 3"}) {
        const std::string other = startUp(row.substr(0, row.find(',')), row.substr(row.size() - 1));
        table += row + facts + linesOnlyIn(usual, other, "  - ") + linesOnlyIn(other, usual, "  + ");
    }
    expectRecorded("shell/start-up and what settings change", table);
}

TEST(Startup, HandlesMessagesAndGivesBackComIfItWasTheFirstToAskForIt)
{
    for (const HRESULT result : {S_OK, S_FALSE}) {
        Tablet desk;
        desk.monitors = oneMonitor;
        const Replaced com("CoInitializeEx", [result](const Call &) { return result; });
        desk.play = [&desk] { desk.messages.push_back({windowHandle(0), WM_KEYDOWN, VK_LEFT, 0, 0, {}}); };
        EXPECT_EQ(runApp(nullptr), 0);
        EXPECT_EQ(desk.count("DrawLine c0"), 1);
        EXPECT_EQ(desk.count("CoUninitialize"), result == S_OK);
    }
}

TEST(Lock, GivesBackLaterWhatTheSystemRefusedToTake)
{
    Tablet desk;
    desk.monitors = oneMonitor;
    takeLock();
    {
        const Replaced refusing("SystemParametersInfoW", [](const Call &call) {
            return call.get<UINT>(0) % 2 ? 0 : call.passOn();  // what sets has odd numbers
        });
        releaseLock();
    }
    for (const int given : {5, 0}) {
        desk.calls.clear();
        releaseLock();
        EXPECT_EQ(desk.count("SystemParametersInfo"), 2 * given);
    }
}

TEST(Lock, HoldsTheOrientationThatIsFound)
{
    for (const int width : {600, 599}) {  // of a screen 600 high
        std::string held;                 // and given back
        for (const DWORD turned : {DMDO_DEFAULT, DMDO_90, DMDO_180, DMDO_270}) {
            Tablet desk;
            desk.monitors = {{0, 0, width, 600}};
            desk.orientation = turned;
            for (const auto change : {takeLock, takeLock, releaseLock, releaseLock})
                change();
            for (const CallLine &call : desk.callsOf({"rotation"}))
                held += call.text.substr(8);
        }
        EXPECT_EQ(held, width == 600 ? " 1 9 4 9 4 9 1 9" : " 2 9 2 9 8 9 8 9");
    }
}
