#include "acis_value.h"

#include <algorithm>
#include <cstring>

namespace ACIS {

std::string_view TextStore::keep(std::string_view text) {
    constexpr std::size_t BLOCK = 65536;
    if (text.size() > room_) {
        const std::size_t size = std::max(BLOCK, text.size());
        blocks_.push_back(std::make_unique<char[]>(size));
        free_ = blocks_.back().get();
        room_ = size;
    }
    if (!text.empty()) std::memcpy(free_, text.data(), text.size());
    const std::string_view kept(free_, text.size());
    free_ += text.size();
    room_ -= text.size();
    return kept;
}

std::string_view TextStore::name(std::string_view text) {
    const auto found = names_.find(text);
    if (found != names_.end()) return *found;
    return *names_.insert(keep(text)).first;
}

void TextStore::clear() {
    names_.clear();
    blocks_.clear();
    room_ = 0;
    free_ = nullptr;
}

bool sameText(std::string_view a, std::string_view b) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(),
                                              [lower](char x, char y) { return lower(x) == lower(y); });
}

} // namespace ACIS
