// Stands in for the desktop's own shell: claims every chord that leads out and tells which came through.
#include <cstdio>
#include <windows.h>

static bool leadsOut(UINT modifiers, UINT key)
{
    if ((key >= VK_SHIFT && key <= VK_CAPITAL) || key == VK_LWIN || key == VK_RWIN || key >= VK_LSHIFT)
        return false;
    if (modifiers & MOD_ALT) return key != VK_F1 && key != VK_F4;
    if (key == VK_ESCAPE && (modifiers & MOD_CONTROL)) return true;
    return (modifiers & MOD_WIN) || modifiers == (MOD_CONTROL | MOD_SHIFT);
}

int main()
{
    ShowWindow(CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, 400, 300, nullptr, nullptr, nullptr, nullptr),
               SW_SHOWNOACTIVATE);
    for (UINT modifiers = 1; modifiers < 16; ++modifiers) {
        for (UINT key = 1; key < 255; ++key) {
            if (leadsOut(modifiers, key)) RegisterHotKey(nullptr, int(modifiers << 8 | key), modifiers, key);
        }
    }
    puts("ready");
    fflush(stdout);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0)) {
        if (message.message == WM_HOTKEY)
            printf("modifiers %x key %x\n", unsigned(message.wParam >> 8), unsigned(message.wParam & 255));
        fflush(stdout);
        DispatchMessageW(&message);
    }
}
