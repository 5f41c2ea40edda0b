#include "dx_dim_chain.h"

#include "../config/dx_pens.h"
#include "../host/dx_active_pattern.h"
#include "../host/dx_frame.h"
#include "../host/dx_host.h"
#include "../import/dx_entity_base.h"
#include "../import/import_state.h"
#include "ci_dim.h"
#include "dimension_state.h"
#include "dx_dim_decode.h"
#include "dx_dim_import.h"
#include "dx_dim_parms.h"
#include "ge.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <tuple>
#include <utility>

namespace {

constexpr double toRadians = 0.017453292519943295;
constexpr std::size_t fewestPoints = 6, mostPoints = 8, firstLinePoint = 4;

// ---- finding the chain ---------------------------------------------------------------------------------

bool isLineOf(const DX_DIM_CHAIN& chain, double la, double lb, double lc, double tolerance) {
    constexpr double turn = 1e-6;
    return std::fabs(chain.la - la) <= turn && std::fabs(chain.lb - lb) <= turn &&
           std::fabs(chain.lc - lc) <= tolerance;
}

std::string_view layerOf(const DX_DIM_CHAIN& chain) {
    return chain.parts.empty() ? std::string_view() : chain.parts[0].base->layer.view();
}

/// Chains whose distance from the origin is about the same lie in one cell or in neighbouring ones. What
/// shares a key by chance is told apart by its values.
std::size_t cellKey(int kind, std::string_view layer, double lc, double tolerance, int beside) {
    const double width = 4 * (tolerance > 0 ? tolerance : 1);
    const std::size_t cell = std::hash<double>()(std::floor(lc / width) + beside);
    const std::size_t ofLayer = std::hash<std::string_view>()(layer) + static_cast<std::size_t>(kind);
    return (cell ^ ofLayer) * 0x9E3779B97F4A7C15U;
}

/// The first chain that the dimension's line belongs to; the number of chains when there is none.
std::size_t findChain(int kind, std::string_view layer, double la, double lb, double lc) {
    const double tolerance = DxDrawingTolerance();
    std::size_t found = DxDimChains.size();
    for (const int beside : {-1, 0, 1}) {
        const auto [from, to] = DxDimChainIndex.equal_range(cellKey(kind, layer, lc, tolerance, beside));
        for (auto at = from; at != to; ++at) {
            const DX_DIM_CHAIN& chain = DxDimChains[at->second];
            if (chain.kind == kind && isLineOf(chain, la, lb, lc, tolerance) && layerOf(chain) == layer)
                found = std::min(found, at->second);
        }
    }
    return found;
}

bool agree(const RPT& a, const RPT& b, double tolerance) {
    return std::fabs(a.x - b.x) <= tolerance && std::fabs(a.y - b.y) <= tolerance;
}

// ---- drawing -------------------------------------------------------------------------------------------

/// From the part with the lowest text position, by distance.
std::vector<const DX_DIM_CHAIN_PART*> sorted(const DX_DIM_CHAIN& chain) {
    const auto along = [&](const DX_DIM_CHAIN_PART& part) {
        return chain.kind == DX_DIM_VERTICAL ? part.dim.textPos.y : part.dim.textPos.x;
    };
    const auto first = std::min_element(chain.parts.begin(), chain.parts.end(),
                                        [&](const auto& a, const auto& b) { return along(a) < along(b); });
    std::vector<std::pair<double, const DX_DIM_CHAIN_PART*>> byDistance;
    for (const DX_DIM_CHAIN_PART& part : chain.parts)
        byDistance.emplace_back(DxDimDistance(part.dim.textPos, first->dim.textPos), &part);
    std::stable_sort(byDistance.begin(), byDistance.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<const DX_DIM_CHAIN_PART*> parts;
    for (const auto& [distance, part] : byDistance) parts.push_back(part);
    return parts;
}

/// Whether two parts share a point of their dimension lines.
bool touch(const DX_DIM_CHAIN_PART& a, const DX_DIM_CHAIN_PART& b, double tolerance) {
    for (std::size_t i = firstLinePoint; i < a.dim.points.size(); ++i)
        for (std::size_t j = firstLinePoint; j < b.dim.points.size(); ++j)
            if (agree(DxDimPoint(a.dim.points[i]), DxDimPoint(b.dim.points[j]), tolerance)) return true;
    return false;
}

int kindWord(int kind, std::size_t place, std::size_t count) {
    const int high = count == 1           ? OV_DIM_ALONE
                     : place == 0         ? OV_DIM_FIRST
                     : place + 1 == count ? OV_DIM_LAST
                                          : OV_DIM_MIDDLE;
    return (OV_DIM_CHAINED + kind % 10) | high << 16;
}

/// Makes the dimensions of a group, which have one set of parameters.
int drawGroup(int kind, const std::vector<const DX_DIM_CHAIN_PART*>& group) {
    constexpr int passedOver[] = {2000, 2332};
    if (group.empty()) return 0;
    if (const int error = DxNewElement(static_cast<int>(group.size()))) return error;
    if (const int error = DxDimChainParams(DX_CHAIN_TO_HOST, nullptr)) return error;
    std::vector<int> pats, rows;
    int error = 0;
    for (std::size_t i = 0; i < group.size() && !error; ++i) {
        DX_HOST_DIM dim = group[i]->dim;
        dim.kind = kindWord(kind, i, group.size());
        int row = 0;
        error = Dxovdodim(std::move(dim), &row);
        if (!error) {
            pats.push_back(DxActPat);
            rows.push_back(row);
            DxDimKeepLines(group[i]->source.get(), DxActPat, row);
        } else if (std::find(std::begin(passedOver), std::end(passedOver), error) != std::end(passedOver)) {
            error = 0;
        }
    }
    if (rows.size() > 1) DxReport.dimensions.chained += static_cast<long>(rows.size());
    if (!error) error = DxCiDimChainToAppDim(pats, rows);
    const int restored = DxDimChainParams(DX_CHAIN_RESTORE, nullptr);
    return error ? error : restored;
}

int drawChain(const DX_DIM_CHAIN& chain) {
    if (chain.parts.empty()) return 0;
    if (const int error = DxDimNewPat(chain.parts[0].base->layer)) return error;
    const std::vector<const DX_DIM_CHAIN_PART*> parts = sorted(chain);
    const double tolerance = DxDrawingTolerance();
    std::vector<const DX_DIM_CHAIN_PART*> group;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const DX_DIM_CHAIN_PART& part = *parts[i];
        int pen = 0, lineType = 0;
        DxPatternScope ofChain; // not that of the layer
        const bool isDrawn = DxPenLtToCAD(part.base.get(), &pen, &lineType) != 0;
        if (const int error = ofChain.leave()) return error;
        if (isDrawn) {
            DxDimChainParams(group.empty() ? DX_CHAIN_START : DX_CHAIN_MERGE, &part);
            group.push_back(&part);
        }
        const bool isLast = i + 1 == parts.size();
        if (!isLast && touch(part, *parts[i + 1], tolerance)) continue;
        if (const int error = drawGroup(chain.kind, group)) return error;
        group.clear();
    }
    return 0;
}

/// The base of a part on a layer: that of the part before, where nothing but the handle differs.
std::shared_ptr<const DX_ENTITY_BASE_TYPE> sharedBase(const DX_ENTITY_BASE_TYPE& base, const DX_NAME& layer) {
    const auto key = [](const DX_ENTITY_BASE_TYPE& e) {
        return std::tuple(e.lineType.view(), e.color, e.paperSpace, e.invisible, e.lineWeight,
                          e.lineTypeScale, e.materialHandle, e.trueColor, e.transparency);
    };
    std::shared_ptr<const DX_ENTITY_BASE_TYPE>& last = DxDimLastBase;
    if (last && last->layer.view() == layer.view() && key(*last) == key(base)) return last;
    const auto made = std::make_shared<DX_ENTITY_BASE_TYPE>();
    DxCopyEntityBase(made.get(), &base);
    made->layer = layer;
    last = made;
    return last;
}

void takeLarger(int& value, int other) {
    value = std::max(value, other);
}

} // namespace

int DxDimChainAdd(const DX_ENTITY_BASE_TYPE& base, const DX_NAME& layer, double angle,
                  const DX_HOST_DIM& host, const DX_DIM_GEO& source) {
    const std::size_t count = host.points.size();
    const bool isFit = count >= fewestPoints && count <= mostPoints && !host.text.IsEmpty() &&
                       !agree(host.refs[0], host.refs[1], DxDrawingTolerance());
    double la, lb, lc;
    if (!isFit || GeLineByPtAng(DxDimPoint(host.points[firstLinePoint]), angle * toRadians, &la, &lb, &lc))
        return DX_DIM_UNDECODED;
    const std::size_t place = findChain(host.kind, layer.view(), la, lb, lc);
    if (place == DxDimChains.size()) {
        DxDimChains.push_back({la, lb, lc, host.kind, {}});
        DxDimChainIndex.emplace(cellKey(host.kind, layer.view(), lc, DxDrawingTolerance(), 0), place);
    }
    DX_DIM_CHAIN_PART& part = DxDimChains[place].parts.emplace_back();
    part.base = sharedBase(base, layer);
    part.dim = host;
    part.sets = DxDimSets;
    part.source = source.seen;
    return 0;
}

int DxDimChainDraw() {
    int error = 0;
    for (std::size_t i = 0; i < DxDimChains.size() && !error; ++i) error = drawChain(DxDimChains[i]);
    return error;
}

void DxDimChainFree() {
    DxDimChains.clear();
    DxDimChainIndex.clear();
    DxDimLastBase.reset();
}

int DxDimChainParams(int code, const DX_DIM_CHAIN_PART* part) {
    constexpr int notApplicable = 3011;
    OV_DIM_TXT_PARM& txt = DxDimGroupSets.txt;
    switch (code) {
    case DX_CHAIN_TO_HOST: return DxovSetDimSets(DxDimGroupSets);
    case DX_CHAIN_START: DxDimGroupSets = part->sets; return 0;
    case DX_CHAIN_MERGE:
        takeLarger(txt.decimals, part->sets.txt.decimals);
        takeLarger(txt.leadingZero, part->sets.txt.leadingZero);
        takeLarger(txt.decimalsShown, part->sets.txt.decimalsShown);
        takeLarger(txt.comma, part->sets.txt.comma);
        if (part->sets.tol.kind > DxDimGroupSets.tol.kind) DxDimGroupSets.tol = part->sets.tol;
        return 0;
    case DX_CHAIN_RESTORE: return DxRestoreDimParams();
    default: return notApplicable;
    }
}

int DxCiDimChainToAppDim(const std::vector<int>& pats, const std::vector<int>& rows) {
    if (rows.empty()) return 0;
    std::vector<DsCsr> cursors;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        DsDpatCsr place;
        place.SetPatNo(pats[i]);
        place.SetElRow(rows[i]);
        place.SetDtype(D_DIMENSION);
        cursors.emplace_back(place, 0);
    }
    CiDim dimensions(DxCiContextId);
    int done = 0;
    _ObObject* made = nullptr;
    int error =
        dimensions.DimListToAppDim(cursors.data(), static_cast<int>(cursors.size()), &done, &made, "ardim");
    if (!error && made) error = DxImportedObjects.add(made);
    // From the back, so that the rows ahead stay what they are.
    for (int i = std::min(done, static_cast<int>(cursors.size())); i > 0 && !error; --i)
        error = dimensions.Del(cursors[static_cast<std::size_t>(i) - 1]);
    return error;
}
