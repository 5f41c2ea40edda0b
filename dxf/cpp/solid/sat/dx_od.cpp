#include "dx_od.h"

#include "acis_file.h"
#include "acis_place.h"
#include "od_state.h"

#include "ut.h"

namespace {

constexpr int ERROR_CONVERSION = 4002, ERROR_EXCEPTION = 2360;
constexpr std::uint32_t VERSION = ACIS::TARGET_VERSION;

bool read(ISATConverter& converter, const UtCString& source) {
    OdRdFileBuf buffer(source);
    return converter.read(buffer, nullptr, 1);
}

bool write(ISATConverter& converter, const UtCString& target) {
    const bool isBinary = UtPathExt(target) == "sab";
    OdWrFileBuf buffer(target);
    if (!converter.write(buffer, (isBinary ? ACIS::VERSION_BINARY : ACIS::VERSION_TEXT) | VERSION, 1))
        return false;
    buffer.flush();
    return true;
}

DxModelKind kindOf(const ACIS::File& file) {
    constexpr std::size_t SURFACE = 3 + 4, SIDES = 3 + 6; // behind attrib, id, pattern
    DxModelKind kind = DxModelKind::Region;
    for (const ACIS::ENTITY& face : file.records) {
        if (!face.isA(ACIS::Id::Face) || face.count <= SIDES) continue;
        if (file.values[face.first + SIDES].integer == 0) return DxModelKind::Solid;
        const ACIS::ENTITY* const surface = file.at(file.values[face.first + SURFACE]);
        if (!surface || !surface->isA(ACIS::Id::Plane)) kind = DxModelKind::Sheet;
    }
    return kind;
}

} // namespace

void DxOdInit(int start) {
    DxOdConverter.reset();
    DxOdServices.stop();
    if (!start) return;
    DxOdServices.start();
    DxOdConverter = std::make_unique<ACIS::File>();
}

int DxOdSatConv(const UtCString& source, const UtCString& target) {
    try {
        if (!DxOdConverter) DxOdInit(1);
        if (!DxOdConverter) return ERROR_EXCEPTION;
        if (!read(*DxOdConverter, source) || !write(*DxOdConverter, target)) return ERROR_CONVERSION;
        return 0;
    } catch (const std::exception&) {
        return ERROR_EXCEPTION;
    }
}

int DxOdSatDump(const UtCString& source, std::string& text) {
    try {
        if (!DxOdConverter) DxOdInit(1);
        if (!read(*DxOdConverter, source)) return ERROR_CONVERSION;
        text = ACIS::dumpModel(static_cast<ACIS::File&>(*DxOdConverter));
        return 0;
    } catch (const std::exception&) {
        return ERROR_EXCEPTION;
    }
}

int DxOdSatPlace(std::string_view model, const Mat44 matrix, bool isBinary, std::string& placed,
                 DxModelKind* kind) {
    try {
        ACIS::File file;
        if (!file.load(model)) return ERROR_CONVERSION;
        if (kind) *kind = kindOf(file);
        ACIS::placeModel(file, matrix);
        placed = file.save((isBinary ? ACIS::VERSION_BINARY : ACIS::VERSION_TEXT) | VERSION);
        return placed.empty() ? ERROR_CONVERSION : 0;
    } catch (const std::exception&) {
        return ERROR_EXCEPTION;
    }
}

std::string DxOdProblem() {
    return DxOdConverter ? DxOdConverter->problem() : std::string();
}
