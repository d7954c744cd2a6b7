#include "settings/language.h"

void chooseLanguage(const std::wstring &) {}
bool parseLanguageOverride(const std::wstring &, int &)
{
    return {};
}
std::wstring trimWhitespace(const std::wstring &)
{
    return {};
}
