#include "settings/folders.h"

#include "shell/windows_api.h"

namespace files = std::filesystem;

static files::path roamingFromEnvironment()
{
    wchar_t text[260] = {};
    const DWORD length = GetEnvironmentVariableW(L"APPDATA", text, 260);
    if (length < 1 || length > 259) return L".";
    return text;
}

files::path roamingAppData()
{
    wchar_t *known = nullptr;
    const HRESULT result = SHGetKnownFolderPath(FOLDERID_RoamingAppData, 0, nullptr, &known);
    const files::path base = SUCCEEDED(result) && known ? files::path(known) : roamingFromEnvironment();
    CoTaskMemFree(known);
    return base;
}

files::path dataDirectory()
{
    return roamingAppData() / L"norvanta" / L"Zubworks" / L"Zubbly";
}

// A file that is there already stays as it is, and the older one stays where it lies.
static void carryOver(const files::path &from, const files::path &to)
{
    std::error_code ignored;
    if (files::exists(to, ignored) || !files::exists(from, ignored)) return;
    files::copy_file(from, to, files::copy_options::none, ignored);
}

bool ensureDataDirectories()
{
    std::error_code ignored;
    const files::path data = dataDirectory();
    const files::path older = roamingAppData() / L"norvanta" / L"Zubbly";
    if (files::is_directory(older, ignored)) {
        files::create_directories(data, ignored);
        carryOver(older / L"config.ini", data / L"config.ini");
        // Not ours to read or write, but its owner would miss it.
        carryOver(older / L"display_name.txt", data / L"display_name.txt");
    }
    files::create_directories(data, ignored);
    files::create_directory(data / L"SavedPictures", ignored);
    return files::is_directory(data, ignored);
}
