// The test switch of the reference host: its n-th call fails.
#pragma once

namespace host {

/// Makes the `n`-th call from now on fail, and only that one; 0 switches off. Returns nothing failed yet.
void failCall(long n);
/// Calls counted since the last failCall.
long callCount();
/// Counts a call; true when it is the one to fail. Every host function that can fail asks first.
bool callFails();

} // namespace host
