#include "hint/count_parser.h"

#include <algorithm>
#include <cctype>
#include <climits>
#include <cstdint>

// The C functions do not help: they wrap around a number that is too large.
int parseHintCount(std::FILE *file)
{
    int next = std::fgetc(file);
    while (std::isspace(next))
        next = std::fgetc(file);
    const bool negative = next == '-';
    if (next == '-' || next == '+') next = std::fgetc(file);
    const int64_t tooLarge = int64_t(INT_MAX) + 1;
    int64_t count = 0;
    for (; std::isdigit(next); next = std::fgetc(file))
        count = std::min(count * 10 + (next - '0'), tooLarge);
    return negative || count == tooLarge ? 0 : int(count);
}
