#pragma once
#include "shell/base/windows_api.h"

// A function that not every Windows has, by its name in a DLL that the program has loaded anyway; null where
// there is none.
template <class Function> Function *systemFunction(const wchar_t *dll, const char *name)
{
    HMODULE module = GetModuleHandleW(dll);
    if (!module) return nullptr;
    return reinterpret_cast<Function *>(reinterpret_cast<void *>(GetProcAddress(module, name)));
}
