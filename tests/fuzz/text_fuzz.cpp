// The three parsers of foreign text; the first byte says which.
#include <cstdlib>
#include <sstream>
#include <string>

#include "hint/count_parser.h"
#include "settings/language_table.h"
#include "shell/base/launch_monitor.h"

static void demand(bool holds)
{
    if (!holds) abort();
}

static int countIn(std::string text)
{
    FILE *file = fmemopen(text.data(), text.size(), "r");
    const int count = parseHintCount(file);
    fclose(file);
    return count;
}
static void fuzzCount(const std::string &text)
{
    if (text.empty()) return;  // no memory file of that size exists
    int expected = 0;
    const bool found = bool(std::istringstream(text) >> expected);
    const int count = countIn(text);
    demand(count == (found ? std::max(expected, 0) : 0));
    demand(countIn(std::to_string(count) + "\n") == count);
}

static void fuzzLanguage(const std::string &bytes)
{
    std::wstring text;
    for (size_t i = 0; i + 1 < bytes.size(); i += 2)
        text += wchar_t(uint8_t(bytes[i]) + 256 * uint8_t(bytes[i + 1]));
    int index = 7, again = 7;
    const bool found = parseLanguageOverride(text, index);
    demand(found == (index >= 0 && index <= 6));
    const std::wstring trimmed = trimWhitespace(text);
    demand(text.find(trimmed) != std::wstring::npos && trimWhitespace(trimmed) == trimmed);
    demand(parseLanguageOverride(L"\t " + trimmed + L"\r\n", again) == found && again == index);
}

// Numbers are wider here than on Windows.
static void fuzzMonitor(const std::string &bytes)
{
    MonitorBounds read = {}, again = {};
    const std::basic_string<uint8_t> text(bytes.begin(), bytes.end());
    if (!parseLaunchMonitor(std::wstring(text.begin(), text.end()).c_str(), read)) return;
    demand(read.left < read.right && read.top < read.bottom);
    std::wstringstream written;
    written << read.left << ',' << read.top << ',' << read.right << ',' << read.bottom;
    demand(parseLaunchMonitor(written.str().c_str(), again));
    demand(again.left == read.left && again.top == read.top && again.right == read.right);
    demand(again.bottom == read.bottom);
}

extern "C" int LLVMFuzzerTestOneInput(const char *bytes, size_t size)
{
    static constexpr void (*parsers[])(const std::string &) = {fuzzCount, fuzzLanguage, fuzzMonitor};
    if (size > 0) parsers[uint8_t(bytes[0]) % 3]({bytes + 1, size - 1});
    return 0;
}
