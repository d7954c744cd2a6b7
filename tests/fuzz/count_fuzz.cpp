// The file of the launch count.
#include <cstdlib>
#include <sstream>
#include <string>

#include "hint/count_parser.h"

static int parsed(const char *bytes, size_t size)
{
    FILE *file = fmemopen(const_cast<char *>(bytes), size, "r");
    const int count = parseHintCount(file);
    fclose(file);
    return count;
}

extern "C" int LLVMFuzzerTestOneInput(const char *bytes, size_t size)
{
    if (size == 0) return 0;  // no memory file of that size exists
    const int count = parsed(bytes, size);
    if (count < 0) abort();
    int expected = 0;
    const bool found = bool(std::istringstream({bytes, size}) >> expected);
    if ((found ? std::max(expected, 0) : 0) != count) abort();
    const std::string written = std::to_string(count) + "\n";
    if (parsed(written.data(), written.size()) != count) abort();
    return 0;
}
