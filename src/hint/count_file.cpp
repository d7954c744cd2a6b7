#include "hint/count_file.h"

#include "hint/count_parser.h"
#include "settings/folders.h"
#include "shell/base/files.h"

static FILE *openHintCount(const wchar_t *mode)
{
    return _wfopen(inFolder(dataDirectory(), L"exit_hint_launches.txt").c_str(), mode);
}

int readHintCount()
{
    FILE *file = openHintCount(L"r");
    if (!file) return 0;
    const int count = parseHintCount(file);
    std::fclose(file);
    return count;
}

void writeHintCount(int count)
{
    ensureDataDirectories();
    FILE *file = openHintCount(L"w");
    if (!file) return;
    std::fprintf(file, "%d\n", count);
    std::fclose(file);
}
