#pragma once
// Where a user's files lie. Failures are swallowed: the toy runs without a folder.
#include <string>

// The roaming application data folder; "." if the system does not tell.
std::wstring roamingAppData();

// The program's own folder below it.
std::wstring dataDirectory();

// Makes the folders and carries files over from the older one. True if dataDirectory is there afterwards.
bool ensureDataDirectories();
