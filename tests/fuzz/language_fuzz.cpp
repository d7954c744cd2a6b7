// The Language setting, in UTF-16 code units.
#include <cstdlib>

#include "settings/language_table.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *bytes, size_t size)
{
    std::wstring text;
    for (size_t i = 0; i + 1 < size; i += 2)
        text += wchar_t(bytes[i] + 256 * bytes[i + 1]);
    int index = 7;
    const bool found = parseLanguageOverride(text, index);
    if (found != (index >= 0 && index <= 6)) abort();
    const std::wstring trimmed = trimWhitespace(text);
    if (text.find(trimmed) == std::wstring::npos || trimWhitespace(trimmed) != trimmed) abort();
    int again = 7;
    if (parseLanguageOverride(L"\t " + trimmed + L"\r\n", again) != found || again != index) abort();
    return 0;
}
