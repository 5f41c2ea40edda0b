// Reader of SPLINE.
#include "dx_entity_base.h"
#include "dx_spline_import.h"

#include <algorithm>

namespace {

using S = DX_SPLINE_TYPE;
constexpr auto fields = dxFields<S>({
    {12, &S::startTangent},
    {13, &S::endTangent},
    {42, &S::knotTolerance},
    {43, &S::controlTolerance},
    {44, &S::fitTolerance},
    {70, &S::flags},
    {71, &S::degree},
    {72, &S::knotCount},
    {73, &S::controlCount},
    {74, &S::fitCount},
    {210, &S::extrusion},
});

/// Lists grow with what the file holds; what goes beyond the announced count is dropped.
template <class T>
bool hasRoom(const std::vector<T>& list, int announced) {
    return announced > 0 && list.size() < static_cast<std::size_t>(announced);
}

/// Groups of the knots, control points and fit points. A group 10 or 11 moves on to the next point.
class SplineLists {
public:
    explicit SplineLists(DX_SPLINE_TYPE& rec) : rec_(rec) {}

    bool operator()(const DxPair& pair) {
        const double value = isListGroup(pair.code) ? DxfReadConvDouble(pair.text) : 0;
        switch (pair.code) {
        case 40:
            if (hasRoom(rec_.knots, rec_.knotCount)) rec_.knots.push_back(value);
            return true;
        case 10: beginControl(value); return true;
        case 20: putControl(value, &RPT3::y); return true;
        case 30: putControl(value, &RPT3::z); return true;
        case 41:
            if (!controlsFull_ && hasRoom(weights_, rec_.controlCount))
                weights_.push_back({rec_.controlPoints.size(), value});
            return true;
        case 11: beginFit(value); return true;
        case 21: putFit(value, &RPT3::y); return true;
        case 31: putFit(value, &RPT3::z); return true;
        default: return false;
        }
    }

    /// Gives the weights to their points, when all groups are read. Some files have each weight behind its
    /// point; others have a list of them, ahead of the points or behind.
    void settleWeights() {
        const bool isList = std::adjacent_find(weights_.begin(), weights_.end(), [](auto& a, auto& b) {
                                return a.points == b.points;
                            }) != weights_.end();
        for (std::size_t i = 0; i < weights_.size(); ++i) {
            const std::size_t point = isList || weights_[0].points == 0 ? i : weights_[i].points - 1;
            if (point < rec_.controlPoints.size()) rec_.controlPoints[point].weight = weights_[i].value;
        }
    }

private:
    struct Weight {
        std::size_t points; ///< read ahead of it
        double value;
    };

    static bool isListGroup(int code) {
        return code == 40 || code == 41 || (code >= 10 && code <= 31 && code % 10 <= 1);
    }
    void beginControl(double x) {
        controlsFull_ = !hasRoom(rec_.controlPoints, rec_.controlCount);
        if (!controlsFull_) rec_.controlPoints.push_back({{x, 0, 0}, 1.0});
    }
    void putControl(double value, double RPT3::*part) {
        if (!controlsFull_ && !rec_.controlPoints.empty()) rec_.controlPoints.back().point.*part = value;
    }
    void beginFit(double x) {
        fitsFull_ = !hasRoom(rec_.fitPoints, rec_.fitCount);
        if (!fitsFull_) rec_.fitPoints.push_back({x, 0, 0});
    }
    void putFit(double value, double RPT3::*part) {
        if (!fitsFull_ && !rec_.fitPoints.empty()) rec_.fitPoints.back().*part = value;
    }

    DX_SPLINE_TYPE& rec_;
    std::vector<Weight> weights_;
    bool controlsFull_ = false, fitsFull_ = false;
};

} // namespace

int DxReadSpline(DX_SPLINE_TYPE* rec) {
    *rec = DX_SPLINE_TYPE{};
    DxInitEntityBase(&rec->base);
    DxInitExtrusion(rec->extrusion);
    SplineLists lists(*rec);
    if (const int error = DxReadEntity(*rec, fields, lists)) return error;
    lists.settleWeights();
    rec->knotCount = static_cast<int>(rec->knots.size());
    rec->controlCount = static_cast<int>(rec->controlPoints.size());
    rec->fitCount = static_cast<int>(rec->fitPoints.size());
    return 0;
}
