// The launch count's file may hold anything. Ours lies in memory.
#include <algorithm>
#include <cctype>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <string>

static char content[256];
static size_t length = 0;
static FILE *_wfopen(const wchar_t *, const wchar_t *mode)
{
    return *mode == L'r' ? fmemopen(content, length, "r") : fmemopen(content, sizeof content, "w");
}
static std::wstring dataDirectory()
{
    return {};
}
static std::wstring inFolder(const std::wstring &, const wchar_t *name)
{
    return name;
}
static void ensureDataDirectories() {}
#include "count_fuzz.inc"

extern "C" int LLVMFuzzerTestOneInput(const char *bytes, size_t size)
{
    length = std::min(size, sizeof content);
    std::memcpy(content, bytes, length);
    const int count = readHintCount();
    if (count < 0) abort();
    int expected = 0;
    const bool found = bool(std::istringstream({bytes, std::min(size, sizeof content)}) >> expected);
    if ((found ? std::max(expected, 0) : 0) != count) abort();
    writeHintCount(count);
    length = std::strlen(content);
    if (readHintCount() != count) abort();
    return 0;
}
