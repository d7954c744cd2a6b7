#include "shell/startup.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "autodraw/sequencer.h"
#include "clearing/wipes.h"
#include "hint/panel.h"
#include "menu/menu.h"
#include "settings/language.h"
#include "shell/lockdown.h"
#include "shell/shutdown.h"
#include "shell/volume.h"
#include "shell/window_proc.h"
#include "support/objects.h"
#include "support/recorded.h"

namespace fs = std::filesystem;

// --- A tablet with everything that the program can ask for, whose objects tell what is done to them.
static void tell(const std::string &what)
{
    Desk::current->calls.push_back({what, what, {}});
}
static std::string nameOf(HWND window)
{
    return " w" + std::to_string((intptr_t(window) - firstWindow) / 2);
}
static HWND windowOfStore = nullptr;
static Object store = {objectMethods, "store", 0, [](int, void **key, void **value, void **, void **) {
                           const auto &property = *reinterpret_cast<const PROPERTYKEY *>(key);
                           EXPECT_TRUE(property.fmtid.Data1 == 0x32CE38B2 && property.pid == 2);
                           const bool taken = reinterpret_cast<const PROPVARIANT *>(value)->vt == VT_EMPTY;
                           tell("edgeSwipes" + nameOf(windowOfStore) + (taken ? " as before" : " off"));
                           return int64_t(S_OK);
                       }};
static Object taskbar = {objectMethods, "taskbar", 0,
                         [](int place, void **window, void **full, void **, void **) {
                             if (place == 8)
                                 tell("fullScreen" + nameOf(HWND(window)) + (LOWORD(full) ? " yes" : " no"));
                             return int64_t(S_OK);
                         }};

// The master volume, behind the enumerator and the device: the methods used stand at different places.
static float level = 0.0f;
static int failingPlace = 0;
static int64_t setLevel(Object *, float value, const GUID *)
{
    tell("volume " + std::to_string(std::lround(100.0f * value)));
    level = value;
    return S_OK;
}
static const auto volumeMethods = [] {
    static std::array<const void *, 40> methods;
    std::copy_n(objectMethods, 40, methods.begin());
    methods[7] = reinterpret_cast<const void *>(setLevel);
    return methods.data();
}();
static Object volume = {
    volumeMethods, "endpoint", 0, [](int place, void **flow, void **role, void **third, void **fourth) {
        if (place == 9) *reinterpret_cast<float *>(flow) = level;
        if (place == failingPlace) return int64_t(E_FAIL);
        if (place == 4)
            return LOWORD(flow) == eRender && LOWORD(role) == eConsole ? give(volume, third) : E_FAIL;
        return place == 3 ? give(volume, fourth) : S_OK;
    }};

struct Tablet : Desk {
    Tablet() : Desk({})
    {
        monitors = twoMonitors;
        foreground = windowHandle(0);
        HRESULT(*const openStore)
        (HWND, REFIID, void **) = [](HWND window, REFIID, void **out) {
            windowOfStore = window;
            return HRESULT(give(store, out));
        };
        BOOL (*const get)(int *) = [](int *preference) -> BOOL { return *preference = 9; };
        BOOL(*const set)
        (int) = [](int preference) -> BOOL {
            tell("rotation " + std::to_string(preference));
            return TRUE;
        };
        functions = {{"SHGetPropertyStoreForWindow", reinterpret_cast<void *>(openStore)},
                     {"GetDisplayAutoRotationPreferences", reinterpret_cast<void *>(get)},
                     {"SetDisplayAutoRotationPreferences", reinterpret_cast<void *>(set)}};
        makeObject = [](REFCLSID id, void **out) {
            if (id == CLSID_TaskbarList) return HRESULT(give(taskbar, out));
            return id == __uuidof(MMDeviceEnumerator) ? HRESULT(give(volume, out)) : REGDB_E_CLASSNOTREG;
        };
        level = 1.2f;
    }
    ~Tablet() { EXPECT_EQ(store.references + taskbar.references + volume.references, 0); }

    // All but drawing, a line for calls of the same function in a row.
    std::string done()
    {
        std::istringstream left(text());
        std::string lines, before;
        for (std::string line; std::getline(left, line);) {
            const std::string name = line.substr(0, line.find(' '));
            const bool draws = findImport("Gdip" + name) || name == "DeleteDC" || name == "DeleteObject" ||
                               name == "CreateDIBSection" || name == "CreateCompatibleDC" ||
                               name == "CreateCompatibleBitmap" || name == "SelectObject" ||
                               name == "GdiFlush" || name == "UpdateLayeredWindow" ||
                               name.starts_with("GetPrivateProfile") || name == "store" ||
                               name == "taskbar" || name == "endpoint";
            if (draws) continue;
            const bool again = name == before;
            if (!again || line != name) lines += again ? "," + line.substr(name.size()) : "\n" + line;
            before = name;
        }
        calls.clear();
        return lines.erase(0, 1) + "\n";
    }
};

static std::string startUp(const std::string &settings, const std::string &launches)
{
    Tablet desk;
    const fs::path data = desk.folder() / "Roaming" / "norvanta" / "Zubworks" / "Zubbly";
    fs::create_directories(data);
    std::ofstream(data / "config.ini") << settings << "\n";
    std::ofstream(data / "exit_hint_launches.txt") << launches;
    std::string done;
    desk.play = [&] {
        done = desk.done();
        std::ifstream count(data / "exit_hint_launches.txt");
        std::string written;
        count >> written;
        done += "launches " + written + "\nmenu title of " + std::to_string(labels.stampTitle.size()) + "\n";
    };
    EXPECT_EQ(runApp(nullptr), 0);
    return done;
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
    const std::string usual = startUp("[Zubbly]", "3");
    std::string table = usual;
    for (const auto &[setting, launches] : {std::pair{"VolumeClampPercent=40", "3"},
                                            {"MasterVolumeClampPercent=1", "3"},
                                            {"VolumeClampPercent=90", "3"},
                                            {"VolumeClampPercent=100", "3"},
                                            {"SoundEnabled=0", "3"},
                                            {"BlockSystemShortcuts=0", "3"},
                                            {"AutoSaveIntervalSeconds=59", "3"},
                                            {"AutoSaveIntervalSeconds=61", "3"},
                                            {"AutoSaveIntervalSeconds=2147483", "3"},
                                            {"AutoSaveIntervalSeconds=2147484", "3"},
                                            {"ShowExitHint=0", "0"},
                                            {"ShowExitHint=1", "2"},
                                            {"[UI]\nLanguage=fr", "3"}}) {
        const std::string row = startUp("[Zubbly]\n" + std::string(setting), launches);
        table += std::string(setting) + ", launches " + launches + "\n" + linesOnlyIn(usual, row, "  - ") +
                 linesOnlyIn(row, usual, "  + ");
    }
    expectRecorded("shell/start-up and what settings change", table);
}

TEST(Startup, EndsAtOnceBesideAnotherInstanceOrWithoutAMonitor)
{
    for (const bool second : {true, false}) {
        Desk desk({});
        desk.lastError = second ? ERROR_ALREADY_EXISTS : 0;
        EXPECT_EQ(runApp(nullptr), second ? 0 : 1);
        EXPECT_EQ(desk.text() == "CreateMutex \"Local\\Zubbly_SingleInstance_v1\"\nCloseHandle\n", second);
        EXPECT_TRUE(desk.timers.empty() && desk.sounds.empty() && !desk.hook);
    }
}

TEST(WaysOut, UndoEverythingWhileTheWindowsExist)
{
    const std::pair<const char *, std::function<void(Desk &)>> ways[] = {
        {"Alt+F4, twice",
         [](Desk &desk) {
             for (int i = 0; i < 2; ++i)
                 desk.send(windowHandle(0), WM_SYSKEYDOWN, VK_F4, 1 << 29);
         }},
        {"the session might end, goes on, ends",
         [](Desk &desk) {
             EXPECT_EQ(desk.send(windowHandle(0), WM_QUERYENDSESSION), 1);
             EXPECT_FALSE(wipeRunning || autoStepsLeft > 0);
             EXPECT_EQ(desk.send(windowHandle(0), WM_ENDSESSION, FALSE), 0);
             EXPECT_EQ(surfaces.size(), 2u);
             EXPECT_EQ(desk.send(windowHandle(0), WM_ENDSESSION, TRUE), 0);
             EXPECT_EQ(windowProc(windowHandle(0), WM_QUERYENDSESSION, 0, 0), 1);  // nothing is left
         }},
        {"the loop ends by itself", [](Desk &) {}}};
    std::string table;
    for (const auto &[name, leave] : ways) {
        SCOPED_TRACE(name);
        Tablet desk;
        desk.play = [&] {
            menuOpen = wipeRunning = true;
            autoStepsLeft = 5;
            desk.calls.clear();
            leave(desk);
        };
        EXPECT_EQ(runApp(nullptr), 0);
        table += std::string(name) + "\n" + desk.done();
        const bool byItself = std::string(name).starts_with("the loop");
        EXPECT_TRUE(byItself || !(menuOpen || wipeRunning || autoStepsLeft > 0));
        EXPECT_FALSE(desk.hook || keyboardHook || hookTargetWindow || gdiplusToken || !surfaces.empty());
        for (const DeskWindow &window : desk.windows)
            EXPECT_FALSE(window.exists);
    }
    expectRecorded("shell/ways out", table);
}

TEST(Lock, HoldsTheOrientationThatIsFound)
{
    for (const auto &[width, orientation, held] : {std::tuple{800, DWORD(DMDO_DEFAULT), "rotation 1\n"},
                                                   {599, DMDO_90, "rotation 2\n"},
                                                   {600, DMDO_180, "rotation 4\n"},
                                                   {599, DMDO_270, "rotation 8\n"}}) {
        Tablet desk;
        desk.monitors = {{0, 0, width, 600}};
        desk.orientation = orientation;
        takeLock();
        takeLock();
        EXPECT_EQ(desk.text({"rotation"}), held);
        releaseLock();
        releaseLock();
        EXPECT_EQ(desk.text({"rotation"}), held + std::string("rotation 9\n"));
    }
}

TEST(Lock, LeavesAsItIsWhatTheSystemDoesNotReport)
{
    Tablet desk;
    desk.functions = {{"SHGetPropertyStoreForWindow", nullptr},
                      {"GetDisplayAutoRotationPreferences", nullptr},
                      {"SetDisplayAutoRotationPreferences", nullptr}};
    desk.makeObject = nullptr;
    const Failing unknown("SystemParametersInfoW");
    takeLock();
    releaseLock();
    EXPECT_EQ(desk.count("SystemParametersInfo") + desk.count("rotation") + desk.count("edge"), 0);
}

TEST(MasterVolume, IsLoweredToTheLimitAndNeverRaised)
{
    // The limit, the level before, and after.
    for (const auto &[limit, before, after] : {std::array{0.3f, 0.2f, 0.2f},
                                               {0.3f, 0.31f, 0.3f},
                                               {1.0f, 1.2f, 1.0f},
                                               {0.0f, 0.5f, 0.5f},
                                               {1.1f, 1.2f, 1.2f}}) {
        for (const int failing : {0, 4, 3, 9}) {  // nothing, the device, its opening, the question
            Tablet desk;
            volumeClamp = limit;
            level = before;
            failingPlace = failing;
            clampMasterVolume();
            EXPECT_EQ(level, failing ? before : after) << "limit " << limit << ", failing " << failing;
        }
    }
}
