#pragma once
// Texts that were looked at once and then recorded, for what is too long to be written into a test.
#include <string>
#include <vector>

// Compares a text with the block of that name in the room's recorded.txt, `room/name`; fails the test with
// the first line that differs, in both versions and with the lines around it. A block begins with a line
// "= name". With ZUBBLY_WRITE_RECORDS=1 in the environment the texts are written instead; whoever does that
// reads the difference (git diff) before it is committed.
void expectRecorded(const std::string &name, const std::string &text);

// The lines of a block as they were recorded.
std::vector<std::string> recordedLines(const std::string &name);
