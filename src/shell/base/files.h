#pragma once
// Paths and files. A path is a plain wide string: std::filesystem would pull in streams and locales and
// double the program's size.
#include <string>
#include <string_view>
#include <vector>

// Joins a folder and a name. A folder that ends in a separator gets no second one.
std::wstring inFolder(std::wstring folder, std::wstring_view name);

// Empty if the path has no parent. The parent of a file in a drive's root keeps its separator.
std::wstring parentFolder(const std::wstring &path);

bool pathExists(const std::wstring &path);
bool isFolder(const std::wstring &path);

// Creates the folder and its missing parents. Stops with false at the first failure, because each attempt
// on a dead network share blocks.
bool makeFolders(const std::wstring &folder);

// The paths of the files in a folder, in no order and without subfolders; empty if it cannot be read.
std::vector<std::wstring> filesIn(const std::wstring &folder);

// The folder of the program file; empty if the file's path has more than MAX_PATH - 1 characters.
std::wstring programFolder();
