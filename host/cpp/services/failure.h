// The test switch of the reference host: its n-th call fails.
#pragma once

#include <string>

namespace host {

/// Makes the `n`-th call from now on fail, and only that one; 0 switches off. Returns nothing failed yet.
void failCall(long n);
/// Calls counted since the last failCall.
long callCount();
/// Makes each call of a service fail, by the name of its function, as in a host that doesn't offer it; empty
/// switches off.
void failService(const std::string& name);
/// Counts a call; true when it is to fail. Every host function that can fail asks first.
bool callFails(const char* service = __builtin_FUNCTION());

} // namespace host
