// Signals that ask the program to end.
#pragma once

namespace tool {

/// Ctrl-C, and a request to end by another program, ask the run once to stop; what doesn't within a second is
/// ended. Either way no temporary file stays and no target is half written. A second signal ends at once.
void watchInterrupt();
bool isInterrupted();
/// Whether another program asked, not the user: then nothing is written any more, where Ctrl-C keeps what was
/// read.
bool isTerminated();
/// What a program that a signal ended leaves as its exit status; `status` when none did.
int interruptedStatus(int status);

} // namespace tool
