#include "dx_account_place.h"

#include "../session/dx_documents.h"
#include "../session/session_state.h"

#include <algorithm>

namespace {

std::string_view trimmed(std::string_view line) {
    constexpr std::string_view blanks = " \t\r";
    const std::size_t first = line.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return line.substr(first, line.find_last_not_of(blanks) + 1 - first);
}

/// Takes the first line off a text.
std::string_view nextLine(std::string_view& text) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = trimmed(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

/// The handle among the pairs of one entity.
std::uint32_t handleIn(std::string_view text) {
    while (!text.empty()) {
        const std::string_view code = nextLine(text), value = nextLine(text);
        if (code == "0") return 0;
        if (code == "5") return DxHexToU32(value);
    }
    return 0;
}

long lineAt(std::string_view file, std::size_t position) {
    DX_LINE_MARK& mark = DxAccountMark;
    if (mark.data != file.data() || mark.position > position) mark = {file.data(), 0, 0};
    const auto from = file.begin() + static_cast<std::ptrdiff_t>(mark.position);
    const auto to = file.begin() + static_cast<std::ptrdiff_t>(position);
    mark = {file.data(), position, mark.line + std::count(from, to, '\n')};
    return mark.line;
}

} // namespace

DxUnseen::Example DxExampleAt(const DxPlace& place) {
    DxUnseen::Example example;
    if (!place.document || !place.document->view.data) return example;
    const std::string_view file(place.document->view.data, place.document->view.size);
    const std::size_t position = std::min(static_cast<std::size_t>(place.position), file.size());
    example.handle = handleIn(file.substr(position));
    // Lines of a converted file aren't those of the file that the user has.
    const bool isMain = !place.document->parent.Get();
    const bool isConverted = isMain ? !DxSourceFileName.IsEmpty() : !place.document->tempName.Get().IsEmpty();
    if (!isConverted) example.line = lineAt(file, position);
    if (!isMain) example.file = place.document->name.Get().str();
    return example;
}
