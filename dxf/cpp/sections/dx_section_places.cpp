#include "dx_section_places.h"

#include "../config/config_state.h"
#include "../session/dx_documents.h"
#include "sections_state.h"

#include <algorithm>
#include <iterator>

namespace {

/// In the order in which an import reads them.
constexpr std::string_view READ_SECTIONS[] = {"HEADER",   "TABLES",  "BLOCKS",
                                              "ENTITIES", "OBJECTS", "ACDSDATA"};

std::string_view trimmed(std::string_view line) {
    constexpr std::string_view blanks = " \t\r";
    const std::size_t first = line.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return line.substr(first, line.find_last_not_of(blanks) + 1 - first);
}

/// Where the line begins that holds `at`.
std::size_t startOfLine(std::string_view text, std::size_t at) {
    const std::size_t end = at == 0 ? std::string_view::npos : text.rfind('\n', at - 1);
    return end == std::string_view::npos ? 0 : end + 1;
}

std::string_view lineFrom(std::string_view text, std::size_t start) {
    if (start >= text.size()) return {};
    return trimmed(text.substr(start, text.find('\n', start) - start));
}

std::size_t behindLine(std::string_view text, std::size_t start) {
    const std::size_t end = start < text.size() ? text.find('\n', start) : std::string_view::npos;
    return end == std::string_view::npos ? text.size() : end + 1;
}

/// Whether `at` is within the value of a pair 0 / SECTION.
bool beginsSection(std::string_view text, std::size_t at) {
    const std::size_t start = startOfLine(text, at);
    if (start == 0 || lineFrom(text, start) != "SECTION") return false;
    return lineFrom(text, startOfLine(text, start - 1)) == "0";
}

std::vector<DX_SECTION_PLACE> sectionsOf(std::string_view text) {
    constexpr std::string_view word = "SECTION";
    std::vector<DX_SECTION_PLACE> places;
    for (std::size_t at = text.find(word); at != std::string_view::npos; at = text.find(word, at + 1)) {
        if (!beginsSection(text, at)) continue;
        const std::size_t behind = behindLine(text, at), value = behindLine(text, behind);
        if (lineFrom(text, behind) != "2") continue;
        const std::string_view* name =
            std::find(std::begin(READ_SECTIONS), std::end(READ_SECTIONS), lineFrom(text, value));
        if (name != std::end(READ_SECTIONS)) places.push_back({*name, static_cast<std::int32_t>(behind)});
    }
    return places;
}

std::ptrdiff_t rankOf(const DX_SECTION_PLACE& place) {
    return std::find(std::begin(READ_SECTIONS), std::end(READ_SECTIONS), place.name) - READ_SECTIONS;
}

} // namespace

void DxFindSectionPlaces() {
    DxSectionPlaces.clear();
    const DxfDocument* document = DxDocuments.current_;
    if (!DxAllSections || !document || !document->view.data) return;
    std::vector<DX_SECTION_PLACE> places = sectionsOf({document->view.data, document->view.size});
    const bool isUsual = std::adjacent_find(places.begin(), places.end(),
                                            [](const DX_SECTION_PLACE& a, const DX_SECTION_PLACE& b) {
                                                return rankOf(a) >= rankOf(b);
                                            }) == places.end();
    if (!isUsual) DxSectionPlaces = std::move(places);
}

std::int32_t DxSectionPlace(std::string_view name, int n) {
    for (const DX_SECTION_PLACE& place : DxSectionPlaces)
        if (place.name == name && n-- == 0) return place.position;
    return -1;
}
