#pragma once
// Texts that were looked at once and then recorded, for what is too long to be written into a test.
#include <string>

// Compares a text with the block `room/name`, which begins with "= name" in that room's recorded.txt. With
// ZUBBLY_WRITE_RECORDS=1 in the environment the texts are written instead; whoever does that reads the
// difference (git diff) before it is committed.
void expectRecorded(const std::string &name, const std::string &text);
std::string recordedText(const std::string &name);
