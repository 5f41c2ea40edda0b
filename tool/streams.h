// Standard input and output as places of drawings.
#pragma once

#include <cstdio>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>

namespace tool {

/// Ahead of all else. A standard stream that the caller closed must not become the number of a file opened
/// later, or messages would land in it; and a reader that has gone, or a file that may not grow further, is
/// an error of writing, behind which temporary files are still removed.
void guardStreams();

/// Text for a terminal: control characters, which names of a drawing may hold, as \\xNN. Line feeds and tabs
/// stay.
std::string quoted(std::string_view text);
/// All that goes to a stream is quoted(), for a scope.
class QuotedOutput {
public:
    explicit QuotedOutput(std::ostream& out);
    ~QuotedOutput();
    QuotedOutput(const QuotedOutput&) = delete;
    QuotedOutput& operator=(const QuotedOutput&) = delete;

private:
    std::ostream& out_;
    std::streambuf* before_;
    std::unique_ptr<std::streambuf> buffer_;
};

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
