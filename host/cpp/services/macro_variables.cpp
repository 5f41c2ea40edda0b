// Macro variables and the question whether to stop.
#include "uo.h"

#include "drawing/drawing.h"
#include "services/session.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

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

/// A question stands for so many entities of the file.
static constexpr std::size_t entitiesAQuestion = 100;
/// Questions that any pass may ask: a small limit of elements is meant for drawing, not for measuring.
static constexpr std::size_t freeQuestions = 100;

/// Blocks that insert blocks may hold more entities than anyone can read, and nothing of them need be drawn:
/// as many entities as elements are allowed, without a new element, stop this pass over the file, but not
/// the next.
static bool readsWithoutEnd(Session& s) {
    const std::size_t elements = openDrawing().elementCount;
    const bool grew = std::exchange(s.elementsWhenAsked, elements) != elements;
    s.idleQuestions = grew ? 0 : s.idleQuestions + 1;
    if (s.idleQuestions <= std::max(freeQuestions, s.maxElements / entitiesAQuestion)) return false;
    s.idleQuestions = 0;
    return true;
}

int UoCheckAbort(int code) {
    constexpr int newRun = 11;
    Session& s = session();
    if (code == newRun) {
        s.elementLimitHit = false;
        s.idleQuestions = 0;
        return 0;
    }
    if (openDrawing().elementCount > s.maxElements) s.elementLimitHit = true;
    constexpr int stop = 1, enoughOfThisPass = 2;
    if (s.elementLimitHit || (s.wantsAbort && s.wantsAbort())) return stop;
    return readsWithoutEnd(s) ? enoughOfThisPass : 0;
}
