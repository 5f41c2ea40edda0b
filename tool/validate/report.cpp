// Reports as text and JSON.

#include "file_bytes.h"
#include "file_check.h"
#include "findings.h"
#include "validate.h"
#include "words.h"

#include <nlohmann/json.hpp>
#include <ostream>

namespace validate {

namespace {

/// Where a finding is, in brackets: section, entity, handle.
std::string placeText(const Finding& finding) {
    std::string text = finding.section;
    if (!finding.entity.empty()) text += (text.empty() ? "" : " ") + finding.entity;
    if (!finding.handle.empty()) text += (text.empty() ? "" : " ") + finding.handle;
    return text.empty() ? text : " [" + text + "]";
}

void printHidden(const Report& report, std::ostream& out) {
    std::map<int, size_t> shown;
    for (const Finding& finding : report.findings) ++shown[finding.number];
    for (const auto& [number, count] : report.counts)
        if (count > shown[number])
            out << report.file << ": " << number << ": " << words::say("{} more", count - shown[number])
                << '\n';
}

} // namespace

Report validateText(std::string_view text, const Selection& selection) {
    return checkFile(text, selection);
}

Report refuseFile(const std::string& path, bool unreadable, const std::string& why,
                  const Selection& selection) {
    Report report;
    Findings findings(selection);
    findings.add(unreadable ? Rule::Unreadable : Rule::NotText, {}, why);
    findings.moveTo(report);
    report.file = path;
    report.unreadable = unreadable;
    return report;
}

Report validateFile(const std::string& path, const Selection& selection) {
    const FileBytes file(path);
    if (!file.error().empty())
        return refuseFile(path, true, words::say("the file cannot be read: {}", words::retold(file.error())),
                          selection);
    Report report = checkFile(file.text(), selection);
    report.file = path;
    return report;
}

void printText(const Report& report, std::ostream& out, bool quiet) {
    for (const Finding& finding : report.findings) {
        out << report.file << ':';
        if (finding.line) out << finding.line << ':';
        if (finding.byte) out << words::say("byte {}", finding.byte) << ':';
        out << ' ' << words::tr(levelName(finding.level)) << ' ' << finding.number << ": " << finding.text
            << placeText(finding) << '\n';
    }
    printHidden(report, out);
    if (quiet && report.findings.empty()) return;
    const auto count = [](size_t number, const char* one, const char* many) {
        return words::say(number == 1 ? one : many, number);
    };
    out << report.file << ": " << (report.version.empty() ? words::say("no version") : report.version) << ", "
        << count(report.errors, "{} error", "{} errors") << ", "
        << count(report.warnings, "{} warning", "{} warnings") << ", "
        << count(report.notes, "{} note", "{} notes") << '\n';
}

void printJson(const Report& report, std::ostream& out) {
    using Json = nlohmann::ordered_json;
    Json findings = Json::array(), counts = Json::object();
    for (const Finding& finding : report.findings)
        findings.push_back({{"rule", finding.number},
                            {"level", levelName(finding.level)},
                            {"line", finding.line},
                            {"byte", finding.byte},
                            {"handle", finding.handle},
                            {"section", finding.section},
                            {"entity", finding.entity},
                            {"text", finding.text}});
    for (const auto& [number, count] : report.counts) counts[std::to_string(number)] = count;
    const Json object = {{"file", report.file},           {"version", report.version},
                         {"binary", report.binary},       {"errors", report.errors},
                         {"warnings", report.warnings},   {"notes", report.notes},
                         {"truncated", report.truncated}, {"counts", counts},
                         {"findings", findings}};
    out << object.dump(-1, ' ', false, Json::error_handler_t::replace) << '\n';
}

bool fails(const Report& report, bool strict) {
    return report.unreadable || report.errors > 0 || (strict && report.warnings > 0);
}

} // namespace validate
