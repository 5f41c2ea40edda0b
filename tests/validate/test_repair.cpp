// Mended files: what is claimed to be mended is, what is drawn stays as it was.

#include "faults.h"
#include "repair.h"
#include "validate.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <sstream>

namespace {

namespace fs = std::filesystem;

/// Rules whose fault stays, with the reason. All others are mended.
const std::map<int, const char*> kStays = {
    {117, "a long text is cut by nobody"},
    {118, "texts of entities are left alone"},
    {119, "texts of entities are left alone"},
    {126, "a group without a meaning may have one for somebody"},
    {201, "no value is guessed"},
    {202, "no value is guessed"},
    {203, "no value is guessed"},
    {204, "no value is guessed"},
    {205, "no value is guessed"},
    {206, "no value is guessed"},
    {207, "no value is guessed"},
    {208, "no value is guessed"},
    {211, "the shape of a curve is not guessed"},
    {212, "the shape of a curve is not guessed"},
    {213, "no value is guessed"},
    {215, "the shape of a face is not guessed"},
    {216, "the shape of a boundary is not guessed"},
    {217, "no value is guessed"},
    {218, "groups of entities are left alone"},
    {219, "groups of entities are left alone"},
    {220, "groups of entities are left alone"},
    {221, "extended data are left alone"},
    {222, "extended data are left alone"},
    {223, "extended data are left alone"},
    {224, "extended data are left alone"},
    {225, "application groups are left alone"},
    {226, "nested data are left alone"},
    {409, "nothing is renamed"},
    {410, "nothing is renamed"},
    {411, "nothing is renamed"},
    {412, "nothing is renamed"},
    {504, "which insert is too many is not guessed"},
    {509, "no path is guessed"},
    {601, "markers of entities are left alone"},
    {602, "markers of entities are left alone"},
    {603, "markers of entities are left alone"},
    {604, "markers of entities are left alone"},
    {605, "markers of entities are left alone"},
    {606, "markers of entities are left alone"},
    {608, "groups of entities are left alone"},
    {609, "groups of entities are left alone"},
    {610, "groups of entities are left alone"},
    {611, "a kind of a later version has no other in this one"},
    {612, "nobody knows what an unknown kind is"},
    {618, "groups of entities are left alone"},
    {701, "which character was meant is not guessed"},
    {703, "texts of entities are left alone"},
    {803, "programs add these themselves"},
    {808, "no reactor is made"},
    {809, "an empty group stays"},
    {902, "which version a file is of is not guessed"},
    {903, "a variable may be somebody's own"},
};

/// Rules of which some faults are mended and some are not.
const std::set<int> kPartly = {104, 105, 115, 209, 214, 301, 312, 503, 607, 613, 806};

struct Entity {
    std::string kind;
    std::multiset<std::pair<int, std::string>> pairs;
    bool operator==(const Entity&) const = default;
};

/// What is drawn: the pairs of entities in blocks and ENTITIES, without handles, owners and application
/// groups.
std::vector<Entity> entitiesOf(const std::string& text) {
    std::istringstream in(text);
    std::vector<Entity> entities;
    std::string code, value;
    bool inside = false, inGroup = false;
    while (std::getline(in, code) && std::getline(in, value)) {
        while (!value.empty() && value.back() == '\r') value.pop_back();
        const int number = std::atoi(code.c_str());
        if (number == 0) {
            if (value == "SECTION") inside = false;
            const bool isFrame = value == "BLOCK" || value == "ENDBLK" || value == "ENDSEC" ||
                                 value == "SEQEND" || value == "SECTION" || value == "EOF";
            if (inside && !isFrame) entities.push_back({value, {}});
            if (isFrame && value != "SECTION" && inside) entities.push_back({});
            inGroup = false;
        } else if (number == 2 && (value == "BLOCKS" || value == "ENTITIES") && !inside) {
            inside = true;
        } else if (inside && !entities.empty()) {
            if (number == 102) inGroup = !inGroup;
            if (number != 102 && !inGroup && number != 5 && number != 330)
                entities.back().pairs.emplace(number, value);
        }
    }
    std::erase_if(entities, [](const Entity& entity) { return entity.kind.empty(); });
    return entities;
}

std::string findingsOf(const validate::Report& report) {
    std::ostringstream out;
    printText(report, out);
    return out.str();
}

class Repair : public testing::TestWithParam<Fault> {};

} // namespace

TEST_P(Repair, MendsTheFaultOrLeavesTheFileAsItIs) {
    const Fault& fault = GetParam();
    const std::string text = faultyText(fault);
    const repair::Outcome outcome = repair::repairFile(text, 0);
    ASSERT_TRUE(outcome.isDxf);
    validate::Report after = validate::validateText(outcome.text, {.limit = 0});
    if (!kPartly.count(fault.rule) && !kStays.count(fault.rule)) {
        EXPECT_EQ(after.errors + after.warnings, 0U) << findingsOf(after);
        EXPECT_GT(outcome.mends.counts.count(fault.rule), 0U) << "it is told";
    }
    // Nothing new is wrong, and what was mended once needs no mend.
    validate::Report before = validate::validateText(text, {.limit = 0});
    EXPECT_LE(after.errors, before.errors) << findingsOf(after);
    EXPECT_EQ(repair::repairFile(outcome.text, 0).mends.counts, (std::map<int, size_t>()));
}

INSTANTIATE_TEST_SUITE_P(Rules, Repair, testing::ValuesIn(oneFaultFiles().begin(), oneFaultFiles().end()),
                         [](const auto& row) {
                             return std::to_string(row.param.rule) + "_" + std::to_string(row.index);
                         });

TEST(RepairedFile, KeepsWhatIsDrawn) {
    // Rules whose mend is in an entity itself: a lost pointer, a count, a name, an encoding.
    const std::set<int> inEntities = {103, 104, 105, 115, 209, 310, 311, 312, 505, 510, 702, 704};
    for (const Fault& fault : oneFaultFiles()) {
        const std::string text = faultyText(fault);
        const repair::Outcome outcome = repair::repairFile(text);
        if (inEntities.count(fault.rule)) continue;
        auto before = entitiesOf(text), after = entitiesOf(outcome.text);
        EXPECT_EQ(before.size(), after.size()) << fault.rule << " in AC" << fault.version;
        EXPECT_TRUE(std::is_permutation(before.begin(), before.end(), after.begin(), after.end()))
            << fault.rule << " in AC" << fault.version;
    }
}

TEST(RepairedFile, ValidFilesStayAsTheyAre) {
    for (int version : {9, 12, 14, 15, 18, 21, 24, 27, 32}) {
        const std::string text = validFile(version).text();
        const repair::Outcome outcome = repair::repairFile(text, 0);
        EXPECT_EQ(outcome.mends.counts, (std::map<int, size_t>())) << version;
        EXPECT_EQ(entitiesOf(outcome.text), entitiesOf(text)) << version;
    }
}

TEST(RepairedFile, LineEndsAndMarksAreSetRight) {
    const std::string text = validFile(15).text();
    std::string returns = text;
    std::replace(returns.begin(), returns.end(), '\n', '\r');
    for (const std::string& faulty : {returns, "\xEF\xBB\xBF" + text}) {
        const repair::Outcome outcome = repair::repairFile(faulty);
        const validate::Report report = validate::validateText(outcome.text);
        EXPECT_EQ(report.errors + report.warnings, 0U) << findingsOf(report);
        EXPECT_EQ(entitiesOf(outcome.text), entitiesOf(text));
        EXPECT_EQ(outcome.mends.counts.size(), 1U);
    }
    EXPECT_FALSE(repair::repairFile("no drawing\n").isDxf);
    EXPECT_FALSE(repair::repairFile("").isDxf);
}

TEST(RepairedFile, TextsGetTheEncodingOfTheirVersion) {
    DxfFile old = validFile(15).set("TEXT", 1, "\xC3\xA4\xF0\x9F\x98\x80");
    EXPECT_NE(repair::repairFile(old.text()).text.find("\\U+00E4\\U+D83D\\U+DE00\n"), std::string::npos);
    DxfFile mixed = validFile(15).set("TEXT", 1, "\xC3\xA4").set("LTYPE", 3, "\xE4", 4);
    EXPECT_NE(repair::repairFile(mixed.text()).text.find("\n\xC3\xA4\n"), std::string::npos)
        << "by chance one of them looks like UTF-8";
    DxfFile later = validFile(21).set("TEXT", 1, "gr\xFC\xDF \x80");
    EXPECT_NE(repair::repairFile(later.text()).text.find("\ngr\xC3\xBC\xC3\x9F \xE2\x82\xAC\n"),
              std::string::npos);
}

TEST(RepairedFile, AnyPartMayBeMissing) {
    for (int version : {9, 15, 32}) {
        const DxfFile whole = validFile(version);
        for (const char* section : {"HEADER", "TABLES", "BLOCKS", "ENTITIES", "OBJECTS"}) {
            if (version == 9 && section == std::string("OBJECTS")) continue;
            DxfFile file = whole;
            const validate::Report report = validate::validateText(
                repair::repairFile(file.cutNamed("SECTION", section, "ENDSEC").text()).text);
            EXPECT_EQ(report.counts.count(107), 0U) << section << findingsOf(report);
        }
        const std::string text = whole.text();
        for (size_t at = 40; at < text.size(); at += 211) repair::repairFile(text.substr(0, at));
    }
}

TEST(RepairedFile, RealOnesHaveNoMoreErrors) {
    const char* folder = std::getenv("TORVA_CORPUS");
    if (!folder) GTEST_SKIP() << "TORVA_CORPUS names no directory with real drawings";
    size_t files = 0;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        std::string extension = entry.path().extension().string();
        for (char& c : extension) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        if (!entry.is_regular_file() || extension != ".dxf" || entry.file_size() > 4000000) continue;
        ++files;
        std::ifstream in(entry.path(), std::ios::binary);
        const std::string text((std::istreambuf_iterator<char>(in)), {});
        const repair::Outcome outcome = repair::repairFile(text);
        if (!outcome.isDxf) continue;
        const validate::Report before = validate::validateText(text),
                               after = validate::validateText(outcome.text);
        EXPECT_LE(after.errors, before.errors) << entry.path() << '\n' << findingsOf(after);
        EXPECT_EQ(repair::repairFile(outcome.text, 0).mends.counts, (std::map<int, size_t>()))
            << entry.path();
    }
    EXPECT_GT(files, 0U);
}
