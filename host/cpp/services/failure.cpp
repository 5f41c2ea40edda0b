#include "services/failure.h"

namespace host {

namespace {
struct Switch {
    long failAt = 0; ///< 0: off
    long calls = 0;
    bool notes = false; ///< whether anyone asks for the services
    std::string service;
    std::set<std::string> called;
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
    state.notes = true;
    state.service = name;
    state.called.clear();
}

const std::set<std::string>& servicesCalled() {
    return state.called;
}

bool callFails(const char* service) {
    if (state.notes) {
        state.called.insert(service);
        if (state.service == service) return true;
    }
    return ++state.calls == state.failAt;
}

} // namespace host
