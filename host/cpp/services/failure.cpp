#include "services/failure.h"

namespace host {

namespace {
struct Switch {
    long failAt = 0; ///< 0: off
    long calls = 0;
    std::string failed;
    bool notes = false; ///< whether anyone asks for the services
    std::string service;
    std::set<std::string> called;
};
Switch state; // NOLINT: the switch of the whole process
} // namespace

void failCall(long n) {
    state.failAt = n;
    state.calls = 0;
    state.failed.clear();
}

long callCount() {
    return state.calls;
}

void failService(const std::string& name) {
    state.notes = true;
    state.service = name;
    state.called.clear();
}

const std::string& failedService() {
    return state.failed;
}

const std::set<std::string>& servicesCalled() {
    return state.called;
}

bool callFails(const char* service) {
    if (state.notes) {
        state.called.insert(service);
        if (state.service == service) return true;
    }
    if (++state.calls != state.failAt) return false;
    state.failed = service;
    return true;
}

} // namespace host
