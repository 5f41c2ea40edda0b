#include "store/origin_tables.h"

namespace host {

/// Texts that speak of another frame than that of the drawing are of no use to anyone else.
static bool isInFrame(const Drawing& drawing) {
    return drawing.originFrame.x == 0 && drawing.originFrame.y == 0;
}

void putOrigins(Tables& tables, const Drawing& drawing) {
    std::int64_t position = 0;
    for (const Definition& definition : drawing.definitions)
        tables.of<Definition>().put({position++}, definition);
    for (const Pattern& pattern : drawing.patterns) {
        if (pattern.number <= 0 || pattern.scratch) continue;
        if (pattern.definition != 0)
            tables.of<DefinitionPattern>().put({pattern.number}, DefinitionPattern{pattern.definition});
        if (!isInFrame(drawing)) continue;
        putList(tables, pattern.number, pattern.origins);
        putList(tables, pattern.number, pattern.placed);
    }
}

void readOrigins(Database& db, Drawing& drawing) {
    readPatternLists(db, drawing, &Pattern::origins);
    readPatternLists(db, drawing, &Pattern::placed);
    for (const Pattern& pattern : drawing.patterns)
        if (pattern.placed.size() > 1) throw StoreError("a pattern is placed twice");
    readRows<Definition>(
        db, [&](const Keys<Definition>& key) -> Definition& { return append(drawing.definitions, key[0]); });
    std::vector<std::pair<int, DefinitionPattern>> patterns;
    readRows<DefinitionPattern>(db, [&](const Keys<DefinitionPattern>& key) -> DefinitionPattern& {
        return patterns.emplace_back(key[0], DefinitionPattern{}).second;
    });
    for (const auto& [number, part] : patterns) {
        if (part.definition < 1 || static_cast<std::size_t>(part.definition) > drawing.definitions.size())
            throw StoreError("a pattern belongs to no definition");
        ownerOf(drawing, number).definition = part.definition;
    }
}

} // namespace host
