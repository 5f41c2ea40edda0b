// Cursors, objects and attributes of the drawing store.
#pragma once

#include "rpt.h"
#include "ut_string.h"

/// What a cursor points at.
enum D_TYPE : int { D_NONE = 0, D_ELEMENT = 2, D_DIMENSION = 7, D_TEXT = 8 };

/// RGB of colour 1 to 255 of the palette that drawing files number by, red in bits 16 to 23 and blue in the
/// lowest; white for any other number.
int DsPaletteRgb(int color);

/// A pattern as an object of the store; opaque to the module.
struct _ObObject; // NOLINT: the host's name

/// The host's position in the drawing store. Plain value; stays valid as long as what it points at.
struct DS_CURSOR_STRUCT {
    int patNo = 0;
    int partNo = 0;
    int elRow = -1;
    int vertNo = 0;
    int type = D_NONE;
};

/// A cursor spelled out by its parts.
class DsDpatCsr {
public:
    void SetPatNo(int n) { at_.patNo = n; }
    void SetPartNo(int n) { at_.partNo = n; }
    void SetElRow(int n) { at_.elRow = n; }
    void SetVertNo(int n) { at_.vertNo = n; }
    void SetDtype(D_TYPE t) { at_.type = t; }
    int GetElRow() const { return at_.elRow; }
    const DS_CURSOR_STRUCT& Get() const { return at_; }

private:
    DS_CURSOR_STRUCT at_;
};

/// A position in the drawing store.
class DsCsr {
public:
    DsCsr() = default;
    explicit DsCsr(_ObObject* object) { PutId(object); }
    DsCsr(DsDpatCsr& parts, int /*unused*/) : at_(parts.Get()) {}
    /// Re-aims the cursor at a pattern.
    void PutId(_ObObject* object);
    DS_CURSOR_STRUCT& Get() { return at_; }
    const DS_CURSOR_STRUCT& Get() const { return at_; }
    friend bool operator==(const DsCsr& a, const DsCsr& b) {
        return a.at_.patNo == b.at_.patNo && a.at_.partNo == b.at_.partNo && a.at_.elRow == b.at_.elRow &&
               a.at_.vertNo == b.at_.vertNo && a.at_.type == b.at_.type;
    }

private:
    DS_CURSOR_STRUCT at_;
};

int DsCursorFromPatNo(int patNo, DsCsr* cursor); ///< 1005 when there is no such pattern.
int DsCursorToPatNo(const DsCsr* cursor);        ///< Pattern number, 0 for an empty cursor.
int DsDpatToCursor(const DsDpatCsr& parts, DsCsr* cursor);
_ObObject* DsObListGetOb(int patNo); ///< Null when there is no such pattern.

/// Clears a flag of the object: 1 changed, 2 shown with its faces unfinished. 1005 for null.
int DsResetFlag(_ObObject* object, int flag);

bool DsVisTest2d(const DsCsr* cursor); ///< Whether the pattern is visible in 2D.

/// Element type (1 to 5) of the element in row `elRow`; 1005 when there is none. The type carries the
/// element's membership: hand it to DsElemTypeIsElemGroup.
int DsElemGetTypeInfo(int patNo, int elRow, int* type);
/// True when an element of that type belongs to a polyline-like figure.
bool DsElemTypeIsElemGroup(int type);

/// Sets an attribute in its declared class (see CiContext::DefParamAttrLong). 0 on success.
int DsAttrSetSingle(const DsCsr* cursor, const UtCString& name, const UtCString& value);
/// As above for any attribute name; with `check` an empty or over-long (255) name is refused.
int DsAttrSetSingleCheckFree(const DsCsr* cursor, const UtCString& name, const UtCString& value, int check);

/// Assembly updating: sets the manager's flag and gives the old one.
int DsAssemblySetMgrUpdateFlag(int flag);
int DsAssemblyUpdateAct();

/// The host's layer manager.
namespace DsLayerApi {
/// Makes a layer known; an existing one of this name takes the new settings. 0 on success.
int AddDXFLayer(const UtCString& name, bool visible, bool locked);
} // namespace DsLayerApi
namespace CcmLayerMgrApi {
int UpdateOnLoad(int flag); ///< 1: the layer table is complete, refresh what shows it.
} // namespace CcmLayerMgrApi

/// The store's state; 8: the drawing is no file of its own.
namespace DsDb {
int Act();
} // namespace DsDb

/// The host's global settings that the module looks at.
struct CC_GLOBAL {
    bool splitHatchPatterns = false; ///< hatches become patterns of their own before an export
};
extern CC_GLOBAL Cc_global; // NOLINT: the host's name

/// Angle of the active coordinate system, radians.
double DsCoordSysActiveAngle();
