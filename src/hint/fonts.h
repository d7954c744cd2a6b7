#pragma once
// The rounded typeface of the exit hint: private font files beside the program, which need no
// installation, else a list of installed families. Every failure leads to the next candidate.
#include <cstdint>
#include <string>
#include <vector>

#include "shell/base/windows_api.h"

// A family with the status of its creation or of a failed query. Both live to the end of the process.
struct HintFamily {
    GpFontFamily *family = nullptr;
    GpStatus lastStatus = Ok;
};

// Reading the status clears it: a failed query spoils one showing of the panel, not all of them.
GpStatus takeStatus(HintFamily &family);

// One font file. It is tried once in a run; a failure is final.
struct PrivateFontHolder {
    std::vector<uint8_t> bytes;  // the whole file; the collection reads it for as long as it lives
    GpFontCollection *collection = nullptr;
    HintFamily family;  // the first one of the collection
    bool tried = false;
    bool loaded = false;  // the family may be used
};
inline PrivateFontHolder regularFontHolder;
inline PrivateFontHolder blackFontHolder;

// The families in use, not owned; null until the panel needs them, then fixed for the run.
inline HintFamily *hintHeadingFamily = nullptr;
inline HintFamily *hintTextFamily = nullptr;

// Full path of a font file, in the "Fonts" folder shared by the product family, else in the program's
// own; empty if the one folder that counts lacks the file.
std::wstring resolveFontPath(const std::wstring &fileName);

// Where the family's launcher lies: the program's folder or its parent. Empty if neither.
std::wstring familyRoot(const std::wstring &programFolder);

// The subfolder "Fonts"; empty if it is not a directory.
std::wstring fontsFolder(const std::wstring &folder);

// The family of a private font file; null if it cannot be had.
HintFamily *loadPrivateFamily(PrivateFontHolder &holder, const std::wstring &fileName);

// The first installed family of the list that can be used; if there is none, the last, which cannot.
HintFamily *systemFamily(bool requireBold);

// GDI+ font style of the heading: 0 regular, 1 bold. The heavy private face needs no emboldening.
int headingStyle(HintFamily *family);

// The families for the panel, chosen at the first call. Null if one cannot be used this time.
HintFamily *usableHeadingFamily();
HintFamily *usableTextFamily();  // asked for each size
