#include "shell/shift_prompts.h"

#include "shell/base/windows_api.h"

static STICKYKEYS stickyBefore = {};  // cbSize stays 0 until the earlier setting is known
static TOGGLEKEYS toggleBefore = {};
static FILTERKEYS filterBefore = {};

template <class Keys> static void silence(Keys &before, UINT get, UINT set, DWORD shortcut)
{
    if (before.cbSize) return;
    Keys found = {};
    found.cbSize = sizeof found;
    if (!SystemParametersInfoW(get, sizeof found, &found, 0)) return;
    before = found;
    found.dwFlags &= ~shortcut;
    SystemParametersInfoW(set, sizeof found, &found, 0);
}

template <class Keys> static void restore(Keys &before, UINT set)
{
    if (before.cbSize) SystemParametersInfoW(set, sizeof before, &before, 0);
    before = {};
}

void silenceShiftPrompts()
{
    silence(stickyBefore, SPI_GETSTICKYKEYS, SPI_SETSTICKYKEYS, SKF_HOTKEYACTIVE);
    silence(toggleBefore, SPI_GETTOGGLEKEYS, SPI_SETTOGGLEKEYS, TKF_HOTKEYACTIVE);
    silence(filterBefore, SPI_GETFILTERKEYS, SPI_SETFILTERKEYS, FKF_HOTKEYACTIVE);
}

void restoreShiftPrompts()
{
    restore(stickyBefore, SPI_SETSTICKYKEYS);
    restore(toggleBefore, SPI_SETTOGGLEKEYS);
    restore(filterBefore, SPI_SETFILTERKEYS);
}
