#include "dx_placeholders.h"

#include "../config/config_state.h"
#include "../export/export_state.h"
#include "../import/dx_extents.h"
#include "../import/import_state.h"
#include "../session/dx_numbers.h"
#include "../session/dx_writer.h"
#include "../session/session_state.h"
#include "dx_codes.h"
#include "dx_header_export.h"
#include "dx_objects_export.h"
#include "dx_template.h"
#include "sections_state.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace {

// ---- handles ---------------------------------------------------------------------------------------

/// Who writes the object of a handle: the module itself, or a template that has it under group 5.
enum Owner { MODULE, TEMPLATE };

struct SharedHandle {
    std::string_view placeholder;
    std::uint32_t* handle;
    Owner owner;
    std::uint32_t fixed = 0; ///< the handle that all templates agree on, 0: the next one
};

constexpr SharedHandle SHARED[] = {
    {"#MODELSPACE_REFERENCE#", &DxModelSpaceHandle, MODULE},
    {"#MODELSPACE_OBJECTREFERENCE#", &DxModelSpaceDict, TEMPLATE},
    {"#PAPERSPACE_REFERENCE#", &DxHandles.paperSpace, MODULE},
    {"#PAPERSPACE0_REFERENCE#", &DxHandles.paperSpace0, MODULE},
    {"#LTYP_REFERENCE#", &DxByBlockLtypeHandle, MODULE},
    {"#VPORT_REFERENCE#", &DxHandles.viewport, MODULE},
    {"#LAYOUT_MODEL_REFERENCE#", &DxHandles.layoutModel, TEMPLATE},
    {"#LAYOUT_PAPER_REFERENCE#", &DxHandles.layoutPaper, TEMPLATE},
    {"#LAYOUT_PAPER0_REFERENCE#", &DxHandles.layoutPaper0, TEMPLATE},
    {"#PLOTSTYLE_REFERENCE#", &DxHandles.plotStyle, TEMPLATE},
    {"#IMAGEDICT_REFERENCE#", &DxHandles.imageDict, TEMPLATE, 0x5E},
    {"#MATERIAL_BYLAYER_REFERENCE#", &DxHandles.materialByLayer, TEMPLATE},
    {"#STYLE_REALISTIC_REFERENCE#", &DxHandles.styleRealistic, TEMPLATE},
    {"#STYLE_WIREFRAME_REFERENCE#", &DxHandles.styleWireframe, TEMPLATE},
};
constexpr std::size_t SHARED_COUNT = std::size(SHARED);

const SharedHandle* findShared(std::string_view value) {
    const auto* row = std::find_if(std::begin(SHARED), std::end(SHARED),
                                   [&](const SharedHandle& shared) { return shared.placeholder == value; });
    return row == std::end(SHARED) ? nullptr : row;
}

/// A template may write a fixed handle as it is.
const SharedHandle* findFixed(std::string_view value) {
    const std::uint32_t handle = DxHexToU32(value);
    const auto* row = std::find_if(std::begin(SHARED), std::end(SHARED), [&](const SharedHandle& shared) {
        return shared.fixed != 0 && shared.fixed == handle;
    });
    return row == std::end(SHARED) ? nullptr : row;
}

/// Which of the shared objects the OBJECTS template holds.
std::array<bool, SHARED_COUNT> objectsOfTemplate() {
    std::array<bool, SHARED_COUNT> held{};
    DxTemplate source(DxObjectsTemplateName());
    int code = 0;
    for (std::string value; source.next(code, value);) {
        if (code != 5) continue;
        const SharedHandle* row = findShared(value);
        if (!row) row = findFixed(value);
        if (row) held[static_cast<std::size_t>(row - SHARED)] = true;
    }
    return held;
}

// ---- values ----------------------------------------------------------------------------------------

/// Line-type scale of the file: the option's value holds for lengths of the sheet in centimetres.
double lineTypeScale() {
    return DxLtScale * 10.0 / DxDrawUnit / DxScale;
}

int writeInsUnits(int code) {
    DxFileInsUnits = DxWriteInsUnits ? DxUnitToDXF(DxUnit) : 0;
    return DxWriteInt(code, DxFileInsUnits);
}

struct Placeholder {
    std::string_view text;
    int (*write)(int code);
};

constexpr Placeholder PLACEHOLDERS[] = {
    {"#EXTMIN_X#", [](int code) { return DxWriteDouble(code, DxWrittenExtMin().x); }},
    {"#EXTMIN_Y#", [](int code) { return DxWriteDouble(code, DxWrittenExtMin().y); }},
    {"#EXTMIN_Z#", [](int code) { return DxWriteDouble(code, DxWrittenExtMin().z); }},
    {"#EXTMAX_X#", [](int code) { return DxWriteDouble(code, DxWrittenExtMax().x); }},
    {"#EXTMAX_Y#", [](int code) { return DxWriteDouble(code, DxWrittenExtMax().y); }},
    {"#EXTMAX_Z#", [](int code) { return DxWriteDouble(code, DxWrittenExtMax().z); }},
    {"#LUPREC#", [](int code) { return DxWriteInt(code, DxLuPrec); }},
    {"#REFERENCE#", [](int code) { return DxWriteVariableReference(code); }},
    {"#LTSCALE#", [](int code) { return DxWriteDouble(code, lineTypeScale()); }},
    {"#INSUNITS#", writeInsUnits},
    // These two stand for pairs, whose code lines come with them.
    {"#IMAGEDICT#", [](int) { return DxInsertFile(DxImageStream2); }},
    {"#IMAGEOBJECTS#", [](int) { return DxInsertFile(DxImageStream1); }},
};

} // namespace

const char* DxObjectsTemplateName() {
    static constexpr const char* NAMES[] = {"objects_32", "objects_27", "objects_24",
                                            "objects_21", "objects_18", "objects_15"};
    return NAMES[DxWriteVersion >= 1 && DxWriteVersion <= 6 ? DxWriteVersion - 1 : 5];
}

void DxTakeHandles() {
    for (const SharedHandle& row : SHARED) *row.handle = 0;
    if (!DxMiscCheckVersion(DX_LEVEL_HANDLES)) return;
    const std::array<bool, SHARED_COUNT> held = objectsOfTemplate();
    for (std::size_t i = 0; i < SHARED_COUNT; ++i)
        if (SHARED[i].owner == MODULE || held[i])
            *SHARED[i].handle = SHARED[i].fixed ? SHARED[i].fixed : DxGetNextReference();
    if (!DxMiscCheckVersion(DX_LEVEL_SHEETS)) DxHandles.paperSpace0 = 0; // older targets have one sheet
}

int DxWriteTemplatePair(int code, std::string_view value) {
    if (value.size() < 3 || value.front() != '#') return DxWriteString(code, value);
    if (const SharedHandle* shared = findShared(value))
        return DxWriteVariableReference2(code, *shared->handle);
    const auto* row = std::find_if(std::begin(PLACEHOLDERS), std::end(PLACEHOLDERS),
                                   [&](const Placeholder& p) { return p.text == value; });
    return row != std::end(PLACEHOLDERS) ? row->write(code) : DxWriteString(code, value);
}
