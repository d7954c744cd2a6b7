// A DLL that somebody has put beside the program. It leaves a file there, named after itself.
#include <windows.h>

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD, LPVOID)
{
    wchar_t path[MAX_PATH + 8] = {};
    lstrcpyW(path + GetModuleFileNameW(module, path, MAX_PATH), L".ran");
    return CloseHandle(CreateFileW(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
}
