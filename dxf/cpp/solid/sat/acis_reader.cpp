// The records of a model, its head and the markers between them.
#include "acis_decoder.h"

#include <algorithm>
#include <memory>

namespace ACIS {

static constexpr int readable[] = {20800, 21200, 21500, 21600, 21700, 21800, 22300};

// ---- records ----------------------------------------------------------------------------------------

bool Decoder::fail(const char* what) {
    if (problem_.empty()) problem_ = "record " + std::to_string(number_) + ": " + what;
    return false;
}

const RecordName& Decoder::nameOf(std::string_view name, const Class& isA) {
    const auto key = std::make_pair(name, &isA);
    const auto found = names_.find(key);
    if (found != names_.end()) return *found->second;
    file_.names.push_back({file_.texts.name(name), &isA});
    const RecordName& kept = file_.names.back();
    names_[{kept.name, &isA}] = &kept;
    return kept;
}

/// An explicit number in front of a record: "-12".
bool Decoder::recordNumber() {
    if (source_.isBinary() || peek().kind != TokenKind::Integer) return true;
    take();
    const std::int64_t number = token_.integer <= 0 ? -token_.integer : -1;
    constexpr std::size_t leastRecord = 4; // bytes, "a #\n"
    const std::size_t most = (source_.at() + source_.left()) / leastRecord;
    if (number < 0 || static_cast<std::uint64_t>(number) > most) return fail("a number out of range");
    number_ = number;
    return true;
}

bool Decoder::recordName(std::string& name) {
    name.clear();
    while (take(TokenKind::NamePart)) name.append(token_.text).append("-");
    if (!take(TokenKind::Word)) return false;
    name.append(token_.text);
    return isName(name);
}

/// Markers between the records. History records are kept apart.
bool Decoder::isMarker(std::string_view name, bool& isEnd) {
    isEnd = sameText(name, "End-of-ACIS-data") || sameText(name, "End-of-ASM-data");
    if (isEnd) return true;
    if (sameText(name, "End-of-ACIS-History-Section") || sameText(name, "End-of-ASM-History-Section"))
        return true;
    const std::string_view start = name.substr(0, name.find("history_stream"));
    const bool isHistory = sameText(start.substr(0, 26), "Begin-of-ACIS-History-Data") ||
                           sameText(start.substr(0, 25), "Begin-of-ASM-History-Data");
    inHistory_ |= isHistory;
    return isHistory && start.size() == name.size();
}

/// The fields of a record's class; of a class further down its name, when they don't fit.
bool Decoder::body(const RecordName& kind, ENTITY& entity) {
    const Class& isA = *kind.isA;
    const Mark start = mark();
    entity.kind = &kind;
    entity.first = static_cast<std::uint32_t>(file_.values.size());
    Walk<Decoder> walk(*this);
    bool isRead = walk.fields(prefixOf(isA.prefix)) && walk.fields(isA.fields);
    pending_.clear();
    const std::size_t known = file_.values.size();
    isRead = isRead && rawValues(false) && take(TokenKind::End);
    if (isRead && !isA.keepsRest && version_ > TARGET_VERSION) file_.values.truncate(known);
    entity.count = static_cast<std::uint32_t>(file_.values.size() - entity.first);
    if (isRead || !problem_.empty()) return isRead;
    if (isA.prefix == Prefix::Geometry || isA.id == Id::Transform)
        return fail("fields that its kind doesn't have");
    if (isA.prefix == Prefix::None) return fail("no record");
    back(start);
    const bool isKnown = !isA.fields.empty();
    const Class& base = isKnown && isA.prefix == Prefix::Attribute ? *findClass("attrib") : rawClass();
    return body(nameOf(kind.name, base), entity);
}

bool Decoder::record(bool& isEnd) {
    std::string name;
    isEnd = false;
    if (!recordNumber()) return false;
    if (peek().kind == TokenKind::Eof) {
        isEnd = file_.header.counts[0] > 0 && number_ >= file_.header.counts[0];
        return isEnd || fail("the file is cut");
    }
    if (!recordName(name)) return fail("no name of a record");
    if (isMarker(name, isEnd)) return true;
    bool isWhole = false;
    const Class& isA = inHistory_ ? classOf("", isWhole) : classOf(name, isWhole);
    if (isA.id == Id::Body && !inHistory_) {
        const Mark start = mark();
        if (take(TokenKind::Pointer)) hasIds_ = peek().kind == TokenKind::Integer;
        back(start);
    }
    ENTITY entity;
    if (inHistory_) {
        entity.kind = &nameOf(name, isA);
        entity.first = static_cast<std::uint32_t>(file_.values.size());
        if (!rawValues(false) || !take(TokenKind::End)) return fail("cut");
        entity.count = static_cast<std::uint32_t>(file_.values.size() - entity.first);
        file_.history.push_back(entity);
        return true;
    }
    if (!body(nameOf(name, isA), entity)) return false;
    const auto number = static_cast<std::size_t>(number_);
    if (number >= file_.records.size()) file_.records.resize(number + 1);
    if (file_.records[number].kind) return fail("a number that another record has");
    file_.records[number] = entity;
    ++number_;
    return true;
}

bool Decoder::records() {
    bool isEnd = false;
    while (!isEnd)
        if (!record(isEnd)) return fail("a record that is cut or makes no sense");
    return true;
}

/// Pointers lead to records of the file, or of its history.
bool Decoder::resolve() {
    const auto limit = static_cast<std::int64_t>(file_.records.size() + file_.history.size());
    for (std::size_t i = 0; i < file_.records.size(); ++i) {
        const ENTITY& entity = file_.records[i];
        for (std::size_t at = entity.first; at < entity.first + entity.count; ++at) {
            const Value& value = file_.values[at];
            if (value.kind != Kind::Pointer || (value.integer >= -1 && value.integer < limit)) continue;
            number_ = static_cast<std::int64_t>(i);
            return fail("a pointer to no record");
        }
    }
    return true;
}

// ---- the head ---------------------------------------------------------------------------------------

bool Decoder::headString(std::string& text) {
    if (take(TokenKind::String)) {
        text = token_.text;
        return true;
    }
    std::string_view bytes;
    if (source_.isBinary() || !take(TokenKind::Integer) || !source_.counted(token_.integer, bytes))
        return false;
    text = bytes;
    return true;
}

bool Decoder::head() {
    Header& header = file_.header;
    if (version_ < 200) return true;
    if (!headString(header.product) || !headString(header.kernel) || !headString(header.date)) return false;
    for (double* number : {&header.unit, &header.resabs, &header.resnor}) {
        if (!peek().isNumber() || !take()) return false;
        *number = token_.reals[0];
    }
    return true;
}

bool Decoder::model() {
    number_ = -1;
    if (!head()) return fail("no head of a model");
    number_ = 0;
    return records() && resolve();
}

bool isReadable(std::int64_t version) {
    if (version >= 105 && version <= 1100) return true;
    return std::find(std::begin(readable), std::end(readable), version) != std::end(readable);
}

bool readModel(File& file, std::string_view data, std::string& problem) {
    std::unique_ptr<Source> source;
    if (isBinaryBanner(data))
        source = std::make_unique<BinarySource>(data);
    else
        source = std::make_unique<TextSource>(data);
    std::int64_t counts[4] = {0, 0, 0, 0};
    if (!source->counts(counts) || !isReadable(counts[0])) {
        problem = "no model of a version that can be read";
        return false;
    }
    file.header.isBinary = source->isBinary();
    file.header.version = static_cast<int>(counts[0]);
    for (int i = 0; i < 3; ++i) file.header.counts[i] = counts[i + 1];
    Decoder decoder(file, *source);
    if (decoder.model() && checkChains(file, problem)) return true;
    if (problem.empty()) problem = decoder.problem();
    return false;
}

} // namespace ACIS
