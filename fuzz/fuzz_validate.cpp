// The DXF validator: any bytes as a file, judged, the report written as text and JSON.
#include "validate.h"

#include <cstdint>
#include <cstdlib>
#include <sstream>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const validate::Report report =
        validate::validateText({reinterpret_cast<const char*>(data), size}, {.limit = size % 8 ? 3U : 0U});
    std::ostringstream out;
    printText(report, out);
    if (size % 4 == 0) printJson(report, out);
    // What is counted and what is kept must agree.
    std::size_t counted = 0;
    for (const auto& [rule, count] : report.counts) counted += count;
    if (counted != report.errors + report.warnings + report.notes) std::abort();
    if (!report.truncated && counted != report.findings.size()) std::abort();
    return 0;
}
