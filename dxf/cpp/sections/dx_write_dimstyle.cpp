// DIMSTYLE records by rows of group codes.
#include "dx_write_dimstyle.h"

#include "../config/config_state.h"
#include "../session/dx_documents.h"
#include "../session/dx_writer.h"
#include "dx_codes.h"
#include "dx_dimstyle.h"

#include <algorithm>

namespace {

constexpr const char* CURRENT = "STANDARD"; // the style that the header names

const DxTable<DX_DIM_STYLE>& styles() {
    return DxDocuments.currentTables().dimStyles;
}

bool hasCurrent() {
    return std::any_of(styles().begin(), styles().end(),
                       [](const DX_DIM_STYLE& style) { return style.name.view() == CURRENT; });
}

/// The format's metric defaults, which a reader of the newer versions takes for absent groups only in part.
DX_DIM_STYLE currentStyle() {
    struct Real {
        DX_DIM_REAL variable;
        double value;
    };
    static constexpr Real reals[] = {
        {DIMSCALE, 1.0}, {DIMASZ, 2.5},  {DIMEXO, 0.625}, {DIMDLI, 3.75},
        {DIMEXE, 1.25},  {DIMTXT, 2.5},  {DIMCEN, 2.5},   {DIMALTF, 0.03937007874016},
        {DIMLFAC, 1.0},  {DIMTFAC, 1.0}, {DIMGAP, 0.625},
    };
    struct Integer {
        DX_DIM_INTEGER variable;
        int value;
    };
    static constexpr Integer integers[] = {
        {DIMTAD, 1},  {DIMZIN, 8},   {DIMALTD, 3},  {DIMTOFL, 1},   {DIMUNIT, 2}, {DIMDEC, 2}, {DIMTDEC, 2},
        {DIMALTU, 2}, {DIMALTTD, 3}, {DIMLUNIT, 2}, {DIMDSEP, '.'}, {DIMTZIN, 8}, {DIMFIT, 3}, {DIMATFIT, 3},
    };
    DX_DIM_STYLE style = {};
    style.name.assign(CURRENT);
    for (const Real& row : reals) style.reals[row.variable] = row.value;
    for (const Integer& row : integers) style.integers[row.variable] = row.value;
    return style;
}

/// A run of group codes, from consecutive places of a style's reals or integers.
struct Run {
    int first, last;
    int place; ///< of the first code
    int level; ///< of the targets that have it
};
constexpr Run REALS[] = {{40, 48, DIMSCALE, DX_LEVEL_3D},
                         {140, 147, DIMTXT, DX_LEVEL_3D},
                         {148, 148, DIMALTRND, DX_LEVEL_HANDLES}};
constexpr Run INTEGERS[] = {{71, 78, DIMTOL, DX_LEVEL_3D},
                            {79, 79, DIMAZIN, DX_LEVEL_HANDLES},
                            {170, 178, DIMALT, DX_LEVEL_3D},
                            {179, 179, DIMADEC, DX_LEVEL_HANDLES},
                            {270, 289, DIMUNIT, DX_LEVEL_HANDLES}};
constexpr Run REFERENCES = {340, 344, DIMTXSTY, DX_LEVEL_HANDLES};

template <class Write>
void eachCode(const Run& run, Write write) {
    if (!DxMiscCheckVersion(run.level)) return;
    for (int code = run.first; code <= run.last; ++code) write(code, run.place + code - run.first);
}

int writeStyle(const DX_DIM_STYLE& style, std::uint32_t table) {
    DxWriteString(0, "DIMSTYLE");
    DxWriteVariableReference2(105, style.handle ? style.handle : DxGetNextReference());
    DxWriteVariableReference2(330, table);
    DxWriteSubClass("AcDbSymbolTableRecord");
    DxWriteSubClass("AcDbDimStyleTableRecord");
    DxWriteString(2, style.name);
    DxWriteInt(70, 0);
    DxWriteString(3, style.strings[DIMPOST]);
    DxWriteString(4, style.strings[DIMAPOST]);
    if (!DxMiscCheckVersion(DX_LEVEL_HANDLES))
        for (const int code : {5, 6, 7}) DxWriteString(code, "");
    for (const Run& run : REALS)
        eachCode(run, [&](int code, int place) { DxWriteDouble(code, style.reals[place]); });
    for (const Run& run : INTEGERS)
        eachCode(run, [&](int code, int place) { DxWriteInt(code, style.integers[place]); });
    eachCode(REFERENCES, [&](int code, int place) {
        const auto handle = static_cast<std::uint32_t>(style.integers[place]);
        if (handle) DxWriteVariableReference2(code, handle);
    });
    return DxWriteError();
}

/// The handle of the text style that stands for all that name none, 0 when there is no style.
std::uint32_t standardTextStyle() {
    const auto& textStyles = DxDocuments.currentTables().styles;
    for (const DX_STYLE_TYPE& style : textStyles)
        if (UtCString(style.name.view()).Upper().str() == "STANDARD") return style.handle;
    return textStyles.empty() ? 0 : textStyles[0].handle;
}

} // namespace

std::size_t DxDimparCount() {
    return styles().size() + (hasCurrent() ? 0 : 1);
}

int DxDimparWriteAll(std::uint32_t tableHandle) {
    if (!hasCurrent()) {
        DX_DIM_STYLE current = currentStyle();
        if (DxFullGroups) current.integers[DIMTXSTY] = static_cast<int>(standardTextStyle());
        writeStyle(current, tableHandle);
    }
    for (const DX_DIM_STYLE& style : styles()) writeStyle(style, tableHandle);
    return DxWriteError();
}
