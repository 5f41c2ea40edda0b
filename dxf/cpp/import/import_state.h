// Running values of the entity import.
#pragma once

#include "account_state.h"
#include "dx_fixed.h"
#include "dx_report.h"
#include "rpt.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

struct _ObObject; // NOLINT: the host's name
struct DxEntityKind;
struct DX_BLOCK_TYPE;

/// Extents that aren't known have all of min at the first and all of max at the second value.
inline constexpr double DX_UNKNOWN_MIN = 2147483647.0;
inline constexpr double DX_UNKNOWN_MAX = -2147483648.0;

/// Entities that belong to the one that is read, such as vertices, and where they are counted.
struct DX_ENTITY_PARTS {
    DxEntityTally* tally;
    std::string_view name;
    long count;
};

/// Product of the placements of the INSERTs around an entity.
struct DX_BLOCK_PLACEMENT {
    double scaleX = 1, scaleY = 1, scaleZ = 1;
    double rotation = 0; ///< sum, degrees
    /// 1 while circles stay round in the drawing. The product of the scales doesn't tell: between two uneven
    /// ones there may be a rotation, and the plane may be tilted.
    int isEven = 1;
};

/// A place in the block tree: one level of INSERT expansion. The outermost is the section itself.
struct DX_INSERT_LEVEL {
    int depth = 0;                        ///< number of INSERTs being expanded
    const DX_BLOCK_TYPE* block = nullptr; ///< null in the section
    const DX_BLOCK_TYPE* topBlock = nullptr;
    int color = 0;    ///< ByBlock
    DX_NAME lineType; ///< ByBlock
    /// What layer 0 stands for. Behind a nested INSERT it is the layer of that one.
    DX_NAME layer;
    int space = 0; ///< of the outermost INSERT
    DX_BLOCK_PLACEMENT placement;
    int attributePat = -1;   ///< entry of DxPatTable that the INSERT's attributes go to
    int hasAttributePat = 0; ///< that pattern holds nothing else
    int keepsPattern = 0;    ///< what is drawn stays in the active pattern, whatever its layer
};

extern RPT3 DxExtMin, DxExtMax;    ///< extents of the active space
extern RPT3 DxInsBase;             ///< insertion base of the active space
extern RPT DxModelShift;           ///< drawing shift of model space, once it is drawn
extern RPT3 DxLastPoint;           ///< last point drawn, world coordinates ahead of the shift
extern DX_INSERT_LEVEL DxActLevel; ///< the place of the entities that are read; DxInsertScope sets it
extern DxTable<DX_INSERT_LEVEL> DxInsertStack; ///< entry n is level n as it began, up to the active one

// The parts of DxActLevel by their own names.
inline const int& DxBlockLevel = DxActLevel.depth;
inline const double& DxBlockScaleX = DxActLevel.placement.scaleX;
inline const double& DxBlockScaleY = DxActLevel.placement.scaleY;
inline const double& DxBlockScaleZ = DxActLevel.placement.scaleZ;
inline const double& DxBlockRotation = DxActLevel.placement.rotation;
inline const int& DxBlockIsEven = DxActLevel.placement.isEven;
inline const DX_NAME& DxInsertLayer = DxActLevel.layer;
inline const int& DxInsertSpace = DxActLevel.space;
inline const DX_BLOCK_TYPE* const& DxTopBlock = DxActLevel.topBlock;
inline const int& DxBlockPatIndex = DxActLevel.attributePat;

/// The place outside all blocks, where ByBlock stands for `color` and `lineType`. 0 or the host's error.
int DxBeginInsertStack(int color, std::string_view lineType);

extern int DxPlotCount, DxViewportCount; ///< running numbers of layouts and viewports
extern int DxPolylineOpen;               ///< 1 while a polyline's vertices are drawn
extern int DxViewportAbortCount;         ///< the same for a walk that looks at viewports alone
extern int DxAbortCount;                 ///< entities since the host was last asked whether to stop
extern long DxEntitiesLeft; ///< entities until a walk that would never end is stopped, 0: no such walk
extern int DxPassIsLong;    ///< the walk was stopped for its length, not by the user
extern int DxSplineApprox;  ///< &DxfSplineApprox as the section's walk found it, -1: none
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
