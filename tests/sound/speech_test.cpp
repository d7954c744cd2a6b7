#include "sound/speech.h"

#include <gtest/gtest.h>

#include "marks/key_reactions.h"
#include "support/objects.h"

static int64_t answerOf(int, void **, void **, void **, void **);
static Object voice = {objectMethods, "voice", 0, answerOf},
              category = {objectMethods, "category", 0, answerOf};
static Object voices = {objectMethods, "voices", 0, answerOf},
              english = {objectMethods, "english", 0, answerOf};
static std::string failing;  // a call, or an object that cannot be made
static uint32_t voicesFound;

// What a call receives is recorded after its name.
static int64_t answerOf(int, void **first, void **second, void **third, void **)
{
    std::string &call = Desk::current->calls.back().text;
    const int64_t result = call == failing ? E_FAIL : S_OK;
    const std::string name = call;
    const auto isGiven = [&](const void *text) {
        call += " " + std::filesystem::path(static_cast<const wchar_t *>(text)).string();
    };
    if (name == "category 15" || name == "category 18") isGiven(first);
    if (name == "category 18" && result == S_OK) give(voices, third);
    if (name == "voices 8") *reinterpret_cast<uint32_t *>(first) = voicesFound;
    if (name == "voices 3" && result == S_OK) give(english, reinterpret_cast<void **>(second));
    if (name == "voice 18") call += first == reinterpret_cast<void **>(&english) ? " english" : " another";
    if (name == "voice 20")
        call += (first ? " words " : " silence ") + std::to_string(intptr_t(second) & 255);
    return result;
}

TEST(Speech, TakesTheFirstEnglishVoiceAndOnlyEverSilencesIt)
{
    const std::string given = "category 15 HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Speech\\Voices\n";
    const std::string asked = given + "category 18 Language=409\n", counted = asked + "voices 8\n";
    const std::string chosen = counted + "voices 3\nvoice 18 english\n";
    for (const auto &[fails, count, calls] : {std::tuple("", 2u, chosen),
                                              {"", 0u, counted},
                                              {"voice 18", 1u, chosen},
                                              {"voices 3", 1u, counted + "voices 3\n"},
                                              {"voices 8", 1u, counted},
                                              {"category 18", 1u, asked},
                                              {"category 15", 1u, given},
                                              {"category", 1u, std::string()},
                                              {"voice", 1u, std::string()}}) {
        Desk desk(oneMonitor);
        failing = fails;
        voicesFound = count;
        desk.makeObject = [](REFCLSID id, void **out) {
            Object &made = id == CLSID_SpVoice ? voice : category;
            return made.name == failing ? E_FAIL : HRESULT(give(made, out));
        };
        createVoice();
        resetKeyState(primaryWindow());  // each of these three cuts it
        pendingKey = true;
        keyMashCount = 2;
        flushPendingKey();
        desk.send(primaryWindow(), WM_KEYDOWN, 'A');
        releaseVoice();
        releaseVoice();
        const std::string cut = "voice 20 silence 3\n", end = cut + cut + cut + "voice 20 silence 2\n";
        EXPECT_EQ(desk.text({"category", "voice", "english"}), calls + (failing == "voice" ? "" : end))
            << fails;
        EXPECT_EQ(voice.references + category.references + voices.references + english.references, 0)
            << fails;
        EXPECT_EQ(speechVoice, nullptr);
    }
}
