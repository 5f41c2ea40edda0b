#include "dx_write_blocks.h"

#include "../config/config_state.h"
#include "../sections/dx_tables_import.h"
#include "../sections/template_handles.h"
#include "../session/dx_documents.h"
#include "../session/dx_protocol.h"
#include "../session/dx_writer.h"
#include "../session/session_state.h"
#include "dx_pattern_walk.h"
#include "dx_write_attrib.h"
#include "dx_write_entities.h"
#include "export_state.h"
#include "mt.h"

namespace {

int writeOrigin() {
    int error = DxWriteDouble(10, 0.0);
    if (!error) error = DxWriteDouble(20, 0.0);
    return error ? error : DxWriteDouble(30, 0.0);
}

/// Handle, owner and marker of BLOCK and ENDBLK, with the mark of paper space.
int writeFrameIds(bool paper) {
    int error = DxWriteEntityIds(0, DxOwnerHandle);
    return !error && paper ? DxWriteInt(67, 1) : error;
}

int writeSpaceBlock(const char* name, std::uint32_t record, bool paper) {
    DxOwnerHandle = record;
    int error = DxWriteString(0, "BLOCK");
    if (!error) error = writeFrameIds(paper);
    if (!error) error = DxWriteString(8, "0");
    if (!error) error = DxWriteSubClass("AcDbBlockBegin");
    if (!error) error = DxWriteString(2, name);
    if (!error) error = DxWriteInt(70, 0);
    if (!error) error = writeOrigin();
    if (!error) error = DxWriteString(3, name);
    if (!error) error = DxWriteString(1, "");
    if (!error) error = DxWriteString(0, "ENDBLK");
    if (!error) error = writeFrameIds(paper);
    if (!error) error = DxWriteString(8, "0");
    return error ? error : DxWriteSubClass("AcDbBlockEnd");
}

/// The space blocks and their records. Older targets have none.
int writeSpaces() {
    if (!DxMiscCheckVersion(6)) return 0;
    DxModelSpaceHandle = DxGetNextReference();
    DxModelSpaceDict = DxGetNextReference();
    int error =
        DxTableAddBlockRecord("*Model_Space", DxModelSpaceHandle, DX_HANDLE_LAYOUT_MODEL, DxModelSpaceDict);
    if (!error)
        error = DxTableAddBlockRecord("*Paper_Space", DX_HANDLE_PAPER_RECORD, DX_HANDLE_LAYOUT_PAPER, 0);
    if (!error && DxMiscCheckVersion(5))
        error = DxTableAddBlockRecord("*Paper_Space0", DX_HANDLE_PAPER0_RECORD, DX_HANDLE_LAYOUT_PAPER0, 0);
    if (!error) error = DxWriteModelSpace();
    if (!error) error = DxWritePaperSpace();
    return error ? error : DxWritePaperSpace0();
}

/// The attributes behind an INSERT, which owns them.
int writeAttributes(const DX_WRITE_BLOCK& block, std::uint32_t insert) {
    Mat32 identity;
    MtIdentMat(identity);
    int error = DxWriteInt(66, 1);
    for (const DX_ATTRIB_TYPE& attrib : block.attribs)
        if (!error) error = DxAttribWrite("ATTRIB", attrib, identity, insert);
    if (!error) error = DxWriteString(0, "SEQEND");
    if (!error) error = DxWriteEntityIds(0, insert);
    return error ? error : DxWriteString(8, block.layer);
}

} // namespace

int DxWriteModelSpace() {
    return DxMiscCheckVersion(6) ? writeSpaceBlock("*Model_Space", DxModelSpaceHandle, false) : 0;
}
int DxWritePaperSpace() {
    return DxMiscCheckVersion(6) ? writeSpaceBlock("*Paper_Space", DX_HANDLE_PAPER_RECORD, true) : 0;
}
int DxWritePaperSpace0() {
    return DxMiscCheckVersion(5) ? writeSpaceBlock("*Paper_Space0", DX_HANDLE_PAPER0_RECORD, true) : 0;
}

int DxWriteBlockSection() {
    DxDocuments.select(DxBodyStream);
    DxPatCounter = 1;
    int error = DxWriteString(0, "SECTION");
    if (!error) error = DxWriteString(2, "BLOCKS");
    if (!error) error = writeSpaces();
    if (!error) error = DxWriteBlockPass();
    return error ? error : DxWriteString(0, "ENDSEC");
}

int DxWriteBlockStart(int& open) {
    DxBlockBuffering = DxBlockBufferWanted;
    if (open) DxProtoMsg("DxWriteBlockStart", 0);
    open = 1;
    const UtCString& name = DxPatNames[DX_PAT_NAME];
    DxOwnerHandle = DxGetNextReference();
    int error = DxWriteString(0, "BLOCK");
    if (!error) error = DxWriteEntityIds(0, DxOwnerHandle);
    if (!error) error = DxWriteString(8, DxActLayer);
    if (!error) error = DxWriteSubClass("AcDbBlockBegin");
    if (!error) error = DxWriteString(2, name);
    if (!error) error = DxWriteInt(70, DxBlockType == DX_BLOCK_PLAIN ? 66 : 65);
    if (!error) error = writeOrigin();
    if (!error && DxBlockType != DX_BLOCK_PLAIN && DxMiscCheckVersion(7))
        error = DxWriteString(3, DxBlockType == DX_BLOCK_DIMENSION ? "*D" : "*X");
    if (!error && !DxBlockBuffering) error = DxTableAddBlockRecord(name.str(), DxOwnerHandle, 0, 0);
    return error;
}

int DxWriteBlockEnd(int& open) {
    if (!open) DxProtoMsg("DxWriteBlockEnd", 0);
    int error = DxWriteString(0, "ENDBLK");
    if (!error) error = DxWriteEntityIds(0, DxOwnerHandle);
    if (!error) error = DxWriteString(8, "0");
    if (!error) error = DxWriteSubClass("AcDbBlockEnd");
    open = 0;
    DxBlockBuffering = 0;
    return error;
}

int DxWriteInsert(const DX_WRITE_BLOCK& block) {
    const std::uint32_t handle = DxGetNextReference();
    int error = DxWriteString(0, "INSERT");
    if (!error) error = DxWriteEntityIds(handle, DxOwnerHandle);
    if (!error) error = DxWriteString(8, block.layer);
    if (!error) error = DxWriteSubClass("AcDbBlockReference");
    if (!error) error = DxWriteString(2, block.name);
    for (int axis = 0; axis < 3 && !error; ++axis) error = DxWriteDouble(10 + 10 * axis, block.base[axis]);
    for (int axis = 0; axis < 3 && !error; ++axis) error = DxWriteDouble(41 + axis, block.scale[axis]);
    if (!error) error = DxWriteDouble(50, block.rotation);
    return error || block.attribs.empty() ? error : writeAttributes(block, handle);
}
