// The walk through a run of entities, in the section as well as inside a block.
#pragma once

#include "../session/session_state.h"
#include "dx_types.h"

#include <span>
#include <string_view>
#include <type_traits>

/// What the walk hands to an entity kind.
struct DxEntityContext {
    const double (*matrix)[4]; ///< current matrix, row vectors
    int approx;                ///< &DxfSplineApprox, -1 when it doesn't exist
};

/// A kind of entity. `run` reads and draws one: it is entered behind the pair 0 / name, leaves the reader so
/// that the next pair is a group 0, and owns what it reads. 0 or an error number. Null for a kind that is
/// passed over by name.
struct DxEntityKind {
    std::string_view name;
    int (*run)(const DxEntityContext& context);
};

/// A stage of a kind as a column of the table of kinds.
template <auto Function>
struct DxStage {};
template <auto Function>
inline constexpr DxStage<Function> dxStage{};
/// For a kind that has no 3D stage.
inline constexpr DxStage<nullptr> dxNoStage{};

/// The record of a read stage, `int read(Record*)`.
template <class Record>
Record dxRecordOf(int (*)(Record*));

/// Runs a draw stage: `int draw(Record*, const Mat44)`, or `int draw(Record*, const DxEntityContext&)` if it
/// wants to know more than the matrix.
template <auto Draw, class Record>
int dxRunStage(Record& record, const DxEntityContext& context) {
    if constexpr (std::is_invocable_v<decltype(Draw), Record*, const DxEntityContext&>) {
        return Draw(&record, context);
    } else {
        return Draw(&record, context.matrix);
    }
}

template <auto Read, auto Draw, auto Draw3d>
int dxRunKind(const DxEntityContext& context) {
    decltype(dxRecordOf(Read)) record;
    if (const int error = Read(&record)) return error;
    if (const int error = dxRunStage<Draw>(record, context)) return error;
    if constexpr (!std::is_null_pointer_v<decltype(Draw3d)>) {
        if (DxModus == 3) return dxRunStage<Draw3d>(record, context);
    }
    return 0;
}

/// A row of the table of kinds: the name and the stages.
template <auto Read, auto Draw, auto Draw3d>
constexpr DxEntityKind dxKind(std::string_view name, DxStage<Read> /*read*/, DxStage<Draw> /*draw*/,
                              DxStage<Draw3d> /*draw3d*/) {
    return {name, &dxRunKind<Read, Draw, Draw3d>};
}
/// A row for a kind that is passed over by name.
constexpr DxEntityKind dxSkippedKind(std::string_view name) {
    return {name, nullptr};
}

/// The kinds that DxDrawCAD knows, sorted by name, at most 255. The table must outlive all walks.
void DxSetEntityKinds(std::span<const DxEntityKind> kinds);
/// The kind of that name, null for anything else.
const DxEntityKind* DxFindEntityKind(std::string_view name);

/// A reader calls this behind the group 0 of an entity that it reads as part of its own, such as a vertex:
/// the report counts it too, as drawn if the whole is.
void DxCountPart(std::string_view name);

/// Reads and draws entities until a group 0 equal to `end` ("ENDSEC" or "ENDBLK"). 0, an error of a reader or
/// draw function, or 9009 when the user stopped.
int DxDrawCAD(const char* end, const Mat44 m);
