// Calls as text, and what becomes of the objects that they make.
#include <algorithm>
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
// Calls marked "." are not recorded: they only ask or compute, or what they set is recorded with the call
// that uses it. Calls that are not listed are recorded without arguments.
static const auto &kindsOf = []() -> auto & {
    static auto &kinds = *new std::map<std::string, std::string>;
    std::istringstream words(R"(
        GdipFillEllipse gbffff GdipFillEllipseI gbiiii GdipDrawEllipse gpffff GdipDrawEllipseI gpiiii
        GdipFillRectangle gbffff GdipDrawRectangle gpffff GdipFillPolygon gbP GdipFillPolygonI gbI
        GdipDrawPolygon gpP GdipDrawPolygonI gpI GdipDrawLine gpffff GdipDrawArc gpffffff
        GdipDrawBezier gpffffffff GdipFillPath gbh GdipDrawPath gph GdipDrawString gs--R-b
        GdipDrawImageRect gmffff GdipDrawImageRectRect gmffffffff GdipDrawImageRectRectI gmiiiiiiii
        GdipTranslateWorldTransform gffi GdipRotateWorldTransform gfi GdipScaleWorldTransform gffi
        GdipGraphicsClear gx GdipSetSmoothingMode gi GdipSetCompositingMode gi GdipSetInterpolationMode gi
        GdipSetPixelOffsetMode gi GdipSetCompositingQuality gi GdipSetTextRenderingHint gi
        GdipCreateFont -fii GdipCreateFontFamilyFromName s GdipSetStringFormatAlign -i
        GdipSetStringFormatLineAlign -i GdipSetStringFormatFlags -i GdipSetStringFormatTrimming -i
        AlphaBlend diiii-iiiix BitBlt diiiidiix FillRect drB CreateCompatibleBitmap -ii SelectObject do
        CreateRectRgn iiii UpdateLayeredWindow w-qq---ax CreateWindowExW xs-xiiiiw DestroyWindow w
        ShowWindow wi UpdateWindow w EnableWindow wi SetWindowPos wwiiiix SetWindowRgn w
        SetLayeredWindowAttributes wxix InvalidateRect wr SetTimer wuu KillTimer wu SetForegroundWindow w
        SetActiveWindow w SetFocus w SetCapture w ClipCursor r RegisterTouchWindow w ImmAssociateContext w
        SetWindowsHookExW i--u SystemParametersInfoW x-F SetThreadExecutionState x PostMessageW wxu
        PostQuitMessage i DefWindowProcW wx OpenClipboard w SetClipboardData u AllowSetForegroundWindow i
        CreateMutexW --s PlaySoundW z-u WritePrivateProfileStringW sss

        GdipAddPathArc .ffffff GdipAddPathBezier .ffffffff GdipAddPathPolygon .P GdipCreateSolidFill .
        GdipCreatePen1 . GdipCreatePath . GdipCreateFromHDC . GdipDeleteBrush . GdipDeletePen .
        GdipDeletePath . GdipDeleteGraphics . GdipSetPenStartCap . GdipSetPenEndCap . GdipSetPenLineJoin .
        GdipSetPenLineCap197819 . GdipMeasureString . GetTickCount . GetFileAttributesW . GetAsyncKeyState .
        GetSystemMetrics . GetCursorPos . EnumDisplayMonitors . MonitorFromPoint . MonitorFromRect .
        GetMonitorInfoW . GetClientRect . GetWindowRect . ClientToScreen . IsWindow . IntersectRect .
        UnionRect . OffsetRect . InflateRect . IsRectEmpty . PtInRect . GetLastError . GetMessageW .
        DispatchMessageW . TranslateMessage . BeginPaint . EndPaint . GetDC . ReleaseDC . LoadIconW .
        LoadCursorW . GetModuleHandleW . GetModuleFileNameW . GetProcAddress . GetMessageExtraInfo .
        EnumDisplaySettingsW . GetStockObject . GetEnvironmentVariableW . GetForegroundWindow .
        GetCurrentObject . GetLocalTime . CoTaskMemFree . GetTouchInputInfo .)");
    for (std::string name; words >> name;)
        words >> kinds[name];
    return kinds;
}();

// Of brushes, pens, paths and Graphics while they live; of everything else, that it does.
struct Traits {
    std::string maker = {};
    uint32_t argb = 0;
    float penWidth = 0.0f;
    std::string ends = {};
    HDC dc = nullptr;
    std::vector<float> path = {};
};
static auto &objects = *new std::map<const void *, Traits>;

static std::string formatted(const char *format, auto... values)
{
    char text[60];
    std::snprintf(text, sizeof text, format, values...);
    return text;
}

// c0 is the first surface's canvas, w0 what the first window shows.
static std::string placeOf(HDC dc, int *canvas = nullptr)
{
    for (size_t i = 0; dc && i < surfaces.size(); ++i) {
        if (surfaces[i].canvasDC != dc) continue;
        if (canvas) *canvas = int(i);
        return " c" + std::to_string(i);
    }
    for (size_t i = 0; dc && i < Desk::current->windows.size(); ++i)
        if (Desk::current->windows[i].dc == dc) return " w" + std::to_string(i);
    return " elsewhere";
}

static std::string nameOfWindow(HWND window)
{
    if (!window) return " null";
    if (window == HWND_TOPMOST) return " topmost";
    const int index = int((intptr_t(window) - firstWindow) / 2);
    return Desk::current->find(window) ? " w" + std::to_string(index) : " other";
}

static std::string quoted(const wchar_t *text)
{
    if (!text) return " null";
    if (!HIWORD(intptr_t(text))) return " atom";
    char bytes[512] = {};
    WideCharToMultiByte(CP_UTF8, 0, text, -1, bytes, sizeof bytes - 1, nullptr, nullptr);
    std::string line = bytes;
    for (size_t at; (at = line.find('\n')) != std::string::npos;)
        line.replace(at, 1, "\\n");
    return " \"" + line + "\"";
}

static std::string nameOfImage(const void *image)
{
    int number = 0;
    for (const auto *sprites : {&glowSprites, &starSprites, &heartSprites})
        for (const Sprite &sprite : *sprites)
            if (++number; image && sprite.bitmap == image) return " sprite" + std::to_string(number);
    for (const auto &[name, frame] : {std::pair{" bubble", bubbleFrame},
                                      {" main", mainFrame},
                                      {" happy", happyFrame},
                                      {" cheer", cheerFrame}})
        if (image && frame && frame->image == image) return name;
    return "";
}

static Told toldOf(const Call &call, const std::string &kinds)
{
    Told told;
    static const Traits none;
    std::string &line = told.text;
    const auto add = [&](auto... numbers) {
        (..., told.numbers.push_back(float(numbers)));
        (..., (line += formatted(numbers == std::floor(numbers) ? " %.0f" : " %.2f", double(numbers))));
    };
    for (size_t i = 0; i < kinds.size(); ++i) {
        const auto *const pointer = call.get<const uint8_t *>(i);
        const auto found = objects.find(pointer);
        const Traits &traits = found == objects.end() ? none : found->second;
        switch (kinds[i]) {
        case 'g': line += placeOf(traits.dc, &told.canvas); break;
        case 'b':
        case 'p':
            line += formatted(" %08X", told.argb = traits.argb);
            if (traits.penWidth != 0.0f)
                line += formatted(" wide %.2f", double(traits.penWidth)) + traits.ends;
            break;
        case 'h': std::for_each(traits.path.begin(), traits.path.end(), add); break;
        case 'P': std::for_each_n(call.get<const float *>(i), 2 * call.get<int>(i + 1), add); break;
        case 'I': std::for_each_n(call.get<const INT *>(i), 2 * call.get<int>(i + 1), add); break;
        case 'f': add(call.get<float>(i)); break;
        case 'i': add(call.get<int>(i)); break;
        case 'u': add(call.get<uint32_t>(i)); break;
        case 'x': line += formatted(" x%X", call.get<uint32_t>(i)); break;
        case 'w': line += nameOfWindow(call.get<HWND>(i)); break;
        case 's': line += quoted(call.get<const wchar_t *>(i)); break;
        case 'm':
        case 'o': line += nameOfImage(pointer); break;
        case 'd': line += placeOf(call.get<HDC>(i), i == 0 ? &told.canvas : nullptr); break;
        case 'z': line += " " + (pointer ? nameOf(pointer) : "nothing"); break;
        case 'r':
            if (!pointer)
                line += " all";
            else
                std::for_each_n(call.get<const LONG *>(i), 4, add);
            break;
        case 'q':
            if (pointer) std::for_each_n(call.get<const LONG *>(i), 2, add);
            break;
        case 'F': line += formatted(" flags x%lX", call.get<const DWORD *>(i)[1]); break;
        case 'a': add(call.get<const BLENDFUNCTION *>(i)->SourceConstantAlpha); break;
        case 'R': std::for_each_n(call.get<const float *>(i), 4, add); break;
        case 'B': {
            LOGBRUSH brush = {};
            GetObjectW(call.get<HBRUSH>(i), sizeof brush, &brush);
            line += formatted(" x%lX", brush.lbColor);
            break;
        }
        }
    }
    return told;
}

static void tell(const Call &call)
{
    if (!Desk::current || !Desk::current->telling) return;
    const auto found = kindsOf.find(call.import.name);
    Told told = toldOf(call, found == kindsOf.end() ? "" : found->second);
    told.name = call.import.name;
    if (told.name.starts_with("Gdip") && std::isupper(told.name[4])) told.name.erase(0, 4);
    if (told.name.ends_with("W")) told.name.pop_back();
    told.text.insert(0, told.name);
    Desk::current->calls.push_back(std::move(told));
}

void tellCalls(bool on)
{
    for (const std::string &name : programImports()) {
        Import *const import = findImport(name);
        const bool quiet = kindsOf.contains(name) && kindsOf.at(name)[0] == '.';
        if (import && std::isupper(name[0]) && !quiet) setTell(*import, on ? tell : nullptr);
    }
}

// --- Objects.
static int64_t make(const Call &call, int out)  // the argument that takes the new object; -1: the result
{
    const int64_t result = call.passOn();
    const void *made = reinterpret_cast<const void *>(result);
    if (out >= 0) made = result == Ok ? *call.get<const void **>(size_t(out)) : nullptr;
    const float width = call.import.name == "GdipCreatePen1" ? call.get<float>(1) : 0.0f;
    if (made) objects[made] = {call.import.name, call.get<ARGB>(0), width, "", call.get<HDC>(0)};
    return result;
}

static void alsoDo(const char *name, const std::function<void(const Call &, Traits &)> &action)
{
    pushReplacement(name, [action](const Call &call) {
        action(call, objects[call.get<const void *>(0)]);
        return call.passOn();
    });
}

[[maybe_unused]] static const bool watched = [] {
    std::istringstream makers(R"(
        GdipCreateFromHDC 1 GdipCreateSolidFill 1 GdipCreatePen1 3 GdipCreatePath 1 GdipCreateFont 4
        GdipCreateFontFamilyFromName 2 GdipCloneFontFamily 1 GdipCloneStringFormat 1 GdipCreateStringFormat 2
        GdipCreateMatrix 0 GdipCreateImageAttributes 0 GdipCreateBitmapFromHBITMAP 2 GdipLoadImageFromFile 1
        GdipCreateBitmapFromScan0 5 GdipGetImageGraphicsContext 1 GdipNewPrivateFontCollection 0
        GdipCreateHBITMAPFromBitmap 1 CreateSolidBrush -1 CreateCompatibleDC -1 CreateCompatibleBitmap -1
        CreateDIBSection -1 CreateRectRgn -1)");
    int out = 0;
    for (std::string name; makers >> name >> out;)
        pushReplacement(name, [out](const Call &call) { return make(call, out); });
    for (const char *name :
         {"GdipDeleteGraphics", "GdipDeleteBrush", "GdipDeletePen", "GdipDeletePath", "GdipDeleteFont",
          "GdipDeleteFontFamily", "GdipDeleteStringFormat", "GdipDeleteMatrix", "GdipDisposeImageAttributes",
          "GdipDisposeImage", "DeleteObject", "DeleteDC"})
        pushReplacement(name, [](const Call &call) {
            const int64_t result = call.passOn();
            forgetObject(call.get<const void *>(0));
            return result;
        });
    for (const auto &[name, end] : {std::pair{"GdipSetPenStartCap", " round start"},
                                    {"GdipSetPenEndCap", " round end"},
                                    {"GdipSetPenLineJoin", " round joins"}})
        alsoDo(name, [end](const Call &call, Traits &pen) {
            if (call.get<int>(1) == LineCapRound) pen.ends += end;  // LineJoinRound is the same number
        });
    alsoDo("GdipSetPenLineCap197819", [](const Call &call, Traits &pen) {
        pen.ends = formatted(" caps %d%d%d", call.get<int>(1), call.get<int>(2), call.get<int>(3));
    });
    for (const char *name : {"GdipAddPathArc", "GdipAddPathBezier", "GdipAddPathPolygon"})
        alsoDo(name, [](const Call &call, Traits &path) {
            const std::vector<float> more = toldOf(call, kindsOf.at(call.import.name)).numbers;
            path.path.insert(path.path.end(), more.begin(), more.end());
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
