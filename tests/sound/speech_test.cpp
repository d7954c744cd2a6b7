#include <gtest/gtest.h>

#include "sound/speech.h"
#include "support/fakes.h"

// An object of the Speech API: a table of methods, of which the program may call only those set below.
struct FakeObject {
    void *const *methods;
    std::string name;
};
static FakeObject voice, category, list, token;

static HRESULT note(FakeObject &object, const std::string &call)
{
    recorded.calls.push_back(object.name + " " + call);
    return fakes.failing.contains(call) ? E_FAIL : S_OK;
}
static std::string narrow(const wchar_t *text)
{
    const std::wstring wide = text ? text : L"null";
    return std::string(wide.begin(), wide.end());
}

static ULONG release(FakeObject *object)
{
    note(*object, "Release");
    return 0;
}
static HRESULT speak(FakeObject *object, const wchar_t *text, DWORD flags, ULONG *number)
{
    return note(*object, "Speak " + narrow(text) + " " + std::to_string(flags) + (number ? " number" : ""));
}
static HRESULT setVoice(FakeObject *object, FakeObject *choice)
{
    return note(*object, "SetVoice " + choice->name);
}
static HRESULT setId(FakeObject *object, const wchar_t *id, BOOL create)
{
    note(*object, narrow(id) + " " + std::to_string(create));
    return note(*object, "SetId");
}
static HRESULT enumTokens(FakeObject *object, const wchar_t *required, const wchar_t *optional, void **found)
{
    const HRESULT result = note(*object, "EnumTokens");
    note(*object, narrow(required) + " " + narrow(optional));
    *found = SUCCEEDED(result) ? &list : nullptr;
    return result;
}
static HRESULT next(FakeObject *object, ULONG count, void **found, ULONG *)
{
    const HRESULT result = note(*object, "Next");
    *found = SUCCEEDED(result) && count == 1 ? &token : nullptr;
    return result;
}
static ULONG voicesFound = 2;
static HRESULT getCount(FakeObject *object, ULONG *count)
{
    *count = voicesFound;
    return note(*object, "GetCount");
}

static HRESULT makeObject(REFCLSID id, void **object)
{
    FakeObject &made = id == CLSID_SpVoice ? voice : category;
    if (id != CLSID_SpVoice && id != CLSID_SpObjectTokenCategory) return E_FAIL;
    const HRESULT result = note(made, "made " + made.name);
    *object = SUCCEEDED(result) ? &made : nullptr;
    return result;
}

static std::string run(const std::string &failing)
{
    static void *methods[4][40] = {};
    for (auto &table : methods)
        table[2] = reinterpret_cast<void *>(release);
    methods[0][18] = reinterpret_cast<void *>(setVoice);
    methods[0][20] = reinterpret_cast<void *>(speak);
    methods[1][15] = reinterpret_cast<void *>(setId);
    methods[1][18] = reinterpret_cast<void *>(enumTokens);
    methods[2][3] = reinterpret_cast<void *>(next);
    methods[2][8] = reinterpret_cast<void *>(getCount);
    voice = {methods[0], "voice"};
    category = {methods[1], "category"};
    list = {methods[2], "list"};
    token = {methods[3], "token"};
    fakes = {};
    fakes.failing = {failing};
    fakes.makeObject = makeObject;
    recorded = {};
    createVoice();
    cutSpeech();
    releaseVoice();
    releaseVoice();
    cutSpeech();
    EXPECT_EQ(speechVoice, nullptr);
    std::string all;
    for (const std::string &call : recorded.calls)
        if (call != "CoCreateInstance") all += call + "; ";
    return all;
}

TEST(Speech, TakesTheFirstEnglishVoiceAndOnlyEverSilencesIt)
{
    const std::string made = "voice made voice; category made category; ";
    const std::string id =
        "category HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Speech\\Voices 0; category SetId; ";
    const std::string asked = "category EnumTokens; category Language=409 null; ";
    const std::string counted = "category Release; list GetCount; ";
    const std::string chosen = "list Next; voice SetVoice token; token Release; ";
    const std::string left = "list Release; ";
    const std::string end = "voice Speak null 3; voice Speak null 2; voice Release; ";
    const struct {
        std::string failing, calls;
    } rows[] = {{"", made + id + asked + counted + chosen + left + end},
                {"SetVoice token", made + id + asked + counted + chosen + left + end},
                {"Next", made + id + asked + counted + "list Next; " + left + end},
                {"GetCount", made + id + asked + counted + left + end},
                {"EnumTokens", made + id + asked + "category Release; " + end},
                {"SetId", made + id + "category Release; " + end},
                {"made category", made + end},
                {"made voice", "voice made voice; "}};
    for (const auto &row : rows)
        EXPECT_EQ(run(row.failing), row.calls) << row.failing;
    Having none(voicesFound, 0u);
    EXPECT_EQ(run(""), made + id + asked + counted + left + end);
}
