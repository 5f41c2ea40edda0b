#include "convert/binary_dxf.h"

namespace host {
namespace {

struct CodeRange {
    int first, last;
    DxfValue kind;
};

constexpr CodeRange ranges[] = {
    {0, 9, DxfValue::Text},        {10, 59, DxfValue::Double},   {60, 79, DxfValue::Int16},
    {90, 99, DxfValue::Int32},     {100, 109, DxfValue::Text},   {110, 149, DxfValue::Double},
    {160, 169, DxfValue::Int64},   {170, 179, DxfValue::Int16},  {210, 239, DxfValue::Double},
    {270, 289, DxfValue::Int16},   {290, 299, DxfValue::Bool},   {300, 309, DxfValue::Text},
    {310, 319, DxfValue::Chunk},   {320, 369, DxfValue::Text},   {370, 389, DxfValue::Int16},
    {390, 399, DxfValue::Text},    {400, 409, DxfValue::Int16},  {410, 419, DxfValue::Text},
    {420, 429, DxfValue::Int32},   {430, 439, DxfValue::Text},   {440, 459, DxfValue::Int32},
    {460, 469, DxfValue::Double},  {470, 481, DxfValue::Text},   {999, 1003, DxfValue::Text},
    {1004, 1004, DxfValue::Chunk}, {1005, 1009, DxfValue::Text}, {1010, 1059, DxfValue::Double},
    {1060, 1070, DxfValue::Int16}, {1071, 1071, DxfValue::Int32}};

} // namespace

DxfValue dxfValueKind(int code) {
    for (const CodeRange& range : ranges)
        if (code >= range.first && code <= range.last) return range.kind;
    return DxfValue::Unknown;
}

} // namespace host
