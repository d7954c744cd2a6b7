#pragma once
// The rounded typeface of the exit hint: font files beside the program, used without installing them, else
// the first usable one of a list of installed families. Every failure leads to the next candidate.
#include <cstdint>
#include <string>
#include <vector>

#include "shell/base/windows_api.h"

// A family with the status of its creation or of a failed query. Families are never freed.
struct HintFamily {
    GpFontFamily *family = nullptr;
    GpStatus lastStatus = Ok;
};

// One font file. It is tried once per run; a failure is final.
struct PrivateFontHolder {
    std::vector<uint8_t> bytes;  // the whole file; must outlive the collection
    GpFontCollection *collection = nullptr;
    HintFamily family;  // the first one of the collection
    bool tried = false;
    bool loaded = false;  // family can be used
};
inline PrivateFontHolder regularFontHolder;
inline PrivateFontHolder blackFontHolder;

// The families in use, not owned; null until the panel first needs them, then fixed for the run.
inline HintFamily *hintHeadingFamily = nullptr;
inline HintFamily *hintTextFamily = nullptr;

// The path of a font file in the product family's "Fonts" folder, else in the program's own. Empty if the
// first of the two that exists lacks the file.
std::wstring resolveFontPath(const std::wstring &fileName);

// The folder with the family's launcher: the program's folder or its parent, empty if neither.
std::wstring familyRoot(const std::wstring &programFolder);

// The subfolder "Fonts"; empty if there is no such directory.
std::wstring fontsFolder(const std::wstring &folder);

// The family of a private font file; null on failure.
HintFamily *loadPrivateFamily(PrivateFontHolder &holder, const std::wstring &fileName);

// The first usable installed family of the list; the last one, usable or not, if there is none.
HintFamily *systemFamily(bool requireBold);

// GDI+ font style of the heading: 0 regular, 1 bold. The heavy private face is never emboldened.
int headingStyle(HintFamily *family);

// The families for the panel, chosen at the first call. Null if the family cannot be used this time.
HintFamily *usableHeadingFamily();
HintFamily *usableTextFamily();  // call it once per font size
