#include "services/failure.h"

namespace host {

namespace {
struct Switch {
    long failAt = 0; ///< 0: off
    long calls = 0;
    std::string service; ///< empty: off
};
Switch state; // NOLINT: the switch of the whole process
} // namespace

void failCall(long n) {
    state.failAt = n;
    state.calls = 0;
}

long callCount() {
    return state.calls;
}

void failService(const std::string& name) {
    state.service = name;
}

bool callFails(const char* service) {
    if (!state.service.empty() && state.service == service) return true;
    return ++state.calls == state.failAt;
}

} // namespace host
