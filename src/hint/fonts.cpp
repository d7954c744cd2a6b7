#include "hint/fonts.h"

#include <array>
#include <cstdio>

#include "shell/base/files.h"

std::wstring familyRoot(const std::wstring &programFolder)
{
    if (programFolder.empty()) return {};
    if (pathExists(inFolder(programFolder, L"Zubworks.exe"))) return programFolder;
    std::wstring parent = parentFolder(programFolder);
    if (!parent.empty() && pathExists(inFolder(parent, L"Zubworks.exe"))) return parent;
    return {};
}

std::wstring fontsFolder(const std::wstring &folder)
{
    if (folder.empty()) return {};
    const std::wstring fonts = inFolder(folder, L"Fonts");
    return isFolder(fonts) ? fonts : std::wstring();
}

std::wstring resolveFontPath(const std::wstring &fileName)
{
    const std::wstring program = programFolder();
    std::wstring folder = fontsFolder(familyRoot(program));
    if (folder.empty()) folder = fontsFolder(program);
    if (folder.empty()) return {};
    const std::wstring file = inFolder(folder, fileName);
    return pathExists(file) ? file : std::wstring();
}

static constexpr long maxFontBytes = 64 << 20;  // anything larger is not a typeface

static bool readWholeFile(const std::wstring &path, std::vector<uint8_t> &bytes)
{
    FILE *file = _wfopen(path.c_str(), L"rb");
    if (!file) return false;
    std::fseek(file, 0, SEEK_END);
    const long size = std::ftell(file);
    bool whole = size >= 1 && size <= maxFontBytes;
    if (whole) {
        std::rewind(file);
        bytes.resize(size_t(size));
        whole = std::fread(bytes.data(), 1, bytes.size(), file) == bytes.size();
    }
    std::fclose(file);
    return whole;
}

// Makes a collection from the holder's bytes and takes its first family; false if any step fails.
static bool makePrivateFamily(PrivateFontHolder &holder)
{
    GdipNewPrivateFontCollection(&holder.collection);
    if (GdipPrivateAddMemoryFont(holder.collection, holder.bytes.data(), INT(holder.bytes.size())) != Ok)
        return false;
    INT count = 0;
    GdipGetFontCollectionFamilyCount(holder.collection, &count);
    if (count < 1) return false;
    GpFontFamily *first = nullptr;
    INT found = 0;
    if (GdipGetFontCollectionFamilyList(holder.collection, 1, &first, &found) != Ok || found < 1)
        return false;
    return GdipCloneFontFamily(first, &holder.family.family) == Ok;
}

HintFamily *loadPrivateFamily(PrivateFontHolder &holder, const std::wstring &fileName)
{
    if (holder.tried) return holder.loaded ? &holder.family : nullptr;
    holder.tried = true;
    const std::wstring path = resolveFontPath(fileName);
    if (path.empty() || !readWholeFile(path, holder.bytes)) return nullptr;
    holder.loaded = makePrivateFamily(holder);
    if (holder.loaded) return &holder.family;
    holder.family = {};
    if (holder.collection) GdipDeletePrivateFontCollection(&holder.collection);
    holder.collection = nullptr;
    holder.bytes = {};
    return nullptr;
}

// Reading the status clears it, so a failed query costs one showing of the panel and not all of them.
static GpStatus takeStatus(HintFamily &family)
{
    const GpStatus status = family.lastStatus;
    family.lastStatus = Ok;
    return status;
}

// Also false if the query fails; the family then keeps its status.
static bool hasStyle(HintFamily &family, int style)
{
    BOOL available = FALSE;
    const GpStatus status = GdipIsStyleAvailable(family.family, style, &available);
    if (status != Ok) family.lastStatus = status;
    return status == Ok && available;
}

static HintFamily createSystemFamily(const wchar_t *name)
{
    HintFamily family;
    family.lastStatus = GdipCreateFontFamilyFromName(name, nullptr, &family.family);
    return family;
}

HintFamily *systemFamily(bool requireBold)
{
    static std::array families = {
        createSystemFamily(L"HGP創立者角ポップ体 W9"),
        createSystemFamily(L"HG丸ゴシックM-PRO"),
        createSystemFamily(L"Yu Kyokasho Yoko"),
        createSystemFamily(L"Yu Gothic UI"),
        createSystemFamily(L"Meiryo UI"),
    };
    for (HintFamily &family : families) {
        if (takeStatus(family) != Ok || !family.family) continue;
        if (!requireBold || hasStyle(family, FontStyleBold)) return &family;
    }
    return &families.back();
}

int headingStyle(HintFamily *family)
{
    if (!family || family == &blackFontHolder.family) return FontStyleRegular;
    return hasStyle(*family, FontStyleBold) ? FontStyleBold : FontStyleRegular;
}

static HintFamily *ifUsable(HintFamily *family)
{
    return takeStatus(*family) == Ok && family->family ? family : nullptr;
}

HintFamily *usableHeadingFamily()
{
    if (!hintHeadingFamily) {
        hintHeadingFamily = loadPrivateFamily(blackFontHolder, L"MPLUSRounded1c-Black.ttf");
        if (!hintHeadingFamily) hintHeadingFamily = systemFamily(true);
    }
    return ifUsable(hintHeadingFamily);
}

HintFamily *usableTextFamily()
{
    if (!hintTextFamily) {
        hintTextFamily = loadPrivateFamily(regularFontHolder, L"MPLUSRounded1c-Regular.ttf");
        if (!hintTextFamily) hintTextFamily = systemFamily(false);
    }
    if (hintTextFamily != &regularFontHolder.family) hasStyle(*hintTextFamily, FontStyleRegular);
    return ifUsable(hintTextFamily);
}
