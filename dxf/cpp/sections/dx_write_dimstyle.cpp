#include "dx_write_dimstyle.h"
#include "dx_codes.h"

#include "../config/config_state.h"
#include "../session/dx_documents.h"
#include "../session/dx_writer.h"

// A drawing's dimensions don't leave yet, so the one style is the one that the header names. Its values are
// the format's metric defaults, which a reader of the newer versions takes for absent groups only in part.
std::size_t DxDimparCount() {
    return 1;
}

namespace {

struct Real {
    int code;
    double value;
};
constexpr Real REALS[] = {
    {40, 1.0},
    {41, 2.5},
    {42, 0.625},
    {43, 3.75},
    {44, 1.25},
    {45, 0.0},
    {46, 0.0},
    {47, 0.0},
    {48, 0.0},
    {140, 2.5},
    {141, 2.5},
    {142, 0.0},
    {143, 0.03937007874016},
    {144, 1.0},
    {145, 0.0},
    {146, 1.0},
    {147, 0.625},
};
constexpr int INTEGERS[][2] = {{71, 0},  {72, 0},  {73, 0},  {74, 0},  {75, 0},  {76, 0},
                               {77, 1},  {78, 8},  {170, 0}, {171, 3}, {172, 1}, {173, 0},
                               {174, 0}, {175, 0}, {176, 0}, {177, 0}, {178, 0}};

/// The handle of the text style that stands for all that name none, 0 when there is no style.
std::uint32_t standardTextStyle() {
    const auto& styles = DxDocuments.currentTables().styles;
    for (const DX_STYLE_TYPE& style : styles)
        if (UtCString(style.name.view()).Upper().str() == "STANDARD") return style.handle;
    return styles.empty() ? 0 : styles[0].handle;
}

} // namespace

int DxDimparWrite(std::size_t /*index*/, std::uint32_t tableHandle) {
    DxWriteString(0, "DIMSTYLE");
    DxWriteVariableReference2(105, DxGetNextReference());
    DxWriteVariableReference2(330, tableHandle);
    DxWriteSubClass("AcDbSymbolTableRecord");
    DxWriteSubClass("AcDbDimStyleTableRecord");
    DxWriteString(2, "STANDARD");
    DxWriteInt(70, 0);
    if (!DxMiscCheckVersion(DX_LEVEL_HANDLES))
        for (const int code : {3, 4, 5, 6, 7}) DxWriteString(code, "");
    for (const Real& row : REALS) DxWriteDouble(row.code, row.value);
    for (const auto& row : INTEGERS) DxWriteInt(row[0], row[1]);
    if (const std::uint32_t style = DxFullGroups ? standardTextStyle() : 0)
        DxWriteVariableReference2(340, style);
    return DxWriteError();
}
