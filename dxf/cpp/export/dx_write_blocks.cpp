#include "dx_write_blocks.h"

#include "../config/config_state.h"
#include "../sections/dx_placeholders.h"
#include "../sections/dx_tables_import.h"
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
    DxWriteDouble(10, 0.0);
    DxWriteDouble(20, 0.0);
    return DxWriteDouble(30, 0.0);
}

/// Handle, owner and marker of BLOCK and ENDBLK, with the mark of paper space.
int writeFrameIds(bool paper) {
    DxWriteEntityIds(0, DxOwnerHandle);
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
    if (!DxMiscCheckVersion(6)) return 0;
    int error =
        DxTableAddBlockRecord("*Model_Space", DxModelSpaceHandle, DxHandles.layoutModel, DxModelSpaceDict);
    if (!error) error = DxTableAddBlockRecord("*Paper_Space", DxHandles.paperSpace, DxHandles.layoutPaper, 0);
    if (!error && DxMiscCheckVersion(5))
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
    DxWriteString(0, "SEQEND");
    DxWriteEntityIds(0, insert);
    return DxWriteString(8, block.layer);
}

} // namespace

int DxWriteModelSpace() {
    return DxMiscCheckVersion(6) ? writeSpaceBlock("*Model_Space", DxModelSpaceHandle, false) : 0;
}
int DxWritePaperSpace() {
    return DxMiscCheckVersion(6) ? writeSpaceBlock("*Paper_Space", DxHandles.paperSpace, true) : 0;
}
int DxWritePaperSpace0() {
    return DxMiscCheckVersion(5) ? writeSpaceBlock("*Paper_Space0", DxHandles.paperSpace0, true) : 0;
}

int DxWriteBlockSection() {
    DxDocuments.select(DxBodyStream);
    DxPatCounter = 1;
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
    DxWriteString(0, "BLOCK");
    DxWriteEntityIds(0, DxOwnerHandle);
    DxWriteString(8, DxActLayer);
    DxWriteSubClass("AcDbBlockBegin");
    DxWriteString(2, name);
    DxWriteInt(70, DxBlockType == DX_BLOCK_PLAIN ? 66 : 65);
    writeOrigin();
    if (DxBlockType != DX_BLOCK_PLAIN && DxMiscCheckVersion(7))
        DxWriteString(3, DxBlockType == DX_BLOCK_DIMENSION ? "*D" : "*X");
    return DxBlockBuffering ? DxWriteError() : DxTableAddBlockRecord(name.str(), DxOwnerHandle, 0, 0);
}

int DxWriteBlockEnd(int& open) {
    if (!open) DxProtoMsg("DxWriteBlockEnd", 0);
    DxWriteString(0, "ENDBLK");
    DxWriteEntityIds(0, DxOwnerHandle);
    DxWriteString(8, "0");
    DxWriteSubClass("AcDbBlockEnd");
    open = 0;
    DxBlockBuffering = 0;
    return DxWriteError();
}

int DxWriteInsert(const DX_WRITE_BLOCK& block) {
    const std::uint32_t handle = DxGetNextReference();
    DxWriteString(0, "INSERT");
    DxWriteEntityIds(handle, DxOwnerHandle);
    DxWriteString(8, block.layer);
    DxWriteSubClass("AcDbBlockReference");
    DxWriteString(2, block.name);
    for (int axis = 0; axis < 3; ++axis) DxWriteDouble(10 + 10 * axis, block.base[axis]);
    for (int axis = 0; axis < 3; ++axis) DxWriteDouble(41 + axis, block.scale[axis]);
    DxWriteDouble(50, block.rotation);
    return block.attribs.empty() ? DxWriteError() : writeAttributes(block, handle);
}
