#pragma once
// A tablet that has all that the program can ask for; what is done to its objects is recorded.
#include <cmath>
#include <fstream>

#include "support/objects.h"

struct Tablet : Desk {
    static inline float level = 0.5f;      // of the master volume
    static inline HRESULT refusal = S_OK;  // what the save dialog and the voice answer
    static inline void (*whileSaving)();   // the save dialog stands open

    Tablet();
    // The folder of the program's own files, which has these settings in it.
    std::filesystem::path settings(const std::string &text);
};

// A window's property store, and the taskbar.
inline HWND storeOf = nullptr;
inline HRESULT shellAnswer(Object &, int place, const Call &call)
{
    if (place == 8)  // MarkFullscreenWindow
        Desk::current->record("fullScreen" + windowName(call.get<HWND>(1)) +
                              (call.get<BOOL>(2) ? " yes" : " no"));
    if (place != 6) return S_OK;  // SetValue
    const auto &key = call.get<const PROPERTYKEY &>(1);
    const auto &value = call.get<const PROPVARIANT &>(2);
    const char *const swipes = value.vt ? value.boolVal ? " off" : " on" : " as before";
    if (key.fmtid.Data1 == 0x32CE38B2 && key.pid == 2)
        Desk::current->record("edgeSwipes" + windowName(storeOf) + swipes);
    return S_OK;
}
inline Object shell = {objectMethods, "shell", shellAnswer};

// The master volume, its device and their enumerator in one: the methods used stand at different places.
inline HRESULT volumeAnswer(Object &self, int place, const Call &call)
{
    if (place == 3) return give(self, call.get<void **>(4));  // Activate
    if (place == 4)                                           // GetDefaultAudioEndpoint
        return call.get<int>(1) || call.get<int>(2) ? E_FAIL : give(self, call.get<void **>(3));
    if (place == 9) *call.get<float *>(1) = Tablet::level;
    if (place != 7) return S_OK;
    Tablet::level = call.get<float>(1);
    const std::string percent = std::to_string(std::lround(100.0f * Tablet::level));
    if (Desk::current->recording) Desk::current->calls.back().text = "volume " + percent;
    return S_OK;
}
inline Object volume = {objectMethods, "volume", volumeAnswer};

// What is chosen in the save dialog, and a voice.
inline HRESULT itemAnswer(Object &, int place, const Call &call)
{
    if (place == 3) *call.get<HWND *>(1) = windowHandle(0);                             // GetWindow
    if (place == 5) *call.get<PWSTR *>(2) = taskString(Desk::folder() / L"given.png");  // GetDisplayName
    return S_OK;
}
inline Object item = {objectMethods, "item", itemAnswer};

inline IFileDialogEvents *listener = nullptr;
inline HRESULT dialogAnswer(Object &, int place, const Call &call)
{
    if (place == 0) return give(item, call.get<void **>(2));   // QueryInterface
    if (place == 20) return give(item, call.get<void **>(1));  // GetResult
    if (place == 7) listener = call.get<IFileDialogEvents *>(1);
    if (place == 3) Tablet::whileSaving();  // Show
    return Tablet::refusal;
}
inline Object dialog = {objectMethods, "dialog", dialogAnswer};

// What speaks, the list of voices and their category.
inline HRESULT speechAnswer(Object &self, int place, const Call &call)
{
    const bool setsVoice = call.get<Object *>(1) == &item;
    if (place == 3) return give(item, call.get<void **>(2));                 // Next
    if (place == 18 && !setsVoice) return give(self, call.get<void **>(3));  // EnumTokens
    if (place == 8) *call.get<ULONG *>(1) = 1;                               // GetCount
    return Tablet::refusal;
}
inline Object speech = {objectMethods, "speech", speechAnswer};

inline Tablet::Tablet() : Desk({})
{
    foreground = windowHandle(0);
    whileSaving = [] {
        listener->OnFolderChange(reinterpret_cast<IFileDialog *>(&dialog));
        current->wait(3000);
    };
    makeObject = [](REFCLSID id, void **out) {
        if (id == CLSID_TaskbarList) return give(shell, out);
        if (id == __uuidof(MMDeviceEnumerator)) return give(volume, out);
        if (id == CLSID_FileSaveDialog) return give(dialog, out);
        const bool speaks = id == CLSID_SpVoice || id == CLSID_SpObjectTokenCategory;
        return speaks ? give(speech, out) : REGDB_E_CLASSNOTREG;
    };
    const auto openStore =
        +[](HWND window, REFIID, void **out) { return storeOf = window, give(shell, out); };
    const auto get = +[](int *preference) { return *preference = 9; };
    const auto set = +[](int preference) {
        Desk::current->record("rotation " + std::to_string(preference));
        return TRUE;
    };
    functions = {{"SHGetPropertyStoreForWindow", reinterpret_cast<void *>(openStore)},
                 {"GetDisplayAutoRotationPreferences", reinterpret_cast<void *>(get)},
                 {"SetDisplayAutoRotationPreferences", reinterpret_cast<void *>(set)}};
}

inline std::filesystem::path Tablet::settings(const std::string &text)
{
    const std::filesystem::path data = folder() / "Roaming" / "norvanta" / "Zubworks" / "Zubbly";
    std::filesystem::create_directories(data);
    std::ofstream(data / "config.ini") << "[Zubbly]\n" << text << "\n";
    return data;
}
