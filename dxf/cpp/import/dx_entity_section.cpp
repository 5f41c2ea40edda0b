#include "dx_entity_section.h"

#include "../config/config_state.h"
#include "../config/dx_layer_patterns.h"
#include "../dimension/dx_dim_chain.h"
#include "../host/dx_host.h"
#include "../host/dx_host_origin.h"
#include "../sections/dx_header_import.h"
#include "../sections/dx_objects_import.h"
#include "../sections/dx_section.h"
#include "../sections/dx_section_places.h"
#include "../sections/sections_state.h"
#include "../session/dx_documents.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "../session/dx_scale.h"
#include "../session/session_state.h"
#include "../solid/dx_acds.h"
#include "../solid/dx_acis_import.h"
#include "../solid/solid_state.h"
#include "blocks_state.h"
#include "ds.h"
#include "dx_definitions.h"
#include "dx_entity_walk.h"
#include "dx_extents.h"
#include "dx_images.h"
#include "dx_paper_spaces.h"
#include "dx_point_clouds.h"
#include "dx_spaces.h"
#include "dx_views_import.h"
#include "mt.h"
#include "uo.h"

namespace {

constexpr std::string_view ENTITIES = "ENTITIES";
constexpr int stoppedByUser = 9009;
constexpr int endOfFile = 9003;
enum Space { MODEL_SPACE = 0, PAPER_SPACE = 1, BOTH_SPACES = 2 };

void startCounters(Space space) {
    DxActSpace = space;
    DxPlotCount = DxViewportCount = 1;
}

bool isLoadedInto() {
    UtCString value;
    return UoGetMacVarS("$DxfLoadInto", &value) == 0 && value == "True";
}

/// The section itself as the outermost block: white, in the first line type of the document.
int startInsertStack() {
    const auto& lineTypes = DxDocuments.currentTables().lineTypes;
    return DxBeginInsertStack(7, lineTypes.empty() ? std::string_view() : lineTypes[0].name.view());
}

int drawViews(const Mat44 m) {
    for (const DX_VIEW_TYPE& view : DxDocuments.currentTables().views) {
        if (const int error = DxDrawView(view, m)) return error;
    }
    return 0;
}

/// What stands behind the entities of a space: views, and the viewports of the layouts.
int finishSpace(Space space, const Mat44 m) {
    if (const int error = drawViews(m)) return error;
    return space == MODEL_SPACE && DxReadSpace == BOTH_SPACES ? DxFinishModelSpace(m) : 0;
}

/// Runs through the entities once.
int walkSection(int message, bool measuring, const Mat44 m) {
    DxCheckPass = measuring ? 1 : 0;
    DxDisplay(DxMsg(message));
    DxResetPercent();
    int error = DxDrawCAD("ENDSEC", m);
    for (int n = 1; !error && DxSectionPlace(ENTITIES, n) >= 0; ++n) {
        error = DxReadSeek(DxSectionPlace(ENTITIES, n));
        if (!error) error = DxDrawCAD("ENDSEC", m);
    }
    return error;
}

/// Back to the section's file and place: the pass may have been stopped within the blocks of another.
void leaveBlocks(DX_SAVE& start) {
    DxRestoreActPos(&start);
    DxPolylineOpen = 0;
}

/// True when the extents so far will do: measuring was stopped for its length, not by the user. A file that
/// is cut shows what it has; the drawing pass tells of the cut.
bool goesOn(int error, DX_SAVE& start) {
    const bool stoppedForLength = error == stoppedByUser && DxPassIsLong;
    if (!stoppedForLength && error != endOfFile) return false;
    leaveBlocks(start);
    return true;
}

int measure(Space space, const Mat44 m, DX_SAVE& start) {
    DxCheckPass = 1;
    if (!DxIsExtentsUnInizialized()) return 0;
    int error = walkSection(5858, true, m);
    if (goesOn(error, start)) error = 0;
    if (!error) error = finishSpace(space, m);
    startCounters(space);
    return error;
}

/// Goes on to a section behind the entities; a file that ends there is complete.
int readSectionBehind(std::string_view name, int (*read)()) {
    const std::int32_t place = DxSectionPlace(name, 0);
    if (place < 0 && !DxSectionPlaces.empty()) return 0;
    int error = place < 0 ? DxReadUntil(0, "SECTION") : DxReadSeek(place);
    if (!error) error = DxIgnoreSections();
    if (!error) error = read();
    return error == endOfFile ? 0 : error;
}

int readSectionsBehind() {
    constexpr int firstVersionWithAcds = 1027;
    const DxfDocument& document = DxDocuments.requireCurrent();
    if (!document.objectsRead.Get()) {
        if (const int error = readSectionBehind("OBJECTS", DxReadObjectsSection)) return error;
    }
    const bool takesSolids = DxModus == 3 || DxFlatSolids;
    if (DxFileVersion < firstVersionWithAcds || !takesSolids || document.acdsRead.Get()) return 0;
    return readSectionBehind("ACDSDATA", DxReadAcdsSection);
}

/// Ends a drawing pass, whatever its outcome was. Gives that outcome, or the first error of the ending.
int endPass(int error) {
    const int flushed = DxElemQueuePat < 0 ? 0 : DxCiElemDrawPat();
    if (!error) error = flushed;
    if (DxModus == 3) DxSyncAll3dPat();
    if (error && error != stoppedByUser) return error;
    const int cleared = DxClearPatterns();
    if (error || cleared) return error ? error : cleared;
    return DxDrawDefinitions();
}

int drawPass(Space space, const Mat44 m, DX_SAVE& start) {
    int error = DxfSetScale(isLoadedInto() ? 0 : 1);
    if (error) return error;
    if (space == MODEL_SPACE) {
        DxModelShift = {DxShiftX, DxShiftY};
        if (DxKeepEntities || DxKeepBlocks) UoOriginFrame(DxShiftX, DxShiftY);
    }
    if ((error = DxRestoreActPos(&start))) return error;
    error = walkSection(5712, false, m);
    DxCountEntities = 0;
    if (!error) error = readSectionsBehind();
    if (!error) error = finishSpace(space, m);
    return endPass(error);
}

/// The base matrix of a space. A paper space has its own user coordinate system.
void baseMatrix(Space space, const Mat44 model, Mat44 m) {
    if (space == PAPER_SPACE && DxUseUcs) {
        DxHeaderUcsToMat(DxHdrPaperUcsOrg, DxHdrPaperUcsXDir, DxHdrPaperUcsYDir, m);
    } else {
        Mt44Copy(model, m);
    }
}

/// Measures and draws one space, from the section's first entity on.
int readSpace(Space space, const Mat44 model, DX_SAVE& start) {
    startCounters(space);
    if (const int error = DxSetExtMinMaxIns(nullptr)) return error;
    if (DxReadSpace == BOTH_SPACES) {
        if (const int error = DxCiSwitchToReadSpace()) return error;
    }
    if (const int error = DxLayerToPattern ? DxCreatePatterns(0) : DxNewPat(0)) return error;
    Mat44 m;
    baseMatrix(space, model, m);
    if (const int error = measure(space, m, start)) {
        if (error == stoppedByUser) DxClearPatterns();
        return error;
    }
    return drawPass(space, m, start);
}

} // namespace

int DxReadEntitySection(const Mat44 m) {
    if (const int error = startInsertStack()) return error;
    if (DxReadSpace == BOTH_SPACES) DxViews = 1;
    bool found = false;
    if (const int error = DxEnterSection("ENTITIES", found, "ENTITY"); error || !found) return error;
    DX_SAVE start;
    DxSaveActPos(&start);
    DxCountEntities = 1;
    if (DxReadSpace == MODEL_SPACE || DxReadSpace == BOTH_SPACES) {
        if (const int error = readSpace(MODEL_SPACE, m, start)) return error;
    }
    if (DxReadSpace == PAPER_SPACE || DxReadSpace == BOTH_SPACES) {
        if (DxReadSpace == BOTH_SPACES) {
            if (const int error = DxRestoreActPos(&start)) return error;
        }
        return readSpace(PAPER_SPACE, m, start);
    }
    return 0;
}

int DxClearPatterns() {
    // What waited for later data comes ahead of the patterns: what it draws must count.
    if (!DxCiDrawPointClouds()) DxAcisDrawQueue();
    int error = DxDimChainDraw();
    if (!error) error = DxImageQueueDraw();
    for (std::size_t i = 0; !error && i < DxPatTable.size(); ++i) {
        int number = DxPatTable[i].number;
        if (!DxPatTable[i].elements)
            error = Dxovpat(17, &number);
        else if (!DxOpenDefinition)
            error = DxImportedObjects.add(DsObListGetOb(number));
    }
    if (!error) error = DxPlacedTell();
    DxPlacedInserts.clear();
    DxPatTable.free();
    DxActPatIndex = DxActLevel.attributePat = -1;
    for (auto& [name, document] : DxDocuments.byName)
        for (DX_LAYER_TYPE& layer : document->tables.layers) layer.patIndex = layer.hiddenPatIndex = -1;
    DxDimChainFree();
    DxImageQueueFree();
    return error;
}

void DxSyncAll3dPat() {
    double saved = 0;
    Dxov3dgenepsi(DxScale * 1000, &saved);
    for (const DX_PAT_ENTRY& pattern : DxPatTable)
        if (pattern.elements && pattern.faces3d) Dxov3dJoinFaces(pattern.number);
    Dxov3dgenepsi(saved, nullptr);
}
