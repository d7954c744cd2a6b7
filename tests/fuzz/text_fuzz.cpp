// Each text goes to the three parsers of what comes from outside.
#include <cassert>
#include <sstream>
#include <string>

#include "hint/count_parser.h"
#include "settings/language_table.h"
#include "shell/base/launch_monitor.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *bytes, size_t size)
{
    std::string text(bytes, bytes + size);
    int count = 0;
    if (!(std::istringstream(text) >> count) || count < 0) count = 0;
    FILE *file = fmemopen(text.data(), size + 1, "r");  // with its end: an empty file cannot be opened
    assert(parseHintCount(file) == count);
    fclose(file);

    const std::wstring wide(bytes, bytes + size);
    int language = -1;
    assert(parseLanguageOverride(wide, language) == (language >= 0 && language <= 6));
    MonitorBounds bounds = {0, 0, 1, 1};
    parseLaunchMonitor(wide.c_str(), bounds);
    assert(bounds.left < bounds.right && bounds.top < bounds.bottom);
    return 0;
}
