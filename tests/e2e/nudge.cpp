// nudge save: the program's time to save has come. nudge crash: it crashes, as a bug would make it.
#include <cstring>
#include <windows.h>

int main(int, char **words)
{
    const HWND window = FindWindowW(L"ZubblyWindow", nullptr);
    if (!std::strcmp(words[1], "save")) return PostMessageW(window, WM_TIMER, 10, 0) ? 0 : 1;
    DWORD id = 0;
    GetWindowThreadProcessId(window, &id);
    const HANDLE process = OpenProcess(PROCESS_ALL_ACCESS, FALSE, id);
    return CreateRemoteThread(process, nullptr, 0, nullptr, nullptr, 0, nullptr) ? 0 : 1;  // at no address
}
