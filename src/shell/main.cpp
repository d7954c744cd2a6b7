#include "shell/delayed_imports.h"
#include "shell/startup.h"

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int)
{
    // First of all, because a DLL beside the program may be planted.
    SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
    allowDelayedImports();
    // ExitProcess, not return: static destructors would free clips that may still be playing.
    ExitProcess(UINT(runApp(instance)));
}
