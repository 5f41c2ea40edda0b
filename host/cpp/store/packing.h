// Columns of numbers packed into blobs, little-endian, without a head.
#pragma once

#include "drawing/drawing.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <string>
#include <string_view>

namespace host {

/// Appends the bytes of an integer or a double.
template <class Number>
void packNumber(std::string& blob, Number value) {
    char bytes[sizeof(Number)];
    std::memcpy(bytes, &value, sizeof value);
    if constexpr (std::endian::native == std::endian::big) std::reverse(bytes, bytes + sizeof value);
    blob.append(bytes, sizeof bytes);
}

/// Number `index` of a blob, which must hold it.
template <class Number>
Number unpackNumber(std::string_view blob, std::size_t index) {
    char bytes[sizeof(Number)];
    std::memcpy(bytes, blob.data() + index * sizeof bytes, sizeof bytes);
    if constexpr (std::endian::native == std::endian::big) std::reverse(bytes, bytes + sizeof bytes);
    Number value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

/// The elements of a pattern or contour as six columns. `types`, `info`, `pens`, `lineTypes` and `targets`
/// hold an entry an element; `centres` only for arcs, circles and splines, in their order.
struct ElementColumns {
    std::string types;     ///< u8, ElementType
    std::string info;      ///< u8, info byte in bits 0 to 6, bit 7 counter-clockwise
    std::string pens;      ///< i32
    std::string lineTypes; ///< i16
    std::string targets;   ///< f64 x, y
    std::string centres;   ///< f64 x, y; of a spline: its position among the pattern's splines, 0
};

ElementColumns packElements(const std::vector<Element>& elements);
/// The elements back. Throws StoreError for lengths that disagree and for types that don't exist.
std::vector<Element> unpackElements(const ElementColumns& columns);

std::string packPoints(const std::vector<RPT>& points);
std::string packPoints(const std::vector<RPT3>& points);
std::string packIntegers(const std::vector<std::int32_t>& values);
std::string packReals(const std::vector<double>& values);
void unpack(std::string_view blob, std::vector<RPT>& points);
void unpack(std::string_view blob, std::vector<RPT3>& points);
void unpack(std::string_view blob, std::vector<double>& values);
void unpack(std::string_view blob, std::vector<std::int32_t>& values);

} // namespace host
