#pragma once
// The rounded typeface of the exit hint: private font files beside the program, else a list of installed
// families.
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "marks/gdi_plus.h"

using OwnedFamily = std::unique_ptr<GpFontFamily, FreedBy<GdipDeleteFontFamily>>;

// A family with the status of its creation or of a failed query; who looks at the status clears it.
struct HintFamily {
    GpFontFamily *family = nullptr;
    GpStatus lastStatus = Ok;
};
