#pragma once
// The labels for grown-ups, in the language chosen once at start-up.
#include "settings/language_table.h"

inline LabelSet labels;

// Fills labels in the language that the Language setting names, else in the Windows display language.
void chooseLanguage(const std::wstring &language);
