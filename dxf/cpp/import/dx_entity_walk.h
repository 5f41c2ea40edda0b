// The walk through a run of entities, in the section as well as inside a block.
#pragma once

#include "../config/config_state.h"
#include "../session/session_state.h"
#include "dx_types.h"

#include <cstddef>
#include <memory>
#include <span>
#include <string_view>
#include <type_traits>
#include <vector>

/// What the walk hands to an entity kind.
struct DxEntityContext {
    const double (*matrix)[4]; ///< current matrix, row vectors
    int approx;                ///< &DxfSplineApprox, -1 when it doesn't exist
};

/// An entity that was read once and can be drawn any number of times.
class DxStoredEntity {
public:
    DxStoredEntity() = default;
    DxStoredEntity(const DxStoredEntity&) = delete;
    DxStoredEntity& operator=(const DxStoredEntity&) = delete;
    virtual ~DxStoredEntity() = default;
    virtual int draw(const DxEntityContext& context) const = 0;
    virtual std::size_t bytes() const = 0; ///< of memory, about
};

/// A kind of entity. `run` reads and draws one: it is entered behind the pair 0 / name, leaves the reader so
/// that the next pair is a group 0, and owns what it reads. 0 or an error number. Null for a kind that is
/// passed over by name. `store` is entered likewise and only reads; its result is null on an error. Null for
/// a kind that can't be read apart from drawing it.
struct DxEntityKind {
    std::string_view name;
    int (*run)(const DxEntityContext& context);
    std::unique_ptr<DxStoredEntity> (*store)();
    bool onlyInSpace = false; ///< passed over in 2D
    bool isFurther = false;   ///< passed over without MORE_KINDS

    bool isRead() const { return run && !(onlyInSpace && DxModus == 2) && (!isFurther || DxMoreKinds); }
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

/// Whether a draw stage leaves its record as it is.
template <auto Draw, class Record>
constexpr bool dxDrawsConst() {
    if constexpr (std::is_null_pointer_v<decltype(Draw)>) {
        return true;
    } else {
        return std::is_invocable_v<decltype(Draw), const Record*, const DxEntityContext&> ||
               std::is_invocable_v<decltype(Draw), const Record*, const double(*)[4]>;
    }
}

/// Bytes that a record owns elsewhere. A record that isn't plain memory has an overload of its own.
template <class Record>
std::size_t dxBytesBeside(const Record& /*record*/) {
    static_assert(std::is_trivially_copyable_v<Record>, "the record needs an overload of dxBytesBeside");
    return 0;
}

template <class Record, auto Draw, auto Draw3d>
class DxStoredRecord final : public DxStoredEntity {
public:
    Record record;
    int draw(const DxEntityContext& context) const override {
        if (const int error = dxRunStage<Draw>(record, context)) return error;
        if constexpr (!std::is_null_pointer_v<decltype(Draw3d)>) {
            if (DxModus == 3) return dxRunStage<Draw3d>(record, context);
        }
        return 0;
    }
    std::size_t bytes() const override { return sizeof *this + dxBytesBeside(record); }
};

template <auto Read, auto Draw, auto Draw3d>
std::unique_ptr<DxStoredEntity> dxStoreKind() {
    using Record = decltype(dxRecordOf(Read));
    auto stored = std::make_unique<DxStoredRecord<Record, Draw, Draw3d>>();
    if (Read(&stored->record)) return nullptr;
    return stored;
}

/// A row of the table of kinds: the name and the stages. Where all draw stages take the record as const, the
/// entities of blocks that are inserted again and again are read once.
template <auto Read, auto Draw, auto Draw3d>
constexpr DxEntityKind dxKind(std::string_view name, DxStage<Read> /*read*/, DxStage<Draw> /*draw*/,
                              DxStage<Draw3d> /*draw3d*/) {
    using Record = decltype(dxRecordOf(Read));
    if constexpr (dxDrawsConst<Draw, Record>() && dxDrawsConst<Draw3d, Record>()) {
        return {name, &dxRunKind<Read, Draw, Draw3d>, &dxStoreKind<Read, Draw, Draw3d>};
    } else {
        return {name, &dxRunKind<Read, Draw, Draw3d>, nullptr};
    }
}
/// A row for a kind that is passed over by name.
constexpr DxEntityKind dxSkippedKind(std::string_view name) {
    return {name, nullptr, nullptr};
}
/// The row for a kind that is passed over by name in 2D.
constexpr DxEntityKind dxInSpace(DxEntityKind kind) {
    kind.onlyInSpace = true;
    return kind;
}
/// The row for a kind that is passed over by name unless the configuration asks for MORE_KINDS.
constexpr DxEntityKind dxFurther(DxEntityKind kind) {
    kind.isFurther = true;
    return kind;
}
/// The row with other stages for entities that are read once, for a kind whose own share a record.
template <auto Read, auto Draw, auto Draw3d>
constexpr DxEntityKind dxStoredBy(DxEntityKind kind, DxStage<Read> /*read*/, DxStage<Draw> /*draw*/,
                                  DxStage<Draw3d> /*draw3d*/) {
    static_assert(dxDrawsConst<Draw, decltype(dxRecordOf(Read))>());
    kind.store = &dxStoreKind<Read, Draw, Draw3d>;
    return kind;
}

/// The kinds that DxDrawCAD knows, sorted by name, at most 255. The table must outlive all walks.
void DxSetEntityKinds(std::span<const DxEntityKind> kinds);
/// The kind of that name, null for anything else.
const DxEntityKind* DxFindEntityKind(std::string_view name);

/// Whether a name ends a run of entities up to `end`. Blocks don't nest, and a section's end is theirs too.
bool DxEndsEntities(std::string_view name, std::string_view end);

/// Reads and draws entities until a group 0 equal to `end` ("ENDSEC" or "ENDBLK"). A block whose end is
/// missing ends with the section or where the next one begins. 0, an error of a reader or draw function, or
/// 9009 when the user stopped.
int DxDrawCAD(const char* end, const Mat44 m);
/// Asks the host whether to stop; DxPassIsLong tells whether that is for the length of the pass.
bool DxAskForStop();

/// Entities in their order, read once.
struct DxStoredEntities {
    std::vector<std::unique_ptr<DxStoredEntity>> entities;
    std::size_t bytes = 0; ///< of memory, about
};
/// Reads entities until `end`, as DxDrawCAD would, without drawing them. Null when one of them can't be kept,
/// when they take more than `limit` bytes, or on an error, which DxDrawCAD will meet again.
std::shared_ptr<const DxStoredEntities> DxStoreEntities(const char* end, std::size_t limit);
/// Draws them as DxDrawCAD does.
int DxDrawStored(const DxStoredEntities& stored, const Mat44 m);
