#pragma once
// Two DLLs are loaded at their first use (see CMakeLists.txt), and the addresses of their functions are then
// written into the import table. Linkers since binutils 2.44 make that table read-only.
#include <cstdint>

#include "shell/base/windows_api.h"

// Defined by the linker: where the addresses in the import table begin and end.
extern "C" char __IAT_start__[], __IAT_end__[];

// Makes the import table writable. Call it before the first use of a delayed function.
inline void allowDelayedImports()
{
    DWORD before = 0;
    VirtualProtect(__IAT_start__, uintptr_t(__IAT_end__) - uintptr_t(__IAT_start__), PAGE_READWRITE, &before);
}
