// Named views: sheets with a format, a unit and a scale, and detail views of the model that are put on them.
//
// The default view comes first and shows the model; its format, unit and scale are those of the drawing.
// While a sheet is shown, new patterns belong to it, and ovform and ovconv speak of its format and scale.
#pragma once

#include "ds.h"
#include "ge.h"
#include "ut_string.h"

class CiView {
public:
    explicit CiView(int contextId) : contextId_(contextId) {}
    UtCString GetDfltViewName(int mode = 0); ///< Empty when the drawing has no view.
    /// 1005 when there is no view of this name.
    int GetFormatUnitScale(const UtCString& name, GeFormat* format, GeUnit* unit, GeScale* scale);
    /// A new view: kind 0 a sheet, with `content` 0; 1 a detail in space or 2 a flat one, with `content` 7,
    /// that shows the model within the pattern `outline`, seen on the active work plane. `factor` is its
    /// enlargement against the default view, `display` 0 lines, 1 hidden lines removed, 2 shaded. 3011 for an
    /// empty name, one that is taken, or a format, unit or scale that isn't one; 1005 for a detail without an
    /// outline.
    int Create(const UtCString& name, int kind, int content, const GeFormat& format, const GeUnit& unit,
               const GeScale& scale, double factor, int display, _ObObject* outline, _ObObject* parent);
    int GetOrCreate(const UtCString& name); ///< A sheet as the default view is, unless the name is known.
    int Show(const UtCString& name);        ///< 1005 when there is no such view, as in all that follow.
    int ChangeName(const UtCString& from, const UtCString& to); ///< 3011 when `to` is empty or taken.
    int ChangeFormat(const UtCString& name, const GeFormat& format);
    int ChangeScale(const UtCString& name, const GeScale& scale);
    /// The sheet has a size of its own, in millimetres; 0 by 0: that of its format.
    int ChangePaper(const UtCString& name, double width, double height);
    int ClipDetail(const UtCString& name, int mode); ///< Nothing outside its outline shows any more.
    /// Puts a detail on the sheet that is shown, the middle of its outline at `place`, at the scale of the
    /// view; `*object` is the detail there. 3011 when no sheet is shown or the view is no detail.
    int Insert(const UtCString& name, const GeRpt3& place, _ObObject** object);
    /// Enlarges an inserted detail about a point. 3011 for a factor that isn't positive and finite.
    int Scale(_ObObject* object, const GeRpt3& about, double factor);
    int ExportToTempView(int phase, UtCString* name); ///< 1 enters, 0 leaves the view made for an export.

private:
    int contextId_;
};

_ObObject* DsCursorGetLastPatId(const DsCsr& cursor); ///< The pattern that the cursor stands on.

int DsGetActiveWorkspace();                     ///< Work plane that is active, 0: the model's own.
int DsSetActiveWorkspace(int workId);           ///< 1005 when there is no such plane.
int GvmSetCameraBaseToWs(int workId, int mode); ///< Looks at the plane from above.
/// What a view shows: patterns of the layers named in `filter`, layer="A" | layer="B"; empty: all.
int GvmSetSelection(const UtCString& viewName, const UtCString& filter, int mode);

double UtGetEpsi(); ///< The host's own tolerance of lengths, beside that of GeGetEpsi.
void UtSetEpsi(double tolerance);
