// Makes the program crash, as a bug would: a thread of it that starts at no address.
#include <windows.h>

int main()
{
    DWORD id = 0;
    GetWindowThreadProcessId(FindWindowW(nullptr, L"Zubbly"), &id);
    HANDLE process = OpenProcess(PROCESS_ALL_ACCESS, FALSE, id);
    HANDLE thread = CreateRemoteThread(process, nullptr, 0, nullptr, nullptr, 0, nullptr);
    return thread ? 0 : 1;
}
