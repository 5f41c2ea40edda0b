#include "drawing/dump_space.h"

#include <charconv>
#include <cmath>
#include <string_view>

namespace host {

std::string dumpNumber(double value, int digits) {
    constexpr double noise = 1e-12;
    if (std::abs(value) < noise) value = 0;
    char buffer[64];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, digits);
    return {buffer, end.ptr};
}

namespace {

class SpaceDumper {
public:
    explicit SpaceDumper(int digits) : digits_(digits) {}

    std::string dump(const SpaceContent& content) {
        for (const FaceList& list : content.faceLists) faces(list, "  ");
        if (content.facesJoined) put("  faces joined\n");
        for (const Facets& f : content.facets) facets(f);
        for (const Curve& curve : content.curves) {
            named("  curve pen", curve.pen);
            for (const RPT3& p : curve.points) point(p);
            put("\n");
        }
        for (const PointCloud& c : content.pointClouds) cloud(c);
        return std::move(out_);
    }

private:
    void put(std::string_view text) { out_ += text; }
    void named(std::string_view name, int value) {
        put(name);
        put(" " + std::to_string(value));
    }
    void point(const RPT3& p) {
        for (const double value : {p.x, p.y, p.z}) put(" " + dumpNumber(value, digits_));
    }

    void faces(const FaceList& list, std::string_view indent) {
        EdgeLooks looks(list);
        forEachFace(list, [&](const FaceView& face) {
            put(indent);
            face.isArea() ? area(face, looks) : run(face, looks);
            put("\n");
        });
    }

    /// Points without the one that repeats the first, and the edges, numbered from 1 by the point that they
    /// leave, that are hidden or have a pen or line type of their own.
    void area(const FaceView& face, EdgeLooks& looks) {
        named("face pen", face.pen);
        const EdgeLook first = looks.at(face.first);
        if (first.lineType != 1) named(" lt", first.lineType);
        for (int i = 0; i + 1 < face.count; ++i) point(face.points[i]);
        std::string hidden, pens;
        for (int i = 1; i < face.count; ++i) {
            const EdgeLook look = looks.at(face.first + i);
            if (face.marks[i] & HIDDEN)
                hidden += " " + std::to_string(i);
            else if (look.pen != face.pen)
                pens += " " + std::to_string(i) + ":" + std::to_string(look.pen);
        }
        if (!hidden.empty()) put(" hidden" + hidden);
        if (!pens.empty()) put(" pens" + pens);
    }

    void run(const FaceView& face, EdgeLooks& looks) {
        put("edge");
        for (int i = 0; i < face.count; ++i) {
            const EdgeLook look = looks.at(face.first + i);
            if (i == 0 || !(face.marks[i] & EDGE)) continue;
            named(" pen", look.pen);
            if (look.lineType != 1) named(" lt", look.lineType);
            point(face.points[i - 1]);
            point(face.points[i]);
        }
    }

    void facets(const Facets& facets) {
        named("  facets pen", facets.pen);
        if (facets.material != 0) named(" material", static_cast<int>(facets.material));
        for (const RPT3& normal : facets.normals) {
            put(" normal");
            point(normal);
        }
        put("\n");
        faces(facets.list, "    ");
    }

    void cloud(const PointCloud& cloud) {
        put("  pointcloud");
        for (std::size_t i = 0; i < cloud.points.size(); ++i) {
            if (i == 0 || cloud.pens[i] != cloud.pens[i - 1]) named(" pen", cloud.pens[i]);
            point(cloud.points[i]);
        }
        put("\n");
    }

    int digits_;
    std::string out_;
};

} // namespace

std::string dumpSpace(const SpaceContent& content, int digits) {
    return SpaceDumper(digits).dump(content);
}

} // namespace host
