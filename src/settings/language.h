#pragma once
// The words for grown-ups, in one of seven languages chosen once at start-up.
#include <string>

struct LabelSet {
    std::wstring stampTitle, eraserTitle, doodleTitle;
    std::wstring stampSubtitle, eraserSubtitle, doodleSubtitle;
    std::wstring purchaseLine;
    std::wstring hintHeading, hintBody, hintSpare, hintOptOut;  // hintSpare is empty in every language
};
inline LabelSet labels;

// Fills labels by the override (the Language setting), else by the Windows display language.
void chooseLanguage(const std::wstring &language);

// True if the text names a language; index is 0 Japanese, 1 English, 2 Chinese, 3 French, 4 Italian,
// 5 German, 6 Spanish.
bool parseLanguageOverride(const std::wstring &language, int &index);

// Without tab, line feed, carriage return and blank at both ends.
std::wstring trimWhitespace(const std::wstring &text);
