// Macro variables and the question whether to stop.
#include "uo.h"

#include "drawing/drawing.h"
#include "services/session.h"

#include <algorithm>
#include <cmath>
#include <limits>

using namespace host;

static constexpr int errorNoVariable = 1005;

int UoGetMacVarD(const char* name, double* value) {
    const auto found = session().numbers.find(name);
    if (found == session().numbers.end()) return errorNoVariable;
    *value = found->second;
    return 0;
}

int UoGetMacVarI(const char* name, int* value) {
    double number = 0;
    if (const int error = UoGetMacVarD(name, &number)) return error;
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    *value = std::isnan(number) ? 0 : static_cast<int>(std::clamp(number, lowest, highest));
    return 0;
}

int UoGetMacVarS(const char* name, UtCString* value) {
    const auto found = session().texts.find(name);
    if (found == session().texts.end()) return errorNoVariable;
    *value = found->second;
    return 0;
}

int UoPutMacVarD(const char* name, double value) {
    session().numbers[name] = value;
    return 0;
}

int UoPutMacVarS(const char* name, const UtCString& value) {
    session().texts[name] = value.str();
    return 0;
}

int SuGetVarReal(const char* name, double* value) {
    return UoGetMacVarD(name, value);
}

int SuVarGetString(const char* name, UtCString* value) {
    return UoGetMacVarS(name, value);
}

int UoCheckAbort(int code) {
    constexpr int newRun = 11;
    Session& s = session();
    if (code == newRun) {
        s.elementLimitHit = false;
        return 0;
    }
    if (openDrawing().elementCount > s.maxElements) s.elementLimitHit = true;
    if (s.elementLimitHit) return 1;
    return s.wantsAbort && s.wantsAbort() ? 1 : 0;
}
