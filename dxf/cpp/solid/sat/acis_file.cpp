#include "acis_file.h"

#include "acis_rebuild.h"
#include "acis_writer.h"

#include <algorithm>

namespace ACIS {

void File::clear() {
    header = Header();
    records.clear();
    history.clear();
    subs.clear();
    values.clear();
    texts.clear();
    names.clear();
    problem_.clear();
}

bool File::load(std::string_view data) {
    constexpr std::size_t SMALLEST = 16;
    clear();
    if (data.size() < SMALLEST) return true;
    if (readModel(*this, data, problem_)) return true;
    const std::string problem = problem_;
    clear();
    problem_ = problem;
    return false;
}

bool File::read(OdStreamBuf& stream, std::uint32_t* version, int) {
    const std::string_view data = stream.view();
    if (!load(data)) return false;
    if (version)
        *version =
            (header.isBinary ? VERSION_BINARY : VERSION_TEXT) | static_cast<std::uint32_t>(header.version);
    return true;
}

/// Faces that the version can't hold are rebuilt for the time of the writing.
bool File::write(OdStreamBuf& stream, std::uint32_t version, int) {
    const std::size_t valuesBefore = values.size(), subsBefore = subs.size();
    Substitutes substitutes;
    const int number = static_cast<int>(version & 0xffffff);
    if (number <= TARGET_VERSION) rebuildFaces(*this, number, substitutes);
    const bool isWritten = writeModel(*this, version, substitutes, stream, problem_);
    values.truncate(valuesBefore);
    subs.resize(subsBefore);
    return isWritten;
}

std::string File::save(std::uint32_t version) {
    constexpr std::size_t bytesPerValue = 10;
    OdMemoryBuf out;
    out.content.reserve(values.size() * bytesPerValue);
    if (!write(out, version, 1)) return {};
    return std::move(out.content);
}

Counts File::counts() const {
    Counts counts;
    for (const ENTITY& entity : records) {
        counts.bodies += entity.isA(Id::Body);
        counts.faces += entity.isA(Id::Face);
        counts.edges += entity.isA(Id::Edge) || entity.isA(Id::Tedge);
        counts.vertices += entity.isA(Id::Vertex) || entity.isA(Id::Tvertex);
    }
    return counts;
}

const ENTITY* File::at(const Value& pointer) const {
    if (pointer.kind != Kind::Pointer || pointer.integer < 0) return nullptr;
    const auto number = static_cast<std::size_t>(pointer.integer);
    return number < records.size() && records[number].kind ? &records[number] : nullptr;
}

} // namespace ACIS
