// What configuration files can say, as rows: keys and sections of ".dxd" files, keywords of the older format.
#pragma once

#include "config_state.h"

#include <cstdint>
#include <cstdio>
#include <span>
#include <string>
#include <string_view>

// ---- the flags section -------------------------------------------------------------------------------

/// When a key counts.
enum class DxKeyWhen : std::uint8_t {
    Always,
    Import,  ///< on import only
    Export,  ///< on export only
    IfAsked, ///< if the macro variable &DxfParseExt is non-zero
};

/// What a flags section collects for its end: how the layer of each element class is named.
struct DxFlagSection {
    int isExport = 0;
    bool extended = false;                           ///< &DxfParseExt is non-zero
    int fixedName[DX_CLASS_COUNT] = {0, 1, 1, 1, 1}; ///< LAYERFLAG_…; 0: named as the elements are
    UtCString names[DX_CLASS_COUNT];                 ///< LAYER_…
};

/// A key: plain ones name the variable that takes the value, the others a function.
struct DxFlagKey {
    using Apply = void (*)(DxFlagSection&, const std::string& value);

    std::string_view key;
    DxKeyWhen when;
    int* number = nullptr;
    double* real = nullptr;
    Apply apply = nullptr;

    constexpr DxFlagKey(std::string_view k, DxKeyWhen w, int* n) : key(k), when(w), number(n) {}
    constexpr DxFlagKey(std::string_view k, DxKeyWhen w, double* r) : key(k), when(w), real(r) {}
    constexpr DxFlagKey(std::string_view k, DxKeyWhen w, Apply a) : key(k), when(w), apply(a) {}
};
std::span<const DxFlagKey> DxFlagKeys();
/// Reads a flags section to "#FLAGS-END" or the end of the file. 0.
int DxReadFlagSection(FILE* file, int isExport);

/// Takes one flag of a session's direction by itself. An unknown key changes nothing.
void DxApplyFlag(std::string_view key, const std::string& value, int isExport);
/// Takes what the host has added for this run. 0, or the host's allocation error.
int DxTakeAdditions(int isExport);

// ---- data sections -----------------------------------------------------------------------------------

/// A section of lines "left|right". `add` takes one line; `special` is 1 in the special file. 0, or the
/// host's allocation error; a line that means nothing is dropped.
struct DxDataSection {
    std::string_view header;
    int isExport;
    int (*add)(std::string_view left, std::string_view right, int special);
};
std::span<const DxDataSection> DxDataSections();
/// The section of the session's direction, null for one that doesn't count.
const DxDataSection* DxFindDataSection(std::string_view header, int isExport);
/// Reads one section whose header line was `header`: "#FLAGS-START", or a data section of `count` lines. A
/// header that isn't known reads nothing. 0, or the host's allocation error.
int DxConfigDecode(FILE* file, std::string_view header, int count, int isExport, int special);
/// Reads the special file for characters, when there is one. 0, or the host's allocation error.
int DxReadSpezConfig(const UtCString& name, int isExport);

// ---- the older format --------------------------------------------------------------------------------

struct DxScanned;
/// A keyword, the format of its line, and the number of conversions without which the line is wrong. A
/// keyword without a format looks at the line itself.
struct DxConfigKeyword {
    std::string_view keyword;
    std::string_view format;
    int needed;
    int (*apply)(const DxScanned& values, std::string_view line);
};
std::span<const DxConfigKeyword> DxConfigKeywords();

/// A pair of lists from colour to pen or fill, as configurations give them: 1 … 255 to 0 … 1023; others are
/// dropped. 0, or the host's allocation error.
int DxAddColorPair(DxTable<DX_COLOR_PAIR>& pairs, int color, int pen);
