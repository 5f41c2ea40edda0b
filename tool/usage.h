// What the command line's help shows, and slips of the finger explained.
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace tool {

/// Gives the program and each of its commands the examples that fit it. To be called when all commands exist.
void addExamples(CLI::App& app);

/// Puts the help's texts into the language of the run.
void translateHelp(CLI::App& app);

/// The first word of `arguments` that no command and no option has for a name, with what may have been meant;
/// empty when all names are known. Values and file names aren't looked at.
std::string unknownWord(const CLI::App& app, const std::vector<std::string>& arguments);

/// The names of the formats that an export can write, and other names that they go by: "2018", "R12", in any
/// case, give the keyword ("ACAD32"); what is no format's name is returned as it is.
std::string formatKeyword(const std::string& word);

} // namespace tool
