#pragma once
// The number of launches at which the exit hint has shown.

int readHintCount();  // 0 if the file is absent or holds no number

// Creates the data folder first if it is missing. A failure is ignored.
void writeHintCount(int count);
