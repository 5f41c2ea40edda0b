#include "acis_place.h"

#include <cmath>
#include <unordered_set>

namespace ACIS {
namespace {

constexpr std::size_t PREFIX = 2;                 ///< of a transformation: attrib, id
constexpr std::size_t BODY_TRANSFORM = 3 + 2;     ///< behind attrib, id, pattern: lump, wire
constexpr std::size_t NUMBERS = 13, LOGICALS = 3; ///< three rows, the shift, a scale; rotate, reflect, shear
constexpr double NOISE = 1e-12;

/// Rows of a matrix and the shift.
struct Affine {
    double m[4][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 0}};

    /// What acts first stands at the left.
    friend Affine operator*(const Affine& a, const Affine& b) {
        Affine c;
        for (int i = 0; i < 4; ++i)
            for (int j = 0; j < 3; ++j) {
                c.m[i][j] = i == 3 ? b.m[3][j] : 0;
                for (int k = 0; k < 3; ++k) c.m[i][j] += a.m[i][k] * b.m[k][j];
            }
        return c;
    }
    bool isIdentity() const {
        const Affine one;
        for (int i = 0; i < 4; ++i)
            for (int j = 0; j < 3; ++j)
                if (m[i][j] != one.m[i][j]) return false;
        return true;
    }
    double determinant() const {
        return m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) -
               m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
               m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
    }
};

Affine affineOf(const double matrix[4][4]) {
    Affine a;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 3; ++j) a.m[i][j] = matrix[i][j];
    return a;
}

/// A transformation keeps its rows without the scale, which stands by itself.
class Transformation {
public:
    explicit Transformation(const Affine& a) : affine_(a) {
        const double determinant = a.determinant();
        scale_ = std::cbrt(std::abs(determinant));
        if (std::abs(scale_ - 1) < NOISE || !(scale_ > 0)) scale_ = 1;
        isReflecting_ = determinant < 0;
        for (int i = 0; i < 3; ++i)
            for (double& number : affine_.m[i]) number /= scale_;
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j) {
                isRotating_ |= affine_.m[i][j] != (i == j);
                isShearing_ |= std::abs(product(i, j) - (i == j)) > NOISE;
            }
    }
    double number(std::size_t i) const { return i + 1 == NUMBERS ? scale_ : affine_.m[i / 3][i % 3]; }
    bool logical(std::size_t i) const { return i == 0 ? isRotating_ : i == 1 ? isReflecting_ : isShearing_; }

private:
    double product(int i, int j) const {
        double sum = 0;
        for (int k = 0; k < 3; ++k) sum += affine_.m[i][k] * affine_.m[j][k];
        return sum;
    }

    Affine affine_;
    double scale_ = 1;
    bool isRotating_ = false, isReflecting_ = false, isShearing_ = false;
};

class Placing {
public:
    Placing(File& file, const Affine& move) : file_(file), move_(move) {}

    void body(const ENTITY& body) {
        if (body.count <= BODY_TRANSFORM) return;
        Value& pointer = file_.values[body.first + BODY_TRANSFORM];
        const ENTITY* const transform = file_.at(pointer);
        if (!transform)
            pointer = makeValue(Kind::Pointer, added());
        else if (moved_.insert(transform).second)
            move(*transform);
    }

    /// Records that the model gets when all bodies are done: until then nothing may move.
    const std::vector<ENTITY>& newRecords() const { return new_; }

private:
    void move(const ENTITY& transform) {
        if (transform.count < PREFIX + NUMBERS + LOGICALS) return;
        Affine old;
        const auto value = [&](std::size_t i) -> Value& {
            return file_.values[transform.first + PREFIX + i];
        };
        const double scale = value(NUMBERS - 1).number();
        for (std::size_t i = 0; i + 1 < NUMBERS; ++i)
            old.m[i / 3][i % 3] = value(i).number() * (i < 9 ? scale : 1);
        const Transformation made(old * move_);
        for (std::size_t i = 0; i < NUMBERS; ++i) value(i) = makeReal(made.number(i));
        for (std::size_t i = 0; i < LOGICALS; ++i)
            value(NUMBERS + i) = makeValue(Kind::Logical, made.logical(i));
    }
    /// A transformation for the bodies that had none, behind all other records.
    std::int64_t added() {
        if (added_ >= 0) return added_;
        const Transformation made(move_);
        const Class& isA = classOf(Id::Transform);
        file_.names.push_back({isA.name, &isA});
        ENTITY record;
        record.kind = &file_.names.back();
        record.first = static_cast<std::uint32_t>(file_.values.size());
        file_.values.push(makeValue(Kind::Pointer, -1));
        file_.values.push(Value());
        for (std::size_t i = 0; i < NUMBERS; ++i) file_.values.push(makeReal(made.number(i)));
        for (std::size_t i = 0; i < LOGICALS; ++i)
            file_.values.push(makeValue(Kind::Logical, made.logical(i)));
        record.count = static_cast<std::uint32_t>(file_.values.size()) - record.first;
        new_.push_back(record);
        return added_ = static_cast<std::int64_t>(file_.records.size());
    }

    File& file_;
    const Affine move_;
    std::unordered_set<const ENTITY*> moved_;
    std::int64_t added_ = -1;
    std::vector<ENTITY> new_;
};

} // namespace

void placeModel(File& file, const double matrix[4][4]) {
    const Affine move = affineOf(matrix);
    if (move.isIdentity()) return;
    Placing placing(file, move);
    for (const ENTITY& record : file.records)
        if (record.isA(Id::Body)) placing.body(record);
    file.records.insert(file.records.end(), placing.newRecords().begin(), placing.newRecords().end());
}

} // namespace ACIS
