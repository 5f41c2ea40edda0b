// Patterns: control, the table of those that an import made, attributes.
#include "../config/config_state.h"
#include "../import/import_state.h"
#include "../session/dx_documents.h"
#include "../session/session_state.h"
#include "dx_context.h"
#include "dx_host.h"
#include "dx_host_origin.h"

#include "ds.h"
#include "mt.h"
#include "ov.h"
#include "pattern.h"
#include "uo.h"

#include <algorithm>

static bool keepsHeader(int patNo) {
    UtCString name;
    return UoGetSingleAttr(patNo, "#M", &name) == 0 && name == UtCString(DX_HEADER_PATTERN);
}

static bool isPassedOver(int code, int patNo) {
    const bool isOfWalk = (code == 24 || code == 145) && DxModus == 2 && DxExportVisibleOnly;
    return isOfWalk && !DxCiPatIsVisible2d(patNo) && (!DxLayerStates || keepsHeader(patNo));
}

int Dxovpat(int code, int* patNo) {
    while (true) {
        int effect = code;
        const int result = ovpat(&effect, patNo);
        if (result || !isPassedOver(effect, *patNo)) return result;
    }
}

int DxHidePat() {
    DxPatTable[static_cast<std::size_t>(DxActPatIndex)].isHidden = 1;
    return UoPatSetVisible(DxActPat, false);
}

int DxNewPat(int /*unused*/) {
    int number = 0;
    if (const int error = Dxovpat(211, &number)) return error;
    if (const int error = DxPatTable.add({number, 0, 0, 0, 0})) return error;
    DxActPatIndex = static_cast<int>(DxPatTable.size()) - 1;
    DxActPat = number;
    return DxActHidden ? DxHidePat() : 0;
}

int DxNewPatCopyAllAttr(int unused) {
    const int old = DxActPat;
    const bool isHidden = DxActPatIndex >= 0 && DxPatTable[static_cast<std::size_t>(DxActPatIndex)].isHidden;
    int error = DxNewPat(unused);
    if (!error) error = UoCopyAllAttrs(old, DxActPat);
    return !error && isHidden ? DxHidePat() : error;
}

/// Gives the layers of pattern `from` pattern `to`. Entities of an external reference may stand on layers
/// that a document around it rules over, so these are looked through as well.
static void moveLayers(int from, int to) {
    const auto move = [=](DxTables& tables) {
        for (DX_LAYER_TYPE& layer : tables.layers)
            for (int* index : {&layer.patIndex, &layer.hiddenPatIndex})
                if (*index == from) *index = to;
    };
    move(DxDocuments.currentTables());
    const DxfDocument* const current = DxDocuments.current_;
    for (DxfDocument* outer = current ? current->parent.Get() : nullptr; outer; outer = outer->parent.Get())
        move(outer->tables);
}

/// The active pattern is full: goes on in a new one, at the point where the figure has got to.
static int continueInNewPattern(int n) {
    const int oldIndex = DxActPatIndex;
    if (oldIndex < 0) {
        if (const int error = DxNewPat(0)) return error;
        DxPatTable[static_cast<std::size_t>(DxActPatIndex)].elements = n;
        return 0;
    }
    if (const int error = DxNewPatCopyAllAttr(0)) return error;
    DxPatTable[static_cast<std::size_t>(oldIndex)].continuedBy = DxActPatIndex;
    const int moved = DxCiElemAddElem(2, 0, 0, DxLastOutX, DxLastOutY, 0);
    moveLayers(oldIndex, DxActPatIndex);
    DxPatTable[static_cast<std::size_t>(DxActPatIndex)].elements += n;
    DxOriginFollow(DxPatTable[static_cast<std::size_t>(oldIndex)].number);
    return moved;
}

int DxLatestPat(int index) {
    if (index < 0) return index;
    while (const int next = DxPatTable[static_cast<std::size_t>(index)].continuedBy) index = next;
    return index;
}

int DxReturnToPat(int index, int number) {
    const int before = DxActPat;
    DxActPatIndex = DxLatestPat(index);
    DxActPat = DxActPatIndex == index ? number : DxPatTable[static_cast<std::size_t>(DxActPatIndex)].number;
    return DxActPat && DxActPat != before ? Dxovpat(23, &DxActPat) : 0;
}

int DxNewElement(int n) {
    if (DxPolyFillActive || DxHatchActive) return 0;
    if (DxActPatIndex >= 0) {
        DX_PAT_ENTRY& active = DxPatTable[static_cast<std::size_t>(DxActPatIndex)];
        if (static_cast<long long>(active.elements) + n <= DxMaxElements) {
            active.elements += n;
            return 0;
        }
    }
    return continueInNewPattern(n);
}

int DxCiPatIsVisible2d(int patNo) {
    DsCsr cursor;
    // A pattern that can't be asked is not left out.
    return DsCursorFromPatNo(patNo, &cursor) != 0 || DsVisTest2d(&cursor) ? 1 : 0;
}

int DxCiPatDelElems(int patNo) {
    const DxTempContext context;
    if (context.result()) return context.result();
    DsCsr cursor;
    const int error = DsCursorFromPatNo(patNo, &cursor);
    return error ? error : CiPat(context.id()).DelElems(cursor);
}

int DxCiPatChgWork(int patNo, const RPT3& a, const RPT3& b, const RPT3& c) {
    DsCsr cursor;
    if (const int error = DsCursorFromPatNo(patNo, &cursor)) return error;
    int workId = 0;
    if (const int error = CiWork(DxCiContextId).Add(&workId, a, b, c)) return error;
    return CiPat(DxCiContextId).ChgWork(cursor, workId);
}

int DxCiCheckPatsWork() {
    if (DxModus == 2) return 1;
    const DxTempContext context;
    CiPat patterns(context.id());
    DsCsr cursor;
    int first = 0;
    if (context.result() || patterns.First(cursor) || patterns.GetWork(cursor, &first)) return 1;
    while (patterns.Next(cursor) == 0) {
        int workId = 0;
        if (patterns.GetWork(cursor, &workId)) return 1;
        if (workId != first) return 0;
    }
    return 1;
}

int DxGetPatMatrix(int patNo, Mat32 m, bool inverted) {
    int code = 20;
    double placement[6] = {1, 0, 0, 1, 0, 0};
    if (const int error = ovpatmatrix(&code, &patNo, placement)) return error;
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 2; ++column) m[row][column] = placement[row * 2 + column];
    if (!inverted) return 0;
    Mat32 inverse;
    if (const int error = MtInvertMat(m, inverse)) return error;
    std::copy(&inverse[0][0], &inverse[0][0] + 6, &m[0][0]);
    return 0;
}

// ---- attributes ------------------------------------------------------------------------------------

int DxCiGetAttrColorPens(int patNo, int* pen, int* fill) {
    *pen = *fill = -1;
    const _ObObject* const object = DsObListGetOb(patNo);
    if (!object) return 1005;
    const DxTempContext context;
    if (context.result()) return context.result();
    return CiContext::GetAttrColPens(context.id(), object, pen, fill);
}

static int setDeclaredAttr(const DsCsr& cursor, const UtCString& name, const UtCString& label, int length,
                           const UtCString& value) {
    if (const int error = CiContext::DefParamAttrLong(DxCiContextId, name, label, length)) return error;
    return DsAttrSetSingle(&cursor, name, value);
}

int DxCiSetAttrSingle(int patNo, const UtCString& name, const UtCString& value, bool checked) {
    DsCsr cursor;
    if (const int error = DsCursorFromPatNo(patNo, &cursor)) return error;
    if (checked) return DsAttrSetSingleCheckFree(&cursor, name, value, 1);
    if (const int error = setDeclaredAttr(cursor, DxAttrClass, "DXF", 300, "")) return error;
    return setDeclaredAttr(cursor, DxAttrPrefix + name, name, 2000, value);
}
