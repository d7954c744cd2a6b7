// The calls that the program's start under Wine cannot do without: the shell, COM and a voice, GDI+ with the
// penguin's pictures and their copies, the bitmaps of the sprites, and last a window over the whole screen
// with a canvas behind it. The sound banks are the program's own; synthesis.cpp measures them.
#include <string>

#include "bare.h"
#include "marks/gdi_plus.h"
#include "sound/bank_a.h"
#include "sound/bank_b.h"
#include <sapi.h>
#include <shlobj.h>

static void openSystem()
{
    PWSTR folder = nullptr;
    SHGetKnownFolderPath(FOLDERID_RoamingAppData, 0, nullptr, &folder);
    ISpVoice *voice = nullptr;
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    CoCreateInstance(CLSID_SpVoice, nullptr, CLSCTX_ALL, __uuidof(ISpVoice),
                     reinterpret_cast<void **>(&voice));
}

static void loadPicture(const std::wstring &path)
{
    GpImage *image = nullptr;
    GpBitmap *copy = nullptr;
    GpGraphics *graphics = nullptr;
    UINT width = 0, height = 0;
    GdipLoadImageFromFile(path.c_str(), &image);
    GdipGetImageWidth(image, &width);
    GdipGetImageHeight(image, &height);
    GdipCreateBitmapFromScan0(INT(width), INT(height), 0, PixelFormat32bppARGB, nullptr, &copy);
    GdipGetImageGraphicsContext(copy, &graphics);
    GdipSetInterpolationMode(graphics, InterpolationModeHighQualityBicubic);
    GdipSetPixelOffsetMode(graphics, PixelOffsetModeHighQuality);
    GdipDrawImageRectRectI(graphics, image, 0, 0, INT(width), INT(height), 0, 0, INT(width), INT(height),
                           UnitPixel, nullptr, nullptr, nullptr);
}

static void fillSprite()
{
    GpBitmap *bitmap = nullptr;
    GpGraphics *graphics = nullptr;
    GdipCreateBitmapFromScan0(56, 56, 0, PixelFormat32bppARGB, nullptr, &bitmap);
    GdipGetImageGraphicsContext(bitmap, &graphics);
    GdipSetSmoothingMode(graphics, SmoothingModeAntiAlias);
    for (const float inset : {2.0f, 6.0f})
        GdipFillEllipse(graphics, solidBrush(0xFF80C0FF).get(), inset, inset, 56 - 2 * inset, 56 - 2 * inset);
}

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int)
{
    openSystem();
    buildSoundBankA();
    buildSoundBankB();
    GdiplusStartupInput input;
    ULONG_PTR token = 0;
    GdiplusStartup(&token, &input, nullptr);
    wchar_t folder[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, folder, MAX_PATH);
    for (const wchar_t *name : {L"bubble", L"idle", L"yatta", L"hurray"})
        loadPicture(std::wstring(folder) + L"\\..\\..\\assets\\penguin\\" + name + L".png");
    for (int i = 0; i < 20; ++i)
        fillSprite();
    HDC dc = GetDC(openBareWindow(instance, DefWindowProcW));
    CreateCompatibleBitmap(dc, GetDeviceCaps(dc, HORZRES), GetDeviceCaps(dc, VERTRES));
    return pumpBareMessages();
}
