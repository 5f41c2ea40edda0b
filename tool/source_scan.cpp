#include "source_scan.h"

#include "pairs.h"
#include "ut_string.h"

#include <algorithm>
#include <unordered_set>

namespace tool {

namespace {

constexpr std::size_t kMostNames = 5000;
constexpr std::size_t kLongestName = 640; ///< bytes; the module keeps 160 characters of a name
constexpr std::size_t kMostDashes = 64;

/// A list that takes each text once.
class NameList {
public:
    explicit NameList(std::vector<std::string>& names) : names_(names) {}
    void add(std::string_view name) {
        if (name == last_) return;
        last_ = name.substr(0, kLongestName);
        if (name.empty() || names_.size() >= kMostNames || !seen_.insert(last_).second) return;
        names_.push_back(last_);
    }

private:
    std::vector<std::string>& names_;
    std::unordered_set<std::string> seen_;
    std::string last_; ///< neighbours are mostly alike
};

class Scanner {
public:
    explicit Scanner(SourceScan& scan) : scan_(scan), used_(scan.lineTypesUsed), fonts_(scan.fontFiles) {}
    void take(const PairReader& pair);

private:
    void takeHeader(const PairReader& pair);
    void takeTables(const PairReader& pair);
    void takeLayout(const PairReader& pair);
    void beginRecord(std::string_view name);
    void beginSection(std::string_view name);

    SourceScan& scan_;
    NameList used_, fonts_;
    std::string record_, variable_;
    std::string subclass_; ///< of the record at hand
    int paperUnits_ = 1;   ///< of the layout at hand, 0: inches
    bool namesSection_ = false;
    enum class Section { Other, Header, Tables, Objects } place_ = Section::Other;
};

} // namespace

/// Windows code page of a value such as "ANSI_1252" or "ISO8859-2".
static int codePageOf(std::string_view value, int fallback) {
    std::string upper(value);
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
    const std::size_t digit = upper.find_first_of("0123456789");
    if (digit == std::string::npos) return fallback;
    if (upper.starts_with("ISO8859-")) return 28590 + toInt(std::string_view(upper).substr(8), 1);
    return upper.starts_with("ANSI") ? toInt(std::string_view(upper).substr(digit), fallback) : fallback;
}

void Scanner::takeHeader(const PairReader& pair) {
    if (pair.code == 9) {
        variable_ = pair.value.substr(0, 32);
        return;
    }
    if (variable_ == "$ACADVER" && pair.value.starts_with("AC"))
        scan_.version = toInt(pair.value.substr(2), scan_.version);
    else if (variable_ == "$DWGCODEPAGE")
        scan_.codePage = codePageOf(pair.value, scan_.codePage);
    else if (variable_ == "$INSUNITS")
        scan_.insUnits = toInt(pair.value, 0);
    else if (variable_ == "$PINSBASE") {
        if (pair.code == 10) scan_.paperBaseX = toReal(pair.value);
        if (pair.code == 20) scan_.paperBaseY = toReal(pair.value);
        if (pair.code == 10) return; // the other coordinate is to come
    } else if (variable_ == "$LTSCALE")
        scan_.lineTypeScale = toReal(pair.value);
    variable_.clear();
}

static void takeLayer(const PairReader& pair, SourceLayer& layer) {
    switch (pair.code) {
    case 2: layer.name = pair.value.substr(0, kLongestName); break;
    case 6: layer.lineType = pair.value.substr(0, kLongestName); break;
    case 62: layer.color = toInt(pair.value, 7); break;
    case 70: layer.flags = toInt(pair.value, 0); break;
    case 290: layer.plot = toInt(pair.value, 1); break;
    case 370: layer.lineWeight = toInt(pair.value, -3); break;
    default: break;
    }
}

void Scanner::takeTables(const PairReader& pair) {
    if (record_ == "STYLE" && pair.code == 3) fonts_.add(pair.value);
    if (record_ == "LAYER" && !scan_.layers.empty()) takeLayer(pair, scan_.layers.back());
    if (record_ != "LTYPE" || scan_.lineTypes.empty()) return;
    SourceLineType& type = scan_.lineTypes.back();
    if (pair.code == 2) type.name = pair.value.substr(0, kLongestName);
    if (pair.code == 3) type.description = pair.value.substr(0, kLongestName);
    if (pair.code == 49 && type.dashes.size() < kMostDashes) type.dashes.push_back(toReal(pair.value));
}

/// Layouts, each with its unit ahead of its name; the model is one of them.
void Scanner::takeLayout(const PairReader& pair) {
    if (pair.code == 100) subclass_ = pair.value.substr(0, 32);
    if (subclass_ == "AcDbPlotSettings" && pair.code == 72) paperUnits_ = toInt(pair.value, 1);
    if (subclass_ != "AcDbLayout" || pair.code != 1 || pair.value == "Model") return;
    ++(paperUnits_ == 0 ? scan_.inchLayouts : scan_.otherLayouts);
}

void Scanner::beginRecord(std::string_view name) {
    subclass_.clear();
    paperUnits_ = 1;
    record_ = name.substr(0, 32);
    namesSection_ = record_ == "SECTION";
    if (place_ != Section::Tables) return;
    if (record_ == "LTYPE" && scan_.lineTypes.size() < kMostNames) scan_.lineTypes.emplace_back();
    if (record_ == "LAYER" && scan_.layers.size() < kMostNames) scan_.layers.emplace_back();
}

void Scanner::beginSection(std::string_view name) {
    place_ = name == "HEADER"    ? Section::Header
             : name == "TABLES"  ? Section::Tables
             : name == "OBJECTS" ? Section::Objects
                                 : Section::Other;
}

void Scanner::take(const PairReader& pair) {
    if (pair.code == 0) return beginRecord(pair.value);
    if (namesSection_ && pair.code == 2) beginSection(pair.value);
    namesSection_ = false;
    if (place_ == Section::Header) return takeHeader(pair);
    if (pair.code == 6) used_.add(pair.value);
    if (place_ == Section::Tables) takeTables(pair);
    if (place_ == Section::Objects && record_ == "LAYOUT") takeLayout(pair);
}

/// Makes UTF-8 of the texts, which the scan took as they stand: the code page may be told behind them.
static void decodeNames(SourceScan& scan) {
    const auto decode = [&](std::string& name) {
        name = UtCString(std::string_view(name), scan.version < 1021 ? scan.codePage : UT_CP_UTF8).str();
    };
    for (SourceLineType& type : scan.lineTypes) decode(type.name), decode(type.description);
    for (SourceLayer& layer : scan.layers) decode(layer.name), decode(layer.lineType);
    std::for_each(scan.lineTypesUsed.begin(), scan.lineTypesUsed.end(), decode);
    std::for_each(scan.fontFiles.begin(), scan.fontFiles.end(), decode);
}

SourceScan scanSource(std::string_view bytes) {
    SourceScan scan;
    Scanner scanner(scan);
    PairReader pairs(bytes);
    while (pairs.next()) scanner.take(pairs);
    scan.hasEndlessLine = pairs.metEndlessLine;
    decodeNames(scan);
    std::erase_if(scan.layers, [](const SourceLayer& layer) { return layer.name.empty(); });
    std::erase_if(scan.lineTypes, [](const SourceLineType& type) { return type.name.empty(); });
    return scan;
}

} // namespace tool
