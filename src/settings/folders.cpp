#include "settings/folders.h"

std::filesystem::path roamingAppData()
{
    return {};
}
std::filesystem::path dataDirectory()
{
    return {};
}
bool ensureDataDirectories()
{
    return {};
}
