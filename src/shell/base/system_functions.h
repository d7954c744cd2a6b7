#pragma once
#include "shell/base/windows_api.h"

// Finds a function that not every Windows has in a DLL that is already loaded; null if it does not exist.
template <class Function> Function *systemFunction(const wchar_t *dll, const char *name)
{
    HMODULE module = GetModuleHandleW(dll);
    if (!module) return nullptr;
    return reinterpret_cast<Function *>(reinterpret_cast<void *>(GetProcAddress(module, name)));
}
