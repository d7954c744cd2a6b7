#pragma once
// What a child does, and now and then a grown-up, in words: "tap 200 Left*900 mash".
#include <iterator>
#include <sstream>

#include "hint/panel.h"
#include "mascot/walker.h"
#include "shell/tablet.h"

inline void send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
{
    const LRESULT answer = Desk::current->send(primaryWindow(), message, wParam, lParam);
    if (answer) Desk::current->record("answer " + std::to_string(answer));
}

// Of the mouse at the cursor, of two fingers, or of anything else with that parameter.
inline void sendInput(UINT message, WORD parameter)
{
    Desk &desk = *Desk::current;
    const auto [x, y] = desk.cursor;
    const bool left = (message == WM_LBUTTONDOWN || message == WM_LBUTTONUP) != desk.buttonsSwapped;
    const int button = left ? VK_LBUTTON : VK_RBUTTON;
    if (message == WM_LBUTTONDOWN || message == WM_RBUTTONDOWN) desk.hold(button);
    if (message == WM_LBUTTONUP || message == WM_RBUTTONUP) desk.release(button);
    desk.touches = {{100 * x + 99, 100 * y, nullptr, 1, parameter, 0, 0, 0, 0, 0},
                    {-5000 - 100 * x, 100 * y, nullptr, 2, parameter, 0, 0, 0, 0, 0}};
    const bool mouse = message >= WM_MOUSEFIRST && message <= WM_MOUSELAST;
    send(message, message == WM_TOUCH ? 2 : parameter, mouse ? MAKELPARAM(WORD(x), WORD(y)) : parameter);
}

inline void moveTo(int x, int y)
{
    Desk::current->cursor = {x, y};
    sendInput(WM_MOUSEMOVE, 0);
}

// The hook first; what it lets through goes to the window, again every 40 ms while the key is held.
inline void press(int key, int held = 60)
{
    Desk &desk = *Desk::current;
    const bool alt = desk.keysDown.contains(VK_MENU);
    KBDLLHOOKSTRUCT event = {DWORD(key), 0, 0, 0, 0};
    for (const int other : desk.keysDown)
        if (other > 0xFF) event.flags |= other & 0xFF;
    bool swallowed = false;
    for (LPARAM flags = alt << 29;; flags |= 1 << 30, held -= 40) {
        swallowed = desk.hook && desk.hook(HC_ACTION, WM_KEYDOWN, LPARAM(&event)) != 0;
        desk.settle();
        if (!swallowed) send(alt ? WM_SYSKEYDOWN : WM_KEYDOWN, WPARAM(key), flags);
        desk.wait(DWORD(held <= 60 ? held : 40));
        if (held <= 60) break;
    }
    if (desk.hook) desk.hook(HC_ACTION, WM_KEYUP, LPARAM(&event));
    if (!swallowed) send(alt ? WM_SYSKEYUP : WM_KEYUP, WPARAM(key), alt << 29);
}

// clang-format off
inline const std::map<std::string, int> keys = {
    {"Space", VK_SPACE}, {"Enter", VK_RETURN}, {"Escape", VK_ESCAPE}, {"Tab", VK_TAB}, {"Left", VK_LEFT},
    {"Up", VK_UP}, {"Right", VK_RIGHT}, {"Down", VK_DOWN}, {"Numpad6", VK_NUMPAD6}, {"Shift", VK_SHIFT},
    {"Ctrl", VK_CONTROL}, {"Alt", VK_MENU}, {"LeftAlt", VK_LMENU}, {"RightAlt", VK_RMENU},
    {"Windows", VK_LWIN}, {"RightWindows", VK_RWIN}, {"PrintScreen", VK_SNAPSHOT}, {"F1", VK_F1}, {"F2", VK_F2},
    {"F4", VK_F4}, {"AltFlag", 0x120}, {"Extended", 0x101}, {"Released", 0x180}};  // flags of the event
inline const std::map<std::string, DWORD> messages = {  // the parameter in the upper half
    {"left", WM_LBUTTONDOWN}, {"leftup", WM_LBUTTONUP}, {"right", WM_RBUTTONDOWN}, {"rightup", WM_RBUTTONUP},
    {"side", WM_XBUTTONDOWN}, {"wheel", WM_MOUSEWHEEL}, {"command", WM_APPCOMMAND}, {"erase", WM_ERASEBKGND},
    {"finger", WM_TOUCH | 3 << 16}, {"slide", WM_TOUCH | 1 << 16}, {"lift", WM_TOUCH | 4 << 16},
    {"activate", WM_ACTIVATE | 1 << 16}, {"deactivate", WM_ACTIVATE}, {"other", WM_ACTIVATEAPP},
    {"focus", WM_SETFOCUS}, {"close", WM_CLOSE}, {"elsewhere", WM_CONTEXTMENU | 0xFFFFu << 16},
    {"mayend", WM_QUERYENDSESSION}, {"goeson", WM_ENDSESSION}, {"ends", WM_ENDSESSION | 1 << 16}};
inline const std::map<std::string, std::string> phrases = {
    {"tap", "left 80 leftup"}, {"wiping", "Escape 100"},
    {"drawing", "200,150 right rightup Enter 300"},  // under an open menu
    {"doodle", "0,150 right rightup -270,150 tap"},  // the menu's first entry
    {"mash", "Q*30 17 W*30 5 E*30 48 Q*30 71 A*30 9 S*30 33 W*30 5 5*30 80 X*30 26 D*30"}};
inline const std::map<std::string, std::function<void(Desk &)>> deeds = {
    {"contextmenu", [](Desk &) { send(WM_CONTEXTMENU, 0, -1); }},
    {"oftouch", [](Desk &desk) { desk.extraInfo = LPARAM(0xFF5157FF); }},
    {"ofpen", [](Desk &desk) { desk.extraInfo = LPARAM(0xFF51577F); }},
    {"ofmouse", [](Desk &desk) { desk.extraInfo = 0; }},
    {"otherhand", [](Desk &desk) { desk.buttonsSwapped ^= true; }},
    {"unseen", [](Desk &desk) { desk.keysDown.clear(); }},  // all is released elsewhere
    {"away", [](Desk &desk) { desk.foreground = HWND(0x77); }},
    {"back", [](Desk &desk) { desk.foreground = primaryWindow(); }},
    {"louder", [](Desk &) { Tablet::level = 0.9f; }},
    {"penguin", [](Desk &desk) {
        for (int i = 0; i < 900 && !(walkerActive && walkerX > 80.0f && walkerX < 320.0f); ++i)
            desk.wait(200);
        moveTo(int(walkerX), int(walkerY - walkerSize / 2.0f));
    }},
    {"checkbox", [](Desk &desk) {
        const int x = int(hintCheckRect.X) + 5 - hintBox.left, y = int(hintCheckRect.Y) + 5 - hintBox.top;
        desk.send(hintFloatWindow, WM_LBUTTONDOWN, 0, MAKELPARAM(x, y));
    }}};
// clang-format on

inline std::vector<std::string> wordsOf(const std::string &text)
{
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

// A word is one of the above or the key of a letter; "Left*500" is held so long, not for 60 ms, and "Alt+F4"
// with another key; "30..39" are keys by their codes, "10,20" is where the mouse moves to, "25" a pause.
inline void act(const std::string &words)
{
    Desk &desk = *Desk::current;
    for (std::string word : wordsOf(words)) {
        int x = 0, y = 0;
        unsigned from = 0, to = 0;
        if (phrases.contains(word)) {
            act(phrases.at(word));
        } else if (deeds.contains(word)) {
            deeds.at(word)(desk);
        } else if (messages.contains(word)) {
            sendInput(LOWORD(messages.at(word)), HIWORD(messages.at(word)));
        } else if (std::sscanf(word.c_str(), "%d,%d", &x, &y) == 2) {
            moveTo(x, y);
        } else if (std::sscanf(word.c_str(), "%x..%x", &from, &to) == 2) {
            for (; from <= to; ++from, desk.wait(600))
                press(int(from));
        } else if (word.size() > 1 && std::isdigit(word[0]) && word[1] != '*') {
            desk.wait(DWORD(std::stoi(word)));
        } else {
            const std::set<int> before = desk.keysDown;
            for (size_t plus; (plus = word.find('+')) != std::string::npos; word.erase(0, plus + 1))
                desk.hold(keys.at(word.substr(0, plus)));
            const size_t star = std::min(word.find('*'), word.size());
            const std::string key = word.substr(0, star);
            press(key.size() == 1 ? key[0] : keys.at(key),
                  star == word.size() ? 60 : std::stoi(word.substr(star + 1)));
            desk.keysDown = before;
        }
    }
}
