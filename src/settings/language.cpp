#include "settings/language.h"

#include "shell/base/windows_api.h"

void chooseLanguage(const std::wstring &language)
{
    int index = languageOfWindows(GetUserDefaultUILanguage());
    parseLanguageOverride(language, index);
    labels = labelsIn(index);
}
