#include "services/failure.h"

namespace host {

namespace {
struct Switch {
    long failAt = 0; ///< 0: off
    long calls = 0;
};
Switch state; // NOLINT: the switch of the whole process
} // namespace

void failCall(long n) {
    state = {n, 0};
}

long callCount() {
    return state.calls;
}

bool callFails() {
    return ++state.calls == state.failAt;
}

} // namespace host
