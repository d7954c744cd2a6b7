#pragma once
// Where a user's files are. Failures are ignored: the program runs without a folder.
#include <string>

// The roaming application data folder; "." if it is unknown.
std::wstring roamingAppData();

// The program's own folder below it.
std::wstring dataDirectory();

// Creates the folders and copies files from the older one. True if dataDirectory exists afterwards.
bool ensureDataDirectories();
