// Whole plays, from start-up to a way out: all that the program does to the system must stay the same, to the
// last call. A recorded line is a stretch of a play with its numbers of inputs and calls and their hash. With
// ZUBBLY_WRITE_PLAY=FILE all calls of each input go there; tools/story compares two commits by them.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <fstream>

#include "hint/panel.h"
#include "mascot/fireworks.h"
#include "mascot/walker.h"
#include "menu/menu.h"
#include "shell/startup.h"
#include "support/objects.h"
#include "support/recorded.h"

namespace fs = std::filesystem;

static Rng child;
static int pick(int lo, int hi)
{
    return lo + int(child() % uint32_t(hi - lo + 1));
}

// --- What is recorded.
static std::string lines, stretch;  // to be compared, and all calls of the current stretch
static std::ofstream *everything = nullptr;
static int inputs = 0, callCount = 0;

static uint32_t hashOf(const std::string &text)
{
    uint32_t hash = 2166136261u;
    for (const char letter : text)
        hash = (hash ^ uint8_t(letter)) * 16777619u;
    return hash;
}

// What came of an input, or of the timers that are due at one moment.
static void endInput(const std::string &input)
{
    Desk &desk = *Desk::current;
    std::string calls = desk.text();
    if (calls.empty()) return;
    const std::string folder = desk.folder().string();
    for (size_t at; (at = calls.find(folder)) != std::string::npos;)
        calls.replace(at, folder.size(), "FOLDER");
    *everything << "= " << desk.tick << " ms " << input << "\n" << calls;
    stretch += calls;
    ++inputs;
    callCount += int(std::exchange(desk.calls, {}).size());
}

static void endStretch(const std::string &name)
{
    endInput("end");
    char line[120];
    std::snprintf(line, sizeof line, "%9.3f s  %-26s %5d inputs %6d calls  %08X\n",
                  double(Desk::current->tick - 1'000'000) / 1000.0, name.c_str(), std::exchange(inputs, 0),
                  std::exchange(callCount, 0), hashOf(std::exchange(stretch, "")));
    lines += line;
}

// --- What a child does.
static void wait(DWORD ms)
{
    Desk &desk = *Desk::current;
    for (const int64_t end = desk.steady + int64_t(ms) * 1'000'000; desk.steady < end;) {
        int64_t next = end;
        for (const auto &[of, timer] : desk.timers)
            next = std::min(next, timer.due);
        desk.wait(DWORD(std::max<int64_t>(next - desk.steady, 0) / 1'000'000));
        endInput("timers");
    }
}

static void send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
{
    Desk::current->send(windowHandle(0), message, wParam, lParam);
    char text[60];
    std::snprintf(text, sizeof text, "message %03X %jX %jX", message, uintmax_t(wParam), uintmax_t(lParam));
    endInput(text);
}

static void press(int key, int held = 60, int after = 200)
{
    const KBDLLHOOKSTRUCT event = {DWORD(key), 0, 0, 0, 0};
    const bool swallowed = Desk::current->hook(HC_ACTION, WM_KEYDOWN, LPARAM(&event)) != 0;
    Desk::current->settle();
    endInput("hook");
    if (!swallowed) send(WM_KEYDOWN, WPARAM(key));
    for (; !swallowed && held > 60; held -= 40) {
        wait(40);
        send(WM_KEYDOWN, WPARAM(key), 1 << 30);
    }
    wait(DWORD(held));
    Desk::current->hook(HC_ACTION, WM_KEYUP, LPARAM(&event));
    if (!swallowed) send(WM_KEYUP, WPARAM(key));
    wait(DWORD(after));
}

static LPARAM at(int x, int y)
{
    Desk::current->cursor = {x, y};
    return MAKELPARAM(WORD(x), WORD(y));
}

static void click(int key, int x, int y, const std::function<void()> &between = [] { wait(80); })
{
    const UINT down = key == VK_LBUTTON ? WM_LBUTTONDOWN : WM_RBUTTONDOWN;
    Desk::current->hold(key);
    send(down, 0, at(x, y));
    between();
    Desk::current->release(key);
    send(down + 1, 0, at(x, y));  // its WM_xBUTTONUP
    wait(300);
}

static void tapsAndStrokes()
{
    for (int i = 0; i < 8; ++i) {
        const int x = pick(5, 395), y = pick(5, 295);
        click(VK_LBUTTON, x, y);
        click(VK_LBUTTON, 200, 150, [] {
            for (int step = 0; step < 12; ++step) {
                wait(15);
                send(WM_MOUSEMOVE, MK_LBUTTON, at(200 - 30 * step, 150 + 9 * step));
            }
        });
    }
}

static void fingersAndBothButtons()
{
    send(WM_XBUTTONDOWN, 0, at(50, 60));
    wait(4000);
    for (const int flags : {TOUCHEVENTF_DOWN, TOUCHEVENTF_MOVE, TOUCHEVENTF_UP}) {
        Desk::current->touches = {{9000, 8000, nullptr, 1, DWORD(flags), 0, 0, 0, 0, 0},
                                  {-5000, 16000, nullptr, 2, DWORD(flags), 0, 0, 0, 0, 0}};
        send(WM_TOUCH, 2, 1);
        wait(100);
    }
    for (const int first : {VK_LBUTTON, VK_RBUTTON})
        click(first, 120, 130,
              [first] { click(VK_LBUTTON + VK_RBUTTON - first, 120, 130, [] { wait(900); }); });
}

static void menuAndEntry()
{
    click(VK_RBUTTON, pick(0, 390), pick(0, 290));
    const RECT entry = menuEntries.empty() ? RECT{} : menuEntries[size_t(pick(0, 2))].rect;
    click(VK_LBUTTON, (entry.left + entry.right) / 2, (entry.top + entry.bottom) / 2);
    wait(4000);
    send(WM_CONTEXTMENU, 0, -1);
    press(VK_ESCAPE, 60, 3000);
}

static void penguin()
{
    for (int i = 0; i < 900 && !showActive; ++i) {
        wait(200);
        if (walkerActive && walkerX > 80 && walkerX < 320 && i % 7 == 0)
            click(VK_LBUTTON, int(walkerX), int(walkerY - walkerSize / 2.0f));
    }
    EXPECT_TRUE(showActive);
    wait(30'000);
}

// --- What grown-ups do.
static void otherPrograms()
{
    for (const auto &[message, wParam] : {std::pair{UINT(WM_ACTIVATE), WA_INACTIVE},
                                          {WM_ACTIVATE, WA_ACTIVE},
                                          {WM_SETFOCUS, 0},
                                          {WM_ACTIVATEAPP, 0},
                                          {WM_APPCOMMAND, 0}})
        send(message, WPARAM(wParam));
    Desk::current->foreground = HWND(0x77);
    wait(4000);
    Desk::current->foreground = windowHandle(0);
    send(WM_ACTIVATEAPP, TRUE);
}

// The hint comes again, pictures are saved, and the checkbox is ticked.
static void idleMinutes()
{
    wait(200'000);
    EXPECT_TRUE(hintVisible);
    Desk::current->send(hintFloatWindow, WM_LBUTTONDOWN, 0,
                        at(int(hintCheckRect.X) + 5 - hintBox.left, int(hintCheckRect.Y) + 5 - hintBox.top));
    wait(20'000);
}

static Object item = {objectMethods, "item", 0, [](int place, void **first, void **second, void **, void **) {
                          const std::wstring path = (Desk::current->folder() / "given.png").wstring();
                          const size_t bytes = 2 * path.size() + 2;
                          if (place == 3) *first = windowHandle(0);  // GetWindow
                          if (place == 5) *second = std::memcpy(CoTaskMemAlloc(bytes), path.c_str(), bytes);
                          return int64_t(S_OK);
                      }};
static Object tokens = {objectMethods, "tokens", 0,
                        [](int place, void **first, void **second, void **, void **) {
                            if (place == 8) *reinterpret_cast<ULONG *>(first) = 1;  // GetCount
                            return place == 3 ? give(item, second) : S_OK;          // Next
                        }};
static Object voices = {objectMethods, "voices", 0, [](int place, void **, void **, void **third, void **) {
                            return place == 18 ? give(tokens, third) : S_OK;  // EnumTokens
                        }};
static Object voice = {objectMethods, "voice", 0, nullptr};
static IFileDialogEvents *listener = nullptr;
static Object dialog = {objectMethods, "dialog", 0,
                        [](int place, void **first, void **second, void **, void **) {
                            if (place == 0) return give(item, second);  // IOleWindow
                            if (place == 7)
                                listener = reinterpret_cast<IFileDialogEvents *>(first);  // Advise
                            if (place == 20) return give(item, first);                    // GetResult
                            if (place != 3) return int64_t(S_OK);                         // Show
                            listener->OnFolderChange(reinterpret_cast<IFileDialog *>(&dialog));
                            Desk::current->wait(3000);
                            return int64_t(S_OK);
                        }};

static void saveDialog()
{
    send(WM_SYSKEYDOWN, VK_F1, 1 << 29);
    EXPECT_TRUE(fs::exists(Desk::current->folder() / "given.png"));
    wait(2000);
}

// --- The plays. Keys come one after the other, or any of them where the pause is not always the same.
struct Chapter {
    const char *name;
    int rounds;
    void (*play)() = nullptr;
    std::vector<int> keys = {};
    int times = 0, held = 0, pause = 0, longest = 0;
};

static void play(const Chapter &chapter)
{
    if (chapter.play) chapter.play();
    for (int i = 0; i < chapter.times; ++i) {
        const int any = pick(0, int(chapter.keys.size()) - 1);
        const int pause = pick(chapter.pause, chapter.longest);
        const bool inOrder = chapter.pause == chapter.longest;
        press(chapter.keys[inOrder ? size_t(i) % chapter.keys.size() : size_t(any)], chapter.held, pause);
    }
}

static void playWhole(const std::string &record, const std::vector<RECT> &monitors,
                      const std::vector<Chapter> &chapters, const std::function<void()> &wayOut)
{
    Desk desk({});
    const char *const written = std::getenv("ZUBBLY_WRITE_PLAY");
    std::ofstream copy(written ? written : "NUL", std::ios::binary | std::ios::app);
    everything = &copy;
    child.seed(1);
    desk.monitors = monitors;
    desk.foreground = windowHandle(0);
    desk.makeObject = [](REFCLSID id, void **out) {
        for (const auto &[of, object] : {std::pair{CLSID_FileSaveDialog, &dialog},
                                         {CLSID_SpVoice, &voice},
                                         {CLSID_SpObjectTokenCategory, &voices}})
            if (of == id) return HRESULT(give(*object, out));
        return REGDB_E_CLASSNOTREG;
    };
    // The mascot as it ships, and a typeface that is everywhere; no two have the same sizes of texts.
    wchar_t file[260] = {};
    SYSTEM(GetModuleFileNameW)(nullptr, file, 260);
    fs::copy(fs::path(file).parent_path().parent_path() / "assets", desk.folder() / "assets",
             fs::copy_options::recursive);
    desk.programFile = (desk.folder() / "Zubbly.exe").wstring();
    REPLACE(GdipCreateFontFamilyFromName, [](const WCHAR *, GpFontCollection *fonts, GpFontFamily **family) {
        return SYSTEM(GdipCreateFontFamilyFromName)(L"Tahoma", fonts, family);
    });
    REPLACE(GdipMeasureString, [](GpGraphics *, const WCHAR *, INT length, const GpFont *,
                                  const RectF *layout, const GpStringFormat *, RectF *box, INT *fitted) {
        *box = RectF(layout->X, layout->Y, 7.0f * float(length), 20.0f + float(length % 5));
        if (fitted) *fitted = length;
        return Ok;
    });
    desk.play = [&] {
        wait(2000);
        endStretch("start-up");
        for (const Chapter &chapter : chapters) {
            for (int round = 1; round <= chapter.rounds; ++round) {
                play(chapter);
                endStretch(chapter.name + (" " + std::to_string(round)));
            }
        }
        wayOut();
        endStretch("way out");
    };
    EXPECT_EQ(runApp(nullptr), 0);
    endStretch("after the loop");
    EXPECT_EQ(leaks(), "1 CreateCompatibleBitmap, 1 CreateCompatibleDC");  // the composite's, to the end
    EXPECT_EQ(dialog.references + item.references + voice.references + voices.references + tokens.references,
              0);
    expectRecorded(record, lines);
}

// The last bits of these are the system's, and the plays hang on them.
static uint32_t mathematics()
{
    std::string bits;
    for (float x = 0.0f; x < 20.0f; x += 0.01f)
        for (const float value : {sinf(x), cosf(x), powf(x, 0.75f)})
            bits += std::to_string(std::bit_cast<uint32_t>(value));
    return hashOf(bits);
}

TEST(Play, IsTheSameAsEverUntilAltF4)
{
    EXPECT_EQ(mathematics(), 289075063u) << "another library of mathematics: what follows may come of that";
    std::vector<int> all;
    for (int key = 1; key < 0xE0; ++key)  // PrintScreen is no child's
        if (key != VK_SNAPSHOT && key != VK_RETURN && key != VK_ESCAPE) all.push_back(key);
    const std::vector<int> letters(all.begin() + 0x3B, all.begin() + 0x52);
    playWhole("shell/a play until Alt+F4", {{0, 0, 400, 300}, {-200, 50, 0, 250}},
              {{"every key, calmly", 1, nullptr, all, 221, 60, 1500, 1500},
               {"one letter again and again", 2, nullptr, {'A'}, 14, 60, 560, 560},
               {"mashed letters", 5, nullptr, letters, 30, 30, 5, 90},
               {"held letters", 2, nullptr, letters, 3, 2000, 500, 3000},
               {"anything, fast", 3, nullptr, all, 40, 40, 40, 600},
               {"taps and strokes", 2, tapsAndStrokes},
               {"fingers and both buttons", 1, fingersAndBothButtons},
               {"Space", 3, nullptr, {VK_SPACE}, 8, 60, 100, 700},
               {"pen", 2, nullptr, {VK_LEFT, VK_UP, VK_NUMPAD6, VK_NUMPAD2}, 4, 900, 200, 200},
               {"wipes", 8, nullptr, {'B', VK_ESCAPE}, 6, 60, 2200, 2200},
               {"Enter and Escape", 3, nullptr, {VK_RETURN, VK_ESCAPE, 'Q'}, 6, 60, 300, 5000},
               {"menu", 4, menuAndEntry},
               {"auto-drawing", 8, nullptr, {VK_RETURN}, 1, 60, 25'000, 25'000},
               {"penguin", 1, penguin},
               {"other programs", 1, otherPrograms},
               {"save dialog", 2, saveDialog},
               {"idle minutes", 1, idleMinutes}},
              [] { send(WM_SYSKEYDOWN, VK_F4, 1 << 29); });
}

TEST(Play, IsTheSameAsEverUntilTheSessionEnds)
{
    playWhole("shell/a play until the session ends", {{100, 50, 500, 350}},
              {{"letters", 1, nullptr, {'A', 'B', '5', VK_TAB}, 16, 60, 300, 1500},
               {"taps and strokes", 1, tapsAndStrokes},
               {"menu", 2, menuAndEntry},
               {"auto-drawing", 3, nullptr, {VK_RETURN}, 1, 60, 25'000, 25'000}},
              [] {
                  send(WM_QUERYENDSESSION);
                  wait(1000);
                  send(WM_ENDSESSION, TRUE);
              });
}
