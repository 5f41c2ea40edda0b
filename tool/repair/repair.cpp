#include "repair.h"

#include "binary_text.h"
#include "mends.h"
#include "parse.h"
#include "words.h"
#include "write.h"

#include <algorithm>
#include <ostream>

namespace repair {

namespace {

constexpr std::string_view kMark = "\xEF\xBB\xBF";

/// A text with lines that end as lines do. `changed` holds what was set right, when anything was.
std::string_view withLineEnds(std::string_view bytes, std::string& changed, Log& log) {
    if (bytes.starts_with(kMark)) {
        log.addAt(Rule::ByteOrderMark, 1, Section::None, "the byte order mark is left out");
        bytes.remove_prefix(kMark.size());
    }
    if (bytes.find('\n') != bytes.npos || bytes.find('\r') == bytes.npos) return bytes;
    log.addAt(Rule::NotText, 1, Section::None, "lines that end with CR alone end with LF");
    changed = bytes;
    std::replace(changed.begin(), changed.end(), '\r', '\n');
    return changed;
}

/// The line end of the most lines.
std::string_view lineEndOf(std::string_view text) {
    const auto lines = std::count(text.begin(), text.end(), '\n');
    const auto returns = std::count(text.begin(), text.end(), '\r');
    return returns * 2 > lines ? "\r\n" : "\n";
}

void mendAll(Document& document, Log& log) {
    document.noteHandles();
    mendText(document, log);
    mendHeader(document, log);
    mendTables(document, log);
    mendBlocks(document, log);
    mendHandles(document, log);
    mendNames(document, log);
    mendDictionaries(document, log);
    mendOwners(document, log);
    mendPointers(document, log);
    mendCounts(document, log);
    mendClasses(document, log);
    mendHandleSeed(document, log);
}

} // namespace

Outcome repairFile(std::string_view bytes, size_t limit) {
    Outcome outcome;
    Log log(limit);
    const bool isBinary = validate::isBinaryDxf(bytes);
    validate::BinaryText binary;
    if (isBinary) binary = validate::readBinary(bytes);
    std::string changed;
    Document document(isBinary ? std::string_view(binary.text) : withLineEnds(bytes, changed, log));
    outcome.isDxf = parse(document, log);
    if (outcome.isDxf) {
        mendAll(document, log);
        outcome.text = writeText(document, isBinary ? "\r\n" : lineEndOf(document.text()));
    }
    log.findings().moveTo(outcome.mends);
    for (validate::Finding& mend : outcome.mends.findings) {
        if (!isBinary || mend.line == 0) continue;
        mend.byte = binary.byteOf(mend.line);
        mend.line = 0;
    }
    return outcome;
}

void printMends(const Outcome& outcome, const std::string& file, std::ostream& out) {
    std::map<int, size_t> shown;
    size_t all = 0;
    for (const validate::Finding& mend : outcome.mends.findings) {
        ++shown[mend.number];
        out << file << ':';
        if (mend.line) out << mend.line << ':';
        if (mend.byte) out << words::say("byte {}", mend.byte) << ':';
        out << ' ' << words::say("mended {}", mend.number) << ": " << mend.text;
        std::string place = mend.section;
        for (const std::string& word : {mend.entity, mend.handle})
            if (!word.empty()) place += (place.empty() ? "" : " ") + word;
        if (!place.empty()) out << " [" << place << ']';
        out << '\n';
    }
    for (const auto& [number, count] : outcome.mends.counts) {
        all += count;
        if (count > shown[number])
            out << file << ": " << words::say("mended {}", number) << ": "
                << words::say("{} more", count - shown[number]) << '\n';
    }
    out << file << ": " << words::say("{} mended", all) << '\n';
}

} // namespace repair
