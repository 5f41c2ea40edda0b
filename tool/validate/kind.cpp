#include "kind.h"

#include <unordered_map>

namespace validate {

namespace {

using enum Version;

/// Groups that all entities share, behind the marker AcDbEntity.
constexpr Group kCommon[] = {
    opt(67).range(0, 1),
    opt(410).from(R2000),
    expect(8).of(Names::Layer),
    opt(6).of(Names::LineType),
    opt(347).from(R2007).to("MATERIAL"),
    opt(62).colour(),
    opt(420).from(R2004),
    opt(430).from(R2004),
    opt(48).from(R13).positive(),
    opt(440).from(R2004),
    opt(60).from(R13).range(0, 1),
    opt(92).from(R13).upTo(R2007),
    opt(160).from(R2010),
    opt(310).from(R13).many(),
    opt(348).from(R2007).to("VISUALSTYLE"),
    opt(370).from(R2000).weight(),
    opt(284).from(R2007).range(0, 3),
    opt(380).from(R2000),
    opt(390).from(R2000).to("ACDBPLACEHOLDER"),
    opt(38).upTo(R12),
    opt(39).upTo(R12),
    opt(66).upTo(R12),
};
constexpr Part kCommonPart{"AcDbEntity", kCommon};

bool isEntity(const Kind& kind) {
    return kind.home == Home::Entity || kind.home == Home::Member || kind.home == Home::BlockMark;
}

struct KindTable {
    std::vector<KindRules> rules;
    std::unordered_map<std::string_view, size_t> first;

    KindTable() {
        for (const auto kinds : {entityKinds(), annotationKinds(), bodyKinds(), tableKinds(), objectKinds()})
            for (const Kind& kind : kinds) {
                first.try_emplace(kind.name, rules.size());
                rules.emplace_back(kind);
            }
    }
};

const KindTable& kindTable() {
    static const KindTable table;
    return table;
}

} // namespace

KindRules::KindRules(const Kind& kind) : kind_(&kind) {
    if (isEntity(kind)) parts_.push_back(kCommonPart);
    parts_.insert(parts_.end(), kind.parts.begin(), kind.parts.end());
    flat_.fill(kNoRow);
    for (size_t part = 0; part < parts_.size(); ++part) {
        firstRow_.push_back(static_cast<uint8_t>(groups_.size()));
        Index& index = index_.emplace_back();
        index.fill(kNoRow);
        for (const Group& group : parts_[part].groups) {
            const auto code = static_cast<size_t>(group.code);
            const auto row = static_cast<uint8_t>(groups_.size());
            if (index[code] == kNoRow) index[code] = row;
            // Without markers a code means what it meant in R12, the entity's own meaning in front of the
            // shared one.
            const bool ownOverShared =
                part > 0 && flat_[code] != kNoRow && partOf_[flat_[code]] == 0 && isEntity(kind);
            if (flat_[code] == kNoRow || ownOverShared) flat_[code] = row;
            groups_.push_back(group);
            partOf_.push_back(static_cast<uint8_t>(part));
        }
    }
}

std::span<const KindRules> variantsOf(std::string_view name) {
    const KindTable& table = kindTable();
    const auto found = table.first.find(name);
    if (found == table.first.end()) return {};
    size_t end = found->second;
    while (end < table.rules.size() && table.rules[end].kind().name == name) ++end;
    return {table.rules.data() + found->second, end - found->second};
}

const KindRules* findKind(std::string_view name) {
    const KindTable& table = kindTable();
    const auto found = table.first.find(name);
    return found == table.first.end() ? nullptr : &table.rules[found->second];
}

const KindRules* findVariant(std::string_view name, int64_t flags) {
    const auto variants = variantsOf(name);
    for (const KindRules& rules : variants)
        if ((flags & rules.kind().mask) == rules.kind().bits) return &rules;
    return variants.empty() ? nullptr : &variants.front();
}

bool inList(std::string_view list, std::string_view name) {
    while (!list.empty()) {
        const size_t bar = list.find('|');
        if (list.substr(0, bar) == name) return true;
        if (bar == list.npos) break;
        list.remove_prefix(bar + 1);
    }
    return false;
}

} // namespace validate
