#include "settings/folders.h"

#include "shell/base/files.h"
#include "shell/base/windows_api.h"

static std::wstring roamingFromEnvironment()
{
    wchar_t text[260] = {};
    const DWORD length = GetEnvironmentVariableW(L"APPDATA", text, 260);
    if (length < 1 || length > 259) return L".";
    return text;
}

std::wstring roamingAppData()
{
    wchar_t *known = nullptr;
    const HRESULT result = SHGetKnownFolderPath(FOLDERID_RoamingAppData, 0, nullptr, &known);
    std::wstring base = SUCCEEDED(result) && known ? known : roamingFromEnvironment();
    CoTaskMemFree(known);
    return base;
}

std::wstring dataDirectory()
{
    return inFolder(roamingAppData(), L"norvanta\\Zubworks\\Zubbly");
}

// Never overwrites the newer file, and leaves the older one in place.
static void carryOver(const std::wstring &from, const std::wstring &to, std::wstring_view name)
{
    CopyFileW(inFolder(from, name).c_str(), inFolder(to, name).c_str(), TRUE);
}

bool ensureDataDirectories()
{
    const std::wstring data = dataDirectory();
    const std::wstring older = inFolder(roamingAppData(), L"norvanta\\Zubbly");
    if (isFolder(older)) {
        makeFolders(data);
        carryOver(older, data, L"config.ini");
        // The program itself never reads this one; it is copied so that nothing of the user's is lost.
        carryOver(older, data, L"display_name.txt");
    }
    makeFolders(data);
    CreateDirectoryW(inFolder(data, L"SavedPictures").c_str(), nullptr);
    return isFolder(data);
}
