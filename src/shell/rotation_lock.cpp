#include "shell/rotation_lock.h"

#include "shell/base/system_functions.h"

static bool held = false;
static ORIENTATION_PREFERENCE preferenceBefore = ORIENTATION_PREFERENCE_NONE;  // of this process

using SetPreference = BOOL WINAPI(ORIENTATION_PREFERENCE);
static SetPreference *findSetPreference()
{
    return systemFunction<SetPreference>(L"user32.dll", "SetDisplayAutoRotationPreferences");
}

// Of the primary screen. A quarter turn of a panel built upright gives landscape, and the other way round, so
// the angle alone does not say which side is up.
static ORIENTATION_PREFERENCE orientationNow()
{
    DEVMODEW mode = {};
    mode.dmSize = sizeof mode;
    if (!EnumDisplaySettingsW(nullptr, ENUM_CURRENT_SETTINGS, &mode)) return ORIENTATION_PREFERENCE_NONE;
    const DWORD turned = mode.dmDisplayOrientation;
    if (mode.dmPelsWidth >= mode.dmPelsHeight) {
        const bool flipped = turned == DMDO_180 || turned == DMDO_90;
        return flipped ? ORIENTATION_PREFERENCE_LANDSCAPE_FLIPPED : ORIENTATION_PREFERENCE_LANDSCAPE;
    }
    const bool flipped = turned == DMDO_180 || turned == DMDO_270;
    return flipped ? ORIENTATION_PREFERENCE_PORTRAIT_FLIPPED : ORIENTATION_PREFERENCE_PORTRAIT;
}

void holdRotation()
{
    using GetPreference = BOOL WINAPI(ORIENTATION_PREFERENCE *);
    auto *get = systemFunction<GetPreference>(L"user32.dll", "GetDisplayAutoRotationPreferences");
    SetPreference *set = findSetPreference();
    const ORIENTATION_PREFERENCE now = orientationNow();
    if (held || now == ORIENTATION_PREFERENCE_NONE || !get || !set) return;
    held = get(&preferenceBefore) && set(now);
}

void releaseRotation()
{
    if (SetPreference *set = held ? findSetPreference() : nullptr) set(preferenceBefore);
    held = false;
}
