#include "dx_write_blocks.h"

#include "../config/config_state.h"
#include "../sections/dx_placeholders.h"
#include "../sections/dx_tables_import.h"
#include "../session/dx_documents.h"
#include "../session/dx_protocol.h"
#include "../session/dx_writer.h"
#include "../session/session_state.h"
#include "dx_codes.h"
#include "dx_kept_handles.h"
#include "dx_pattern_walk.h"
#include "dx_write_attrib.h"
#include "dx_write_entities.h"
#include "export_state.h"
#include "mt.h"

namespace {

int writeOrigin() {
    DxWriteDouble(10, 0.0);
    DxWriteDouble(20, 0.0);
    return DxWriteDouble(30, 0.0);
}

/// Handle, owner and marker of BLOCK and ENDBLK, with the mark of paper space.
int writeFrameIds(bool paper) {
    DxWriteEntityIds();
    return paper ? DxWriteInt(67, 1) : DxWriteError();
}

int writeSpaceBlock(const char* name, std::uint32_t record, bool paper) {
    DxOwnerHandle = record;
    DxWriteString(0, "BLOCK");
    writeFrameIds(paper);
    DxWriteString(8, "0");
    DxWriteSubClass("AcDbBlockBegin");
    DxWriteString(2, name);
    DxWriteInt(70, 0);
    writeOrigin();
    DxWriteString(3, name);
    DxWriteString(1, "");
    DxWriteString(0, "ENDBLK");
    writeFrameIds(paper);
    DxWriteString(8, "0");
    return DxWriteSubClass("AcDbBlockEnd");
}

/// The space blocks and their records. Older targets have none.
int writeSpaces() {
    if (!DxMiscCheckVersion(DX_LEVEL_HANDLES)) return 0;
    int error =
        DxTableAddBlockRecord("*Model_Space", DxModelSpaceHandle, DxHandles.layoutModel, DxModelSpaceDict);
    if (!error) error = DxTableAddBlockRecord("*Paper_Space", DxHandles.paperSpace, DxHandles.layoutPaper, 0);
    if (!error && DxMiscCheckVersion(DX_LEVEL_SHEETS))
        error = DxTableAddBlockRecord("*Paper_Space0", DxHandles.paperSpace0, DxHandles.layoutPaper0, 0);
    if (error) return error;
    DxWriteModelSpace();
    DxWritePaperSpace();
    return DxWritePaperSpace0();
}

/// The attributes behind an INSERT, which owns them.
int writeAttributes(const DX_WRITE_BLOCK& block, std::uint32_t insert) {
    Mat32 identity;
    MtIdentMat(identity);
    DxWriteInt(66, 1);
    for (const DX_ATTRIB_TYPE& attrib : block.attribs) DxAttribWrite("ATTRIB", attrib, identity, insert);
    return DxWriteEntityStart("SEQEND", block.layer, 0, insert);
}

} // namespace

int DxWriteModelSpace() {
    return DxMiscCheckVersion(DX_LEVEL_HANDLES) ? writeSpaceBlock("*Model_Space", DxModelSpaceHandle, false)
                                                : 0;
}
int DxWritePaperSpace() {
    return DxMiscCheckVersion(DX_LEVEL_HANDLES) ? writeSpaceBlock("*Paper_Space", DxHandles.paperSpace, true)
                                                : 0;
}
int DxWritePaperSpace0() {
    return DxMiscCheckVersion(DX_LEVEL_SHEETS) ? writeSpaceBlock("*Paper_Space0", DxHandles.paperSpace0, true)
                                               : 0;
}

int DxWriteBlockSection() {
    DxDocuments.select(DxBodyStream);
    DxPatCounter = 1;
    DxReserveKeptHandles();
    DxTakeHandles();
    DxWriteString(0, "SECTION");
    DxWriteString(2, "BLOCKS");
    int error = writeSpaces();
    if (!error) error = DxWriteBlockPass();
    return error ? error : DxWriteString(0, "ENDSEC");
}

int DxWriteBlockStart(int& open) {
    DxBlockBuffering = DxBlockBufferWanted;
    if (open) DxProtoMsg("DxWriteBlockStart", 0);
    open = 1;
    const UtCString& name = DxPatNames[DX_PAT_NAME];
    DxOwnerHandle = DxGetNextReference();
    DxWriteEntityStart("BLOCK", DxActLayer);
    DxWriteSubClass("AcDbBlockBegin");
    DxWriteString(2, name);
    DxWriteInt(70, DX_BLOCK_REFERENCED |
                       (DxBlockType == DX_BLOCK_PLAIN ? DX_BLOCK_ATTRIBUTES : DX_BLOCK_ANONYMOUS));
    writeOrigin();
    if (DxFullGroups) {
        DxWriteString(3, name);
        DxWriteString(1, ""); // no reference
    } else if (DxBlockType != DX_BLOCK_PLAIN && DxMiscCheckVersion(DX_LEVEL_3D)) {
        DxWriteString(3, DxBlockType == DX_BLOCK_DIMENSION ? "*D" : "*X");
    }
    return DxBlockBuffering ? DxWriteError() : DxTableAddBlockRecord(name.str(), DxOwnerHandle, 0, 0);
}

int DxWriteBlockEnd(int& open) {
    if (!open) DxProtoMsg("DxWriteBlockEnd", 0);
    DxWriteEntityStart("ENDBLK", "0");
    DxWriteSubClass("AcDbBlockEnd");
    open = 0;
    DxBlockBuffering = 0;
    return DxWriteError();
}

int DxWriteInsert(const DX_WRITE_BLOCK& block) {
    const std::uint32_t handle = DxGetNextReference();
    DxWriteEntityStart("INSERT", block.layer, handle);
    DxWriteSubClass("AcDbBlockReference");
    DxWriteString(2, block.name);
    for (int axis = 0; axis < 3; ++axis) DxWriteDouble(10 + 10 * axis, block.place.base[axis]);
    for (int axis = 0; axis < 3; ++axis) DxWriteDouble(41 + axis, block.place.scale[axis]);
    DxWriteDouble(50, block.place.rotation);
    return block.attribs.empty() ? DxWriteError() : writeAttributes(block, handle);
}
