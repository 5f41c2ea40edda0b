#include "dx_scale.h"

#include "../config/config_state.h"
#include "../host/dx_frame.h"
#include "../host/dx_host.h"
#include "../import/dx_extents.h"
#include "dx_messages.h"
#include "dx_protocol.h"
#include "session_state.h"

#include "ov.h"
#include "uo.h"

namespace {

bool isVerbose() {
    double verbose = 0;
    return SuGetVarReal("&DxfVerbose", &verbose) == 0 && verbose > 0.5;
}

/// Settles the shift and moves the extents by it. Where nothing has been measured there is nothing to centre.
void settleShift() {
    const bool isKnown = !DxIsExtentsUnInizialized();
    if (DxUseInsBase) {
        DxShiftX = DxInsBase.x;
        DxShiftY = DxInsBase.y;
    } else {
        DxShiftX = isKnown ? (DxExtMin.x + DxExtMax.x) / 2 : 0;
        DxShiftY = isKnown ? (DxExtMin.y + DxExtMax.y) / 2 : 0;
    }
    if (DxShiftX != 0 && DxShiftY != 0) {
        const UtCString word = DxMsg(6996);
        DxProtoMsg(UtFormat("%s X:%.6f Y:%.6f", word.c_str(), DxShiftX, DxShiftY), isVerbose());
    }
    if (!isKnown) return;
    DxExtMin.x -= DxShiftX;
    DxExtMax.x -= DxShiftX;
    DxExtMin.y -= DxShiftY;
    DxExtMax.y -= DxShiftY;
}

/// Format number of a word from the file's comment; an unknown word keeps `format`.
int formatOfWord(const UtCString& word, int format) {
    static constexpr const char* WORDS[] = {"A00", "A0", "A1", "A2", "A3", "A4", "A5"};
    for (int i = 0; i < 7; ++i)
        if (word == WORDS[i]) return i;
    return format;
}

/// Whether the drawing fits on a sheet A0 about the origin at scale `scale`.
bool fits(double scale) {
    constexpr double HALF_WIDTH = 841.0, HALF_HEIGHT = 594.5; // millimetres, with as much again to spare
    const double factor = DxLengthToHost(scale * DxDrawUnit);
    return !(factor * DxExtMax.x > HALF_WIDTH || factor * DxExtMin.x < -HALF_WIDTH ||
             factor * DxExtMax.y > HALF_HEIGHT || factor * DxExtMin.y < -HALF_HEIGHT);
}

/// The present scale if the drawing fits at it, else the first of 1, 1/2, 1/2.5, 1/5, 1/10 … at which it
/// does. The smallest of them stands where none will do.
double fittingScale(double scale) {
    if (DxIsExtentsUnInizialized()) return scale;
    static constexpr double STEPS[] = {1.0, 2.0, 2.5, 5.0};
    double decade = 1.0;
    for (int i = 0; !fits(scale); ++i) {
        if (i && i % 4 == 0) decade *= 10.0;
        const double candidate = 1.0 / (decade * STEPS[i % 4]);
        if (candidate < 1e-5 || candidate > 100.0) break;
        scale = candidate;
    }
    return scale;
}

/// Millimetres in one unit of the drawing, at scale `scale`.
int readDrawUnit(double scale) {
    double factor = 0;
    const int error = ovconv(100, 3, 1.0, &factor);
    if (!error) DxDrawUnit = factor / scale;
    return error;
}

/// Gives the scale to the host, and all that follows from it to the session.
int applyScale(int format, double scale, int unit) {
    if (const int error = ovform(7, &format, &scale, &unit)) return error;
    DxScale = scale;
    int code = 0;
    ov3dfunc(&code);
    return readDrawUnit(scale);
}

} // namespace

int DxfSetScale(int fitToSheet) {
    settleShift();
    int format = 0, unit = 0;
    double scale = 1.0;
    ovform(5, &format, &scale, &unit);
    readDrawUnit(scale);
    if (!DxFileFormat.IsEmpty() && DxFileScale != 0) {
        scale = DxFileScale;
        format = formatOfWord(DxFileFormat, format);
    } else if (fitToSheet) {
        scale = fittingScale(scale);
    }
    const int error = applyScale(format, scale, unit);
    UoStartInitEpsNew(1.0);
    DxCiInit();
    return error;
}
