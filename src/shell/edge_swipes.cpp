#include "shell/edge_swipes.h"

#include "shell/base/surfaces.h"
#include "shell/base/system_functions.h"

static bool stopped = false;

// System.EdgeGesture.DisableTouchWhenFullscreen.
static constexpr PROPERTYKEY disableTouchWhenFullscreen = {
    {0x32CE38B2, 0x2C9A, 0x41B1, {0x9B, 0xC5, 0xB3, 0x78, 0x43, 0x94, 0xAA, 0x44}}, 2};

static void setOnEachSurface(const PROPVARIANT &value)
{
    using Open = HRESULT WINAPI(HWND, REFIID, void **);
    Open *open = systemFunction<Open>(L"shell32.dll", "SHGetPropertyStoreForWindow");
    if (!open) return;
    for (const MonitorSurface &surface : surfaces) {
        IPropertyStore *store = nullptr;
        if (!surface.hwnd || FAILED(open(surface.hwnd, IID_PPV_ARGS(&store))) || !store) continue;
        store->SetValue(disableTouchWhenFullscreen, value);
        store->Release();
    }
}

void stopEdgeSwipes()
{
    if (stopped) return;
    stopped = true;
    PROPVARIANT yes = {};
    yes.vt = VT_BOOL;
    yes.boolVal = VARIANT_TRUE;
    setOnEachSurface(yes);
}

void allowEdgeSwipes()
{
    if (!stopped) return;
    stopped = false;
    setOnEachSurface({});  // an empty value removes the property
}
