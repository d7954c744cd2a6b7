#pragma once
// The count file may hold anything, so it is read here, without Windows.
#include <cstdio>

// Skips white space and reads a sign and any number of digits, as the library's stream operator does. 0 if
// there is no number, or if it is negative or too large for an int.
int parseHintCount(std::FILE *file);
