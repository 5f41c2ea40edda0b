// Whole files: what is no DXF, hostile ones, real ones; the reports and the command.

#include "valid_file.h"
#include "validate.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sstream>

namespace {

namespace fs = std::filesystem;
using validate::validateText;

TEST(WholeFile, ThatIsNoTextDxfHasOneClearFinding) {
    const std::string wide("\xFF\xFE"
                           "0\0\n\0",
                           6),
        dwg("AC1015\0\0\0\0\0\0", 12);
    const std::string cases[] = {"",
                                 "\n\n  \n",
                                 wide,
                                 dwg,
                                 "CAD Binary DXF\r\n\x1A" + std::string(9, '\0'),
                                 "0\rSECTION\r2\rENTITIES\r",
                                 "<svg/>\n<g/>\n",
                                 std::string("\x89PNG\r\n\x1A\n\0\0\0\rIHDR", 16)};
    for (const std::string& text : cases) {
        const validate::Report report = validateText(text);
        EXPECT_EQ(report.counts.count(102), 1U) << text;
        EXPECT_EQ(report.findings.size(), 1U) << text;
    }
}

TEST(BinaryFile, IsJudgedLikeItsTextWithPlacesByByte) {
    const std::string head("CADxxxx Binary DXF\r\n\x1A", 21);
    const auto group = [](int code, const std::string& value) {
        return std::string{static_cast<char>(code), '\0'} + value;
    };
    const auto text = [&](int code, const char* value) { return group(code, value + std::string(1, '\0')); };
    const std::string real(8, '\0');
    const std::string start =
        head + '\0' + text(0, "SECTION") + text(2, "ENTITIES") + text(0, "LINE") + text(8, "0");
    const std::string points = group(10, real) + group(20, real) + group(11, real) + group(21, real);
    const std::string end = text(0, "ENDSEC") + text(0, "EOF");
    const validate::Report sound = validateText(start + points + end);
    EXPECT_TRUE(sound.binary);
    EXPECT_EQ(sound.errors, 0U);
    const validate::Report bad = validateText(start + group(62, "\x01\x10") + points + end);
    ASSERT_FALSE(bad.findings.empty());
    EXPECT_EQ(bad.findings[0].byte, start.size()) << bad.findings[0].text;
    EXPECT_EQ(bad.findings[0].line, 0U);
    for (std::size_t length = 22; length < start.size(); ++length) {
        const validate::Report cut = validateText((start + points + end).substr(0, length));
        EXPECT_GT(cut.errors, 0U) << length;
    }
    const validate::Report unknown = validateText(start + group(80, "x") + points + end);
    EXPECT_EQ(unknown.findings.back().byte, start.size());
}

TEST(WholeFile, OldestAndSmallestFilesAreFine) {
    const std::string minimal =
        "0\nSECTION\n2\nENTITIES\n0\nLINE\n8\n0\n10\n0\n20\n0\n11\n1\n21\n1\n0\nENDSEC\n0\nEOF\n";
    // R10 wrote all x coordinates in front of all y coordinates.
    const std::string r10 =
        "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1003\n0\nENDSEC\n0\nSECTION\n2\nENTITIES\n0\nLINE\n8\n0\n"
        "10\n0\n11\n1\n20\n0\n21\n1\n0\nENDSEC\n0\nEOF\n";
    for (const std::string& text : {minimal, r10}) {
        EXPECT_EQ(validateText(text).errors, 0U);
        EXPECT_EQ(validateText(text).warnings, 0U);
    }
}

TEST(WholeFile, LineEndsBlanksAndCommentsDoNotMatter) {
    DxfFile file = validFile(15);
    file.before("CIRCLE", {{999, "a comment"}});
    std::string text;
    for (const DxfGroup& group : file.groups)
        text += "  " + std::to_string(group.code) + "\r\n" + group.value + "\r\n";
    const validate::Report report = validateText(text + "\x1A");
    EXPECT_EQ(report.errors + report.warnings, 0U);
}

TEST(WholeFile, CutAnywhereIsAFindingAndNoCrash) {
    for (int version : {9, 15, 32}) {
        const std::string text = validFile(version).text();
        const size_t last = text.rfind("0\nEOF\n");
        for (size_t at = 1; at < last; at += 53)
            EXPECT_GT(validateText(text.substr(0, at)).errors, 0U) << version << ' ' << at;
    }
}

TEST(WholeFile, EveryGroupMayBeMissingOrTwice) {
    const DxfFile whole = validFile(32);
    for (size_t i = 6; i < whole.groups.size(); i += 3) {
        DxfFile twice = whole, missing = whole;
        twice.groups.insert(twice.groups.begin() + static_cast<std::ptrdiff_t>(i), whole.groups[i]);
        missing.groups.erase(missing.groups.begin() + static_cast<std::ptrdiff_t>(i));
        EXPECT_EQ(validateText(twice.text()).version, "AC1032");
        validateText(missing.text());
    }
}

TEST(WholeFile, DeepRingsAndLongChainsEnd) {
    // 20000 blocks, each inserting the next, the last the first; and 20000 dictionaries, each the owner of
    // the next.
    std::string text = "0\nSECTION\n2\nBLOCKS\n";
    constexpr int count = 20000;
    for (int i = 0; i < count; ++i)
        text += "0\nBLOCK\n8\n0\n2\nB" + std::to_string(i) + "\n10\n0\n20\n0\n0\nINSERT\n8\n0\n2\nB" +
                std::to_string((i + 1) % count) + "\n10\n0\n20\n0\n0\nENDBLK\n8\n0\n";
    text += "0\nENDSEC\n0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nEOF\n";
    EXPECT_EQ(validateText(text).counts[504], 1U);
    DxfFile file = validFile(15);
    DxfGroups chain;
    const auto hex = [](int i) {
        std::ostringstream out;
        out << std::hex << i;
        return out.str();
    };
    for (int i = 0; i < count; ++i)
        chain.insert(chain.end(), {{0, "DICTIONARY"},
                                   {5, hex(4096 + i)},
                                   {330, hex(4096 + (i + 1) % count)},
                                   {100, "AcDbDictionary"}});
    EXPECT_EQ(validateText(file.before("DICTIONARY", chain, 2).text()).counts[309], 1U);
}

TEST(WholeFile, MillionFindingsAreCountedNotKept) {
    DxfFile file = validFile(15);
    file.put("CIRCLE", DxfGroups(100000, {85, "x"}));
    const validate::Report report = validateText(file.text());
    EXPECT_EQ(report.counts.at(126), 100000U);
    EXPECT_TRUE(report.truncated);
    EXPECT_LT(report.findings.size(), 200U);
    EXPECT_EQ(report.findings.front().line <= report.findings.back().line, true);
}

TEST(Report, TellsTheExactPlace) {
    const std::string text = validFile(15).set("CIRCLE", 40, "-2.5").text();
    const validate::Report report = validateText(text);
    ASSERT_EQ(report.counts.count(206), 1U);
    for (const validate::Finding& finding : report.findings) {
        if (finding.number != 206) continue;
        EXPECT_EQ(finding.handle, "41");
        EXPECT_EQ(finding.section, "ENTITIES");
        EXPECT_EQ(finding.entity, "CIRCLE");
        std::istringstream lines(text);
        std::string code, value;
        for (size_t i = 0; i < finding.line; ++i) std::getline(lines, code);
        std::getline(lines, value);
        EXPECT_EQ(code, "40");
        EXPECT_EQ(value, "-2.5");
    }
}

TEST(Selection, LevelHidesAndRulesDecide) {
    // An error, a warning and a note.
    const std::string text =
        validFile(15).set("CIRCLE", 40, "-1").set("TEXT", 8, "WALLS").set("LTYPE", 40, "20.0", 4).text();
    const validate::Report all = validateText(text);
    ASSERT_EQ(all.errors, 1U);
    ASSERT_EQ(all.warnings, 1U);
    ASSERT_EQ(all.counts.count(217), 1U);
    const validate::Report grave = validateText(text, {.level = validate::Level::Error});
    EXPECT_EQ(grave.findings.size(), 1U);
    EXPECT_EQ(grave.warnings + grave.notes, all.warnings + all.notes) << "they are counted all the same";
    EXPECT_EQ(grave.counts, (std::map<int, size_t>{{206, 1}}));
    const validate::Report one = validateText(text, {.only = {401}});
    EXPECT_EQ(one.findings.size(), 1U);
    EXPECT_FALSE(fails(one, false));
    EXPECT_TRUE(fails(one, true));
    const validate::Report without = validateText(text, {.ignored = {206, 401}});
    EXPECT_FALSE(fails(without, true));
    EXPECT_EQ(without.notes, all.notes);
    // What a rule finds matters to others even when nobody asked for it.
    EXPECT_EQ(validateText("0\nSECTION\n2\nENTITIES\n0", {.ignored = {103}}).counts.count(110), 0U);
}

TEST(Report, JsonIsOneObjectALine) {
    DxfFile content = validFile(15).set("TEXT", 1, "\x81\x02").put("CIRCLE", DxfGroups(50, {85, "\xFF"}));
    std::ostringstream out;
    printJson(validateText(content.text()), out);
    const std::string text = out.str();
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1);
    const auto json = nlohmann::json::parse(text);
    EXPECT_EQ(json["version"], "AC1015");
    EXPECT_EQ(json["counts"]["126"], 50);
    EXPECT_EQ(json["truncated"], true);
    EXPECT_GE(json["errors"].get<size_t>(), 1U);
    EXPECT_TRUE(json["findings"][0].contains("level"));
}

TEST(Documentation, HasAParagraphForEachRule) {
    std::ifstream file(fs::path(TORVA_SOURCE_DIR) / "docs/validate.md");
    const std::string docs((std::istreambuf_iterator<char>(file)), {});
    for (const validate::RuleInfo& rule : validate::allRules()) {
        const std::string head =
            "**" + std::to_string(rule.number) + " " + std::string(levelName(rule.level)) + "**";
        EXPECT_NE(docs.find(head), std::string::npos) << head << ' ' << rule.text;
    }
}

TEST(Corpus, IsJudgedWithoutACrash) {
    const char* folder = std::getenv("TORVA_CORPUS");
    if (!folder) GTEST_SKIP() << "TORVA_CORPUS names no directory with real drawings";
    size_t files = 0;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        std::string extension = entry.path().extension().string();
        for (char& c : extension) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        if (!entry.is_regular_file() || extension != ".dxf") continue;
        ++files;
        EXPECT_FALSE(validate::validateFile(entry.path().string()).unreadable) << entry.path();
    }
    EXPECT_GT(files, 0U);
}

} // namespace
