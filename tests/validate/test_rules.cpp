// Each rule by one fault in an otherwise valid file: it must be found, and nothing else.

#include "faults.h"
#include "validate.h"

#include <gtest/gtest.h>
#include <set>

namespace {

using validate::Level;

class OneFault : public testing::TestWithParam<Fault> {};

TEST_P(OneFault, IsFoundAndNothingElse) {
    const Fault& fault = GetParam();
    auto before = validate::validateText(validFile(fault.version).text()).counts;
    validate::Report report = validate::validateText(faultyText(fault), {.limit = 0});
    std::string rest, texts;
    for (const validate::Finding& finding : report.findings) {
        const std::string line = finding.text + " [" + finding.section + " " + finding.entity + "]\n";
        if (finding.number == fault.rule)
            texts += line;
        else if (finding.level != Level::Note)
            rest += line;
    }
    EXPECT_GT(report.counts[fault.rule], before[fault.rule]);
    EXPECT_EQ(rest, "");
    EXPECT_NE(texts.find(fault.what), std::string::npos) << texts;
}

TEST(Rules, EachHasAFault) {
    std::set<int> tested = {101, 102}; // whole files that are none, tested elsewhere
    for (const Fault& fault : oneFaultFiles()) tested.insert(fault.rule);
    for (const validate::RuleInfo& rule : validate::allRules())
        EXPECT_EQ(tested.count(rule.number), 1U) << rule.number;
}

INSTANTIATE_TEST_SUITE_P(Rules, OneFault, testing::ValuesIn(oneFaultFiles().begin(), oneFaultFiles().end()),
                         [](const auto& row) {
                             return std::to_string(row.param.rule) + "_" + std::to_string(row.index);
                         });

} // namespace
