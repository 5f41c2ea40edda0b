// Mappings of files that others may shorten meanwhile. The system answers a read behind the new end of a file
// by SIGBUS; here the rest of the mapping becomes zeros instead, and the mapping is marked.
#pragma once

#include <cstddef>

namespace host {

/// Maps a file for reading and watches over the mapping. Null when the system refuses, or too many are
/// watched over already. From the first mapping to the last the process has a handler of SIGBUS; faults
/// elsewhere go to the handler that was there before.
void* mapGuarded(int descriptor, std::size_t size);
void unmapGuarded(void* memory, std::size_t size);
/// Whether a read of this mapping met the end of a file that got shorter.
bool isTorn(const void* memory);

} // namespace host
