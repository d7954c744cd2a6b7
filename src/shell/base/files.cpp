#include "shell/base/files.h"

#include "shell/base/windows_api.h"

static constexpr const wchar_t *separators = L"\\/";

std::wstring inFolder(std::wstring folder, std::wstring_view name)
{
    if (!folder.empty() && folder.find_last_of(separators) != folder.size() - 1) folder += L'\\';
    return folder.append(name);
}

std::wstring parentFolder(const std::wstring &path)
{
    const size_t separator = path.find_last_of(separators);
    if (separator == std::wstring::npos) return {};
    const bool ofDrive = separator > 0 && path[separator - 1] == L':';
    return path.substr(0, ofDrive ? separator + 1 : separator);
}

bool pathExists(const std::wstring &path)
{
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool isFolder(const std::wstring &path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool makeFolders(const std::wstring &folder)
{
    if (pathExists(folder)) return isFolder(folder);
    const std::wstring above = parentFolder(folder);
    if (!above.empty() && (above.size() == folder.size() || !makeFolders(above))) return false;
    return CreateDirectoryW(folder.c_str(), nullptr) != 0;
}

std::vector<std::wstring> filesIn(const std::wstring &folder)
{
    std::vector<std::wstring> files;
    WIN32_FIND_DATAW found = {};
    HANDLE search = FindFirstFileW(inFolder(folder, L"*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return files;
    do {
        if (!(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
            files.push_back(inFolder(folder, found.cFileName));
    } while (FindNextFileW(search, &found));
    FindClose(search);
    return files;
}

std::wstring programFolder()
{
    wchar_t file[MAX_PATH] = {};
    const DWORD length = GetModuleFileNameW(nullptr, file, MAX_PATH);
    if (length == 0 || length >= MAX_PATH) return {};
    return parentFolder(file);
}
