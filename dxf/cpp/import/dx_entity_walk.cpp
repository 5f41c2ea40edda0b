#include "dx_entity_walk.h"

#include "../session/dx_reader.h"
#include "import_state.h"
#include "uo.h"

#include <iterator>

namespace {

constexpr int entitiesBetweenAbortQuestions = 100;
constexpr std::size_t unknownNamesKept = 1000;

std::uint8_t hashOf(std::string_view name) {
    std::uint32_t hash = 2166136261u;
    for (const char c : name) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619u;
    return static_cast<std::uint8_t>(hash ^ (hash >> 8) ^ (hash >> 16));
}

/// Where an entity of the section is counted; null inside blocks and while measuring.
DxEntityTally* tallyOf(const DxEntityKind* kind, std::string_view name) {
    if (DxCheckPass || DxBlockLevel > 0) return nullptr;
    if (kind) return &DxKindTally[static_cast<std::size_t>(kind - DxKinds)];
    auto& others = DxReport.entities;
    if (const auto known = others.find(name); known != others.end()) return &known->second;
    return &others[others.size() < unknownNamesKept ? std::string(name) : std::string("…")];
}

/// Runs a kind and notes what became of the entity and its parts. Entities inside blocks go to the credit of
/// the INSERT that stands in the section.
int drawEntity(const DxEntityKind& kind, const DxEntityContext& context, DxEntityTally* tally) {
    if (!tally) return kind.run(context);
    DxEntityDrawn = 0;
    DxEntityPartCount = 0;
    const int error = kind.run(context);
    if (!DxEntityDrawn) return error;
    ++tally->drawn;
    for (int i = 0; i < DxEntityPartCount; ++i) DxEntityParts[i].tally->drawn += DxEntityParts[i].count;
    return error;
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

/// One entity, with the reader behind its group 0. What isn't read here is passed over by the walk.
int handleEntity(std::string_view name, const DxEntityContext& context) {
    const DxEntityKind* kind = DxFindEntityKind(name);
    DxEntityTally* tally = tallyOf(kind, name);
    if (tally && DxCountEntities) ++tally->read;
    if (kind && kind->isRead()) {
        if (const int error = drawEntity(*kind, context, tally)) return error;
    } else if (name == "REGION" && DxModus == 2 && !DxCheckPass && (DxCountEntities || DxBlockLevel > 0)) {
        ++DxRegionCount;
    }
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

void DxCountPart(std::string_view name) {
    DxEntityTally* const tally = tallyOf(DxFindEntityKind(name), name);
    if (!tally) return;
    if (DxCountEntities) ++tally->read;
    int i = 0;
    while (i < DxEntityPartCount && DxEntityParts[i].tally != tally) ++i;
    if (i == static_cast<int>(std::size(DxEntityParts))) return;
    if (i == DxEntityPartCount) DxEntityParts[DxEntityPartCount++] = {tally, 0};
    ++DxEntityParts[i].count;
}

bool DxEndsEntities(std::string_view name, std::string_view end) {
    return name == end || (end == "ENDBLK" && (name == "ENDSEC" || name == "BLOCK" || name == "EOF"));
}

int DxDrawCAD(const char* end, const Mat44 m) {
    const DxEntityContext context = contextOf(m);
    const std::string_view endName(end);
    const bool showPercent = DxShowsPercent();
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
        if (!kind || (!kind->isRead() && pair.text != "REGION")) continue; // regions are counted at each walk
        auto entity = kind->store ? kind->store() : nullptr;
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
