#include "document.h"

#include "text.h"

#include <algorithm>

namespace repair {

using validate::sameName;

Pair Document::handlePair(int code, uint64_t handle) {
    return pair(code, validate::handleText(handle));
}

void Document::noteHandles() {
    const auto note = [&](const Pair& pair, std::string_view kind) {
        const bool arrow = pair.code == 5 && kind == "DIMSTYLE"; // the name of a block
        if (arrow || validate::valueType(pair.code) != validate::ValueType::Handle) return;
        taken_.insert(validate::readHandle(pair.value).value_or(0));
    };
    forEachRecord([&](const Record& record, validate::Section) {
        for (const Pair& pair : record.pairs)
            if (pair.code >= 0 && pair.code <= validate::kLastCode) note(pair, record.kind());
        highest_ = std::max(highest_, record.handle());
    });
    for (const Variable& variable : header)
        for (const Pair& pair : variable.values) note(pair, {});
    next_ = std::max<uint64_t>(highest_ + 1, 0x100);
    constexpr uint64_t most = 0x7FFFFFFFFFFF; // beyond, there may be no room
    if (highest_ > most) next_ = 0x100;
}

uint64_t Document::newHandle() {
    while (!taken_.insert(next_).second) ++next_;
    highest_ = std::max(highest_, next_);
    return next_;
}

Variable* Document::variable(std::string_view name) {
    for (Variable& variable : header)
        if (validate::trimmed(variable.name.value) == name) return &variable;
    return nullptr;
}

Table* Document::table(std::string_view name) {
    for (Table& table : tables)
        if (table.name() == name) return &table;
    return nullptr;
}

Block* Document::block(std::string_view name) {
    for (Block& block : blocks)
        if (sameName(block.name(), name)) return &block;
    return nullptr;
}

Record* Document::tableRecord(std::string_view tableName, std::string_view name) {
    if (Table* found = table(tableName))
        for (Record& record : found->records)
            if (sameName(record.text(2), name)) return &record;
    return nullptr;
}

} // namespace repair
