// Faces of models as triangles: they cover what the faces are, however the loops run.
#include "models.h"
#include "sat_model.h"

#include "solid/solid_faces.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace {

constexpr double pi = std::numbers::pi;

double areaOf(const std::string& model) {
    host::Solid solid;
    solid.data = model;
    const host::FaceList list = host::solidFaces(solid, 100'000);
    double sum = 0;
    forEachFace(list, [&](const host::FaceView& face) {
        EXPECT_TRUE(face.isArea());
        const RPT3 *a = face.points, *b = a + 1, *c = a + 2;
        const double u[3] = {b->x - a->x, b->y - a->y, b->z - a->z},
                     v[3] = {c->x - a->x, c->y - a->y, c->z - a->z};
        sum +=
            std::hypot(u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]) / 2;
    });
    return sum;
}

/// A level circle about the z axis, as a loop of one edge.
struct Ring {
    double radius, height;
    bool isReversed;
};

/// A body of one face between such rings.
std::string ringed(const std::string& surface, const std::string& fields, const char* sense,
                   const std::vector<Ring>& rings) {
    ModelText model(700);
    model.add("body", "$1 $-1 $-1").add("lump", "$-1 $2 $0").add("shell", "$-1 $-1 $3 $-1 $1");
    model.add("face", "$-1 $5 $2 $-1 $4 " + std::string(sense) + " single").add(surface + "-surface", fields);
    for (std::size_t i = 0; i < rings.size(); ++i) {
        const auto part = [i](std::size_t n) { return pointer(5 + 6 * i + n); };
        const std::string next = i + 1 < rings.size() ? pointer(5 + 6 * (i + 1)) : "$-1";
        const std::string radius = std::to_string(rings[i].radius), height = std::to_string(rings[i].height);
        model.add("loop", next + " " + part(1) + " $3");
        model.add("coedge", part(1) + " " + part(1) + " $-1 " + part(2) +
                                (rings[i].isReversed ? " reversed " : " forward ") + part(0) + " $-1");
        model.add("edge", part(3) + " 0 " + part(3) + " 6.2831853071795862 " + part(1) + " " + part(4) +
                              " forward @7 unknown");
        model.add("vertex", part(2) + " " + part(5));
        model.add("ellipse-curve", "0 0 " + height + " 0 0 1 " + radius + " 0 0 1 I I");
        model.add("point", radius + " 0 " + height);
    }
    return model.text();
}

TEST(SolidFaces, CoverTheirSurfaces) {
    const std::string plane = "0 0 0 0 0 1 1 0 0 forward_v I I I I",
                      ball = "0 0 0 10 1 0 0 0 0 1 forward_v I I I I",
                      ring = "0 0 0 0 0 1 10 2 1 0 0 forward_v I I I I",
                      roller = "0 0 0 0 0 1 5 0 0 1 I I 0 1 5 forward I I I I",
                      // half an angle of 45 degrees, narrowing upward
        hat = "0 0 0 0 0 1 5 0 0 1 I I -0.70710678118654757 0.70710678118654757 5 forward I I I I";
    const struct {
        const char* what;
        std::string model;
        double area;
    } cases[] = {
        {"box", boxModel(700), 52},
        {"box of 106", boxModel(106), 52},
        {"box, binary", binaryModel(boxModel(700)), 52},
        {"sphere", sphereModel(700), 400 * pi},
        {"torus", oneFaceModel(700, "torus", ring), 80 * pi * pi},
        {"disc with a hole", ringed("plane", plane, "forward", {{5, 0, false}, {2, 0, true}}), 21 * pi},
        {"cylinder", ringed("cone", roller, "forward", {{5, 0, false}, {5, 7, true}}), 70 * pi},
        {"cylinder, seen from within", ringed("cone", roller, "reversed", {{5, 0, true}, {5, 7, false}}),
         70 * pi},
        {"cone up to its point", ringed("cone", hat, "forward", {{5, 0, false}}), 25 * pi * std::sqrt(2)},
        {"cut cone", ringed("cone", hat, "forward", {{5, 0, false}, {2, 3, true}}), 21 * pi * std::sqrt(2)},
        {"cap above", ringed("sphere", ball, "forward", {{8, 6, false}}), 80 * pi},
        {"the rest below", ringed("sphere", ball, "forward", {{8, 6, true}}), 320 * pi},
        {"bowl", ringed("sphere", ball, "reversed", {{10, 0, false}}), 200 * pi},
        {"outer half of a torus", ringed("torus", ring, "forward", {{10, -2, false}, {10, 2, true}}),
         40 * pi * pi + 16 * pi},
        {"inner half of it", ringed("torus", ring, "forward", {{10, 2, false}, {10, -2, true}}),
         40 * pi * pi - 16 * pi},
        {"endless cylinder", oneFaceModel(700, "cone", roller), 0},
        {"unknown surface", replaced(sphereModel(700), "sphere-surface", "blob-surface"), 0},
        {"cut file", boxModel(700).substr(0, 900), 0},
    };
    for (const auto& c : cases) EXPECT_NEAR(areaOf(c.model), c.area, 0.006 * c.area) << c.what;
    const std::string net = splineNet(false), spline = "exactsur full " + net + " 0 0 0 0 0 0 0";
    const double bent = areaOf(splineFaceModel(700, spline));
    EXPECT_NEAR(areaOf(splineFaceModel(700, replaced(spline, "exactsur", "other_spl_sur"))), bent, 1e-9);
    EXPECT_GT(bent, 9); // that of its plan
    EXPECT_LT(bent, 14);
}

TEST(SolidFaces, StayWithinTheirLimit) {
    host::Solid solid;
    solid.data = sphereModel(700);
    EXPECT_LE(host::solidFaces(solid, 100).ends.size(), 100u);
}

} // namespace
