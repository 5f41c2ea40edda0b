// Reads a spreadsheet file (.xls).
#pragma once

#include "ut_string.h"

class UtExcel {
public:
    UtExcel() = default;
    ~UtExcel() { Close(); }
    UtExcel(const UtExcel&) = delete;
    UtExcel& operator=(const UtExcel&) = delete;

    int Open(const UtCString& path); ///< 0, or non-zero for a file that isn't a spreadsheet.
    int Load();                      ///< Takes the file's content in. 0 or an error.
    int SetActWorksheet(int number); ///< Worksheets count from 1.
    /// The cell as text; numbers as they are written without needless digits. Rows and columns count from 1.
    /// Non-zero for an empty cell and beyond the sheet.
    int ReadCellString(int row, int column, UtCString* text);
    void Close();

private:
    const void* handle_ = nullptr;
};
