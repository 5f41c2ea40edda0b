// Walks a whole file: recognises what it is, goes from section to section, then checks what needs all of it.

#include "file_check.h"

#include "binary_text.h"
#include "reference_checks.h"
#include "section_walks.h"
#include "text.h"
#include "value_checks.h"
#include "words.h"

#include <algorithm>

namespace validate {

namespace {

struct VersionRow {
    std::string_view text;
    Version version;
};

constexpr VersionRow kVersions[] = {
    {"MC0.0", Version::Old},    {"AC1.2", Version::Old},    {"AC1.4", Version::Old},
    {"AC1.50", Version::Old},   {"AC2.10", Version::Old},   {"AC1001", Version::Old},
    {"AC1002", Version::Old},   {"AC1003", Version::Old},   {"AC1004", Version::Old},
    {"AC1006", Version::Old},   {"AC1009", Version::R12},   {"AC1012", Version::R13},
    {"AC1014", Version::R14},   {"AC1015", Version::R2000}, {"AC1018", Version::R2004},
    {"AC1021", Version::R2007}, {"AC1024", Version::R2010}, {"AC1027", Version::R2013},
    {"AC1032", Version::R2018},
};

struct SectionRow {
    std::string_view name;
    Section section;
    Version since;    ///< first version that knows it
    Version required; ///< first version that needs it; kNever: none does
};

constexpr Version kNever = static_cast<Version>(99);

/// In the order in which files have them.
constexpr SectionRow kSections[] = {
    {"HEADER", Section::Header, Version::Old, Version::R13},
    {"CLASSES", Section::Classes, Version::R13, kNever},
    {"TABLES", Section::Tables, Version::Old, Version::R13},
    {"BLOCKS", Section::Blocks, Version::Old, Version::R13},
    {"ENTITIES", Section::Entities, Version::Old, Version::Old},
    {"OBJECTS", Section::Objects, Version::R13, Version::R13},
    {"THUMBNAILIMAGE", Section::Thumbnail, Version::R13, kNever},
    {"ACDSDATA", Section::Data, Version::R2013, kNever},
};

constexpr std::string_view kTables[] = {"LTYPE", "LAYER", "STYLE",    "VIEW",        "UCS",
                                        "VPORT", "APPID", "DIMSTYLE", "BLOCK_RECORD"};

/// Whether a line begins at `at`, blanks apart, and the line before is the group code 9. Looks back a few
/// bytes only.
bool isVariableName(std::string_view text, size_t at) {
    const size_t from = at < 24 ? 0 : at - 24;
    std::string_view before = trimmed(text.substr(from, at - from));
    const auto chop = [&](char c) {
        const bool ends = !before.empty() && before.back() == c;
        if (ends) before.remove_suffix(1);
        return ends;
    };
    if (!chop('\n')) return false;
    chop('\r');
    before = trimmed(before);
    return chop('9') && (trimmed(before).empty() || trimmed(before).back() == '\n');
}

/// The value of $ACADVER, wherever the header stands; empty without one.
std::string_view findVersionText(std::string_view text) {
    constexpr std::string_view name = "$ACADVER";
    for (size_t at = text.find(name); at != text.npos; at = text.find(name, at + 1)) {
        if (!isVariableName(text, at)) continue;
        const size_t code = text.find('\n', at), value = code == text.npos ? code : text.find('\n', code + 1);
        if (value == text.npos) return {};
        const std::string_view line = text.substr(value + 1, 256);
        return trimmed(line.substr(0, line.find_first_of("\r\n")));
    }
    return {};
}

class FileCheck {
public:
    FileCheck(std::string_view text, const Selection& selection, bool marked)
        : session_(text, selection), reader_(text, session_.out), tables_(session_), entities_(session_),
          objects_(session_), nothing_(selection) {
        if (marked)
            session_.out.add(Rule::ByteOrderMark, {1}, "the file begins with the byte order mark of UTF-8");
    }

    Report run() {
        findVersion();
        readAll();
        if (!isText_) { // what else was met says nothing
            session_.out = nothing_;
            session_.out.add(Rule::NotText, {0}, words::tr(whyNot_));
            return report();
        }
        checkMissing();
        session_.model.indexHandles();
        if (!header_.empty()) checkHeaderReferences(session_, header_);
        checkReferences(session_);
        checkNames(session_);
        checkBlocks(session_);
        if (session_.atLeast(Version::R13) && has(Section::Objects)) checkDictionaries(session_);
        checkKinds(session_);
        return report();
    }

private:
    Report report() {
        Report report;
        report.version = session_.versionText;
        session_.out.moveTo(report);
        return report;
    }

    void findVersion() {
        session_.versionText = findVersionText(session_.text);
        for (const VersionRow& row : kVersions)
            if (row.text == session_.versionText) {
                session_.version = row.version;
                return;
            }
        if (session_.versionText.empty()) return;
        session_.version = kLast; // newer than all that are known
        session_.out.add(Rule::UnknownVersion, {0, 0, "$ACADVER", Section::Header},
                         inQuotes(session_.versionText), " is no version of the format");
    }

    /// Reads a record: from the group 0 at hand to the next. False at the end of the file.
    bool readRecord() {
        tags_.clear();
        if (hasNext_) tags_.push_back(next_);
        hasNext_ = false;
        Tag tag;
        while (reader_.next(tag)) {
            if (tag.code == 999) continue;
            if (tag.code == 0) {
                tag.value = trimmed(tag.value);
                next_ = tag;
                hasNext_ = true;
                if (!tags_.empty()) return true;
                tags_.push_back(tag);
                hasNext_ = false;
            } else if (!tags_.empty()) {
                tags_.push_back(tag);
            } else if (!toldOutside_) {
                toldOutside_ = true;
                session_.out.add(Rule::OutsideSections, {tag.line}, "group ", tag.code,
                                 " in front of the first section");
            }
            // The end is the end: what follows is no part of the file.
            if (tags_.size() == 1 && tags_[0].value == "EOF") return true;
        }
        return !tags_.empty();
    }

    void readAll() {
        bool first = true;
        while (readRecord()) {
            if (first && tags_.front().value != "SECTION" && tags_.front().value != "EOF" && !looksLikeDxf())
                return;
            first = false;
            if (tags_.front().value == "EOF") {
                checkEnd();
                return;
            }
            takeRecord();
        }
        if (first) {
            isText_ = false;
            whyNot_ = "there is no group 0: this is no DXF";
            return;
        }
        closeSection(true);
        if (!session_.out.has(Rule::HalfPair)) // the rest of which may have been the EOF
            session_.out.add(Rule::MissingEof, {reader_.line()}, "the file ends without EOF");
    }

    /// Something that begins with groups but not with a section, and has no section at all, is no DXF.
    bool looksLikeDxf() {
        isText_ = session_.text.find("SECTION") != std::string_view::npos;
        whyNot_ = "there is no section: this is no DXF";
        return isText_;
    }

    void checkEnd() {
        closeSection(true);
        if (hasNext_ || reader_.hasMore())
            session_.out.add(Rule::JunkBehindEof, {reader_.line()}, "there is something behind EOF");
    }

    bool has(Section section) const { return seen_[static_cast<size_t>(section)]; }

    void takeRecord() {
        const Tag& start = tags_.front();
        session_.place = {start.line, 0, start.value, session_.section};
        if (start.value == "SECTION") {
            openSection();
        } else if (start.value == "ENDSEC") {
            if (session_.section == Section::None)
                session_.out.add(Rule::OutOfPlace, session_.place, "ENDSEC without SECTION");
            closeSection(false);
        } else {
            dispatch();
        }
    }

    void openSection() {
        closeSection(true);
        const std::span<const Tag> tags(tags_);
        const bool named = tags.size() > 1 && tags[1].code == 2;
        if (!named) session_.out.add(Rule::SectionName, session_.place, "a section without a name (2)");
        const std::string_view name = named ? trimmed(tags[1].value) : std::string_view{};
        const auto row = std::find_if(std::begin(kSections), std::end(kSections),
                                      [&](const SectionRow& r) { return r.name == name; });
        session_.section = row == std::end(kSections) ? Section::Unknown : row->section;
        sectionPlace_ = {tags.front().line, 0, {}, session_.section};
        session_.place = sectionPlace_;
        if (named && (row == std::end(kSections) || session_.version < row->since))
            session_.out.add(Rule::UnknownSection, sectionPlace_, "the section ", inQuotes(name),
                             " is not known in ", versionName(session_.version));
        if (row != std::end(kSections)) noteSection(*row);
        enterSection(tags.subspan(named ? 2 : 1));
    }

    void noteSection(const SectionRow& row) {
        bool& seen = seen_[static_cast<size_t>(row.section)];
        if (seen)
            session_.out.add(Rule::RepeatedSection, sectionPlace_, "the section ", row.name, " stands twice");
        else if (row.section < highest_ && row.section != Section::Thumbnail)
            session_.out.add(Rule::SectionOrder, sectionPlace_, "the section ", row.name, " stands behind ",
                             sectionName(highest_));
        seen = true;
        highest_ = std::max(highest_, row.section);
    }

    /// Groups between the name of a section and its first record.
    void enterSection(std::span<const Tag> tags) {
        if (session_.section == Section::Header) {
            // The variables are kept: some name things that come later.
            header_.assign(tags_.begin(), tags_.end());
            checkHeader(session_, header_);
        } else {
            checkValues(session_, tags);
            const bool data = session_.section >= Section::Thumbnail;
            if (!tags.empty() && !data)
                session_.out.add(Rule::OutsideSections, session_.at(tags.front()), "group ",
                                 tags.front().code, " in front of the first record of the section");
        }
    }

    void closeSection(bool unfinished) {
        if (session_.section == Section::None) return;
        if (unfinished)
            session_.out.add(Rule::UnfinishedSection, sectionPlace_, "the section ",
                             sectionName(session_.section), " is not closed by ENDSEC");
        if (session_.section == Section::Tables) tables_.finish();
        if (session_.section == Section::Blocks || session_.section == Section::Entities) entities_.finish();
        session_.section = Section::None;
    }

    void dispatch() {
        switch (session_.section) {
        case Section::Classes: checkClass(session_, tags_); break;
        case Section::Tables: tables_.record(tags_); break;
        case Section::Blocks:
        case Section::Entities: entities_.record(tags_); break;
        case Section::Objects: objects_.record(tags_); break;
        case Section::None:
            session_.out.add(Rule::OutsideSections, session_.place, inQuotes(tags_.front().value),
                             " stands outside of all sections");
            break;
        case Section::Header:
            session_.out.add(Rule::OutOfPlace, session_.place, inQuotes(tags_.front().value),
                             " is no header variable");
            break;
        case Section::Thumbnail:
        case Section::Data:
        case Section::Unknown: checkValues(session_, std::span<const Tag>(tags_).subspan(1)); break;
        }
    }

    void checkMissing() {
        for (const SectionRow& row : kSections)
            if (session_.version >= row.required && !has(row.section))
                session_.out.add(Rule::MissingSection, {0}, "the section ", row.name, " is missing");
        if (session_.atLeast(Version::R13) && !has(Section::Classes))
            session_.out.addAs(Level::Note, Rule::MissingSection, {0}, "the section CLASSES is missing");
        if (!session_.atLeast(Version::R13) || !has(Section::Tables)) return;
        for (std::string_view table : kTables)
            if (!tables_.has(table))
                session_.out.add(Rule::MissingTable, {0, 0, {}, Section::Tables}, "the table ", table,
                                 " is missing");
    }

    Session session_;
    TagReader reader_;
    TableWalk tables_;
    EntityWalk entities_;
    ObjectWalk objects_;
    std::vector<Tag> tags_, header_;
    Tag next_{};
    bool hasNext_ = false;
    bool isText_ = true;
    bool toldOutside_ = false;
    bool seen_[10] = {}; ///< by Section
    Section highest_ = Section::None;
    Place sectionPlace_{};
    std::string_view whyNot_{}; ///< it is a DXF at all
    const Findings nothing_;    ///< an empty collection
};

/// What the file is when it is no text with line ends; empty when it is one.
std::string_view otherFormat(std::string_view text) {
    if (text.size() > 1 &&
        ((text[0] == '\xFF' && text[1] == '\xFE') || (text[0] == '\xFE' && text[1] == '\xFF')))
        return "UTF-16; a DXF is written in bytes";
    if (text.size() > 5 && text.substr(0, 4) == "AC10" && isDigit(text[4]) && isDigit(text[5]) &&
        text.substr(6, 1) == std::string_view("\0", 1))
        return "a DWG";
    if (text.find_first_not_of(" \t\r\n") == text.npos) return "empty";
    if (text.find('\n') == text.npos && text.find('\r') != text.npos)
        return "a text whose lines end with CR alone, which readers take for one line";
    return {};
}

} // namespace

/// A binary file is judged by its text; places are told by byte.
static Report checkBinary(std::string_view bytes, const Selection& selection) {
    const BinaryText binary = readBinary(bytes);
    Report report = FileCheck(binary.text, selection, false).run();
    report.binary = true;
    for (Finding& finding : report.findings) {
        if (finding.line == 0) continue;
        finding.byte = binary.byteOf(finding.line);
        finding.line = 0;
    }
    if (binary.damage.empty() || report.counts.count(static_cast<int>(Rule::NotText))) return report;
    Findings damage(selection);
    damage.add(Rule::HalfPair, {1}, binary.damage);
    Report more;
    damage.moveTo(more);
    for (Finding& finding : more.findings) {
        finding.byte = binary.end;
        finding.line = 0;
        report.findings.push_back(finding);
    }
    report.errors += more.errors;
    for (const auto& [number, count] : more.counts) report.counts[number] += count;
    return report;
}

Report checkFile(std::string_view text, const Selection& selection) {
    if (isBinaryDxf(text)) return checkBinary(text, selection);
    if (const std::string_view other = otherFormat(text); !other.empty()) {
        Findings findings(selection);
        findings.add(Rule::NotText, {0}, "the file is ", words::tr(other));
        Report report;
        findings.moveTo(report);
        return report;
    }
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    const bool marked = text.substr(0, mark.size()) == mark;
    if (marked) text.remove_prefix(mark.size());
    return FileCheck(text, selection, marked).run();
}

} // namespace validate
