#pragma once
// Paths and what the program asks of the file system. A path is a plain wide string: the library's own class
// brings its streams and locales along, which would be half of the program.
#include <string>
#include <string_view>
#include <vector>

// The path of what a folder holds under that name. A folder that ends in a separator gets no second one.
std::wstring inFolder(std::wstring folder, std::wstring_view name);

// Empty if the path names no folder above; of a file in a drive's root, the root with its separator.
std::wstring parentFolder(const std::wstring &path);

bool pathExists(const std::wstring &path);
bool isFolder(const std::wstring &path);

// Makes the folder and those above it that are missing; false, and nothing further is tried, at the first
// that fails. A share that does not answer takes its time for every question.
bool makeFolders(const std::wstring &folder);

// The paths of a folder's files, in no order, without its subfolders; none if it cannot be read.
std::vector<std::wstring> filesIn(const std::wstring &folder);

// Where the program's own file lies; empty if its path is not to be had in MAX_PATH characters.
std::wstring programFolder();
