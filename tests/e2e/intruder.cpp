// Does to the program what another one may do. "cover": puts a window over it, tells after how many
// milliseconds it is covered again. "shut": shuts the cursor into a corner, likewise. "leave": shuts it in
// and leaves it so. "free": is the cursor free?
#include <cstdio>
#include <cstring>
#include <windows.h>

static bool shutIn()
{
    RECT clip = {};
    return GetClipCursor(&clip) && clip.right <= 20;
}

static HWND cover = nullptr;
static bool covering()
{
    return WindowFromPoint({150, 150}) == cover;
}

// The program looks every 1.5 s.
static int whileStill(bool (*intruding)())
{
    const bool began = intruding();
    const DWORD begin = GetTickCount();
    MSG message;
    while (intruding() && GetTickCount() - begin < 10000) {
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
        Sleep(5);
    }
    const DWORD taken = GetTickCount() - begin;
    std::printf("%d %lu\n", began, taken);
    return began && taken <= 1600 ? 0 : 1;
}

int main(int, char **arguments)
{
    if (!std::strcmp(arguments[1], "free")) return shutIn();
    if (!std::strcmp(arguments[1], "cover")) {
        cover = CreateWindowExW(WS_EX_TOPMOST | WS_EX_NOACTIVATE, L"STATIC", L"",
                                WS_POPUP | WS_VISIBLE | SS_NOTIFY, 100, 100, 200, 200, nullptr, nullptr,
                                nullptr, nullptr);
        SetWindowPos(cover, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        return whileStill(covering);
    }
    const RECT corner = {0, 0, 20, 20};
    ClipCursor(&corner);
    return std::strcmp(arguments[1], "shut") ? !shutIn() : whileStill(shutIn);
}
