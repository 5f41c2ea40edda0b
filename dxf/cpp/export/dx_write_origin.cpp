#include "dx_write_origin.h"

#include "../config/config_state.h"
#include "../config/dx_layers.h"
#include "../config/dx_names.h"
#include "../session/dx_documents.h"
#include "../session/dx_numbers.h"
#include "../session/session_state.h"
#include "dx_codes.h"
#include "dx_kept_handles.h"
#include "dx_kept_markers.h"
#include "dx_write_entities.h"
#include "export_state.h"

#include <algorithm>
#include <cctype>

namespace {

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](unsigned char x, unsigned char y) { return std::toupper(x) == std::toupper(y); });
}

std::string_view takeLine(std::string_view& text) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    while (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    return line;
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
    return text;
}

bool isText(int code) {
    return (code >= 1 && code <= 9) || code >= 1000;
}

bool hasMarkers(const DX_KEPT_ENTITY& entity) {
    return !entity.value(100).empty();
}

bool targetHasMarkers() {
    return DxMiscCheckVersion(DX_LEVEL_HANDLES);
}

/// Groups that all entities share, ahead of those of the kind.
bool isCommon(int code) {
    return code == 6 || code == 62 || code == 48 || code == 370 || code == 420 || code == 430 || code == 440;
}

/// Groups that speak of the file that the entity came from, or are given anew.
bool isOfSource(int code) {
    return code == 5 || code == 8 || code == 60 || code == 67 || code == 410 || code == 999 ||
           (code >= 320 && code <= 369) || (code >= 390 && code <= 399) || (code >= 310 && code <= 319) ||
           code == 160;
}

/// Whether the target has groups of this code.
bool isKnown(int code) {
    if (code == 370 || code == 48) return targetHasMarkers();
    if (code >= 420 && code <= 479) return DxMiscCheckVersion(DX_LEVEL_TRUE_COLOR);
    return targetHasMarkers() || code < 100 || (code >= 210 && code <= 239) || code >= 1000;
}

bool hasLineType(std::string_view name) {
    static constexpr std::string_view ALWAYS[] = {"", "BYLAYER", "BYBLOCK"};
    const auto is = [&](std::string_view other) { return equalsIgnoringCase(name, other); };
    if (std::any_of(std::begin(ALWAYS), std::end(ALWAYS), is)) return true;
    const auto& lineTypes = DxDocuments.currentTables().lineTypes;
    return std::any_of(lineTypes.begin(), lineTypes.end(),
                       [&](const DX_LTYPE_TYPE& type) { return is(type.name.view()); });
}

bool hasStyle(std::string_view name) {
    const auto& styles = DxDocuments.currentTables().styles;
    return name.empty() || std::any_of(styles.begin(), styles.end(), [&](const DX_STYLE_TYPE& style) {
               return equalsIgnoringCase(name, style.name.view());
           });
}

bool hasDimStyle(std::string_view name) {
    const auto& styles = DxDocuments.currentTables().dimStyles;
    return name.empty() || std::any_of(styles.begin(), styles.end(), [&](const DX_DIM_STYLE& style) {
               return equalsIgnoringCase(name, style.name.view());
           });
}

bool hasNames(const DX_KEPT_ENTITY& entity) {
    const bool isOfText =
        entity.kind == "TEXT" || entity.kind == "MTEXT" || entity.kind == "ATTRIB" || entity.kind == "ATTDEF";
    return hasLineType(entity.value(6)) && (!isOfText || hasStyle(entity.value(7))) &&
           (entity.kind != "DIMENSION" || hasDimStyle(entity.value(3)));
}

bool canWrite(const DX_KEPT_ENTITY& entity, const DX_KEPT_ENTITY* owner) {
    if (!hasNames(entity)) return false;
    return hasMarkers(entity) == targetHasMarkers() || DxMarkersOf(entity, owner).first;
}

/// Passes the pairs of one entity on, without those that are of the source.
class PairFilter {
public:
    bool takes(const DX_KEPT_PAIR& pair) {
        if (pair.code == 102) {
            inGroup_ = pair.value.starts_with("{");
            return false;
        }
        if (inGroup_) return false;
        if (pair.code == 101 && DxWriteVersion > newest) isCut_ = true;
        if (isCut_ || isOfSource(pair.code) || !isKnown(pair.code)) return false;
        if (pair.code == 100) isOwn_ = pair.value != "AcDbEntity";
        if (pair.code == 92 && !isOwn_ && sawMarker_) return false;
        sawMarker_ = sawMarker_ || pair.code == 100;
        return pair.code != 100 || isOwn_;
    }

private:
    static constexpr int newest = 1; ///< embedded objects are known to the newest format alone
    bool inGroup_ = false, isCut_ = false, isOwn_ = false, sawMarker_ = false;
};

int writePair(int code, std::string_view value) {
    if (code == 1001) DxUsedApps.emplace(value);
    if (code == 1005) value = "0"; // handles of the extended data speak of the source
    return code >= 1000 && code <= 1009 ? DxWriteExtendedString(code, value) : DxWriteString(code, value);
}

/// Writes one entity and what belongs to it.
class KeptWriter {
public:
    KeptWriter(const std::vector<DX_KEPT_ENTITY>& entities, const DX_KEPT_CHANGES& changes)
        : entities_(entities), changes_(changes) {}

    int run() {
        const std::uint32_t handle = DxTakeKeptHandle(entities_.front().value(5));
        writeEntity(entities_.front(), nullptr, handle, changes_.owner);
        for (std::size_t i = 1; i < entities_.size(); ++i)
            writeEntity(entities_[i], &entities_.front(), DxTakeKeptHandle(entities_[i].value(5)), handle);
        // The end of the parts may have been read by itself.
        if (entities_.size() > 1 && entities_.back().kind != "SEQEND")
            DxWriteEntityStart("SEQEND", DxActLayer, 0, handle);
        return DxWriteError();
    }

private:
    void writeEntity(const DX_KEPT_ENTITY& entity, const DX_KEPT_ENTITY* whole, std::uint32_t handle,
                     std::uint32_t owner) {
        DxWriteEntityStart(entity.kind, layerOf(entity, whole), handle, owner);
        if (DxWriteInvisible) DxWriteInt(60, 1);
        entity_ = &entity;
        if (hasMarkers(entity) == targetHasMarkers() || !targetHasMarkers())
            writeInOrder(entity);
        else
            writeWithMarkers(entity, DxMarkersOf(entity, whole));
    }

    /// A part on the layer of the whole stays on it.
    std::string layerOf(const DX_KEPT_ENTITY& entity, const DX_KEPT_ENTITY* whole) const {
        const std::string_view own = entity.value(8);
        if (!whole || own == whole->value(8) || own.empty()) return std::string(DxActLayer.view());
        UtCString name(own);
        DxCheckName(name);
        DxAddLayer(name.str());
        return name.str();
    }

    void writeInOrder(const DX_KEPT_ENTITY& entity) {
        PairFilter filter;
        for (std::size_t i = 0; i < entity.pairs.size(); ++i) {
            const DX_KEPT_PAIR& pair = entity.pairs[i];
            if (!filter.takes(pair)) continue;
            write(isOfBoundary(entity, i) ? DX_KEPT_PAIR{pair.code, "0"} : pair);
        }
    }

    /// A hatch no longer knows the entities that bound it: not their number, nor that it follows them.
    static bool isOfBoundary(const DX_KEPT_ENTITY& hatch, std::size_t at) {
        if (hatch.kind != "HATCH") return false;
        const int code = hatch.pairs[at].code;
        const int next = at + 1 < hatch.pairs.size() ? hatch.pairs[at + 1].code : 0;
        return code == 71 || (code == 97 && next == 330);
    }

    void writeWithMarkers(const DX_KEPT_ENTITY& entity, const DX_KEPT_MARKERS& markers) {
        std::vector<DX_KEPT_PAIR> pairs;
        PairFilter filter;
        std::copy_if(entity.pairs.begin(), entity.pairs.end(), std::back_inserter(pairs),
                     [&](const DX_KEPT_PAIR& pair) { return filter.takes(pair); });
        const auto writeThose = [&](auto isOne) {
            for (const DX_KEPT_PAIR& pair : pairs)
                if (isOne(pair.code)) write(pair);
        };
        const auto isExtended = [](int code) { return code >= 1000; };
        writeThose(isCommon);
        if (*markers.first) DxWriteSubClass(markers.first);
        writeThose([&](int code) { return !isCommon(code) && !isExtended(code) && !markers.isSecond(code); });
        if (markers.second) DxWriteSubClass(markers.second);
        writeThose([&](int code) { return !isCommon(code) && !isExtended(code) && markers.isSecond(code); });
        writeThose(isExtended);
    }

    void write(const DX_KEPT_PAIR& pair) {
        const bool isBlock = pair.code == 2 && (entity_->kind == "INSERT" || entity_->kind == "DIMENSION");
        if (isBlock && !changes_.blockName.view.empty())
            writePair(2, changes_.blockName.view);
        else if (entity_->kind == "ATTRIB" && pair.code == 1)
            writePair(1, attributeValue(pair.value));
        else
            writePair(pair.code, pair.value);
    }

    /// The value that the host has for the attribute now.
    std::string_view attributeValue(std::string_view was) const {
        if (!changes_.attributes) return was;
        const std::string_view tag = trimmed(entity_->value(2));
        for (const auto& [name, value] : *changes_.attributes)
            if (name == tag) return value;
        return was;
    }

    const std::vector<DX_KEPT_ENTITY>& entities_;
    const DX_KEPT_CHANGES& changes_;
    const DX_KEPT_ENTITY* entity_ = nullptr;
};

} // namespace

std::string_view DX_KEPT_ENTITY::value(int code) const {
    for (const DX_KEPT_PAIR& pair : pairs)
        if (pair.code == code) return pair.value;
    return {};
}

std::vector<DX_KEPT_ENTITY> DxKeptEntities(std::string_view text) {
    std::vector<DX_KEPT_ENTITY> entities;
    entities.push_back({takeLine(text), {}});
    while (!text.empty()) {
        const int code = DxAtoi(takeLine(text));
        const std::string_view line = takeLine(text);
        const std::string_view value = isText(code) ? line : trimmed(line);
        if (code == 0)
            entities.push_back({value, {}});
        else
            entities.back().pairs.push_back({code, value});
    }
    return entities;
}

bool DxCanWriteKept(const std::vector<DX_KEPT_ENTITY>& entities) {
    return std::all_of(entities.begin(), entities.end(), [&](const DX_KEPT_ENTITY& entity) {
        return canWrite(entity, &entity == &entities.front() ? nullptr : &entities.front());
    });
}

int DxWriteKept(const std::vector<DX_KEPT_ENTITY>& entities, const DX_KEPT_CHANGES& changes) {
    return KeptWriter(entities, changes).run();
}
