#pragma once
// Texts that were looked at once and then recorded, for what is too long to be written into a test.
#include <string>

// Compares a text with the block of that name in the room's recorded.txt, `room/name`, which begins with a
// line
// "= name". With ZUBBLY_WRITE_RECORDS=1 in the environment the texts are written instead; whoever does that
// reads the difference (git diff) before it is committed.
void expectRecorded(const std::string &name, const std::string &text);
std::string recordedText(const std::string &name);
