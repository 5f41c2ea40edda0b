// Units and sheet formats.
#include "ge.h"

namespace {

struct UnitRow {
    double nanometres;
    const char* name;
};

// By unit code; row 0 stands for "no unit".
constexpr UnitRow kUnits[] = {{0, ""},    {1, "nm"},    {1e3, "ym"},      {1e6, "mm"},      {1e7, "cm"},
                              {1e9, "m"}, {1e12, "km"}, {25.4e6, "inch"}, {304.8e6, "feet"}};
constexpr int kUnitCount = static_cast<int>(sizeof(kUnits) / sizeof(kUnits[0]));

struct SheetRow {
    double width;
    double height;
};

// Millimetres, landscape, A00 to A5.
constexpr SheetRow kSheets[] = {{1682, 1189}, {1189, 841}, {841, 594}, {594, 420},
                                {420, 297},   {297, 210},  {210, 148}};
constexpr int kSheetCount = static_cast<int>(sizeof(kSheets) / sizeof(kSheets[0]));

const UnitRow& unitRow(int code) {
    return kUnits[code > 0 && code < kUnitCount ? code : 0];
}

// A number outside the list stands for the nearest sheet.
const SheetRow& sheetRow(int number) {
    if (number < 0) return kSheets[0];
    return kSheets[number < kSheetCount ? number : kSheetCount - 1];
}

} // namespace

double GeUnit::factor() const {
    return unitRow(code_).nanometres * value_;
}

UtCString GeUnit::name() const {
    return unitRow(code_).name;
}

GeUnit GeUnit::fromName(const UtCString& name) {
    for (int code = 1; code < kUnitCount; ++code)
        if (name.str() == kUnits[code].name) return GeUnit(code);
    return GeUnit(0);
}

double GeFormat::width() const {
    return sheetRow(number_).width;
}

double GeFormat::height() const {
    return sheetRow(number_).height;
}
