#pragma once
// Three large buttons for grown-ups. The menu exists only on the way to the screen: it is painted over
// the canvases and never into them. Points are virtual-screen points.
#include <string_view>
#include <vector>

#include "marks/random.h"
#include "shell/base/state.h"
#include "shell/base/windows_api.h"

struct MenuEntry {
    RECT rect = {};  // virtual-screen coordinates
    int id = 0;      // the action it starts, 1 to 3
    std::wstring_view title;
    std::wstring_view subtitle;
    MarkColor color = 0;
};

inline std::vector<MenuEntry> menuEntries;  // from left to right; stays when the menu closes

// Opens the menu near the point and paints it at once.
void openMenu(POINT point);

// Closes the menu and starts what was hit, if a button was. Nothing happens while it is closed.
void menuClick(POINT point);

// Closes the menu and starts nothing.
void dropMenu();

// Paints the menu, if open, on a device context whose origin is the upper left corner of rect.
void drawMenu(HDC dc, const RECT &rect);
