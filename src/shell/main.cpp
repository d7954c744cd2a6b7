#include "shell/startup.h"

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int)
{
    // Before anything is loaded: a DLL beside the program may be planted.
    SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
    // Not by a return: it would free the clips while the player may still read them.
    ExitProcess(UINT(runApp(instance)));
}
