#include "store/sheet_tables.h"

#include "store/table_reader.h"
#include "store/table_writer.h"

#include <algorithm>
#include <cmath>

namespace host {

void writeSheets(Tables& tables, const Drawing& drawing) {
    std::int64_t position = 0;
    for (const View& view : drawing.views) tables.of<ViewDetails>().put({position++}, ViewDetails{view});
    for (const ViewInsert& insert : drawing.viewInserts) tables.of<ViewInsert>().put({insert.number}, insert);
    for (const Pattern& pattern : drawing.patterns) {
        if (pattern.number <= 0 || pattern.scratch) continue;
        putList(tables, pattern.number, pattern.bitmaps);
        if (pattern.view != 0) tables.of<SheetPattern>().put({pattern.number}, {pattern.view});
    }
    if (drawing.geoReference.set) tables.of<GeoReference>().put({}, drawing.geoReference);
}

/// Numbers of views ascend from 0, each once; what a detail needs is there.
static void checkView(const Drawing& drawing, const View& view, int previous) {
    if (view.number <= previous) throw StoreError("a view's number is out of order");
    if (view.kind < ViewKind::Sheet || view.kind > ViewKind::Detail) throw StoreError("a view is of no kind");
    if (view.workId != 0 && !drawing.workPlanes.contains(view.workId))
        throw StoreError("a view has no plane");
    if (!(view.factor > 0) || !(view.paperWidth >= 0) || !(view.paperHeight >= 0))
        throw StoreError("a view's size isn't one");
}

static void readViewDetails(Database& db, Drawing& drawing) {
    std::size_t next = 0;
    int previous = -1;
    std::vector<ViewDetails> details;
    readRows<ViewDetails>(
        db, [&](const Keys<ViewDetails>& key) -> ViewDetails& { return append(details, key[0]); });
    if (details.size() != drawing.views.size()) throw StoreError("a view lacks its details");
    for (ViewDetails& read : details) {
        View& view = drawing.views[next++];
        View full = read;
        full.name = view.name, full.format = view.format, full.unit = view.unit, full.scale = view.scale;
        view = std::move(full);
        checkView(drawing, view, previous);
        previous = view.number;
    }
    drawing.lastViewNumber = std::max(previous, 0);
}

static void readInserts(Database& db, Drawing& drawing) {
    std::vector<int> numbers;
    readRows<ViewInsert>(db, [&](const Keys<ViewInsert>& key) -> ViewInsert& {
        numbers.push_back(key[0]);
        return drawing.viewInserts.emplace_back();
    });
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        ViewInsert& insert = drawing.viewInserts[i];
        insert.number = drawing.lastViewInsert = numbers[i];
        if (!drawing.findView(insert.sheet) || !drawing.findView(insert.view))
            throw StoreError("a detail belongs to no view");
        if (!(insert.ratio > 0) || !std::isfinite(insert.ratio))
            throw StoreError("a detail's scale isn't one");
    }
}

void readSheets(Database& db, std::int64_t version, Drawing& drawing) {
    if (!hasTable<Bitmap>(version)) {
        for (View& view : drawing.views)
            view.number = &view == drawing.views.data() ? 0 : ++drawing.lastViewNumber;
        return;
    }
    readPatternLists(db, drawing, &Pattern::bitmaps);
    readViewDetails(db, drawing);
    readInserts(db, drawing);
    std::vector<std::pair<int, SheetPattern>> patterns;
    readRows<SheetPattern>(db, [&](const Keys<SheetPattern>& key) -> SheetPattern& {
        return patterns.emplace_back(key[0], SheetPattern{}).second;
    });
    for (const auto& [number, sheet] : patterns) {
        if (!drawing.findView(sheet.view)) throw StoreError("a pattern belongs to no view");
        ownerOf(drawing, number).view = sheet.view;
    }
    std::vector<GeoReference> references;
    readRows<GeoReference>(
        db, [&](const Keys<GeoReference>&) -> GeoReference& { return references.emplace_back(); });
    if (references.empty()) return;
    drawing.geoReference = references.front();
    drawing.geoReference.set = true;
}

} // namespace host
