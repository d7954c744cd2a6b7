#include "hint/panel.h"

int readHintCount()
{
    return {};
}
void writeHintCount(int) {}
void showHintPanel(HWND, int, int) {}
void closeHintPanel() {}
void discardHintPanel(HWND) {}
bool hintPanelClick(int, int)
{
    return {};
}
