// The look of an imported hatch.
#include "dx_hatch_pattern.h"

#include "../config/config_state.h"
#include "../config/dx_pens.h"
#include "../host/dx_host.h"
#include "../host/dx_host_hatch.h"
#include "../import/dx_transform.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "../session/session_state.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr double pi = std::numbers::pi;
constexpr double radiansADegree = pi / 180;
constexpr double same = 0.0001;

bool isSame(double a, double b) {
    return std::fabs(a - b) < same;
}

// ---- folding -------------------------------------------------------------------------------------------

/// A direction in the making. Lines lie at `base`, then c1 times at the distance d1, c2 times at d2.
struct Family {
    double angle; ///< radians
    double period;
    int lineType;
    double base;
    double d1, d2;
    int c1, c2;
    double rest; ///< of the period behind the last line

    double last() const { return base + c1 * d1 + c2 * d2; }

    /// Counts a gap behind the last line. False when it fits neither distance.
    bool add(double gap) {
        if (c1 == 0) {
            d1 = gap;
            c1 = 1;
        } else if (isSame(gap, c2 ? d2 : d1)) {
            ++(c2 ? c2 : c1);
        } else if (c2 == 0) {
            d2 = gap;
            c2 = 1;
        } else {
            return false;
        }
        rest -= gap;
        return true;
    }
    /// What is left of the period is the gap to the first line of the next.
    bool close() {
        if (std::fabs(rest) > same && !add(rest)) return false;
        return period >= same && isSame(period, c1 * d1 + c2 * d2);
    }
    void reduceBase() {
        base = std::fmod(base, c1 * d1 + c2 * d2);
        if (std::fabs(base) < same) base = same; // 0 stands for a direction without a base of its own
    }
};

constexpr int mostFamilies = 2;

class Folding {
public:
    /// False when the rows don't fold.
    bool fold(const DX_HATCH_DEF* defs, int count) {
        for (int i = 0; i < count; ++i)
            if (!take(defs[i])) return false;
        if (count_ == 0) return false;
        for (int i = 0; i < count_; ++i) {
            if (!families_[i].close()) return false;
            families_[i].reduceBase();
            if (!std::isfinite(families_[i].base)) return false;
        }
        return true;
    }
    int count() const { return count_; }
    const Family& operator[](int i) const { return families_[i]; }

private:
    bool take(const DX_HATCH_DEF& def) {
        const double a = def.angle * radiansADegree;
        const double s = std::sin(a), c = std::cos(a);
        const double place = def.base.x * s - def.base.y * c; // to the right of the direction
        const double period = std::fabs(def.offset.x * s - def.offset.y * c);
        const int lineType = DxGetHatchLt(def.dashes.data(), def.dashCount);
        for (int i = 0; i < count_; ++i) {
            Family& f = families_[i];
            if (!isSame(f.angle, a) || !isSame(f.period, period) || f.lineType != lineType) continue;
            if (f.add(place - f.last())) return true;
        }
        if (count_ == mostFamilies) return false;
        families_[count_++] = {a, period, lineType, place, 0, 0, 0, 0, period};
        return true;
    }

    Family families_[mostFamilies];
    int count_ = 0;
};

UO_HATCH_PAR standardPar(int number, int pen) {
    UO_HATCH_PAR par;
    par.number = number;
    par.pen = pen;
    par.lineType = 1;
    par.angle = pi / 4;
    par.d1 = par.d2 = 2.0;
    par.c1 = number == 1 ? 1 : 0;
    return par;
}

UO_HATCH_PAR parOf(const Family& family, int number, int pen) {
    UO_HATCH_PAR par;
    par.number = number;
    par.pen = pen;
    par.lineType = family.lineType;
    par.angle = family.angle;
    par.base = family.base;
    par.d1 = family.d1;
    par.d2 = family.d2;
    par.c1 = family.c1;
    par.c2 = family.c2;
    return par;
}

int setFill(int pen, int transparency) {
    const int error = DxSetFillPen(DxActPat, pen);
    return error ? error : DxovHatchTransparency(transparency);
}

int setFamilies(int pen, const Folding* folding, int transparency) {
    if (const int error = DxovHatchBegin()) return error;
    for (int i = 0; i < mostFamilies; ++i) {
        const bool used = folding && i < folding->count();
        const UO_HATCH_PAR par = used ? parOf((*folding)[i], i + 1, pen) : standardPar(i + 1, pen);
        if (const int error = DxovHatchPar(par, used)) return error;
    }
    return transparency ? DxovHatchTransparency(transparency) : 0;
}

// ---- placing -------------------------------------------------------------------------------------------

RPT vectorBy(const RPT& v, const Mat44 m) {
    return {v.x * m[0][0] + v.y * m[1][0], v.x * m[0][1] + v.y * m[1][1]};
}

/// A row in world coordinates. Its lines lie where the matrix brings them, whatever it does to their angle.
DX_HATCH_DEF place(const DX_HATCH_DEF& def, double z, const Mat44 m) {
    const double a = def.angle * radiansADegree;
    const RPT along = vectorBy({std::cos(a), std::sin(a)}, m);
    const double stretch = std::hypot(along.x, along.y);
    DX_HATCH_DEF placed = def;
    const bool turns = m[0][0] != m[1][1] || m[0][1] != 0 || m[1][0] != 0 || m[0][0] < 0;
    if (turns) placed.angle = std::atan2(along.y, along.x) / radiansADegree;
    RPT3 base{def.base.x, def.base.y, z};
    DxTrans3DRpt(&base, m);
    placed.base = {base.x, base.y};
    placed.offset = vectorBy(def.offset, m);
    for (double& dash : placed.dashes) dash *= stretch;
    return placed;
}

bool isSound(const DX_HATCH_DEF& def) {
    bool sound = std::isfinite(def.angle) && std::isfinite(def.base.x) && std::isfinite(def.base.y) &&
                 std::isfinite(def.offset.x) && std::isfinite(def.offset.y);
    for (const double dash : def.dashes) sound = sound && std::isfinite(dash);
    return sound;
}

/// Whether the lines of a row lie apart from each other.
bool hasDistance(const DX_HATCH_DEF& def) {
    const double a = def.angle * radiansADegree;
    return std::fabs(def.offset.y * std::cos(a) - def.offset.x * std::sin(a)) >
           1e-9 * std::hypot(def.offset.x, def.offset.y);
}

/// The pattern as the file has it goes along with the hatch, so that its own lines can be shown and written.
int keepPattern(const DX_HATCH_TYPE& rec, const std::vector<DX_HATCH_DEF>& defs, const Mat44 object) {
    const RPT along = vectorBy({1, 0}, object);
    OV_HATCH_PATTERN pattern;
    pattern.name = rec.patternName.view();
    pattern.scale = rec.patternScale * std::hypot(along.x, along.y);
    pattern.angle = rec.patternAngle * radiansADegree + std::atan2(along.y, along.x);
    pattern.type = rec.patternType;
    pattern.crossed = rec.doubleFlag;
    for (const DX_HATCH_DEF& def : defs)
        if (hasDistance(def))
            pattern.lines.push_back({def.angle * radiansADegree, def.base, def.offset, def.dashes});
    return DxovHatchPattern(std::move(pattern));
}

} // namespace

/// Hatches to come have these rows, or the standard hatch. Whether they fold.
static bool setLines(int pen, const DX_HATCH_DEF* defs, int count, int transparency, int* error) {
    Folding folding;
    const bool folds = folding.fold(defs, count);
    *error = setFamilies(pen, folds ? &folding : nullptr, transparency);
    return folds;
}

int DxSetHatchLook(const DX_HATCH_TYPE& rec, int pen, int transparency, const Mat44 object) {
    std::vector<DX_HATCH_DEF> defs;
    for (const DX_HATCH_DEF& def : rec.defs) {
        defs.push_back(place(def, rec.elevation.z, object));
        if (!isSound(defs.back())) defs.pop_back();
    }
    const auto count = static_cast<int>(defs.size());
    const bool keeps = DxKeepHatchPattern && !rec.solid && std::any_of(defs.begin(), defs.end(), hasDistance);
    if (!keeps)
        return DxSetHatchParams(pen, defs.data(), count, rec.solid, rec.patternName.view(), transparency);
    int error = 0;
    setLines(pen, defs.data(), count, transparency, &error);
    return error ? error : keepPattern(rec, defs, object);
}

int DxSetHatchParams(int pen, const DX_HATCH_DEF* defs, int defCount, int solid, const UtCString& name,
                     int transparency) {
    if (solid) return setFill(pen, transparency);
    int error = 0;
    if (!setLines(pen, defs, defCount, transparency, &error)) DxProtoMsg(DxMsg(5752, name.c_str()), 1);
    return error;
}

// ---- gradients -----------------------------------------------------------------------------------------

static bool contains(const UtCString& name, const char* part) {
    return name.str().find(part) != std::string::npos;
}

double DxGradientTurn(const UtCString& name) {
    double turn = name.str().starts_with("INV") ? -pi : 0;
    if (contains(name, "CURVED") || contains(name, "HEMISPHERICAL")) turn -= pi / 2;
    return turn;
}

static int formOf(const UtCString& name) {
    if (contains(name, "CURVED") || contains(name, "HEMISPHERICAL")) return 0;
    return contains(name, "CYLINDER") || contains(name, "SPHERICAL") ? 1 : 0;
}

static double reduceAngle(double a) {
    if (a < -pi) return a + (a < -3 * pi ? 4 * pi : 2 * pi);
    if (a > pi) return a - (a > 3 * pi ? 4 * pi : 2 * pi);
    return a;
}

int DxSetGradHatchParams(int pen1, int pen2, double angle, double /*shift*/, const UtCString& name,
                         int transparency) {
    constexpr double size = 50.0;
    const double a = reduceAngle(angle + DxGradientTurn(name));
    const OV_HATCH_COLOR first{pen1, transparency, a, 0, size, 0};
    const OV_HATCH_COLOR second{pen2, transparency, 0, 0, 0, 0};
    return DxovHatchGradient(name, formOf(name), first, second);
}
