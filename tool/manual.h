// The manual page and the completion of shells, made from the command's own options.
#pragma once

#include <CLI/CLI.hpp>

#include <string>

namespace tool {

/// The page in the language of man pages, section 1.
std::string manualPage(const CLI::App& app);
/// A script for bash that completes commands, options and the words that an option takes.
std::string bashCompletion(const CLI::App& app);

} // namespace tool
