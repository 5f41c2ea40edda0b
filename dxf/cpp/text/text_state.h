// What the text subsystem remembers within a session.
#pragma once

#include "dx_fixed.h"
#include "ut_string.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

struct DxTables;

/// Widths of a DXF font from its ".chr" file, in hundredths of the text height.
struct DxFontTable {
    static constexpr int codeCount =
        259;          ///< bytes, and behind them what the three codes beyond 255 stand for
    std::string name; ///< as asked for
    double averageSpace = 50.0;
    double heightValue = 44.0; ///< depth of letters below the baseline
    double averageWidth = 0.0;
    bool isLoaded = false; ///< false: no such file
    bool isTold = false;   ///< that it is missing
    struct Cell {
        std::int16_t width = -1; ///< -1: undefined
        std::int16_t space = 0;
    };
    std::array<Cell, 256> cells;
    std::array<Cell, 256> plain;       ///< of bytes that stand for themselves, undefined for all others
    std::unordered_set<int> toldCodes; ///< undefined ones that the user was told of
};

/// Widths of a host font from its "std.%d" file, in hundredths of the character width.
struct DxCadFontTable {
    static constexpr std::uint16_t undefined = 0xFFFF;
    int number = 0;
    bool isProportional = false;
    int averageWidth = 100;
    std::array<std::uint16_t, 256> width{};
    std::unordered_set<int> toldCodes;
};

/// Widths of a face as the host measures it, relative to the character width. Characters stand side by side
/// there, so a text is as long as all of them.
struct DxFaceTable {
    static constexpr double unit = 1.0 / (1LL << 32); ///< of widths: sums of whole numbers need no rounding
    static constexpr std::int64_t unknown = -1;
    std::array<std::int64_t, 256> plain; ///< of bytes that stand for themselves, `unknown` until measured
    std::unordered_map<char32_t, std::int64_t> others;
    DxFaceTable() { plain.fill(unknown); }
};

/// A text of a set of character tables, UTF-8, and the character it becomes on import; 0: none.
struct DxCharSequence {
    std::string text;
    char32_t character = 0;
};

/// What the codes of one set of character tables do, ready for use.
struct DxCharMap {
    bool isBuilt = false;
    std::unordered_map<char32_t, char32_t> pairs; ///< file's character → host's
    std::vector<DxCharSequence> sequences;        ///< the first that fits counts
    std::array<bool, 256> startsText{};           ///< bytes that begin one of the set's texts
    std::array<bool, 256> startsCode{};           ///< and the one that begins an escape
};

/// A style as the host sees it; see DxTextGetCharset.
struct DxCharset {
    int font = 1;      ///< host font number, 0: face
    DX_NAME fontFile;  ///< DXF font
    double factor = 0; ///< character spacing of the font map, 0: none given
    DX_NAME face;      ///< TrueType face
    int bits[8] = {};  ///< see DX_TEXT_BITS
    double widthFactor = 1.0;
    mutable DxFontTable* fontTable = nullptr; ///< of the DXF font, once it was asked for
    mutable DxFaceTable* faceTable = nullptr; ///< of the face, likewise
};

extern std::vector<std::unique_ptr<DxFontTable>> DxFontTables;
extern std::unordered_map<std::string, int> DxFontTableIndex; ///< by name
extern std::vector<std::unique_ptr<DxCadFontTable>> DxCadFontTables;
extern std::unordered_map<int, int> DxCadFontTableIndex;          ///< by number; -1: the file doesn't open
extern std::unordered_map<std::string, DxFaceTable> DxFaceTables; ///< by face and marks
extern std::array<DxCharMap, 2> DxCharMaps; ///< main and special set of the direction at work
extern int DxFinishPending;                 ///< the next text must end with DxFinishText
/// Depth of letters, relative to their height, that an import of the file being written counts to the block
/// of an MTEXT: that of the first stroke font among the texts so far, 0 while there is none.
extern double DxWrittenDescent;
extern int DxTextTooSmallTold; ///< message 5751 was given in this import

/// Macro variables that rule texts, as the session's first text found them.
struct DxTextOptions {
    bool isRead = false;
    bool isFixFont = false;  ///< &DxfFixFont: lengths by the rough rule
    std::string defaultFont; ///< $DxfDfltFont
};
extern DxTextOptions DxTextOptionsRead;

/// Texts that wait to be joined: pattern and row.
struct DX_TEXT_PLACE {
    int pat;
    int row;
};
extern std::vector<DX_TEXT_PLACE> DxTextList;
extern std::size_t DxTextListSize; ///< room of the list

/// The styles of one document's tables: where they are and what they mean in the host.
struct DxStyleIndex {
    std::size_t indexed = 0;                             ///< styles that byName knows
    std::unordered_map<std::string, std::size_t> byName; ///< first style of each name
    std::unordered_map<std::string, DxCharset> charsets; ///< by default font and style
    std::string lastStyle, lastDefault;                  ///< what was asked for last
    const DxCharset* last = nullptr;                     ///< its charset
    std::unordered_map<std::string, int> made;           ///< styles for "\f" codes, by font and marks
};
extern std::unordered_map<const DxTables*, DxStyleIndex> DxStyleIndexes;
extern const DxTables* DxLastStyleTables; ///< the tables of DxLastStyleIndex
extern DxStyleIndex* DxLastStyleIndex;    ///< the index that was asked for last

/// Start values of all of the above, tables forgotten.
void DxResetTextState();
