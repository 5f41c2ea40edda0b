#include "store/packing.h"

#include "store/sqlite.h"

namespace host {

static bool hasCentre(ElementType type) {
    return type == ElementType::Arc || type == ElementType::Circle || type == ElementType::Spline;
}

static std::uint8_t packInfo(const Element& element) {
    return static_cast<std::uint8_t>(element.info | element.ccw << 7);
}

ElementColumns packElements(const std::vector<Element>& elements) {
    ElementColumns columns;
    columns.types.reserve(elements.size());
    columns.targets.reserve(elements.size() * 16);
    for (const Element& element : elements) {
        packNumber(columns.types, static_cast<std::uint8_t>(element.type));
        packNumber(columns.info, packInfo(element));
        packNumber(columns.pens, element.pen);
        packNumber(columns.lineTypes, element.lineType);
        packNumber(columns.targets, element.x);
        packNumber(columns.targets, element.y);
        if (!hasCentre(element.type)) continue;
        packNumber(columns.centres, element.cx);
        packNumber(columns.centres, element.cy);
    }
    return columns;
}

static void checkLengths(const ElementColumns& columns) {
    const std::size_t count = columns.types.size();
    std::size_t centres = 0;
    for (const char type : columns.types) {
        if (type < 1 || type > 6) throw StoreError("an element is of no known type");
        centres += hasCentre(static_cast<ElementType>(type));
    }
    if (columns.info.size() != count || columns.pens.size() != 4 * count ||
        columns.lineTypes.size() != 2 * count || columns.targets.size() != 16 * count ||
        columns.centres.size() != 16 * centres)
        throw StoreError("the columns of a pattern's elements disagree in length");
}

std::vector<Element> unpackElements(const ElementColumns& columns) {
    checkLengths(columns);
    std::vector<Element> elements(columns.types.size());
    std::size_t centre = 0;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        Element& element = elements[i];
        const auto info = static_cast<std::uint8_t>(columns.info[i]);
        element.type = static_cast<ElementType>(columns.types[i]);
        element.info = info & 0x7F;
        element.ccw = info >> 7;
        element.pen = unpackNumber<std::int32_t>(columns.pens, i);
        element.lineType = unpackNumber<std::int16_t>(columns.lineTypes, i);
        element.x = unpackNumber<double>(columns.targets, 2 * i);
        element.y = unpackNumber<double>(columns.targets, 2 * i + 1);
        if (!hasCentre(element.type)) continue;
        element.cx = unpackNumber<double>(columns.centres, 2 * centre);
        element.cy = unpackNumber<double>(columns.centres, 2 * centre + 1);
        ++centre;
    }
    return elements;
}

std::string packPoints(const std::vector<RPT>& points) {
    std::string blob;
    for (const RPT& p : points) {
        for (const double value : {p.x, p.y}) packNumber(blob, value);
    }
    return blob;
}

std::string packPoints(const std::vector<RPT3>& points) {
    std::string blob;
    for (const RPT3& p : points) {
        for (const double value : {p.x, p.y, p.z}) packNumber(blob, value);
    }
    return blob;
}

std::string packReals(const std::vector<double>& values) {
    std::string blob;
    for (const double value : values) packNumber(blob, value);
    return blob;
}

std::string packIntegers(const std::vector<std::int32_t>& values) {
    std::string blob;
    for (const std::int32_t value : values) packNumber(blob, value);
    return blob;
}

/// Number of records of `reals` doubles in the blob.
static std::size_t countRecords(std::string_view blob, std::size_t reals) {
    if (blob.size() % (8 * reals) != 0) throw StoreError("a list of numbers is cut");
    return blob.size() / (8 * reals);
}

void unpack(std::string_view blob, std::vector<RPT>& points) {
    points.resize(countRecords(blob, 2));
    for (std::size_t i = 0; i < points.size(); ++i)
        points[i] = {unpackNumber<double>(blob, 2 * i), unpackNumber<double>(blob, 2 * i + 1)};
}

void unpack(std::string_view blob, std::vector<RPT3>& points) {
    points.resize(countRecords(blob, 3));
    for (std::size_t i = 0; i < points.size(); ++i)
        points[i] = {unpackNumber<double>(blob, 3 * i), unpackNumber<double>(blob, 3 * i + 1),
                     unpackNumber<double>(blob, 3 * i + 2)};
}

void unpack(std::string_view blob, std::vector<double>& values) {
    values.resize(countRecords(blob, 1));
    for (std::size_t i = 0; i < values.size(); ++i) values[i] = unpackNumber<double>(blob, i);
}

void unpack(std::string_view blob, std::vector<std::int32_t>& values) {
    if (blob.size() % sizeof values[0] != 0) throw StoreError("a list of numbers is cut");
    values.resize(blob.size() / sizeof values[0]);
    for (std::size_t i = 0; i < values.size(); ++i) values[i] = unpackNumber<std::int32_t>(blob, i);
}

} // namespace host
