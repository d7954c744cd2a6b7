// A DLL that somebody has put beside the program. It leaves a file there, named after itself.
#include <windows.h>

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD, LPVOID)
{
    wchar_t path[MAX_PATH + 8] = {};
    lstrcpyW(path + GetModuleFileNameW(module, path, MAX_PATH), L".ran");
    CloseHandle(CreateFileW(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    return TRUE;
}

// What programs want of the DLLs that it stands for.
extern "C" __declspec(dllexport) int playSound() asm("PlaySoundW");
extern "C" __declspec(dllexport) int alphaBlend() asm("AlphaBlend");
int playSound()
{
    return 0;
}
int alphaBlend()
{
    return 0;
}
