// Models made by the tests: a box with all its topology, bodies of one face, curves.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Writes the text of a model, record by record. Versions from 700 on have ids and patterns.
class ModelText {
public:
    explicit ModelText(int version) : version_(version) {}

    /// A record: its name, then its fields behind those that each record begins with.
    ModelText& add(const std::string& name, const std::string& fields, bool hasPattern = true) {
        text_ += name + (version_ >= 700 ? hasPattern ? " $-1 -1 $-1 " : " $-1 -1 " : " $-1 ") +
                 (version_ < 200 ? old(fields) : fields) + " #\n";
        return *this;
    }
    std::string text() const {
        if (version_ < 200) return std::to_string(version_) + " 0 1 0\n" + text_ + "End-of-ACIS-data\n";
        const std::string mark = version_ >= 700 ? "@" : "";
        return std::to_string(version_) + " 0 1 0\n" + mark + "4 test " + mark + "4 test " + mark +
               "24 Thu Jan  1 00:00:00 2004\n1 1e-06 1e-10\n" + text_ + "End-of-ACIS-data\n";
    }

private:
    /// Words of the eldest versions are numbers; 105 has no ranges.
    std::string old(const std::string& fields) const {
        static constexpr std::pair<std::string_view, const char*> words[] = {
            {"forward", "0"}, {"forward_v", "0"}, {"single", "0"},
            {"out", "0"},     {"reversed", "1"},  {"double", "1"}};
        std::istringstream in(fields);
        std::string text, word;
        while (in >> word) {
            if (word == "I" && version_ < 106) continue;
            if (word == "I") word = "0";
            for (const auto& [name, number] : words)
                if (word == name) word = number;
            text += (text.empty() ? "" : " ") + word;
        }
        return text;
    }

    int version_;
    std::string text_;
};

inline std::string pointer(std::size_t number) {
    return "$" + std::to_string(number);
}

/// A box from the origin on, x by y by z.
inline std::string boxModel(int version, int x = 2, int y = 3, int z = 4) {
    constexpr std::size_t FACES = 3, LOOPS = 9, PLANES = 15, COEDGES = 21, EDGES = 45, VERTICES = 57,
                          LINES = 65, POINTS = 77;
    // Corner i has x, y, z by its bits. A face by its corners, counter-clockwise from outside.
    static constexpr int faces[6][4] = {{0, 2, 3, 1}, {4, 5, 7, 6}, {0, 1, 5, 4},
                                        {2, 6, 7, 3}, {0, 4, 6, 2}, {1, 3, 7, 5}};
    static constexpr const char* normals[6] = {"0 0 -1 1 0 0", "0 0 1 1 0 0",  "0 -1 0 1 0 0",
                                               "0 1 0 1 0 0",  "-1 0 0 0 1 0", "1 0 0 0 1 0"};
    struct Edge {
        int from, to;
        std::vector<std::size_t> coedges;
    };
    const auto place = [&](int corner) {
        return std::to_string(corner & 1 ? x : 0) + " " + std::to_string(corner & 2 ? y : 0) + " " +
               std::to_string(corner & 4 ? z : 0);
    };
    std::vector<Edge> edges;
    std::size_t edgeOf[24];
    bool isReversed[24];
    for (std::size_t c = 0; c < 24; ++c) {
        const int a = faces[c / 4][c % 4], b = faces[c / 4][(c + 1) % 4];
        std::size_t e = 0;
        while (e < edges.size() && !(edges[e].from == b && edges[e].to == a)) ++e;
        isReversed[c] = e < edges.size();
        if (e == edges.size()) edges.push_back({a, b, {}});
        edges[e].coedges.push_back(c);
        edgeOf[c] = e;
    }
    ModelText model(version);
    model.add("body", "$1 $-1 $-1")
        .add("lump", "$-1 $2 $0")
        .add("shell", version < 107 ? "$-1 $-1 $3 $1" : "$-1 $-1 $3 $-1 $1");
    for (std::size_t f = 0; f < 6; ++f)
        model.add("face", (f < 5 ? pointer(FACES + f + 1) : "$-1") + " " + pointer(LOOPS + f) + " $2 $-1 " +
                              pointer(PLANES + f) + " forward single");
    for (std::size_t f = 0; f < 6; ++f)
        model.add("loop", "$-1 " + pointer(COEDGES + 4 * f) + " " + pointer(FACES + f));
    for (std::size_t f = 0; f < 6; ++f)
        model.add("plane-surface", place(faces[f][0]) + " " + normals[f] + " forward_v I I I I");
    for (std::size_t c = 0; c < 24; ++c) {
        const auto& pair = edges[edgeOf[c]].coedges;
        const std::size_t first = COEDGES + c / 4 * 4, partner = pair[0] == c ? pair[1] : pair[0];
        model.add("coedge", pointer(first + (c + 1) % 4) + " " + pointer(first + (c + 3) % 4) + " " +
                                pointer(COEDGES + partner) + " " + pointer(EDGES + edgeOf[c]) +
                                (isReversed[c] ? " reversed " : " forward ") + pointer(LOOPS + c / 4) +
                                " $-1");
    }
    for (std::size_t e = 0; e < 12; ++e) {
        const int axis = edges[e].from ^ edges[e].to, length = axis == 1 ? x : axis == 2 ? y : z;
        const auto vertex = [&](int corner) { return pointer(VERTICES + static_cast<std::size_t>(corner)); };
        const bool hasRange = version >= 500;
        model.add("edge", vertex(edges[e].from) + (hasRange ? " 0 " : " ") + vertex(edges[e].to) + " " +
                              (hasRange ? std::to_string(length) + " " : "") +
                              pointer(COEDGES + edges[e].coedges[0]) + " " + pointer(LINES + e) + " forward" +
                              (hasRange ? version >= 700 ? " @7 unknown" : " 7 unknown" : ""));
    }
    for (std::size_t v = 0; v < 8; ++v) {
        std::size_t e = 0;
        while (edges[e].from != static_cast<int>(v) && edges[e].to != static_cast<int>(v)) ++e;
        model.add("vertex", pointer(EDGES + e) + " " + pointer(POINTS + v));
    }
    for (const Edge& edge : edges) {
        const int axis = edge.from ^ edge.to;
        const std::string side = edge.to & axis ? "1" : "-1";
        model.add("straight-curve", place(edge.from) + " " + (axis == 1 ? side : "0") + " " +
                                        (axis == 2 ? side : "0") + " " + (axis == 4 ? side : "0") + " I I");
    }
    for (int corner = 0; corner < 8; ++corner) model.add("point", place(corner));
    return model.text();
}

/// A body of one face without edges.
inline std::string oneFaceModel(int version, const std::string& surface, const std::string& fields,
                                const std::string& sides = "single") {
    return ModelText(version)
        .add("body", "$1 $-1 $-1")
        .add("lump", "$-1 $2 $0")
        .add("shell", "$-1 $-1 $3 $-1 $1")
        .add("face", "$-1 $-1 $2 $-1 $4 forward " + sides)
        .add(surface + "-surface", fields)
        .text();
}

inline std::string sphereModel(int version) {
    return oneFaceModel(version, "sphere", "1 2 3 10 1 0 0 0 0 1 forward_v I I I I");
}

/// A surface that bends in both directions, over [0, 2] by [0, 1].
inline std::string splineFaceModel(int version, const std::string& sub) {
    return oneFaceModel(version, "spline", "forward { " + sub + " } I I I I", "double out");
}
/// Its B-spline: degrees 2 and 1, with a knot in the middle of u.
inline std::string splineNet(bool isRational) {
    std::string net =
        isRational ? "nurbs 2 1 both open open none none 3 2" : "nubs 2 1 open open none none 3 2";
    net += " 0 2 1 1 2 2 0 1 1 1";
    for (int v = 0; v < 2; ++v)
        for (int u = 0; u < 4; ++u)
            net += " " + std::to_string(u) + " " + std::to_string(3 * v) + " " +
                   std::to_string(u * v - u % 2) + (isRational ? u == 1 ? " 2" : " 1" : "");
    return net;
}

/// A text with one part put in place of another, the first of its kind.
inline std::string replaced(std::string text, const std::string& part, const std::string& by) {
    const std::size_t at = text.find(part);
    return at == std::string::npos ? text : text.replace(at, part.size(), by);
}
