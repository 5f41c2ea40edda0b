// Running values of the entity import.
#pragma once

#include "dx_fixed.h"
#include "dx_report.h"
#include "rpt.h"

#include <cstddef>
#include <cstdint>

struct _ObObject; // NOLINT: the host's name
struct DxEntityKind;

/// Extents that aren't known have all of min at the first and all of max at the second value.
inline constexpr double DX_UNKNOWN_MIN = 2147483647.0;
inline constexpr double DX_UNKNOWN_MAX = -2147483648.0;

/// Entities that belong to the one that is read, such as vertices, and where they are counted.
struct DX_ENTITY_PARTS {
    DxEntityTally* tally;
    long count;
};

/// One level of INSERT expansion; entry 0 is the section itself.
struct DX_INSERT_LEVEL {
    DX_NAME blockName;
    DX_NAME lineType;
    int color;
};

extern RPT3 DxExtMin, DxExtMax;                ///< extents of the active space
extern RPT3 DxInsBase;                         ///< insertion base of the active space
extern RPT DxModelShift;                       ///< drawing shift of model space, once it is drawn
extern RPT3 DxLastPoint;                       ///< last point drawn, world coordinates ahead of the shift
extern int DxBlockLevel;                       ///< number of INSERTs being expanded
extern DxTable<DX_INSERT_LEVEL> DxInsertStack; ///< entry n belongs to block level n
extern double DxBlockScaleX, DxBlockScaleY, DxBlockScaleZ; ///< product of the INSERT scales
/// 1 while circles stay round under the INSERTs around an entity. The product of their scales doesn't tell:
/// between two uneven ones there may be a rotation.
extern int DxBlockIsEven;
extern double DxBlockRotation;           ///< sum of the INSERT rotations, degrees
extern int DxPlotCount, DxViewportCount; ///< running numbers of layouts and viewports
extern int DxPolylineOpen;               ///< 1 while a polyline's vertices are drawn
extern int DxViewportAbortCount;         ///< the same for a walk that looks at viewports alone
extern int DxAbortCount;                 ///< entities since the host was last asked whether to stop
extern long DxEntitiesLeft; ///< entities until a walk that would never end is stopped, 0: no such walk
extern int DxSplineApprox;  ///< &DxfSplineApprox as the section's walk found it, -1: none
extern int DxEntityDrawn;   ///< set by DxStartDrawing, cleared ahead of each counted entity
extern DxTable<_ObObject*> DxImportedObjects; ///< patterns that the import made, for the host's memory

// ---- entity kinds, set once by DxSetEntityKinds ------------------------------------------------------
extern const DxEntityKind* DxKinds;   ///< sorted by name
extern std::size_t DxKindCount;       ///< at most 255
extern std::uint8_t DxKindSlots[256]; ///< hash of a name → index + 1, 0 empty; collisions go to the next
extern DxTable<DxEntityTally> DxKindTally; ///< counts of the kinds, by index

// ---- report ------------------------------------------------------------------------------------------
extern DX_ENTITY_PARTS DxEntityParts[4]; ///< of the entity of the section that is read
extern int DxEntityPartCount;            ///< entries in use
extern int DxCountEntities;              ///< 1 in the first drawing pass of a file: entities met are counted
extern DxImportReport DxReport;          ///< without the kinds of DxKinds, which DxKindTally counts

/// Start values of all of the above but the kinds.
void DxResetImportState();
