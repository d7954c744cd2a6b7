#include "shell/startup.h"

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int)
{
    // Not by a return: it would free the clips while the player may still read them.
    ExitProcess(UINT(runApp(instance)));
}
