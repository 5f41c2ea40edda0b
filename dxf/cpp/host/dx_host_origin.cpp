#include "dx_host_origin.h"

#include "dx_host.h"

#include <utility>

namespace {

int rowsOf(int pat, int list) {
    const int rows = UoContentCount(pat, static_cast<OV_CONTENT>(list));
    return list == OV_ELEMENTS && pat == DxElemQueuePat ? rows + DxCiElemWaiting() : rows;
}

/// The only list that has become longer; -1 for none or several.
int grownList(const int (&now)[DX_ORIGIN_LISTS]) {
    const int wanted = DxOriginStart.list;
    if (wanted >= 0) return now[wanted] > DxOriginStart.rows[wanted] ? wanted : -1;
    int grown = -1;
    for (int list = 0; list < DX_ORIGIN_LISTS; ++list) {
        if (now[list] <= DxOriginStart.rows[list]) continue;
        if (grown >= 0) return -1;
        grown = list;
    }
    return grown;
}

} // namespace

void DxOriginNotePattern() {
    if (!DxOriginStart.isWanted) return;
    DxOriginStart.isWanted = 0;
    DxOriginStart.pat = DxActPat;
    for (int list = 0; list < DX_ORIGIN_LISTS; ++list) DxOriginStart.rows[list] = rowsOf(DxActPat, list);
}

void DxOriginFollow(int full) {
    if (DxOriginStart.pat != full) return;
    for (int list = 0; list < DX_ORIGIN_LISTS; ++list)
        if (rowsOf(full, list) != DxOriginStart.rows[list]) return;
    DxOriginStart.isWanted = 1;
    DxOriginNotePattern();
}

int DxOriginKeep(std::string text) {
    const int pat = std::exchange(DxOriginStart.pat, 0);
    DxOriginStart.isWanted = 0;
    if (pat == 0 || pat != DxActPat) return 0;
    int now[DX_ORIGIN_LISTS];
    for (int list = 0; list < DX_ORIGIN_LISTS; ++list) now[list] = rowsOf(pat, list);
    const int list = grownList(now);
    if (list < 0) return 0;
    const int first = DxOriginStart.rows[list], count = now[list] - first;
    if (list == OV_ELEMENTS && pat == DxElemQueuePat && DxCiElemWaiting() > 0) {
        DxWaitingOrigins.push_back({first, count, std::move(text)});
        return 0;
    }
    const int error = UoOriginAdd(pat, static_cast<OV_CONTENT>(list), first, count, std::move(text));
    return error == 1001 ? error : 0;
}

int DxOriginHandOver(int patNo) {
    int error = 0;
    for (DX_WAITING_ORIGIN& run : DxWaitingOrigins)
        if (!error && UoOriginAdd(patNo, OV_ELEMENTS, run.first, run.count, std::move(run.text)) == 1001)
            error = 1001;
    DxWaitingOrigins.clear();
    return error;
}

void DxPlacedBegin() {
    DxActPlaced.firstEntry = DxActPatIndex;
    DxActPlaced.number = DxActPat;
    // It is kept whatever it comes to hold.
    DxPatTable[static_cast<std::size_t>(DxActPatIndex)].elements += 1;
}

void DxPlacedEnd(std::string text) {
    DxPlacedWanted = 0;
    DxPlacedLayers.clear();
    DX_PLACED placed = std::exchange(DxActPlaced, {});
    if (placed.firstEntry < 0) return;
    placed.endEntry = static_cast<int>(DxPatTable.size());
    placed.text = std::move(text);
    if (!placed.text.empty()) DxPlacedInserts.push_back(std::move(placed));
}

int DxPlacedTell() {
    int error = 0;
    for (const DX_PLACED& placed : DxPlacedInserts) {
        std::vector<int> members;
        for (int entry = placed.firstEntry + 1; entry < placed.endEntry; ++entry) {
            const DX_PAT_ENTRY& pattern = DxPatTable[static_cast<std::size_t>(entry)];
            if (DsObListGetOb(pattern.number)) members.push_back(pattern.number);
        }
        if (!error && DsObListGetOb(placed.number)) error = UoPlacedSet(placed.number, members, placed.text);
    }
    DxPlacedInserts.clear();
    return error;
}
