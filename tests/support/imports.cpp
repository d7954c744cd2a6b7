#include "support/imports.h"

#include <cstdio>
#include <cstdlib>
#include <set>

#include "shell/base/windows_api.h"

// Behind each pointer of the table stands a stub that puts the import into r11 and jumps to its target: the
// system's function, or what hands the arguments over as an array to takeCall. The caller's stack has room
// for the first four beside the others.
asm(R"(
    .text
    .seh_proc importHandled
importHandled:
    movq %rcx, 8(%rsp)
    movq %rdx, 16(%rsp)
    movq %r8, 24(%rsp)
    movq %r9, 32(%rsp)
    subq $72, %rsp
    .seh_stackalloc 72
    .seh_endprologue
    .irp n, 0, 1, 2, 3
    movsd %xmm\n, 32+8*\n(%rsp)
    .endr
    movq %r11, %rcx
    leaq 80(%rsp), %rdx
    leaq 32(%rsp), %r8
    callq takeCall
    addq $72, %rsp
    ret
    .seh_endproc
    .seh_proc callSystem
callSystem:
    subq $136, %rsp
    .seh_stackalloc 136
    .seh_endprologue
    movq %rcx, %rax
    movq %rdx, %r10
    .irp at, 32, 40, 48, 56, 64, 72, 80, 88, 96, 104, 112, 120
    movq \at(%r10), %rcx
    movq %rcx, \at(%rsp)
    .endr
    .irp n, 0, 1, 2, 3
    movsd 8*\n(%r8), %xmm\n
    .endr
    movq (%r10), %rcx
    movq 8(%r10), %rdx
    movq 16(%r10), %r8
    movq 24(%r10), %r9
    callq *%rax
    addq $136, %rsp
    ret
    .seh_endproc
)");
extern "C" {
extern const char importHandled;
int64_t callSystem(const void *function, const int64_t *words, const double *floats);
int64_t takeCall(Import *import, const int64_t *words, const double *floats)
{
    const Call call = {*import, words, floats, import->replacements.size()};
    if (!import->failing && import->record) import->record(call);
    if (!import->failing) return call.passOn();
    ++import->failed;
    static const std::set<std::string> results = {"CoCreateInstance", "CoInitializeEx",
                                                  "SHGetKnownFolderPath", "SHCreateItemFromParsingName"};
    static const std::set<std::string> handles = {"CreateFileW", "FindFirstFileW", "GetFileAttributesW"};
    if (import->name.starts_with("Gdip")) return Gdiplus::GenericError;
    return results.contains(import->name) ? E_FAIL : handles.contains(import->name) ? -1 : 0;
}
}

int64_t Call::passOn() const
{
    if (above == 0) return callSystem(import.system, words, floats);
    const Replacement replacement = import.replacements[above - 1];  // which may end itself
    return replacement({import, words, floats, above - 1});
}

const void *codeOf(Import &import)
{
    static auto *next =
        static_cast<uint8_t *>(VirtualAlloc(nullptr, 1 << 16, MEM_COMMIT, PAGE_EXECUTE_READWRITE));
    const Import *const place = &import;
    const uint8_t moveAndJump[] = {0x49, 0xBB, 0, 0, 0, 0, 0, 0, 0, 0, 0x41, 0xFF, 0x23};
    std::memcpy(next, moveAndJump, sizeof moveAndJump);
    std::memcpy(next + 2, &place, sizeof place);
    return std::exchange(next, next + 16);
}

static std::map<std::string, Import> &makeImports()
{
    auto &all = *new std::map<std::string, Import>;
    const std::set<std::string> wanted = {
#include "program_imports.inc"
        "QueryPerformanceCounter"};  // what the steady clock asks
    auto *const base = reinterpret_cast<uint8_t *>(GetModuleHandleW(nullptr));
    const auto *const headers = reinterpret_cast<const IMAGE_NT_HEADERS *>(
        base + reinterpret_cast<const IMAGE_DOS_HEADER *>(base)->e_lfanew);
    const auto &table = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    const auto *dll = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR *>(base + table.VirtualAddress);
    for (; dll->Name; ++dll) {
        const auto *entry = reinterpret_cast<const uint64_t *>(base + dll->OriginalFirstThunk);
        auto *slot = reinterpret_cast<const void **>(base + dll->FirstThunk);
        for (; *entry; ++entry, ++slot) {
            const std::string name = reinterpret_cast<const IMAGE_IMPORT_BY_NAME *>(base + *entry)->Name;
            if (!wanted.contains(name)) continue;
            DWORD before = 0;
            VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &before);
            *slot = codeOf(all[name] = {*slot, *slot, name});
        }
    }
    return all;
}

std::map<std::string, Import> &imports()
{
    static std::map<std::string, Import> &all = makeImports();
    return all;
}

Import &importOf(const std::string &name)
{
    if (!imports().contains(name)) {
        std::printf("the program does not import %s\n", name.c_str());
        std::fflush(stdout);
        std::abort();
    }
    return imports().at(name);
}

void Import::update()
{
    target = failing || record || !replacements.empty() ? &importHandled : system;
}
