#include "support/imports.h"

#include <cstdio>
#include <cstdlib>
#include <set>

#include "shell/base/windows_api.h"

// Behind each pointer of the table stands a stub that puts the import into r11 and jumps to its target, one
// of these three. The last one hands the arguments over as an array: the caller's stack has room for the
// first four beside the others.
asm(R"(
    .text
importCounted:
    incq 8(%r11)
    jmpq *32(%r11)
importFailing:
    incq 16(%r11)
    movq 24(%r11), %rax
    ret
    .seh_proc importHandled
importHandled:
    movq %rcx, 8(%rsp)
    movq %rdx, 16(%rsp)
    movq %r8, 24(%rsp)
    movq %r9, 32(%rsp)
    subq $72, %rsp
    .seh_stackalloc 72
    .seh_endprologue
    incq 8(%r11)
    movsd %xmm0, 32(%rsp)
    movsd %xmm1, 40(%rsp)
    movsd %xmm2, 48(%rsp)
    movsd %xmm3, 56(%rsp)
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
    movsd (%r8), %xmm0
    movsd 8(%r8), %xmm1
    movsd 16(%r8), %xmm2
    movsd 24(%r8), %xmm3
    movq (%r10), %rcx
    movq 8(%r10), %rdx
    movq 24(%r10), %r9
    movq 16(%r10), %r8
    callq *%rax
    addq $136, %rsp
    ret
    .seh_endproc
)");
extern "C" {
extern const char importCounted, importFailing, importHandled;
int64_t callSystem(const void *function, const int64_t *words, const double *floats);
int64_t takeCall(Import *import, const int64_t *words, const double *floats)
{
    const Call call = {*import, words, floats, import->replacements.size()};
    if (import->tell) import->tell(call);
    return call.passOn();
}
}

int64_t Call::passOn() const
{
    if (above == 0) return callSystem(import.system, words, floats);
    const Replacement replacement = import.replacements[above - 1];  // which may end itself
    return replacement({import, words, floats, above - 1});
}

static int64_t failureOf(const std::string &name)
{
    static const std::set<std::string> results = {"CoCreateInstance", "CoInitializeEx",
                                                  "SHGetKnownFolderPath", "SHCreateItemFromParsingName"};
    static const std::set<std::string> minusOnes = {"CreateFileW", "FindFirstFileW", "GetFileAttributesW"};
    if (name.starts_with("Gdip")) return Gdiplus::GenericError;
    return results.contains(name) ? E_FAIL : minusOnes.contains(name) ? -1 : 0;
}

// The imports stay for ever where they are, since the stubs and all that stands replaced know them.
static std::map<std::string, Import> &makeImports()
{
    auto &all = *new std::map<std::string, Import>;
    auto *const base = reinterpret_cast<uint8_t *>(GetModuleHandleW(nullptr));
    const auto at = [base]<class T>(auto offset, T *) { return reinterpret_cast<T *>(base + offset); };
    const auto *headers = at(at(0, (IMAGE_DOS_HEADER *)nullptr)->e_lfanew, (IMAGE_NT_HEADERS *)nullptr);
    const auto &table = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    auto *code = static_cast<uint8_t *>(VirtualAlloc(nullptr, 1 << 18, MEM_COMMIT, PAGE_EXECUTE_READWRITE));
    std::set<std::string> wanted(programImports().begin(), programImports().end());
    // What the steady clock asks, and the tests' own calls of the program's windows.
    wanted.insert({"QueryPerformanceCounter", "SendMessageW", "IsWindowVisible"});
    for (auto *dll = at(table.VirtualAddress, (IMAGE_IMPORT_DESCRIPTOR *)nullptr); dll->Name; ++dll) {
        auto *name = at(dll->OriginalFirstThunk, (IMAGE_THUNK_DATA *)nullptr);
        auto *slot = at(dll->FirstThunk, (void **)nullptr);
        for (; name->u1.AddressOfData; ++name, ++slot) {
            const std::string text = at(name->u1.AddressOfData, (IMAGE_IMPORT_BY_NAME *)nullptr)->Name;
            if (!wanted.contains(text)) continue;
            Import &import = all[text];
            import.name = text;
            import.system = *slot;
            import.target = &importCounted;
            import.failure = failureOf(text);
            const Import *const self = &import;
            const uint8_t stub[] = {0x49, 0xBB, 0, 0, 0, 0, 0, 0, 0, 0, 0x41, 0xFF, 0x23};
            std::memcpy(code, stub, sizeof stub);
            std::memcpy(code + 2, &self, sizeof self);
            DWORD before = 0;
            VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &before);
            *slot = code;
            code += 16;
        }
    }
    return all;
}

static std::map<std::string, Import> &imports()
{
    static std::map<std::string, Import> &all = makeImports();
    return all;
}

const std::vector<std::string> &programImports()
{
    static const auto &names = *new std::vector<std::string>{
#include "program_imports.inc"
    };
    return names;
}

Import *findImport(const std::string &name)
{
    const auto found = imports().find(name);
    return found == imports().end() ? nullptr : &found->second;
}

Import &importOf(const std::string &name)
{
    if (Import *import = findImport(name)) return *import;
    std::printf("the program does not import %s\n", name.c_str());
    std::fflush(stdout);
    std::abort();
}

static void retarget(Import &import)
{
    const bool handled = import.tell || !import.replacements.empty();
    import.target = import.failing ? &importFailing : handled ? &importHandled : &importCounted;
}

void setTell(Import &import, void (*tell)(const Call &))
{
    import.tell = tell;
    retarget(import);
}

void setFailing(Import &import, bool failing)
{
    import.failing = failing;
    retarget(import);
}

void pushReplacement(const std::string &name, Replacement replacement)
{
    Import *const import = findImport(name);
    if (!import) return;
    import->replacements.push_back(std::move(replacement));
    retarget(*import);
}

void popReplacement(const std::string &name)
{
    Import &import = importOf(name);
    import.replacements.pop_back();
    retarget(import);
}
