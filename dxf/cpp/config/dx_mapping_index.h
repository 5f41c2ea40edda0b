// Lookups over the mapping lists. A list says "the first match wins" and grows while a drawing is read; an
// index gives the same answer without a walk and catches up with what was appended since the last call.
#pragma once

#include "../session/dx_documents.h"
#include "dx_fixed.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>

struct DX_COLOR_PAIR {
    int color; ///< DXF colour
    int pen;   ///< host pen or fill colour
};
struct DX_LT_PAIR {
    DX_NAME name;
    int number; ///< host line type
};

/// First pair of a list by one of its members: direct for 0 … 1023, by search beyond.
class DxPairIndex {
public:
    explicit DxPairIndex(int DX_COLOR_PAIR::*key) : key_(key) { clear(); }
    /// The first pair whose key is `key`, null when there is none. Valid until the list grows.
    const DX_COLOR_PAIR* find(const DxTable<DX_COLOR_PAIR>& pairs, int key) {
        if (indexed_ != pairs.size()) catchUp(pairs);
        if (static_cast<unsigned>(key) >= DIRECT) return findBeyond(pairs, key);
        return direct_[key] < 0 ? nullptr : &pairs[static_cast<std::size_t>(direct_[key])];
    }
    void clear();

private:
    static constexpr unsigned DIRECT = 1024;
    void catchUp(const DxTable<DX_COLOR_PAIR>& pairs);
    const DX_COLOR_PAIR* findBeyond(const DxTable<DX_COLOR_PAIR>& pairs, int key) const;

    int DX_COLOR_PAIR::*key_;
    int direct_[DIRECT];
    std::map<int, int> beyond_; // ordered: keys come from files, and can't be made to collide here
    std::size_t indexed_ = 0;
};

/// First record of a list by one of its names, which is compared exactly.
template <class T, class Name>
class DxRecordIndex {
public:
    explicit DxRecordIndex(Name T::*key) : key_(key) {}
    /// The first record whose key is `name`, null when there is none. Valid until the list grows.
    T* find(DxTable<T>& records, std::string_view name) {
        if (indexed_ > records.size()) clear(); // another list than before
        for (; indexed_ < records.size(); ++indexed_)
            byName_.emplace((records[indexed_].*key_).view(), indexed_);
        const auto found = byName_.find(name);
        return found == byName_.end() ? nullptr : &records[found->second];
    }
    void clear() {
        byName_.clear();
        indexed_ = 0;
    }

private:
    Name T::*key_;
    std::unordered_map<std::string, std::size_t, DxNameHash, std::equal_to<>> byName_;
    std::size_t indexed_ = 0;
};

/// First line type of a list by exact name.
class DxLtIndex {
public:
    /// Host number of `name`, null when the list doesn't know it. Valid until the next call.
    const int* find(DxTable<DX_LT_PAIR>& pairs, std::string_view name);
    /// Remembers `name` as unknown with the number it gets instead. False when it was remembered before.
    bool learnUnknown(std::string_view name, int number);
    void clear();

private:
    DxRecordIndex<DX_LT_PAIR, DX_NAME> index_{&DX_LT_PAIR::name};
    std::unordered_map<std::string, int, DxNameHash, std::equal_to<>> unknown_;
};
