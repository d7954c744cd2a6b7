#include <gtest/gtest.h>

#include "marks/key_reactions.h"
#include "shell/window_proc.h"
#include "sound/speech.h"
#include "support/fakes.h"

// Objects of the Speech API. Whatever method is called notes its object and its place in the table.
struct FakeObject {
    void **methods;
    std::string name;
};
static FakeObject voice{{}, "voice"}, category{{}, "category"}, list{{}, "list"}, token{{}, "token"};
static ULONG voicesFound;

template <size_t place> static HRESULT method(FakeObject *object, void *first, void *second, void **third)
{
    const std::string call = object->name + " " + std::to_string(place);
    const bool fails = fakes.failing.contains(call);
    const bool isTold = call == "category 15" || call == "category 18";
    const std::wstring told = isTold ? static_cast<const wchar_t *>(first) : L"";
    std::string given(told.begin(), told.end());
    if (call == "category 18") *third = fails ? nullptr : &list;
    if (call == "list 3") *static_cast<void **>(second) = fails ? nullptr : &token;
    if (call == "list 8") *static_cast<ULONG *>(first) = voicesFound;
    if (call == "voice 18") given = first == &token ? "token" : "another";
    if (call == "voice 20") given = (first ? "words " : "silence ") + std::to_string(uintptr_t(second) & 255);
    recorded.calls.push_back(call + " " + given);
    return fails ? E_FAIL : S_OK;
}
template <size_t... places> static void **allMethods(std::index_sequence<places...>)
{
    static void *methods[] = {reinterpret_cast<void *>(method<places>)...};
    return methods;
}

static void installVoice(const std::string &failing)
{
    void **const methods = allMethods(std::make_index_sequence<21>());
    for (FakeObject *object : {&voice, &category, &list, &token})
        object->methods = methods;
    fakes.failing = {failing};
    fakes.makeObject = [&](REFCLSID id, void **object) {
        FakeObject &made = id == CLSID_SpVoice ? voice : category;
        *object = made.name == failing ? nullptr : &made;
        return *object ? S_OK : E_FAIL;
    };
    recorded = {};
    createVoice();
}

static std::string run(const std::string &failing)
{
    fakes = {};
    installVoice(failing);
    cutSpeech();
    releaseVoice();
    releaseVoice();
    EXPECT_EQ(speechVoice, nullptr);
    std::string all;
    for (const std::string &call : recorded.calls)
        all += call == "CoCreateInstance" ? "make; " : call + "; ";
    return all;
}

TEST(Speech, TakesTheFirstEnglishVoiceAndOnlyEverSilencesIt)
{
    const std::string begin = "make; make; ";
    const std::string id = "category 15 HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Speech\\Voices; ";
    const std::string asked = id + "category 18 Language=409; ";
    const std::string found = begin + asked + "category 2 ; list 8 ; ";
    const std::string end = "voice 20 silence 3; voice 20 silence 2; voice 2 ; ";
    const std::string all = found + "list 3 ; voice 18 token; token 2 ; list 2 ; " + end;
    const std::tuple<std::string, ULONG, std::string> rows[] = {
        {"", 2, all},
        {"", 0, found + "list 2 ; " + end},
        {"voice 18", 1, all},
        {"list 3", 1, found + "list 3 ; list 2 ; " + end},
        {"list 8", 1, found + "list 2 ; " + end},
        {"category 18", 1, begin + asked + "category 2 ; " + end},
        {"category 15", 1, begin + id + "category 2 ; " + end},
        {"category", 1, begin + end},
        {"voice", 1, "make; "}};
    for (const auto &[failing, count, calls] : rows) {
        voicesFound = count;
        EXPECT_EQ(run(failing), calls) << failing;
    }
}

TEST(Speech, IsCutByALetterAndWhenAMashTakesItOrEnds)
{
    const Desk desk(oneMonitor);
    installVoice("");
    void (*const events[])() = {[] { windowProc(fakeWindow(0), WM_KEYDOWN, 'A', 0); },
                                [] {
                                    pendingKey = true;
                                    keyMashCount = 2;
                                    flushPendingKey();
                                },
                                [] { resetKeyState(fakeWindow(0)); }};
    for (const auto event : events) {
        resetKeyState(fakeWindow(0));
        recorded = {};
        event();
        EXPECT_EQ(countCalls("voice 20 silence 3"), 1);
    }
    releaseVoice();
}
