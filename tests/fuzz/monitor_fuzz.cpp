// The text in which a launcher names a monitor. Numbers are wider here than on Windows.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "shell/base/launch_monitor.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *bytes, size_t size)
{
    const std::wstring text(bytes, bytes + size);
    MonitorBounds bounds = {};
    if (!parseLaunchMonitor(text.c_str(), bounds)) return 0;
    if (bounds.right <= bounds.left || bounds.bottom <= bounds.top) abort();
    std::wstring written;
    for (const long value : {bounds.left, bounds.top, bounds.right, bounds.bottom})
        written += (written.empty() ? L"" : L",") + std::to_wstring(value);
    MonitorBounds again = {};
    if (!parseLaunchMonitor(written.c_str(), again) || again.left != bounds.left || again.top != bounds.top ||
        again.right != bounds.right || again.bottom != bounds.bottom)
        abort();
    return 0;
}
