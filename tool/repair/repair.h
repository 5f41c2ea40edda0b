#pragma once
// Mends DXF files: what can be set right without touching what is drawn. It works on the pairs of the file
// and knows the format by the validator's tables; neither the reader nor the writer of drawings has a part in
// it.

#include "validate.h"

#include <string>
#include <string_view>

namespace repair {

struct Outcome {
    bool isDxf = false;       ///< false: there is no section to begin with, `text` is empty
    validate::Report mends{}; ///< what was mended, by the numbers of the rules; levels mean nothing here
    std::string text{};       ///< the mended file, always a text DXF
};

/// Mends the file in memory, a text or binary DXF. So many mends of a rule are kept in full (0: all), the
/// rest is counted.
Outcome repairFile(std::string_view bytes, size_t limit = validate::kDefaultLimit);

/// One line a mend ("FILE:LINE: mended 306: ..."), then how many there are.
void printMends(const Outcome& outcome, const std::string& file, std::ostream& out);

} // namespace repair
