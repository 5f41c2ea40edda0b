#pragma once
// Judges DXF files, text and binary, of the versions R10 to 2018: what is wrong, where, and how grave it is.
// It reads the file with code of its own, so that it can also judge the files that the exporter writes.

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace validate {

enum class Level : uint8_t {
    Note,    ///< unusual, or not certain for this version
    Warning, ///< legal and unwise
    Error    ///< a careful program repairs the file or refuses it
};

/// "error", "warning" or "note".
std::string_view levelName(Level level);

struct Finding {
    int number = 0; ///< of the rule, stable over releases
    Level level = Level::Error;
    size_t line = 0;     ///< of the group code, from 1; 0 when the file as a whole is meant, or a binary one
    size_t byte = 0;     ///< of the group in a binary file; 0 in a text, or when the file as a whole is meant
    std::string handle;  ///< of the entity or object, empty when it has none
    std::string section; ///< "HEADER", "ENTITIES" ..., empty outside of sections
    std::string entity;  ///< "LINE", "LAYER", "$HANDSEED" ..., empty when none is meant
    std::string text;    ///< one line, UTF-8
};

struct Report {
    std::string file;
    bool binary = false;                        ///< places are bytes
    std::string version;                        ///< the value of $ACADVER, empty when the file names none
    std::vector<Finding> findings;              ///< by line
    size_t errors = 0, warnings = 0, notes = 0; ///< all that were found, also those not kept in `findings`
    std::map<int, size_t> counts;               ///< rule number to the number of its findings, all counted
    bool truncated = false;                     ///< some findings were counted but not kept
    bool unreadable = false;                    ///< the file couldn't be opened or read
};

/// One row of the table of rules. A finding may be milder than its rule's level where the rule isn't certain.
struct RuleInfo {
    int number = 0;
    Level level = Level::Error;
    std::string_view text;
};

/// All rules, by number.
std::span<const RuleInfo> allRules();

/// So many findings of a rule are kept in full, the rest is counted; 0 keeps all.
constexpr size_t kDefaultLimit = 20;

/// Which findings a report is to hold.
struct Selection {
    size_t limit = kDefaultLimit;   ///< see kDefaultLimit
    Level level = Level::Note;      ///< milder findings are counted by their level only
    std::vector<int> only{};        ///< rules to judge by; empty: all
    std::vector<int> ignored{};     ///< rules that count for nothing
    bool hasRule(int number) const; ///< whether the rule is judged by
};

/// Judges a file; "-" is standard input. Never throws for what is in the file.
Report validateFile(const std::string& path, const Selection& selection = {});

/// Judges a DXF in memory, which must stay alive during the call only.
Report validateText(std::string_view text, const Selection& selection = {});

/// The report of a file that isn't judged, with one finding: rule 101 when it can't be read, else 102.
Report refuseFile(const std::string& path, bool unreadable, const std::string& why,
                  const Selection& selection = {});

/// One line a finding ("FILE:LINE: error 306: ..."), then one line with the counts. A quiet one leaves that
/// line out when there is no finding.
void printText(const Report& report, std::ostream& out, bool quiet = false);

/// One JSON object in one line.
void printJson(const Report& report, std::ostream& out);

/// Whether a report is reason to fail: it has errors, or warnings where these count too.
bool fails(const Report& report, bool strict);

} // namespace validate
