// The walk through a run of entities, in the section as well as inside a block.
#pragma once

#include "dx_types.h"

#include <span>
#include <string_view>

/// What the walk hands to an entity kind.
struct DxEntityContext {
    const double (*matrix)[4]; ///< current matrix, row vectors
    int approx;                ///< &DxfSplineApprox, -1 when it doesn't exist
};

/// Counts of one kind, for reports: met by the walk at block level 0 of a drawing pass; drawn; skipped.
struct DxEntityCount {
    long read = 0;
    long drawn = 0;
    long skipped = 0;
};

/// A kind of entity: reads it and draws it. The function is entered behind the pair 0 / name, leaves the
/// reader so that the next pair is a group 0, and owns what it reads. 0 or an error number.
struct DxEntityKind {
    std::string_view name;
    int (*run)(const DxEntityKind& kind, const DxEntityContext& context);
};

/// The kinds that DxDrawCAD knows, sorted by name. Set once by the drivers' floor.
void DxSetEntityKinds(std::span<const DxEntityKind> kinds);

/// Reads and draws entities until a group 0 equal to `end` ("ENDSEC" or "ENDBLK"). 0, an error of a reader or
/// draw function, or 9009 when the user stopped.
int DxDrawCAD(const char* end, const Mat44 m);
