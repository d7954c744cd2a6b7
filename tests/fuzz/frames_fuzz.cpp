// Damaged pictures through the mascot's loader and painter: frames_fuzz SECONDS SEED FILE
// FOLDER-OF-GOOD-ONES. What FILE with a number behind it leaves is the last picture. Ends with 70 after a
// crash, 71 when one took a minute, 72 when memory or handles were lost, 73 when a file stayed open, 74 when
// a metafile was read.
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "mascot/frames.h"
#include "mascot/walker.h"
#include <psapi.h>

static std::mt19937 dice;
static DWORD watchedTick = 0;  // when the current picture began

static size_t below(size_t limit)
{
    return dice() % std::max<size_t>(limit, 1);
}

static LONG WINAPI endRed(EXCEPTION_POINTERS *)
{
    TerminateProcess(GetCurrentProcess(), 70);
    return 0;
}

static DWORD WINAPI watch(void *)
{
    while (GetTickCount() - watchedTick < 60000)
        Sleep(500);
    TerminateProcess(GetCurrentProcess(), 71);
    return 0;
}

static void put(std::string &bytes, size_t at, uint32_t value)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes[at++] = char(value >> shift);
}

// A decoder looks no further than a chunk whose checksum is wrong: most damage has to have the right one.
static void mendChecksums(std::string &png)
{
    for (size_t chunk = 8; chunk + 12 <= png.size();) {
        const size_t end = chunk + 8 + size_t(uint8_t(png[chunk + 2])) * 256 + uint8_t(png[chunk + 3]);
        if (end + 4 > png.size()) return;
        uint32_t crc = ~0u;
        for (size_t bit = 8 * (chunk + 4); bit < 8 * end; ++bit)
            crc = crc >> 1 ^ (((crc ^ uint32_t(uint8_t(png[bit / 8])) >> bit % 8) & 1) ? 0xEDB88320 : 0);
        put(png, end, ~crc);
        chunk = end + 4;
    }
}

static void damage(std::string &bytes)
{
    const uint32_t sizes[] = {0, 1, 2, 3, 1000, 3000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, uint32_t(dice())};
    const size_t at = below(bytes.size());
    switch (below(7)) {
    case 0: bytes.resize(at); break;
    case 1: bytes[at] = char(dice()); break;
    case 2: bytes[at] ^= char(1 << below(8)); break;
    case 3: bytes.insert(at, bytes.substr(below(bytes.size()), below(60))); break;
    case 4: bytes.erase(at, below(60)); break;
    case 5: put(bytes, 16 + 4 * below(2), sizes[below(std::size(sizes))]); break;  // a side of a PNG
    case 6: bytes[24 + below(5)] = char(below(20)); break;  // its depth, colours and order of rows
    }
    bytes.resize(std::max<size_t>(bytes.size(), 30));
}

// GDI+ reads these two as well, whatever the file's name: the same few shapes as EMF and as WMF.
static void addMetafiles(std::vector<std::string> &files)
{
    const auto draw = [](HDC dc) {
        Ellipse(dc, 2, 2, 50, 40);
        const POINT points[] = {{5, 5}, {60, 8}, {30, 45}};
        Polygon(dc, points, 3);
        const uint32_t pixels[4] = {0xFF0000, 0xFF00, 0xFF, 0xFFFFFF};
        const BITMAPINFO info = {{40, 2, 2, 1, 32, BI_RGB, 0, 0, 0, 0, 0}, {}};
        StretchDIBits(dc, 10, 10, 20, 20, 0, 0, 2, 2, pixels, &info, DIB_RGB_COLORS, SRCCOPY);
        TextOutW(dc, 3, 3, L"text", 4);
    };
    const RECT frame = {0, 0, 2000, 1500};
    HDC dc = CreateEnhMetaFileW(nullptr, nullptr, &frame, nullptr);
    draw(dc);
    HENHMETAFILE enhanced = CloseEnhMetaFile(dc);
    std::string emf(GetEnhMetaFileBits(enhanced, 0, nullptr), 0);
    GetEnhMetaFileBits(enhanced, UINT(emf.size()), reinterpret_cast<BYTE *>(emf.data()));
    DeleteEnhMetaFile(enhanced);
    files.push_back(emf);

    dc = CreateMetaFileW(nullptr);
    SetMapMode(dc, MM_ANISOTROPIC);
    SetWindowExtEx(dc, 60, 50, nullptr);
    draw(dc);
    HMETAFILE old = CloseMetaFile(dc);
    // The head that makes it placeable: key, handle, box, units to the inch, and the sum of all these.
    uint16_t head[11] = {0xCDD7, 0x9AC6, 0, 0, 0, 60, 50, 96, 0, 0, 0};
    for (int i = 0; i < 10; ++i)
        head[10] ^= head[i];
    std::string wmf(sizeof head + GetMetaFileBitsEx(old, 0, nullptr), 0);
    std::memcpy(wmf.data(), head, sizeof head);
    GetMetaFileBitsEx(old, UINT(wmf.size() - sizeof head), wmf.data() + sizeof head);
    DeleteMetaFile(old);
    files.push_back(wmf);
}

// GetGuiResources tells nothing under Wine, where an index without more is a handle.
static int handlesOfGdi()
{
    int used = 0;
    for (uintptr_t index = 1; index < 65536; ++index)
        used += GetObjectType(reinterpret_cast<HGDIOBJ>(index)) != 0;
    return used;
}

static size_t memoryInUse()
{
    PROCESS_MEMORY_COUNTERS memory = {};
    K32GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory);
    return memory.PagefileUsage;
}

// Loads and paints it; false if it could not be loaded.
static bool show(const std::wstring &file, HDC screen)
{
    watchedTick = GetTickCount();
    mainFrame = loadFrameFile(file).release();
    if (!mainFrame) return false;
    {
        GraphicsScope scope(screen);
        drawFrame(scope, {.x = 50, .y = 100, .alpha = below(2) ? 1.0f : 0.5f, .mirrored = below(2) == 0});
    }
    unloadMascotFrames();
    return true;
}

int main(int, char **arguments)
{
    SetUnhandledExceptionFilter(endRed);
    GdiplusStartupInput input;
    ULONG_PTR token = 0;
    GdiplusStartup(&token, &input, nullptr);
    dice.seed(uint32_t(std::stoul(arguments[2])));
    std::vector<std::string> goodFiles;
    for (const auto &entry : std::filesystem::directory_iterator(arguments[4])) {
        std::ifstream in(entry.path(), std::ios::binary);
        goodFiles.emplace_back(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    addMetafiles(goodFiles);
    for (size_t i = goodFiles.size() - 2; i < goodFiles.size(); ++i) {
        const std::filesystem::path file = arguments[3] + std::string("-metafile");
        std::ofstream(file, std::ios::binary) << goodFiles[i];
        if (loadFrameFile(file.wstring())) return 74;
    }
    const DWORD begin = watchedTick = GetTickCount();
    CreateThread(nullptr, 0, watch, nullptr, 0, nullptr);
    HDC screen = CreateCompatibleDC(nullptr);
    SelectObject(screen, CreateBitmap(100, 100, 1, 32, nullptr));

    std::vector<std::wstring> shown;
    DWORD slowest = 0;
    int pictures = 0;
    for (; GetTickCount() - begin < 1000 * std::stoul(arguments[1]) || shown.size() < 200; ++pictures) {
        std::string bytes = goodFiles[below(goodFiles.size())];
        for (size_t i = below(5); i > 0; --i)
            damage(bytes);
        if (below(8) > 0 && bytes[1] == 'P') mendChecksums(bytes);
        const std::filesystem::path file = arguments[3] + std::to_string(pictures);
        std::ofstream(file, std::ios::binary) << bytes;
        if (show(file.wstring(), screen)) shown.push_back(file.wstring());
        slowest = std::max(slowest, GetTickCount() - watchedTick);
    }

    // Wine loses some memory with each that it cannot load, and keeps its file: the others tell of us.
    size_t memory = 0;
    int handles = 0;
    for (int round = 0; round < 4; ++round) {
        if (round == 1) memory = memoryInUse(), handles = handlesOfGdi();
        for (size_t i = 0; i < 200; ++i)
            show(shown[i], screen);
    }
    const size_t lost = std::max(memoryInUse(), memory) - memory;
    printf("%d pictures, %zu shown, the slowest %lu ms\n", pictures, shown.size(), slowest);
    printf("600 times more: %zu KiB and %d GDI handles more\n", lost / 1024, handlesOfGdi() - handles);
    for (const auto &file : shown) {
        std::error_code held;
        if (!std::filesystem::remove(file, held)) return 73;
    }
    return lost > 64 * 1024 || handlesOfGdi() > handles ? 72 : 0;
}
