// The command line of render.
#pragma once

#include "options.h"

#include <CLI/CLI.hpp>

#include <string>

namespace tool {

/// The options that only pictures have.
void addPictureOptions(CLI::App& render, Options& options);

/// Makes inputs, output and type of the words of the command line, and reads sheets where one is asked for
/// (`spaceGiven`: the user says what to read). Result: why they make no sense together, in words; else empty.
std::string settlePicture(Options& options, bool spaceGiven);

} // namespace tool
