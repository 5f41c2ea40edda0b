#include "session.h"

#include "text.h"

#include <algorithm>

namespace validate {

uint32_t NameTable::find(std::string_view name) {
    if (last_ != kNone && name == lastName_) return last_;
    const auto [place, isNew] = index_.try_emplace(upperCase(name), static_cast<uint32_t>(entries.size()));
    if (isNew) entries.push_back({std::string(name)});
    lastName_ = name;
    return last_ = place->second;
}

uint32_t NameTable::lookUp(std::string_view name) const {
    const auto found = index_.find(upperCase(name));
    return found == index_.end() ? kNone : found->second;
}

bool NameTable::isDefined(std::string_view name) const {
    const uint32_t entry = lookUp(name);
    return entry != kNone && entries[entry].defined.line != 0;
}

Place Model::placeOf(uint32_t object) const {
    const Object& source = objects[object];
    return {source.line, source.handle, kindOf(source), source.section};
}

uint16_t Model::kindIndex(std::string_view name) {
    if (const auto found = kindIndex_.find(name); found != kindIndex_.end()) return found->second;
    if (kinds.size() >= 0xFFFF) return 0xFFFE; // so many kinds are only in files made to break readers
    kinds.push_back(name);
    const auto index = static_cast<uint16_t>(kinds.size() - 1);
    kindIndex_.emplace(name, index);
    return index;
}

void Model::indexHandles() {
    uint64_t highest = 0;
    for (const Object& object : objects) highest = std::max(highest, object.handle);
    const bool close = highest <= 8 * static_cast<uint64_t>(objects.size()) + 0x10000;
    if (close) dense_.assign(highest + 1, kNone);
    for (uint32_t i = 0; i < objects.size(); ++i) {
        const uint64_t handle = objects[i].handle;
        if (handle == 0) continue;
        if (!close) {
            sorted_.emplace_back(handle, i);
        } else if (dense_[handle] == kNone) {
            dense_[handle] = i;
        } else {
            repeatedHandles.emplace_back(i, dense_[handle]);
        }
    }
    std::sort(sorted_.begin(), sorted_.end());
    for (size_t i = 1; i < sorted_.size(); ++i)
        if (sorted_[i].first == sorted_[i - 1].first)
            repeatedHandles.emplace_back(sorted_[i].second, sorted_[i - 1].second);
    for (uint32_t i = 0; i < dictionaries.size(); ++i) dictionaryOf_.emplace(dictionaries[i].object, i);
}

uint32_t Model::find(uint64_t handle) const {
    if (!dense_.empty()) return handle < dense_.size() ? dense_[handle] : kNone;
    const auto found =
        std::lower_bound(sorted_.begin(), sorted_.end(), std::pair<uint64_t, uint32_t>{handle, 0});
    return found != sorted_.end() && found->first == handle ? found->second : kNone;
}

const Dictionary* Model::dictionaryAt(uint64_t handle) const {
    const auto found = dictionaryOf_.find(find(handle));
    return found == dictionaryOf_.end() ? nullptr : &dictionaries[found->second];
}

uint64_t Model::entryOf(const Dictionary& dictionary, std::string_view key) const {
    for (size_t i = dictionary.first; i < dictionary.first + dictionary.count; ++i)
        if (sameName(entries[i].key, key)) return entries[i].target;
    return 0;
}

const Tag* Record::findIn(size_t part, int code) const {
    const size_t row = rules->rowOf(part, code);
    return row != KindRules::kNoRow && rows[row].count ? &tags[rows[row].first] : nullptr;
}

const Tag* Record::find(int code) const {
    for (size_t part = rules ? rules->parts().size() : 0; part-- > 0;)
        if (const Tag* tag = findIn(part, code)) return tag;
    return nullptr;
}

int64_t Record::integer(int code, int64_t otherwise) const {
    const Tag* tag = find(code);
    return tag ? readInteger(tag->value).value_or(otherwise) : otherwise;
}

double Record::real(int code, double otherwise) const {
    const Tag* tag = find(code);
    return tag ? readReal(tag->value) : otherwise;
}

std::string_view Record::string(int code) const {
    const Tag* tag = find(code);
    return tag ? tag->value : std::string_view{};
}

} // namespace validate
