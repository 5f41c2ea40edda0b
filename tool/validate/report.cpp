// Reports as text and JSON, and the command.

#include "file_check.h"
#include "findings.h"
#include "mapped_file.h"
#include "validate.h"

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

std::string countText(size_t count, const char* what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

void printHidden(const Report& report, std::ostream& out) {
    std::map<int, size_t> shown;
    for (const Finding& finding : report.findings) ++shown[finding.number];
    for (const auto& [number, count] : report.counts)
        if (count > shown[number])
            out << report.file << ": " << number << ": " << count - shown[number] << " more\n";
}

} // namespace

Report validateText(std::string_view text, size_t limit) {
    return checkFile(text, limit);
}

Report validateFile(const std::string& path, size_t limit) {
    const MappedFile file(path);
    Report report;
    if (file.error().empty()) {
        report = checkFile(file.text(), limit);
    } else {
        Findings findings(limit);
        findings.add(Rule::Unreadable, {}, "the file cannot be read: ", file.error());
        findings.moveTo(report);
        report.unreadable = true;
    }
    report.file = path;
    return report;
}

void printText(const Report& report, std::ostream& out) {
    for (const Finding& finding : report.findings) {
        out << report.file << ':';
        if (finding.line) out << finding.line << ':';
        if (finding.byte) out << "byte " << finding.byte << ':';
        out << ' ' << levelName(finding.level) << ' ' << finding.number << ": " << finding.text
            << placeText(finding) << '\n';
    }
    printHidden(report, out);
    out << report.file << ": " << (report.version.empty() ? "no version" : report.version) << ", "
        << countText(report.errors, "error") << ", " << countText(report.warnings, "warning") << ", "
        << countText(report.notes, "note") << '\n';
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

int runValidate(const Options& options, std::ostream& out, std::ostream& err) {
    if (options.files.empty()) {
        err << "validate: no file is given\n";
        return 2;
    }
    int status = 0;
    for (const std::string& file : options.files) {
        const Report report = validateFile(file, options.limit);
        if (report.unreadable) err << file << ": " << report.findings.front().text << '\n';
        (options.json ? printJson : printText)(report, out);
        const bool failed = report.errors > 0 || (options.strict && report.warnings > 0);
        status = std::max(status, report.unreadable ? 2 : failed ? 1 : 0);
    }
    return status;
}

} // namespace validate
