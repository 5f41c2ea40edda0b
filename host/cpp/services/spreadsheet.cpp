#include "ut_excel.h"

#include "services/failure.h"
#include "ut.h"

#include <freexl.h>

#include <cmath>

static constexpr int unreadable = 9001;
static constexpr int noSuchCell = 1005;

int UtExcel::Open(const UtCString& path) {
    Close();
    if (host::callFails() || !UtIsFile(path)) return unreadable; // a pipe would keep us waiting
    if (freexl_open(path.c_str(), &handle_) == FREEXL_OK) return 0;
    Close();
    return unreadable;
}

int UtExcel::Load() {
    return handle_ ? 0 : unreadable;
}

int UtExcel::SetActWorksheet(int number) {
    if (host::callFails() || !handle_ || number < 1 || number > 0xFFFF) return unreadable;
    const auto index = static_cast<unsigned short>(number - 1);
    return freexl_select_active_worksheet(handle_, index) == FREEXL_OK ? 0 : unreadable;
}

static UtCString numberText(double value) {
    return value == std::floor(value) && std::abs(value) < 1e15 ? UtFormat("%.0f", value)
                                                                : UtFormat("%.15g", value);
}

int UtExcel::ReadCellString(int row, int column, UtCString* text) {
    FreeXL_CellValue cell;
    if (host::callFails() || !handle_ || row < 1 || column < 1 || column > 0xFFFF ||
        freexl_get_cell_value(handle_, static_cast<unsigned>(row - 1),
                              static_cast<unsigned short>(column - 1), &cell) != FREEXL_OK)
        return noSuchCell;
    switch (cell.type) {
    case FREEXL_CELL_INT: *text = numberText(cell.value.int_value); return 0;
    case FREEXL_CELL_DOUBLE: *text = numberText(cell.value.double_value); return 0;
    case FREEXL_CELL_TEXT:
    case FREEXL_CELL_SST_TEXT:
    case FREEXL_CELL_DATE:
    case FREEXL_CELL_DATETIME:
    case FREEXL_CELL_TIME: *text = UtCString(cell.value.text_value); return 0;
    default: return noSuchCell;
    }
}

void UtExcel::Close() {
    if (handle_) freexl_close(handle_);
    handle_ = nullptr;
}
