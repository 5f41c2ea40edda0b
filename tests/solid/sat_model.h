// Models for tests: loaded, converted, measured and compared.
#pragma once

#include "solid/sat/acis_file.h"
#include "solid/sat/acis_shape.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>
#include <string>

using ACIS::Id;

constexpr std::uint32_t SAT_700 = ACIS::VERSION_TEXT | 700, SAB_700 = ACIS::VERSION_BINARY | 700;

inline std::string fileContent(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream out;
    out << in.rdbuf();
    return out.str();
}

inline std::unique_ptr<ACIS::File> loaded(const std::string& data) {
    auto file = std::make_unique<ACIS::File>();
    EXPECT_TRUE(file->load(data)) << file->problem();
    return file;
}

inline std::unique_ptr<ACIS::File> converted(ACIS::File& file, std::uint32_t version = SAT_700) {
    const std::string data = file.save(version);
    EXPECT_FALSE(data.empty()) << file.problem();
    return loaded(data);
}

inline std::string binaryModel(const std::string& text) {
    return loaded(text)->save(SAB_700);
}

/// Numbers of records by class.
inline std::map<Id, int> kinds(const ACIS::File& file) {
    std::map<Id, int> counts;
    for (const ACIS::ENTITY& entity : file.records)
        if (entity.kind) ++counts[entity.kind->isA->id];
    counts.erase(Id::Attrib_Unknown_AsmHeader);
    return counts;
}

/// The records of one kind, in their order.
inline std::vector<const ACIS::ENTITY*> all(const ACIS::File& file, Id id) {
    std::vector<const ACIS::ENTITY*> found;
    for (const ACIS::ENTITY& entity : file.records)
        if (entity.isA(id)) found.push_back(&entity);
    return found;
}

constexpr std::size_t FIRST = 3; ///< place of a record's own first field

inline const ACIS::ENTITY* targetOf(const ACIS::File& file, const ACIS::ENTITY& entity, std::size_t field) {
    return file.at(file.values[entity.first + FIRST + field]);
}

/// Each vertex is where it was, within 1e-9.
inline void expectSameVertices(const ACIS::File& a, const ACIS::File& b) {
    const auto from = all(a, Id::Vertex), to = all(b, Id::Vertex);
    ASSERT_EQ(from.size(), to.size());
    for (std::size_t i = 0; i < from.size(); ++i) {
        const auto p = pointOf(a, *from[i]), q = pointOf(b, *to[i]);
        ASSERT_TRUE(p && q);
        EXPECT_LE(distance(*p, *q), 1e-9);
    }
}

/// Each edge's curve goes through its vertices at the edge's parameters, within 1e-6.
inline void expectEdgesMeetVertices(const ACIS::File& file) {
    for (std::size_t i = 0; i < file.records.size(); ++i) {
        const ACIS::ENTITY& edge = file.records[i];
        if (!edge.isA(Id::Edge)) continue;
        const ACIS::ENTITY* curve = targetOf(file, edge, 5);
        if (!curve) continue;
        const auto shape = curveShape(file, *curve);
        ASSERT_TRUE(shape) << "edge " << i;
        double start = 0, end = 0;
        edgeRange(file, static_cast<std::int64_t>(i), start, end);
        const bool isReversed = file.values[edge.first + FIRST + 6].integer;
        const auto a = pointOf(file, *targetOf(file, edge, 0)), b = pointOf(file, *targetOf(file, edge, 2));
        ASSERT_TRUE(a && b);
        EXPECT_LE(distance(shape->at(isReversed ? -start : start), *a), 1e-6) << "edge " << i;
        EXPECT_LE(distance(shape->at(isReversed ? -end : end), *b), 1e-6) << "edge " << i;
    }
}

/// Points of each face's surface and of each edge's curve are where they were, within 1e-6.
inline void expectSameShapes(const ACIS::File& a, const ACIS::File& b) {
    const auto from = all(a, Id::Face), to = all(b, Id::Face);
    ASSERT_EQ(from.size(), to.size());
    for (std::size_t i = 0; i < from.size(); ++i) {
        const auto s = surfaceShape(a, *targetOf(a, *from[i], 4)),
                   t = surfaceShape(b, *targetOf(b, *to[i], 4));
        ASSERT_TRUE(s && t) << "face " << i;
        for (int j = 0; j <= 6; ++j)
            for (int k = 0; k <= 6; ++k) {
                const double u = s->range[0] + (s->range[1] - s->range[0]) * j / 6;
                const double v = s->range[2] + (s->range[3] - s->range[2]) * k / 6;
                EXPECT_LE(distance(s->at(u, v), t->at(u, v)), 1e-6) << "face " << i;
            }
    }
    const auto edges = all(a, Id::Edge), others = all(b, Id::Edge);
    ASSERT_EQ(edges.size(), others.size());
    for (std::size_t i = 0; i < edges.size(); ++i) {
        const ACIS::ENTITY* curve = targetOf(a, *edges[i], 5);
        if (!curve) continue;
        const auto s = curveShape(a, *curve), t = curveShape(b, *targetOf(b, *others[i], 5));
        ASSERT_TRUE(s && t) << "edge " << i;
        for (int k = 0; k <= 12; ++k) {
            const double at = s->start + (s->end - s->start) * k / 12;
            EXPECT_LE(distance(s->at(at), t->at(at)), 1e-6) << "edge " << i;
        }
    }
}
