#pragma once
// The one door to Windows: these headers lean on each other's order, so nobody includes them directly.
// GDI+ is used through its flat functions, which MinGW hides in a namespace of its own.
#include <algorithm>  // gdiplus.h wants std::min and std::max in place of the macros

#include <windows.h>
#include <imm.h>
#include <mmsystem.h>
#include <objidl.h>
#include <gdiplus.h>
#include <shlobj.h>
#include <shobjidl.h>
#include <sapi.h>
#include <mmdeviceapi.h>
#include <endpointvolume.h>

using namespace Gdiplus;
using namespace Gdiplus::DllExports;
