#pragma once
// Three large buttons for grown-ups, painted over the windows and never into a canvas. Points are
// virtual-screen points.
#include <string_view>
#include <vector>

#include "marks/random.h"
#include "shell/base/state.h"
#include "shell/base/windows_api.h"

struct MenuEntry {
    RECT rect = {};  // virtual-screen coordinates
    int id = 0;      // the TimedAction it starts
    std::wstring_view title;
    std::wstring_view subtitle;
    MarkColor color = 0;
};

inline std::vector<MenuEntry> menuEntries;  // from left to right; not emptied when the menu closes

// Opens the menu near the point and paints it at once.
void openMenu(POINT point);

// Closes an open menu and starts the action of the button that was hit, if any.
void menuClick(POINT point);

// Closes the menu without an action.
void dropMenu();

// Paints an open menu. The origin of dc is the upper left corner of rect (virtual-screen coordinates).
void drawMenu(HDC dc, const RECT &rect);
