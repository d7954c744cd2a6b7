#include "shell/rotation_lock.h"

#include "shell/base/system_functions.h"

static bool held = false;
static ORIENTATION_PREFERENCE preferenceBefore = ORIENTATION_PREFERENCE_NONE;  // of this process

using SetPreference = BOOL WINAPI(ORIENTATION_PREFERENCE);
static SetPreference *findSetPreference()
{
    return systemFunction<SetPreference>(L"user32.dll", "SetDisplayAutoRotationPreferences");
}

static ORIENTATION_PREFERENCE orientationNow()
{
    DEVMODEW mode = {};
    mode.dmSize = sizeof mode;
    if (!EnumDisplaySettingsW(nullptr, ENUM_CURRENT_SETTINGS, &mode)) return ORIENTATION_PREFERENCE_NONE;
    const bool flipped = mode.dmDisplayOrientation == DMDO_180 || mode.dmDisplayOrientation == DMDO_270;
    if (mode.dmPelsWidth >= mode.dmPelsHeight)
        return flipped ? ORIENTATION_PREFERENCE_LANDSCAPE_FLIPPED : ORIENTATION_PREFERENCE_LANDSCAPE;
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
    if (held) findSetPreference()(preferenceBefore);
    held = false;
}
