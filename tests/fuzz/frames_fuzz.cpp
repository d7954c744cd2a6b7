// Damaged pictures through the mascot's loader and painter: frames_fuzz SECONDS SEED FOLDER, where FOLDER has
// good ones in "good"; the last ones stay there. Ends with 71 if one took a minute, 72 if memory or handles
// were lost, 73 if a file stayed open, 74 if a metafile was read.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "mascot/frames.h"
#include "mascot/walker.h"
#include <psapi.h>

namespace fs = std::filesystem;

static std::mt19937 dice;

static size_t below(size_t limit)
{
    return dice() % std::max<size_t>(limit, 1);
}

static void put(std::string &bytes, size_t at, uint32_t value)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes[at++] = char(value >> shift);
}
// A decoder looks no further than a chunk whose checksum is wrong: most damage has to have the right one.
static void mendChecksums(std::string &png)
{
    for (size_t chunk = 8, last; chunk + 12 <= png.size(); chunk = last + 4) {
        last = chunk + 8 + size_t(uint8_t(png[chunk + 2])) * 256 + uint8_t(png[chunk + 3]);
        if (last + 4 > png.size()) return;
        uint32_t crc = ~0u;
        for (size_t bit = 8 * (chunk + 4); bit < 8 * last; ++bit)
            crc = crc >> 1 ^ (((crc ^ uint32_t(uint8_t(png[bit / 8])) >> bit % 8) & 1) ? 0xEDB88320 : 0);
        put(png, last, ~crc);
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

// GDI+ reads these two as well, whatever the file's name; the program must not. False if it does.
static bool addMetafiles(const fs::path &folder)
{
    const RECT frame = {0, 0, 2000, 1500};
    const fs::path emf = folder / "EMF", wmf = folder / "WMF";
    HDC dc = CreateEnhMetaFileW(nullptr, emf.c_str(), &frame, nullptr);
    Ellipse(dc, 2, 2, 50, 40);
    DeleteEnhMetaFile(CloseEnhMetaFile(dc));
    dc = CreateMetaFileW(nullptr);
    Ellipse(dc, 2, 2, 50, 40);
    const HMETAFILE old = CloseMetaFile(dc);
    // The head that makes it placeable: key, handle, box, units to the inch, and the sum of all these.
    const uint16_t head[] = {0xCDD7, 0x9AC6, 0, 0, 0, 60, 50, 96, 0, 0, 0xCDD7 ^ 0x9AC6 ^ 60 ^ 50 ^ 96};
    std::string bytes(GetMetaFileBitsEx(old, 0, nullptr), 0);
    GetMetaFileBitsEx(old, UINT(bytes.size()), bytes.data());
    DeleteMetaFile(old);
    std::ofstream(wmf, std::ios::binary).write(reinterpret_cast<const char *>(head), sizeof head) << bytes;
    return !loadFrameFile(emf.wstring()) && !loadFrameFile(wmf.wstring());
}

// GetGuiResources says nothing under Wine, where an index without more is a handle.
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
static bool show(const fs::path &file, HDC screen)
{
    mainFrame = loadFrameFile(file.wstring()).release();
    if (!mainFrame) return false;
    const float alpha = below(2) ? 1.0f : 0.5f;
    {
        GraphicsScope scope(screen);
        drawFrame(scope, {.x = 50, .y = 100, .alpha = alpha, .mirrored = below(2) == 0});
    }
    unloadMascotFrames();
    return true;
}

int main(int, char **arguments)
{
    const GdiplusStartupInput input;
    ULONG_PTR token = 0;
    GdiplusStartup(&token, &input, nullptr);
    dice.seed(uint32_t(std::stoul(arguments[2])));
    const fs::path folder = arguments[3];
    if (!addMetafiles(folder / "good")) return 74;
    std::vector<std::string> goodFiles;
    for (const auto &entry : fs::directory_iterator(folder / "good")) {
        std::ifstream in(entry.path(), std::ios::binary);
        goodFiles.emplace_back(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    HDC screen = CreateCompatibleDC(nullptr);
    SelectObject(screen, CreateBitmap(100, 100, 1, 32, nullptr));

    std::vector<fs::path> shown;
    DWORD slowest = 0;
    const DWORD begin = GetTickCount();
    int pictures = 0;
    for (; GetTickCount() - begin < 1000 * std::stoul(arguments[1]) || shown.size() < 200; ++pictures) {
        std::string bytes = goodFiles[below(goodFiles.size())];
        for (size_t i = below(5); i > 0; --i)
            damage(bytes);
        if (below(8) > 0 && bytes[1] == 'P') mendChecksums(bytes);
        const fs::path file = folder / ("damaged" + std::to_string(pictures));
        std::ofstream(file, std::ios::binary) << bytes;
        const DWORD tick = GetTickCount();
        if (show(file, screen)) shown.push_back(file);
        slowest = std::max(slowest, GetTickCount() - tick);
    }

    // Wine loses some memory with each that it cannot load, and keeps its file: the others speak for us.
    size_t memory = 0;
    int handles = 0;
    for (size_t i = 0; i < 800; ++i) {
        if (i == 200) memory = memoryInUse(), handles = handlesOfGdi();
        show(shown[i % 200], screen);
    }
    const size_t lost = std::max(memoryInUse(), memory) - memory;
    const int kept = handlesOfGdi() - handles;
    printf("%d pictures, %zu shown, the slowest %lu ms\n", pictures, shown.size(), slowest);
    printf("600 times more: %zu KiB and %d GDI handles more\n", lost / 1024, kept);
    for (const fs::path &file : shown) {
        std::error_code held;
        if (!fs::remove(file, held)) return 73;
    }
    if (slowest > 60000) return 71;
    return lost > 64 * 1024 || kept > 0 ? 72 : 0;
}
