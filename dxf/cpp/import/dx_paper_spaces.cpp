// Paper spaces whose entities stand in blocks.
#include "dx_paper_spaces.h"

#include "../config/config_state.h"
#include "../config/dx_layer_patterns.h"
#include "../host/dx_host.h"
#include "../sections/dx_header_import.h"
#include "../session/dx_documents.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "../session/dx_scale.h"
#include "../session/session_state.h"
#include "dx_entity_base.h"
#include "dx_entity_section.h"
#include "dx_extents.h"
#include "dx_insert_import.h"
#include "dx_spaces.h"
#include "import_state.h"
#include "mt.h"

#include <cctype>

namespace {

constexpr int STOPPED = 9009;
constexpr std::string_view PAPER_SPACE = "*Paper_Space";

bool beginsWithPaperSpace(std::string_view name) {
    if (name.size() < PAPER_SPACE.size()) return false;
    for (std::size_t i = 0; i < PAPER_SPACE.size(); ++i)
        if (std::tolower(static_cast<unsigned char>(name[i])) !=
            std::tolower(static_cast<unsigned char>(PAPER_SPACE[i])))
            return false;
    return true;
}

bool hasLayout(const DX_BLOCK_RECORD_TYPE& record) {
    return record.handle != 0 && record.layoutHandle != 0 && beginsWithPaperSpace(record.name.view());
}

/// The first paper space has its entities in ENTITIES.
bool isFirst(const DX_BLOCK_RECORD_TYPE& record) {
    return record.name.view().size() == PAPER_SPACE.size();
}

/// An INSERT that stands for a paper space.
DX_INSERT_TYPE insertOf(const DX_BLOCK_RECORD_TYPE& record) {
    DX_INSERT_TYPE insert{};
    DxInitEntityBase(&insert.base);
    insert.base.layer.assign("0");
    insert.base.paperSpace = DxActSpace;
    insert.blockName = record.name;
    insert.scaleX = insert.scaleY = insert.scaleZ = 1;
    insert.extrusion[2] = 1;
    return insert;
}

/// Block records as they are now: their table may grow while a space is drawn.
DxTable<DX_BLOCK_RECORD_TYPE> blockRecords() {
    return DxDocuments.currentTables().blockRecords;
}

/// The base matrix of a paper space, which may have its own user coordinate system.
void baseMatrix(const DX_LAYOUT_TYPE* layout, const Mat44 m, Mat44 out) {
    if (DxUseUcs && layout)
        DxHeaderUcsToMat(layout->ucsOrigin, layout->ucsX, layout->ucsY, out);
    else
        Mt44Copy(m, out);
}

int endSpace(int error) {
    const int flushed = DxElemQueuePat < 0 ? 0 : DxCiElemDrawPat();
    if (!error) error = flushed;
    if (DxModus == 3) DxSyncAll3dPat();
    if (error && error != STOPPED) return error;
    const int cleared = DxClearPatterns();
    return error ? error : cleared;
}

int drawSpace(const DX_BLOCK_RECORD_TYPE& record, const DX_LAYOUT_TYPE* layout, const Mat44 m) {
    Mat44 matrix;
    baseMatrix(layout, m, matrix);
    if (const int error = DxLayerToPattern ? DxCreatePatterns(0) : DxNewPat(0)) return error;
    if (const int error = DxfSetScale(1)) return error;
    DxCheckPass = 0;
    DxDisplay(DxMsg(5712));
    DxResetPercent();
    const DX_INSERT_TYPE insert = insertOf(record);
    return endSpace(DxDrawInsert(&insert, matrix, 0));
}

/// A paper space behind the first one. A record without a layout has no extents and keeps its sheet's name.
int readSpace(const DX_BLOCK_RECORD_TYPE& record, const Mat44 m) {
    constexpr int notApplicable = 3011;
    const int extents = DxSetExtMinMaxIns(&record);
    if (extents && extents != notApplicable) return extents;
    if (const int error = DxCiSwitchToReadSpace()) return error;
    const DX_LAYOUT_TYPE* found = DxDocuments.requireCurrent().objects.layoutOf(record);
    const DX_LAYOUT_TYPE layout = found ? *found : DX_LAYOUT_TYPE{};
    const int error = drawSpace(record, found ? &layout : nullptr, m);
    return error || !found ? error : DxCiChangeReadSpace(&layout);
}

void startSpace(int number, int space) {
    DxPlotCount = number;
    DxActSpace = space;
    DxViewportCount = 1;
}

} // namespace

int DxFinishModelSpace(const Mat44 m) {
    int plot = 1;
    for (const DX_BLOCK_RECORD_TYPE& record : blockRecords()) {
        if (!hasLayout(record) || isFirst(record)) continue;
        startSpace(++plot, 0);
        const DX_INSERT_TYPE insert = insertOf(record);
        if (const int error = DxDrawInsert(&insert, m, 1)) return error;
    }
    return 0;
}

int DxFinishPaperSpaces(const Mat44 m) {
    const DxTable<DX_BLOCK_RECORD_TYPE> records = blockRecords();
    for (const DX_BLOCK_RECORD_TYPE& record : records)
        if (hasLayout(record) && isFirst(record))
            DxCiChangeReadSpace(DxDocuments.requireCurrent().objects.layoutOf(record));
    int plot = 1;
    for (const DX_BLOCK_RECORD_TYPE& record : records) {
        if (!hasLayout(record) || isFirst(record)) continue;
        ++plot;
        startSpace(plot, plot);
        if (const int error = readSpace(record, m)) return error;
    }
    return 0;
}
