#include "store/hatch_rows.h"

#include "store/table_reader.h"
#include "store/table_writer.h"

#include <algorithm>

namespace host {

void putHatchParts(Tables& tables, const Pattern& pattern) {
    for (std::size_t i = 0; i < pattern.hatches.size(); ++i) {
        const Hatch& hatch = pattern.hatches[i];
        const auto row = static_cast<std::int64_t>(i);
        putList(tables, pattern.number, row, hatch.contours);
        putList(tables, pattern.number, row, hatch.families);
        putList(tables, pattern.number, row, hatch.exclusions);
        putList(tables, pattern.number, row, hatch.lines);
        putList(tables, pattern.number, row, hatch.gradient);
        putList(tables, pattern.number, row, hatch.source);
        if (hatch.backPen != 0) tables.of<HatchBack>().put({pattern.number, row}, {hatch.backPen});
    }
}

static void readBacks(Database& db, Drawing& drawing) {
    struct Found {
        Hatch* hatch;
        HatchBack back;
    };
    std::deque<Found> found;
    readRows<HatchBack>(db, [&](const Keys<HatchBack>& key) -> HatchBack& {
        found.push_back({&itemOf(ownerOf(drawing, key[0]).hatches, key[1]), HatchBack{}});
        return found.back().back;
    });
    for (const Found& one : found) one.hatch->backPen = one.back.pen;
}

/// A hatch has two directions, one gradient and one source at most, and excludes contours of its own.
static bool isSound(const Hatch& hatch) {
    const auto isOwn = [&](const HatchExclusion& e) {
        return e.contour >= 0 && static_cast<std::size_t>(e.contour) < hatch.contours.size();
    };
    return hatch.lines.size() <= 2 && hatch.gradient.size() <= 1 && hatch.source.size() <= 1 &&
           std::all_of(hatch.exclusions.begin(), hatch.exclusions.end(), isOwn);
}
static void checkParts(const Drawing& drawing) {
    for (const Pattern& pattern : drawing.patterns)
        for (const Hatch& hatch : pattern.hatches)
            if (!isSound(hatch)) throw StoreError("a hatch has parts that don't fit");
}

void readHatchParts(Database& db, std::int64_t version, Drawing& drawing) {
    readPartLists(db, drawing, &Pattern::hatches, &Hatch::contours);
    readPartLists(db, drawing, &Pattern::hatches, &Hatch::families);
    if (!hasTable<HatchLines>(version)) return;
    readPartLists(db, drawing, &Pattern::hatches, &Hatch::exclusions);
    readPartLists(db, drawing, &Pattern::hatches, &Hatch::lines);
    readPartLists(db, drawing, &Pattern::hatches, &Hatch::gradient);
    readPartLists(db, drawing, &Pattern::hatches, &Hatch::source);
    readBacks(db, drawing);
    checkParts(drawing);
}

} // namespace host
