// The launcher's words for the launch monitor. Numbers are wider here than on Windows.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cwchar>
#include <string>

using DWORD = uint32_t;
struct RECT {
    long left, top, right, bottom;
};
struct MONITORINFO {
    DWORD cbSize;
    RECT rcMonitor;
};
struct POINT {
    long x, y;
};
enum { MONITOR_DEFAULTTOPRIMARY, SM_CXSCREEN, SM_CYSCREEN };
static const RECT primary = {0, 0, 1280, 800};
static std::wstring said;

// A text that does not fit leaves the buffer alone; the answer counts the end then.
static DWORD GetEnvironmentVariableW(const wchar_t *, wchar_t *text, DWORD size)
{
    if (said.size() >= size) return DWORD(said.size() + 1);
    std::copy_n(said.c_str(), said.size() + 1, text);  // the sanitizer does not see into wmemcpy
    return DWORD(said.size());
}
static int MonitorFromPoint(POINT, int)
{
    return 1;
}
static bool GetMonitorInfoW(int, MONITORINFO *info)
{
    info->rcMonitor = primary;
    return true;
}
static int GetSystemMetrics(int)
{
    abort();
}  // the last resort, never reached here
#include "monitor_fuzz.inc"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *bytes, size_t size)
{
    said.assign(bytes, bytes + size);
    said = said.c_str();  // the environment holds no zero
    RECT rect = {};
    if (!launchMonitorRect(rect) || rect.right <= rect.left || rect.bottom <= rect.top) abort();
    if (said.size() > 63 && rect.right != primary.right) abort();
    said.clear();
    for (const long value : {rect.left, rect.top, rect.right, rect.bottom})
        said += (said.empty() ? L"" : L",") + std::to_wstring(value);
    RECT again = {};
    if (said.size() < 64 && (!launchMonitorRect(again) || again.left != rect.left || again.top != rect.top ||
                             again.right != rect.right || again.bottom != rect.bottom))
        abort();
    return 0;
}
