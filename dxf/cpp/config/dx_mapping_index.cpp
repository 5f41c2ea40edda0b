#include "dx_mapping_index.h"

#include <algorithm>
#include <iterator>

void DxPairIndex::clear() {
    std::fill(std::begin(direct_), std::end(direct_), -1);
    beyond_.clear();
    indexed_ = 0;
}

void DxPairIndex::catchUp(const DxTable<DX_COLOR_PAIR>& pairs) {
    if (indexed_ > pairs.size()) clear(); // another list than before
    for (; indexed_ < pairs.size(); ++indexed_) {
        const int key = pairs[indexed_].*key_;
        const int position = static_cast<int>(indexed_);
        if (static_cast<unsigned>(key) >= DIRECT) {
            beyond_.emplace(key, position);
        } else if (direct_[key] < 0) {
            direct_[key] = position;
        }
    }
}

const DX_COLOR_PAIR* DxPairIndex::findBeyond(const DxTable<DX_COLOR_PAIR>& pairs, int key) const {
    const auto found = beyond_.find(key);
    return found == beyond_.end() ? nullptr : &pairs[static_cast<std::size_t>(found->second)];
}

void DxLtIndex::clear() {
    index_.clear();
    unknown_.clear();
}

const int* DxLtIndex::find(DxTable<DX_LT_PAIR>& pairs, std::string_view name) {
    if (const DX_LT_PAIR* known = index_.find(pairs, name)) return &known->number;
    const auto found = unknown_.find(name);
    return found == unknown_.end() ? nullptr : &found->second;
}

bool DxLtIndex::learnUnknown(std::string_view name, int number) {
    return unknown_.emplace(name, number).second;
}
