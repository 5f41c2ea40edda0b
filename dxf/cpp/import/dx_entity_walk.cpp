#include "dx_entity_walk.h"

#include "../session/dx_reader.h"
#include "../solid/solid_state.h"
#include "dx_account.h"
#include "dx_entity_origin.h"
#include "import_state.h"
#include "uo.h"

namespace {

constexpr int entitiesBetweenAbortQuestions = 100;

std::uint8_t hashOf(std::string_view name) {
    std::uint32_t hash = 2166136261u;
    for (const char c : name) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619u;
    return static_cast<std::uint8_t>(hash ^ (hash >> 8) ^ (hash >> 16));
}

bool isStopped() {
    if (DxEntitiesLeft > 0 && --DxEntitiesLeft == 0) {
        DxPassIsLong = 1;
        return true;
    }
    if (++DxAbortCount < entitiesBetweenAbortQuestions) return false;
    DxAbortCount = 0;
    return DxAskForStop();
}

DxEntityContext contextOf(const Mat44 m) {
    if (DxBlockLevel == 0) {
        DxSplineApprox = -1;
        UoGetMacVarI("&DxfSplineApprox", &DxSplineApprox);
    }
    return {m, DxSplineApprox};
}

bool isRead(const DxEntityKind* kind) {
    return kind && (kind->isRead() || (kind->onlyInSpace && DxFlatSolids));
}

int runCounted(const DxEntityKind* kind, const DxEntityContext& context, const DxCounted& counted) {
    DxEntityAccount account(counted);
    if (!isRead(kind)) {
        account.settleUnread();
        return 0;
    }
    const int error = kind->run(context);
    account.settle(error);
    return error;
}

/// One entity, with the reader behind its group 0. What isn't read here is passed over by the walk.
int handleEntity(std::string_view name, const DxEntityContext& context) {
    const DxEntityKind* kind = DxFindEntityKind(name);
    const DxCounted counted = DxCountedAs(kind, name);
    const DxEntityOrigin origin(name, context.matrix);
    if (const int error = counted.tally  ? runCounted(kind, context, counted)
                          : isRead(kind) ? kind->run(context)
                                         : 0)
        return error;
    if (const int error = origin.keep()) return error;
    DxActHidden = DxActLevel.isHidden; // what stands behind it is another entity's affair
    const bool isRegion = !isRead(kind) && name == "REGION";
    if (isRegion && DxModus == 2 && !DxCheckPass && (DxCountEntities || DxBlockLevel > 0)) ++DxRegionCount;
    return isStopped() ? 9009 : 0;
}

} // namespace

bool DxAskForStop() {
    constexpr int withinLoop = 16, enoughOfThisPass = 2;
    const int answer = UoCheckAbort(withinLoop);
    DxPassIsLong = answer == enoughOfThisPass;
    return answer != 0;
}

void DxSetEntityKinds(std::span<const DxEntityKind> kinds) {
    DxKinds = kinds.data();
    DxKindCount = kinds.size();
    for (std::uint8_t& slot : DxKindSlots) slot = 0;
    DxKindTally.clear();
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        std::uint8_t slot = hashOf(kinds[i].name);
        while (DxKindSlots[slot]) ++slot;
        DxKindSlots[slot] = static_cast<std::uint8_t>(i + 1);
        DxKindTally.add({});
    }
}

const DxEntityKind* DxFindEntityKind(std::string_view name) {
    for (std::uint8_t slot = hashOf(name); DxKindSlots[slot]; ++slot) {
        const DxEntityKind& kind = DxKinds[DxKindSlots[slot] - 1];
        if (kind.name == name) return &kind;
    }
    return nullptr;
}

bool DxEndsEntities(std::string_view name, std::string_view end) {
    return name == end || (end == "ENDBLK" && (name == "ENDSEC" || name == "BLOCK" || name == "EOF"));
}

int DxDrawCAD(const char* end, const Mat44 m) {
    const DxEntityContext context = contextOf(m);
    const std::string_view endName(end);
    const bool showPercent = DxShowsPercent();
    const DxBlockAccount account;
    DxPair pair;
    for (;;) {
        if (const int error = DxReadPair(pair, 161, showPercent)) return error;
        if (pair.code != 0) continue;
        if (DxEndsEntities(pair.text, endName)) return 0;
        if (const int error = handleEntity(pair.text, context)) return error;
    }
}

std::shared_ptr<const DxStoredEntities> DxStoreEntities(const char* end, std::size_t limit) {
    const std::string_view endName(end);
    auto stored = std::make_shared<DxStoredEntities>();
    DxPair pair;
    for (;;) {
        if (DxReadPair(pair)) return nullptr;
        if (pair.code != 0) continue;
        if (DxEndsEntities(pair.text, endName)) return stored;
        const DxEntityKind* kind = DxFindEntityKind(pair.text);
        if (!kind || (!isRead(kind) && pair.text != "REGION")) continue; // regions are counted at each walk
        auto entity = isRead(kind) && kind->store ? kind->store() : nullptr;
        if (!entity) return nullptr;
        stored->bytes += entity->bytes();
        if (stored->bytes > limit) return nullptr;
        stored->entities.push_back(std::move(entity));
    }
}

int DxDrawStored(const DxStoredEntities& stored, const Mat44 m) {
    const DxEntityContext context = contextOf(m);
    for (const auto& entity : stored.entities) {
        if (const int error = entity->draw(context)) return error;
        if (isStopped()) return 9009;
    }
    return 0;
}
