#include "passport_scan.h"

#include "letter_case.h"
#include "pairs.h"
#include "ut_string.h"

#include <map>

namespace tool {

namespace {

constexpr std::size_t kMostEntries = 5000;
constexpr std::size_t kLongestText = 640; ///< bytes

class Scanner {
public:
    Scanner(PassportScan& scan, int codePage) : scan_(scan), codePage_(codePage) {}
    void take(const PairReader& pair);
    void finish();

private:
    void beginRecord(std::string_view name);
    void takeStyle(const PairReader& pair);
    void takeBlock(const PairReader& pair);
    void takeLayout(const PairReader& pair);
    void countInsert(std::string_view block);
    std::string text(std::string_view raw) const {
        return UtCString(raw.substr(0, kLongestText), codePage_).str();
    }

    PassportScan& scan_;
    int codePage_;
    enum class Record { Other, Style, Block, Layout, Insert } kind_ = Record::Other; ///< the one at hand
    std::string section_, subclass_, application_;
    bool namesSection_ = false;
    std::map<std::string, long> inserted_; ///< by the name of the block, lower case
    std::string_view lastBlock_;           ///< neighbours are mostly alike
    long* lastCount_ = nullptr;            ///< of that one; null: it isn't counted
};

} // namespace

/// Blocks that hold the entities of the model and of layouts.
static bool isSpace(const std::string& block) {
    const std::string name = lower(block);
    return name.starts_with("*model_space") || name.starts_with("*paper_space") ||
           name.starts_with("$model_space") || name.starts_with("$paper_space");
}

void Scanner::beginRecord(std::string_view name) {
    subclass_.clear();
    application_.clear();
    namesSection_ = name == "SECTION";
    kind_ = name == "INSERT"                            ? Record::Insert
            : name == "STYLE" && section_ == "TABLES"   ? Record::Style
            : name == "BLOCK" && section_ == "BLOCKS"   ? Record::Block
            : name == "LAYOUT" && section_ == "OBJECTS" ? Record::Layout
                                                        : Record::Other;
    if (kind_ == Record::Style && scan_.styles.size() < kMostEntries) scan_.styles.emplace_back();
    if (kind_ == Record::Block && scan_.blocks.size() < kMostEntries) scan_.blocks.emplace_back();
}

void Scanner::takeStyle(const PairReader& pair) {
    PassportStyle& style = scan_.styles.back();
    if (pair.code == 2) style.name = text(pair.value);
    if (pair.code == 3) style.file = text(pair.value);
    if (pair.code == 4) style.bigFont = text(pair.value);
    if (pair.code == 1001) application_ = pair.value.substr(0, 32);
    if (pair.code == 1000 && application_ == "ACAD") style.face = text(pair.value);
}

void Scanner::takeBlock(const PairReader& pair) {
    PassportBlock& block = scan_.blocks.back();
    if (pair.code == 2) block.name = text(pair.value);
    if (pair.code == 1) block.reference = text(pair.value);
}

void Scanner::takeLayout(const PairReader& pair) {
    if (pair.code == 100) subclass_ = pair.value.substr(0, 32);
    if (subclass_ == "AcDbLayout" && pair.code == 1 && scan_.layouts.size() < kMostEntries)
        scan_.layouts.push_back(text(pair.value));
}

void Scanner::take(const PairReader& pair) {
    if (pair.code == 0) return beginRecord(pair.value);
    if (pair.code == 999) {
        if (section_.empty() && scan_.comments.size() < 20) scan_.comments.push_back(text(pair.value));
        return;
    }
    if (namesSection_ && pair.code == 2) section_ = pair.value.substr(0, 32);
    namesSection_ = false;
    switch (kind_) {
    case Record::Style: return takeStyle(pair);
    case Record::Block: return takeBlock(pair);
    case Record::Layout: return takeLayout(pair);
    case Record::Insert:
        if (pair.code == 2) countInsert(pair.value);
        return;
    case Record::Other: return;
    }
}

void Scanner::countInsert(std::string_view block) {
    if (block != lastBlock_ || !lastCount_) {
        lastBlock_ = block;
        const std::string name = lower(text(block));
        lastCount_ =
            inserted_.size() < 10 * kMostEntries || inserted_.contains(name) ? &inserted_[name] : nullptr;
    }
    if (lastCount_) ++*lastCount_;
}

void Scanner::finish() {
    // A style without a name is the record of a shape file.
    std::erase_if(scan_.styles, [](const PassportStyle& style) { return style.name.empty(); });
    std::erase_if(scan_.blocks,
                  [](const PassportBlock& block) { return block.name.empty() || isSpace(block.name); });
    for (PassportBlock& block : scan_.blocks)
        if (const auto found = inserted_.find(lower(block.name)); found != inserted_.end())
            block.inserted = found->second;
}

PassportScan scanPassport(std::string_view bytes, int codePage) {
    PassportScan scan;
    Scanner scanner(scan, codePage);
    for (PairReader pairs(bytes); pairs.next();) scanner.take(pairs);
    scanner.finish();
    return scan;
}

} // namespace tool
