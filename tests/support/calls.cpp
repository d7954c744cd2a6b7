// Calls as text, and what becomes of the objects that they make.
#include <algorithm>
#include <cmath>
#include <sstream>

#include "mascot/frames.h"
#include "mascot/sprites.h"
#include "sound/slots.h"
#include "support/desk.h"

// How each argument of a call is recorded. Calls that are not listed are recorded without arguments.
//   f i number   u unsigned   x bits   c colour   s text   z sound   m image   F flags of a record   a blend
//   w window   d DC   B brush of GDI   P points of floats with their count   I of integers   q point or size
//   r RECT   R RectF   g Graphics   o brush, pen or path   - nothing
// The call makes an object, which looks like the arguments, if an argument (*) or the result (=) is a new
// one. It adds to the looks of the object at +: W width, S E J round ends and joins, K caps. It frees that at
// !. Behind a "." the call itself is not recorded, nor is what begins with Get and is not listed: it only
// asks or computes, or what it sets is recorded with the call that uses it.
static const auto &lettersOf = []() -> auto & {
    static auto &letters = *new std::map<std::string, std::string>;
    std::istringstream words(R"(
        GdipFillEllipse goffff GdipFillEllipseI goiiii GdipDrawEllipse goffff GdipDrawEllipseI goiiii
        GdipFillRectangle goffff GdipDrawRectangle goffff GdipFillPolygon goP GdipFillPolygonI goI
        GdipDrawPolygon goP GdipDrawPolygonI goI GdipDrawLine goffff GdipDrawArc goffffff
        GdipDrawBezier goffffffff GdipFillPath goo GdipDrawPath goo GdipDrawString gs--R-o
        GdipDrawImageRect gmffff GdipDrawImageRectRect gmffffffff GdipDrawImageRectRectI gmiiiiiiii
        GdipTranslateWorldTransform gffi GdipRotateWorldTransform gfi GdipScaleWorldTransform gffi
        GdipGraphicsClear gx GdipSetSmoothingMode gi GdipSetCompositingMode gi GdipSetInterpolationMode gi
        GdipSetPixelOffsetMode gi GdipSetCompositingQuality gi GdipSetTextRenderingHint gi
        GdipSetStringFormatAlign -i GdipSetStringFormatLineAlign -i GdipSetStringFormatFlags -i
        GdipSetStringFormatTrimming -i GdipCreateFont -fii* GdipDeleteFont !
        GdipCreateFontFamilyFromName s-* GdipCloneFontFamily -* GdipDeleteFontFamily !
        GdipCreateStringFormat --* GdipCloneStringFormat -* GdipDeleteStringFormat ! GdipCreateMatrix *
        GdipDeleteMatrix ! GdipCreateImageAttributes * GdipDisposeImageAttributes !
        GdipCreateBitmapFromHBITMAP --* GdipCreateBitmapFromScan0 -----* GdipLoadImageFromFile -*
        GdipDisposeImage ! GdipGetImageGraphicsContext -* GdipCreateHBITMAPFromBitmap -*
        GdipNewPrivateFontCollection * CreateSolidBrush = CreateCompatibleDC = CreateDIBSection =
        CreateCompatibleBitmap -ii= CreateRectRgn iiii= DeleteObject ! DeleteDC !
        AlphaBlend diiii-iiiix BitBlt diiiidiix FillRect drB SelectObject dm UpdateLayeredWindow w-qq---ax
        CreateWindowExW xs-xiiiiw DestroyWindow w ShowWindow wi UpdateWindow w EnableWindow wi
        SetWindowPos wwiiiix SetWindowRgn w SetLayeredWindowAttributes wxix InvalidateRect wr SetTimer wuu
        KillTimer wu SetForegroundWindow w SetActiveWindow w SetFocus w SetCapture w ClipCursor r
        RegisterTouchWindow w ImmAssociateContext w SetWindowsHookExW i--u SystemParametersInfoW x-F
        SetThreadExecutionState x PostMessageW wxu PostQuitMessage i DefWindowProcW wx OpenClipboard w
        SetClipboardData u AllowSetForegroundWindow i CreateMutexW --s PlaySoundW z-u
        WritePrivateProfileStringW sss

        GdipCreateFromHDC .d* GdipDeleteGraphics .! GdipCreateSolidFill .c* GdipDeleteBrush .!
        GdipCreatePen1 .cW-* GdipDeletePen .! GdipSetPenStartCap .+S GdipSetPenEndCap .+E
        GdipSetPenLineJoin .+J GdipSetPenLineCap197819 .+K GdipCreatePath .-* GdipDeletePath .!
        GdipAddPathArc .+ffffff GdipAddPathBezier .+ffffffff GdipAddPathPolygon .+P GdipMeasureString .
        BeginPaint . ClientToScreen . CoTaskMemFree . DispatchMessageW . EndPaint . EnumDisplayMonitors .
        EnumDisplaySettingsW . InflateRect . IntersectRect . IsRectEmpty . IsWindow . LoadCursorW .
        LoadIconW . MonitorFromPoint . MonitorFromRect . OffsetRect . PtInRect . QueryPerformanceCounter .
        ReleaseDC . TranslateMessage . UnionRect . GetPrivateProfileIntW - GetPrivateProfileStringW -
        GetUserDefaultUILanguage -)");
    for (std::string name; words >> name;)
        words >> letters[name];
    return letters;
}();

// c0 is the first surface's canvas, w0 what the first window shows.
static std::string placeOf(HDC dc)
{
    for (size_t i = 0; dc && i < surfaces.size(); ++i)
        if (surfaces[i].canvasDC == dc) return " c" + std::to_string(i);
    for (const auto &[handle, window] : Desk::current->windows)
        if (dc && window.dc == dc) return windowName(handle);
    return " elsewhere";
}

std::string windowName(HWND window)
{
    if (!window) return " null";
    if (window == HWND_TOPMOST) return " topmost";
    const int index = int((intptr_t(window) - firstWindow) / 2);
    return Desk::current->find(window) ? " w" + std::to_string(index) : " other";
}

static std::string quoted(const wchar_t *text)
{
    if (!text) return " null";
    char bytes[512] = {};
    WideCharToMultiByte(CP_UTF8, 0, text, -1, bytes, sizeof bytes - 1, nullptr, nullptr);
    std::string line = bytes;
    for (size_t at; (at = line.find('\n')) < line.size();)
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

static CallLine lineOf(const Call &call, const std::string &letters)
{
    CallLine line;
    const auto add = [&line](const char *format, auto... values) {
        char text[60];
        std::snprintf(text, sizeof text, format, values...);
        line.text += text;
    };
    const auto addNumber = [&](auto number) {
        add(number == std::floor(number) ? " %.0f" : " %.2f", double(number));
        ++line.numbers;
    };
    for (size_t i = 0; i < letters.size(); ++i) {
        const auto *const pointer = call.get<const void *>(i);
        const auto object = Desk::current->objects.find(pointer);
        const CallLine looks = object == Desk::current->objects.end() ? CallLine() : object->second.looks;
        switch (letters[i]) {
        case 'f': addNumber(call.get<float>(i)); break;
        case 'i': addNumber(call.get<int>(i)); break;
        case 'u': addNumber(call.get<uint32_t>(i)); break;
        case 'x': add(" x%X", call.get<uint32_t>(i)); break;
        case 'c': add(" %08X", call.get<ARGB>(i)); break;
        case 'W': add(" wide %.2f", double(call.get<float>(i))); break;
        case 'K': add(" caps %d%d%d", call.get<int>(1), call.get<int>(2), call.get<int>(3)); break;
        case 'S': line.text += call.get<int>(i) == LineCapRound ? " round start" : ""; break;
        case 'E': line.text += call.get<int>(i) == LineCapRound ? " round end" : ""; break;
        case 'J': line.text += call.get<int>(i) == LineJoinRound ? " round joins" : ""; break;
        case 'F': add(" flags x%lX", call.get<const DWORD *>(i)[1]); break;
        case 'a': addNumber(call.get<const BLENDFUNCTION *>(i)->SourceConstantAlpha); break;
        case 'P': std::for_each_n(call.get<const float *>(i), 2 * call.get<int>(i + 1), addNumber); break;
        case 'I': std::for_each_n(call.get<const INT *>(i), 2 * call.get<int>(i + 1), addNumber); break;
        case 'R': std::for_each_n(call.get<const float *>(i), 4, addNumber); break;
        case 'r':
            if (!pointer) line.text += " all";
            std::for_each_n(call.get<const LONG *>(i), pointer ? 4 : 0, addNumber);
            break;
        case 'q': std::for_each_n(call.get<const LONG *>(i), pointer ? 2 : 0, addNumber); break;
        case 'd': line.text += placeOf(call.get<HDC>(i)); break;
        case 'w': line.text += windowName(call.get<HWND>(i)); break;
        case 's': line.text += quoted(call.get<const wchar_t *>(i)); break;
        case 'z': line.text += " " + (pointer ? nameOf(pointer) : "nothing"); break;
        case 'm': line.text += nameOfImage(pointer); break;
        case 'g': line.text += looks.text.empty() ? " elsewhere" : looks.text; break;
        case 'o': line.add(looks); break;
        case 'B': {
            LOGBRUSH brush = {};
            GetObjectW(call.get<HBRUSH>(i), sizeof brush, &brush);
            add(" x%lX", brush.lbColor);
        }
        }
    }
    return line;
}

static void recordCall(const Call &call)
{
    if (!Desk::current || !Desk::current->recording) return;
    const auto letters = lettersOf.find(call.import.name);
    CallLine line = lineOf(call, letters == lettersOf.end() ? "" : letters->second);
    std::string name = call.import.name;
    if (name.starts_with("Gdip") && std::isupper(name[4])) name.erase(0, 4);
    if (name.ends_with("W")) name.pop_back();
    line.text.insert(0, name);
    Desk::current->calls.push_back(std::move(line));
}

static int64_t watchObjects(const Call &call, const std::string &letters)
{
    const int64_t result = call.passOn();
    if (!Desk::current) return result;
    auto &objects = Desk::current->objects;
    const auto *const first = call.get<const void *>(0);
    const size_t out = letters.find('*');
    const void *made = letters.ends_with('=') ? reinterpret_cast<const void *>(result) : nullptr;
    if (out < letters.size() && result == Ok) made = *call.get<const void **>(out);
    if (made) objects[made] = {call.import.name, lineOf(call, letters)};
    if (letters[0] == '+' && objects.contains(first)) objects[first].looks.add(lineOf(call, letters));
    if (letters[0] == '!') objects.erase(first);
    return result;
}

[[maybe_unused]] static const bool watching = [] {
    for (auto &[name, import] : imports()) {
        const bool listed = lettersOf.contains(name);
        std::string letters = listed ? lettersOf.at(name) : name.starts_with("Get") ? "." : "";
        const bool quiet = letters.starts_with('.') || !std::isupper(name[0]);
        import.record = quiet ? nullptr : recordCall;
        import.update();
        if (quiet) letters.erase(0, 1);
        if (letters.find_first_of("*=!+") < letters.size())
            import.push([letters](const Call &call) { return watchObjects(call, letters); });
    }
    return true;
}();

std::string leaks()
{
    std::map<std::string, int> counts;
    for (const auto &[object, made] : Desk::current->objects)
        ++counts[made.maker];
    std::string text;
    for (const auto &[maker, count] : counts)
        text += (text.empty() ? "" : ", ") + std::to_string(count) + " " + maker;
    return text;
}
