#pragma once
// The only place that includes Windows headers, because their order matters. GDI+ is used through its flat
// functions, which MinGW puts into a namespace.
#include <algorithm>  // gdiplus.h needs std::min and std::max in place of the macros

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
