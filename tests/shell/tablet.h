#pragma once
// A tablet that has all that the program can ask for: its objects tell what is done to them.
#include <array>
#include <cmath>

#include "support/objects.h"

struct Tablet : Desk {
    static inline float level;            // of the master volume
    static inline HRESULT refusal;        // what the save dialog and the voice answer
    static inline void (*whileSaving)();  // the save dialog stands open

    Tablet();
    static int held();  // references to the objects; the program gives all of them back
};

inline void tell(const std::string &what)
{
    if (Desk::current->telling) Desk::current->calls.push_back({what, what, {}});
}
inline std::string windowName(const void *window)
{
    return " w" + std::to_string((intptr_t(window) - firstWindow) / 2);
}

// A window's property store, and the taskbar.
inline const void *storeOf = nullptr;
inline int64_t shellAnswer(int place, void **first, void **second, void **, void **)
{
    if (place == 8) tell("fullScreen" + windowName(first) + (LOWORD(second) ? " yes" : " no"));
    if (place != 6) return S_OK;
    const auto &key = *reinterpret_cast<const PROPERTYKEY *>(first);
    const auto &value = *reinterpret_cast<const PROPVARIANT *>(second);
    if (key.fmtid.Data1 == 0x32CE38B2 && key.pid == 2)
        tell("edgeSwipes" + windowName(storeOf) + (value.vt ? value.boolVal ? " off" : " on" : " as before"));
    return S_OK;
}
inline Object shell = {objectMethods, "shell", 0, shellAnswer};

// The master volume, its device and their enumerator in one: the methods used stand at different places.
inline int64_t setLevel(Object *, float level, const GUID *)
{
    tell("volume " + std::to_string(std::lround(100.0f * level)));
    Tablet::level = level;
    return S_OK;
}
inline const auto volumeMethods = [] {
    std::array<const void *, 40> methods;
    std::copy_n(objectMethods, 40, methods.begin());
    methods[7] = reinterpret_cast<const void *>(setLevel);
    return methods;
}();
inline int64_t volumeAnswer(int place, void **first, void **second, void **third, void **fourth);
inline Object volume = {volumeMethods.data(), "volume", 0, volumeAnswer};
inline int64_t volumeAnswer(int place, void **first, void **second, void **third, void **fourth)
{
    if (place == 9) *reinterpret_cast<float *>(first) = Tablet::level;
    if (place == 3) return give(volume, fourth);
    return place == 4 ? LOWORD(first) || LOWORD(second) ? E_FAIL : give(volume, third) : S_OK;
}

// What is chosen in the save dialog, and a voice.
inline int64_t itemAnswer(int place, void **first, void **second, void **, void **)
{
    const std::wstring path = (Desk::current->folder() / "given.png").wstring();
    const size_t bytes = 2 * path.size() + 2;
    if (place == 3) *first = windowHandle(0);  // GetWindow
    if (place == 5) *second = std::memcpy(CoTaskMemAlloc(bytes), path.c_str(), bytes);
    return S_OK;
}
inline Object item = {objectMethods, "item", 0, itemAnswer};
inline IFileDialogEvents *listener = nullptr;
inline int64_t dialogAnswer(int place, void **first, void **second, void **, void **)
{
    if (place == 0) return give(item, second);  // IOleWindow
    if (place == 20) return give(item, first);  // GetResult
    if (place == 7) listener = reinterpret_cast<IFileDialogEvents *>(first);
    if (place == 3) Tablet::whileSaving();  // Show
    return Tablet::refusal;
}
inline Object dialog = {objectMethods, "dialog", 0, dialogAnswer};

// What speaks, the list of voices and their category.
inline int64_t speechAnswer(int place, void **first, void **second, void **third, void **);
inline Object speech = {objectMethods, "speech", 0, speechAnswer};
inline int64_t speechAnswer(int place, void **first, void **second, void **third, void **)
{
    const bool enumerates = place == 18 && reinterpret_cast<Object *>(first) != &item;
    if (place == 8) *reinterpret_cast<ULONG *>(first) = 1;  // GetCount
    if (place == 3) return give(item, second);              // Next
    return enumerates ? give(speech, third) : Tablet::refusal;
}

inline Tablet::Tablet() : Desk({})
{
    level = 0.5f;
    refusal = S_OK;
    foreground = windowHandle(0);
    whileSaving = [] {
        listener->OnFolderChange(reinterpret_cast<IFileDialog *>(&dialog));
        current->wait(3000);
    };
    makeObject = [](REFCLSID id, void **out) {
        if (id == CLSID_TaskbarList) return HRESULT(give(shell, out));
        if (id == __uuidof(MMDeviceEnumerator)) return HRESULT(give(volume, out));
        if (id == CLSID_FileSaveDialog) return HRESULT(give(dialog, out));
        const bool speaks = id == CLSID_SpVoice || id == CLSID_SpObjectTokenCategory;
        return speaks ? HRESULT(give(speech, out)) : REGDB_E_CLASSNOTREG;
    };
    const auto openStore =
        +[](HWND window, REFIID, void **out) { return storeOf = window, give(shell, out); };
    const auto get = +[](int *preference) { return *preference = 9; };
    const auto set = +[](int preference) { return tell("rotation " + std::to_string(preference)), TRUE; };
    functions = {{"SHGetPropertyStoreForWindow", reinterpret_cast<void *>(openStore)},
                 {"GetDisplayAutoRotationPreferences", reinterpret_cast<void *>(get)},
                 {"SetDisplayAutoRotationPreferences", reinterpret_cast<void *>(set)}};
}

inline int Tablet::held()
{
    return shell.references + volume.references + item.references + dialog.references + speech.references;
}
