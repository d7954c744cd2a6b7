#pragma once
// The seven languages: the words that name each one and its labels. The Language setting is text from
// outside, so it is read here, without Windows.
#include <cstdint>
#include <string>
#include <string_view>

enum Language { japanese, english, chinese, french, italian, german, spanish };

// Every text is a literal, so data() ends in a zero.
struct LabelSet {
    std::wstring_view stampTitle, eraserTitle, doodleTitle;
    std::wstring_view stampSubtitle, eraserSubtitle, doodleSubtitle;
    std::wstring_view purchaseLine;
    std::wstring_view hintHeading, hintBody, hintOptOut;
    std::wstring_view hintSpare = {};  // empty in every language
};

// The labels of a Language.
const LabelSet &labelsIn(int language);

// The Language for a Windows language identifier; english for any other language.
int languageOfWindows(uint16_t identifier);

// True if the text names a language; index is then its Language, and unchanged otherwise.
bool parseLanguageOverride(const std::wstring &language, int &index);

// Removes tab, line feed, carriage return and space from both ends.
std::wstring trimWhitespace(const std::wstring &text);
