#include "shell/ease_of_access.h"

#include "shell/base/windows_api.h"

// How each feature's record is read and written, and which of its flags is the shortcut. High contrast is
// written without a theme change, which would take seconds and repaint every window of the system.
template <class Record> struct Feature {
    UINT get, set;
    DWORD shortcut, whenSet = 0;
    bool taken = false;
};
static Feature<STICKYKEYS> stickyKeys = {SPI_GETSTICKYKEYS, SPI_SETSTICKYKEYS, SKF_HOTKEYACTIVE};
static Feature<TOGGLEKEYS> toggleKeys = {SPI_GETTOGGLEKEYS, SPI_SETTOGGLEKEYS, TKF_HOTKEYACTIVE};
static Feature<FILTERKEYS> filterKeys = {SPI_GETFILTERKEYS, SPI_SETFILTERKEYS, FKF_HOTKEYACTIVE};
static Feature<MOUSEKEYS> mouseKeys = {SPI_GETMOUSEKEYS, SPI_SETMOUSEKEYS, MKF_HOTKEYACTIVE};
static Feature<HIGHCONTRASTW> highContrast = {SPI_GETHIGHCONTRAST, SPI_SETHIGHCONTRAST, HCF_HOTKEYACTIVE,
                                              HCF_OPTION_NOTHEMECHANGE};

template <class Record> static Record recordOf(const Feature<Record> &feature)
{
    Record record = {};
    record.cbSize = sizeof record;
    if (!SystemParametersInfoW(feature.get, sizeof record, &record, 0)) record = {};
    return record;
}

template <class Record> static bool write(const Feature<Record> &feature, Record record)
{
    record.dwFlags |= feature.whenSet;
    return SystemParametersInfoW(feature.set, sizeof record, &record, 0);
}

template <class Record> static void silence(Feature<Record> &feature)
{
    if (feature.taken) return;
    Record record = recordOf(feature);
    if (!(record.dwFlags & feature.shortcut)) return;
    record.dwFlags &= ~feature.shortcut;
    feature.taken = write(feature, record);
}

// Reads the record again, because a name in it may point to the system's own memory.
template <class Record> static void restore(Feature<Record> &feature)
{
    if (!feature.taken) return;
    Record record = recordOf(feature);
    if (!record.cbSize) return;
    record.dwFlags |= feature.shortcut;
    feature.taken = !write(feature, record);  // the last step of the run tries once more
}

void silenceEaseOfAccess()
{
    silence(stickyKeys);
    silence(toggleKeys);
    silence(filterKeys);
    silence(mouseKeys);
    silence(highContrast);
}

void restoreEaseOfAccess()
{
    restore(stickyKeys);
    restore(toggleKeys);
    restore(filterKeys);
    restore(mouseKeys);
    restore(highContrast);
}
