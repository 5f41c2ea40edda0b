// Files that are fine.

#include "valid_file.h"
#include "validate.h"

#include <gtest/gtest.h>
#include <sstream>

namespace {

std::string findingsOf(const std::string& text) {
    std::ostringstream out;
    printText(validate::validateText(text), out);
    return out.str();
}

class ValidFile : public testing::TestWithParam<int> {};

TEST_P(ValidFile, HasNoFindingButNotes) {
    const std::string text = validFile(GetParam()).text();
    const validate::Report report = validate::validateText(text);
    EXPECT_EQ(report.errors + report.warnings, 0U) << findingsOf(text);
}

INSTANTIATE_TEST_SUITE_P(Versions, ValidFile, testing::Values(9, 12, 14, 15, 18, 21, 24, 27, 32));

} // namespace
