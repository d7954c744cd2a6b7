// Calls as text, and what becomes of the objects that they make.
#include <cmath>
#include <sstream>

#include "mascot/frames.h"
#include "mascot/sprites.h"
#include "sound/slots.h"
#include "support/desk.h"

// How each argument is recorded:
//   g Graphics   b brush   p pen   h path   P points with their count   I points of integers with it
//   f number   i integer   u unsigned   x bits   c colour   w window   r RECT   R RectF   s text   m image
//   q point or size   a blend   d DC   B brush of GDI   o object of GDI   z sound   F flags of a record   -
//   nothing
// Names that are not here are told without arguments if they are the system's, or not at all if they only
// ask.
// clang-format off
static const std::pair<const char *, const char *> arguments[] = {
    {"GdipFillEllipse", "gbffff"}, {"GdipFillEllipseI", "gbiiii"}, {"GdipDrawEllipse", "gpffff"},
    {"GdipDrawEllipseI", "gpiiii"}, {"GdipFillRectangle", "gbffff"}, {"GdipDrawRectangle", "gpffff"},
    {"GdipFillPolygon", "gbP"}, {"GdipFillPolygonI", "gbI"}, {"GdipDrawPolygon", "gpP"},
    {"GdipDrawPolygonI", "gpI"}, {"GdipDrawLine", "gpffff"}, {"GdipDrawArc", "gpffffff"},
    {"GdipDrawBezier", "gpffffffff"}, {"GdipFillPath", "gbh"}, {"GdipDrawPath", "gph"},
    {"GdipDrawString", "gs--R-b"}, {"GdipDrawImageRect", "gmffff"}, {"GdipDrawImageRectRect", "gmffffffff"},
    {"GdipDrawImageRectRectI", "gmiiiiiiii"}, {"GdipTranslateWorldTransform", "gffi"},
    {"GdipRotateWorldTransform", "gfi"}, {"GdipScaleWorldTransform", "gffi"}, {"GdipGraphicsClear", "gx"},
    {"GdipSetSmoothingMode", "gi"}, {"GdipSetCompositingMode", "gi"}, {"GdipSetInterpolationMode", "gi"},
    {"GdipSetPixelOffsetMode", "gi"}, {"GdipSetCompositingQuality", "gi"}, {"GdipSetTextRenderingHint", "gi"},
    {"GdipCreateFont", "-fii"}, {"GdipCreateFontFamilyFromName", "s"}, {"GdipSetStringFormatAlign", "-i"},
    {"GdipSetStringFormatLineAlign", "-i"}, {"GdipSetStringFormatFlags", "-i"},
    {"GdipSetStringFormatTrimming", "-i"}, {"AlphaBlend", "diiii-iiiix"}, {"BitBlt", "diiiidiix"},
    {"FillRect", "drB"}, {"CreateCompatibleBitmap", "-ii"}, {"SelectObject", "do"}, {"CreateRectRgn", "iiii"},
    {"UpdateLayeredWindow", "w-qq---ax"}, {"CreateWindowExW", "xs-xiiiiw"}, {"DestroyWindow", "w"},
    {"ShowWindow", "wi"}, {"UpdateWindow", "w"}, {"EnableWindow", "wi"}, {"SetWindowPos", "wwiiiix"},
    {"SetWindowRgn", "w"}, {"SetLayeredWindowAttributes", "wxix"}, {"InvalidateRect", "wr"},
    {"SetTimer", "wuu"}, {"KillTimer", "wu"}, {"SetForegroundWindow", "w"}, {"SetActiveWindow", "w"},
    {"SetFocus", "w"}, {"SetCapture", "w"}, {"ClipCursor", "r"}, {"RegisterTouchWindow", "w"},
    {"ImmAssociateContext", "w"}, {"SetWindowsHookExW", "i--u"}, {"SystemParametersInfoW", "x-F"},
    {"SetThreadExecutionState", "x"}, {"PostMessageW", "wxu"}, {"PostQuitMessage", "i"},
    {"DefWindowProcW", "wx"}, {"OpenClipboard", "w"}, {"SetClipboardData", "u"},
    {"AllowSetForegroundWindow", "i"}, {"CreateMutexW", "--s"}, {"PlaySoundW", "z-u"},
    {"WritePrivateProfileStringW", "sss"},
};
// clang-format on

// They ask or compute, or what they set is told with the call that uses it.
static const char *const quiet =
    " GetTickCount GetFileAttributesW GetAsyncKeyState GetSystemMetrics GetCursorPos EnumDisplayMonitors "
    "MonitorFromPoint "
    "MonitorFromRect GetMonitorInfoW GetClientRect GetWindowRect ClientToScreen IsWindow IntersectRect "
    "UnionRect OffsetRect InflateRect IsRectEmpty PtInRect GetLastError GetMessageW DispatchMessageW "
    "TranslateMessage BeginPaint EndPaint GetDC ReleaseDC GetModuleHandleW GetModuleFileNameW LoadIconW "
    "LoadCursorW GetProcAddress GetMessageExtraInfo EnumDisplaySettingsW GetStockObject "
    "GetEnvironmentVariableW GetForegroundWindow GetCurrentObject GetLocalTime "
    "CoTaskMemFree GetTouchInputInfo GdipCreateSolidFill GdipDeleteBrush GdipCreatePen1 GdipDeletePen "
    "GdipSetPenStartCap GdipSetPenEndCap GdipSetPenLineJoin GdipSetPenLineCap197819 GdipCreatePath "
    "GdipDeletePath GdipAddPathArc GdipAddPathBezier GdipAddPathPolygon GdipCreateFromHDC GdipDeleteGraphics "
    "GdipMeasureString GetMessageExtraInfo GetProcAddress EnumDisplaySettingsW ";

// Of brushes, pens, paths and Graphics while they live; of everything else, that it does.
struct Traits {
    std::string maker;
    uint32_t argb = 0;
    float penWidth = 0.0f;
    std::string ends;
    HDC dc = nullptr;
    std::vector<float> path;
};
static auto &objects = *new std::map<const void *, Traits>;

static Traits traitsOf(const void *object)
{
    const auto found = objects.find(object);
    return found == objects.end() ? Traits() : found->second;
}

// c0 is the first surface's canvas, w0 what the first window shows.
static std::string placeOf(HDC dc, Told &told, bool target)
{
    for (size_t i = 0; dc && i < surfaces.size(); ++i) {
        if (surfaces[i].canvasDC != dc) continue;
        if (target) told.canvas = int(i);
        return " c" + std::to_string(i);
    }
    for (size_t i = 0; dc && i < Desk::current->windows.size(); ++i)
        if (Desk::current->windows[i].dc == dc) return " w" + std::to_string(i);
    return " elsewhere";
}

static std::string nameOfWindow(HWND window)
{
    if (!window) return "null";
    if (window == HWND_TOPMOST) return "topmost";
    return Desk::current->find(window) ? "w" + std::to_string((intptr_t(window) - firstWindow) / 2) : "other";
}

static std::string narrow(const wchar_t *text)
{
    if (!text) return "null";
    if (!HIWORD(intptr_t(text))) return "atom";
    char bytes[512] = {};
    WideCharToMultiByte(CP_UTF8, 0, text, -1, bytes, sizeof bytes - 1, nullptr, nullptr);
    std::string line = "\"";
    for (const char letter : std::string(bytes))
        line += letter == '\n' ? std::string("\\n") : std::string(1, letter);
    return line + "\"";
}

static std::string nameOfObject(const void *object)
{
    int number = 0;
    for (const auto *sprites : {&glowSprites, &starSprites, &heartSprites}) {
        for (const Sprite &sprite : *sprites) {
            ++number;
            if (object && sprite.bitmap == object) return " sprite" + std::to_string(number);
        }
    }
    const std::pair<const char *, ImageFrame *> frames[] = {
        {" bubble", bubbleFrame}, {" main", mainFrame}, {" happy", happyFrame}, {" cheer", cheerFrame}};
    for (const auto &[name, frame] : frames)
        if (object && frame && frame->image == object) return name;
    return "";
}

static void addNumber(Told &told, std::ostringstream &line, double number)
{
    told.numbers.push_back(float(number));
    char text[40];
    std::snprintf(text, sizeof text, std::floor(number) == number ? " %.0f" : " %.2f", number);
    line << text;
}

static void addTraits(Told &told, std::ostringstream &line, const Traits &traits)
{
    char text[48];
    std::snprintf(text, sizeof text, " %08X", traits.argb);
    line << text;
    told.argb = traits.argb;
    told.penWidth = traits.penWidth;
    if (traits.penWidth == 0.0f) return;
    std::snprintf(text, sizeof text, " wide %.2f", double(traits.penWidth));
    line << text << traits.ends;
}

template <class Point>
static void addPoints(Told &told, std::ostringstream &line, const Call &call, size_t at)
{
    const Point *points = call.get<const Point *>(at);
    for (int i = 0; i < call.get<int>(at + 1); ++i) {
        addNumber(told, line, double(points[i].X));
        addNumber(told, line, double(points[i].Y));
    }
}

static Told toldOf(const Call &call, const char *kinds)
{
    Told told;
    told.name = call.import.name;
    if (told.name.starts_with("Gdip") && std::isupper(told.name[4])) told.name.erase(0, 4);
    if (told.name.ends_with("W") && told.name != "W") told.name.pop_back();
    std::ostringstream line;
    line << told.name;
    for (size_t i = 0; kinds[i]; ++i) {
        const auto *const pointer = call.get<const void *>(i);
        switch (kinds[i]) {
        case 'g': line << placeOf(traitsOf(pointer).dc, told, true); break;
        case 'b':
        case 'p': addTraits(told, line, traitsOf(pointer)); break;
        case 'h':
            for (const float number : traitsOf(pointer).path)
                addNumber(told, line, double(number));
            break;
        case 'P': addPoints<GpPointF>(told, line, call, i); break;
        case 'I': addPoints<GpPoint>(told, line, call, i); break;
        case 'f': addNumber(told, line, double(call.get<float>(i))); break;
        case 'i': addNumber(told, line, call.get<int>(i)); break;
        case 'u': addNumber(told, line, call.get<uint32_t>(i)); break;
        case 'x': line << " x" << std::hex << std::uppercase << call.get<uint32_t>(i) << std::dec; break;
        case 'w': line << " " << nameOfWindow(call.get<HWND>(i)); break;
        case 's': line << " " << narrow(call.get<const wchar_t *>(i)); break;
        case 'm':
        case 'o': line << nameOfObject(pointer); break;
        case 'd': line << placeOf(call.get<HDC>(i), told, i == 0); break;
        case 'z': line << " " << (pointer ? nameOf(pointer) : "nothing"); break;
        case 'r':
            if (const auto *rect = call.get<const RECT *>(i)) {
                for (const LONG side : {rect->left, rect->top, rect->right, rect->bottom})
                    addNumber(told, line, double(side));
            } else {
                line << " all";
            }
            break;
        case 'q':
            if (const auto *pair = call.get<const POINT *>(i)) {
                addNumber(told, line, double(pair->x));
                addNumber(told, line, double(pair->y));
            }
            break;
        case 'F':
            line << " flags x" << std::hex << std::uppercase << static_cast<const DWORD *>(pointer)[1]
                 << std::dec;
            break;
        case 'a': addNumber(told, line, call.get<const BLENDFUNCTION *>(i)->SourceConstantAlpha); break;
        case 'R': {
            const auto *rect = call.get<const RectF *>(i);
            for (const float side : {rect->X, rect->Y, rect->Width, rect->Height})
                addNumber(told, line, double(side));
            break;
        }
        case 'B': {
            LOGBRUSH traits = {};
            GetObjectW(call.get<HBRUSH>(i), sizeof traits, &traits);
            line << " x" << std::hex << std::uppercase << traits.lbColor << std::dec;
            break;
        }
        }
    }
    told.text = line.str();
    return told;
}

static const auto &known =
    *new std::map<std::string, const char *>(std::begin(arguments), std::end(arguments));

static void tell(const Call &call)
{
    if (!Desk::current || !Desk::current->telling) return;
    const auto found = known.find(call.import.name);
    Told told = toldOf(call, found == known.end() ? "" : found->second);
    Desk::current->calls.push_back(std::move(told));
}

void tellCalls(bool on)
{
    for (const std::string &name : programImports()) {
        Import *const import = findImport(name);
        const bool asks = std::string(quiet).find(" " + name + " ") != std::string::npos;
        if (import && name[0] >= 'A' && name[0] <= 'Z' && !asks) setTell(*import, on ? tell : nullptr);
    }
}

// --- Objects. The makers, and which argument takes the new object; -1 if it is the result.
static const std::pair<const char *, int> makers[] = {{"GdipCreateFromHDC", 1},
                                                      {"GdipCreateSolidFill", 1},
                                                      {"GdipCreatePen1", 3},
                                                      {"GdipCreatePath", 1},
                                                      {"GdipCreateFont", 4},
                                                      {"GdipCreateFontFamilyFromName", 2},
                                                      {"GdipCloneFontFamily", 1},
                                                      {"GdipCloneStringFormat", 1},
                                                      {"GdipCreateStringFormat", 2},
                                                      {"GdipCreateMatrix", 0},
                                                      {"GdipCreateImageAttributes", 0},
                                                      {"GdipCreateBitmapFromHBITMAP", 2},
                                                      {"GdipLoadImageFromFile", 1},
                                                      {"GdipCreateBitmapFromScan0", 5},
                                                      {"GdipGetImageGraphicsContext", 1},
                                                      {"CreateSolidBrush", -1},
                                                      {"GdipNewPrivateFontCollection", 0},
                                                      {"GdipCreateHBITMAPFromBitmap", 1},
                                                      {"CreateCompatibleDC", -1},
                                                      {"CreateCompatibleBitmap", -1},
                                                      {"CreateDIBSection", -1},
                                                      {"CreateRectRgn", -1}};
// clang-format off
static const char *const freers[] = {
    "GdipDeleteGraphics", "GdipDeleteBrush", "GdipDeletePen", "GdipDeletePath", "GdipDeleteFont",
    "GdipDeleteFontFamily", "GdipDeleteStringFormat", "GdipDeleteMatrix", "GdipDisposeImageAttributes",
    "GdipDisposeImage", "DeleteObject", "DeleteDC"};
// clang-format on

static int64_t make(const Call &call, int out)
{
    const int64_t result = call.passOn();
    const void *made = out < 0 ? reinterpret_cast<const void *>(result) : nullptr;
    if (out >= 0 && result == Ok) made = *call.get<const void **>(size_t(out));
    if (!made) return result;
    Traits &traits = objects[made] = Traits();
    traits.maker = call.import.name;
    const std::string &name = call.import.name;
    if (name == "GdipCreateSolidFill" || name == "GdipCreatePen1") traits.argb = call.get<ARGB>(0);
    if (name == "GdipCreatePen1") traits.penWidth = call.get<float>(1);
    if (name == "GdipCreateFromHDC") traits.dc = call.get<HDC>(0);
    return result;
}

template <class... Numbers> static void lengthen(const void *path, Numbers... numbers)
{
    std::vector<float> &all = objects[path].path;
    (..., all.push_back(numbers));
}

[[maybe_unused]] static const bool watched = [] {
    for (const auto &[name, out] : makers)
        pushReplacement(name, [out = out](const Call &call) { return make(call, out); });
    for (const char *name : freers)
        pushReplacement(name, [](const Call &call) {
            const int64_t result = call.passOn();
            objects.erase(call.get<const void *>(0));
            return result;
        });
    const auto alsoDo = [](const char *name, auto action) {
        pushReplacement(name, [action](const Call &call) {
            action(call, call.get<const void *>(0));
            return call.passOn();
        });
    };
    alsoDo("GdipSetPenStartCap", [](const Call &call, const void *pen) {
        if (call.get<int>(1) == LineCapRound) objects[pen].ends += " round start";
    });
    alsoDo("GdipSetPenEndCap", [](const Call &call, const void *pen) {
        if (call.get<int>(1) == LineCapRound) objects[pen].ends += " round end";
    });
    alsoDo("GdipSetPenLineJoin", [](const Call &call, const void *pen) {
        if (call.get<int>(1) == LineJoinRound) objects[pen].ends += " round joins";
    });
    alsoDo("GdipSetPenLineCap197819", [](const Call &call, const void *pen) {
        objects[pen].ends = " caps " + std::to_string(call.get<int>(1)) + std::to_string(call.get<int>(2)) +
                            std::to_string(call.get<int>(3));
    });
    alsoDo("GdipAddPathArc", [](const Call &call, const void *path) {
        for (size_t i = 1; i <= 6; ++i)
            lengthen(path, call.get<float>(i));
    });
    alsoDo("GdipAddPathBezier", [](const Call &call, const void *path) {
        for (size_t i = 1; i <= 8; ++i)
            lengthen(path, call.get<float>(i));
    });
    alsoDo("GdipAddPathPolygon", [](const Call &call, const void *path) {
        const auto *points = call.get<const GpPointF *>(1);
        for (int i = 0; i < call.get<int>(2); ++i)
            lengthen(path, points[i].X, points[i].Y);
    });
    return true;
}();

void forgetObject(const void *object)
{
    objects.erase(object);
}

void forgetObjects()
{
    objects.clear();
}

std::string leaks()
{
    std::map<std::string, int> counts;
    for (const auto &[object, traits] : objects)
        if (!traits.maker.empty()) ++counts[traits.maker];
    std::string text;
    for (const auto &[maker, count] : counts)
        text += (text.empty() ? "" : ", ") + std::to_string(count) + " " + maker;
    return text;
}
