// Standard input and output as places of drawings.
#pragma once

#include <cstdio>
#include <string>

namespace tool {

/// Ahead of all else. A standard stream that the caller closed must not become the number of a file opened
/// later, or messages would land in it; and a reader that has gone, or a file that may not grow further, is
/// an error of writing, behind which temporary files are still removed.
void guardStreams();

/// Copies what `from` still holds. False when it can't be read or written to the end.
bool copyStream(FILE* from, FILE* to);

/// Whether `name` is standard output ("-"), a pipe or a device: what can only be written to its end, not
/// replaced.
bool isStream(const std::string& name);

/// Copies a file to standard output ("-"), a pipe or a device. What is wrong with standard output is told by
/// finishOutput().
bool copyToStream(const std::string& path, const std::string& name);

/// Behind all else: brings standard output to its end. `status`, or 1 when not all could be written, which is
/// told unless the reader has gone.
int finishOutput(int status);

} // namespace tool
