// Work on several inputs, each in a process of its own.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tool {

/// Does `work` for each input and gives the worst exit status. A single input is done in this process;
/// several are done in a process each, `jobs` at a time, so that a crash costs one file only. What they write
/// comes out in the order of the inputs.
int forEachInput(const std::vector<std::string>& inputs, int jobs,
                 const std::function<int(const std::string& input)>& work);

} // namespace tool
