// Files whose sections stand in another order than usual, or more than once: where each of them is.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

struct DX_SECTION_PLACE {
    std::string_view name; ///< one of those that an import reads; it lives as long as the program
    std::int32_t position; ///< behind the pair 0 / SECTION
};

/// Looks for the sections of the current document, behind an EOF too, with ALL_SECTIONS. Sets
/// DxSectionPlaces, empty where one run through the file meets each in its turn.
void DxFindSectionPlaces();
/// The place of the n-th section of a name among DxSectionPlaces, -1 when there are fewer.
std::int32_t DxSectionPlace(std::string_view name, int n);
