#include "convert/mesh_file.h"

#include "geometry/face_triangles.h"
#include "render/style.h"
#include "store/replace.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <unordered_map>

namespace host {

namespace {

struct PointHash {
    std::size_t operator()(const RPT3& p) const {
        std::uint64_t hash = 1469598103934665603u;
        for (const double value : {p.x, p.y, p.z})
            hash = (hash ^ std::bit_cast<std::uint64_t>(value)) * 0x9E3779B97F4A7C15u, hash ^= hash >> 29;
        return static_cast<std::size_t>(hash);
    }
};
struct PointEqual {
    bool operator()(const RPT3& a, const RPT3& b) const { return a.x == b.x && a.y == b.y && a.z == b.z; }
};

/// Faces with the points that they share.
struct Mesh {
    struct Face {
        int first, count; ///< in `corners`
        int pen;
    };
    struct Group {
        std::string name;
        std::size_t firstFace;
    };
    std::vector<RPT3> points;
    std::vector<int> corners; ///< places in `points`
    std::vector<Face> faces;
    std::vector<Group> groups;

    void addGroup(const Pattern& pattern) {
        const std::string& name = pattern.ids.layer.empty() ? pattern.ids.name : pattern.ids.layer;
        groups.push_back({name.empty() ? "pattern" + std::to_string(pattern.number) : name, faces.size()});
    }
    /// A corner that stands where the one before it does is left out.
    void addFace(const FaceView& face) {
        constexpr PointEqual equal;
        distinct_.clear();
        for (int i = 0; i + 1 < face.count; ++i)
            if (distinct_.empty() || !equal(distinct_.back(), face.points[i]))
                distinct_.push_back(face.points[i]);
        while (distinct_.size() > 1 && equal(distinct_.back(), distinct_.front())) distinct_.pop_back();
        if (distinct_.size() < 3) return;
        faces.push_back({static_cast<int>(corners.size()), static_cast<int>(distinct_.size()), face.pen});
        for (const RPT3& p : distinct_) corners.push_back(placeOf(p));
    }

private:
    int placeOf(RPT3 p) {
        p = {p.x + 0.0, p.y + 0.0, p.z + 0.0}; // -0 is 0
        const auto [entry, isNew] = places_.try_emplace(p, static_cast<int>(points.size()));
        if (isNew) points.push_back(p);
        return entry->second;
    }
    std::unordered_map<RPT3, int, PointHash, PointEqual> places_;
    std::vector<RPT3> distinct_; ///< corners of the present face
};

Mesh collect(const Drawing& drawing) {
    Mesh mesh;
    for (const Pattern& pattern : drawing.patterns) {
        if (!drawing.isContentOf(pattern, 0)) continue;
        mesh.addGroup(pattern);
        forEachFaceList(pattern, [&](const FaceList& list) {
            forEachFace(list, [&](const FaceView& face) {
                if (face.isArea()) mesh.addFace(face);
            });
        });
        if (mesh.groups.back().firstFace == mesh.faces.size()) mesh.groups.pop_back();
    }
    return mesh;
}

/// A file being written, large pieces at a time.
class MeshWriter {
public:
    explicit MeshWriter(FILE* file) : file_(file) {}
    ~MeshWriter() { flush(); }
    MeshWriter(const MeshWriter&) = delete;
    MeshWriter& operator=(const MeshWriter&) = delete;
    void text(std::string_view words) {
        buffer_ += words;
        if (buffer_.size() > 60'000) flush();
    }
    void number(double value) {
        char digits[32];
        text({digits, std::to_chars(digits, digits + sizeof digits, value).ptr});
    }
    void number(long value) { text(std::to_string(value)); }
    template <class Value>
    void bytes(Value value) {
        char raw[sizeof value];
        std::memcpy(raw, &value, sizeof value);
        if constexpr (std::endian::native == std::endian::big) std::reverse(raw, raw + sizeof raw);
        text({raw, sizeof raw});
    }
    void point(const RPT3& p, const char* gap) {
        number(p.x), text(gap), number(p.y), text(gap), number(p.z), text("\n");
    }
    void flush() {
        failed_ = failed_ || std::fwrite(buffer_.data(), 1, buffer_.size(), file_) != buffer_.size();
        buffer_.clear();
    }
    bool failed() const { return failed_; }

private:
    FILE* file_;
    std::string buffer_;
    bool failed_ = false;
};

/// A blank would part it into the names of several groups.
std::string oneWord(std::string name) {
    for (char& c : name)
        if (static_cast<unsigned char>(c) <= ' ') c = '_';
    return name;
}

void writeObj(const Drawing& /*drawing*/, const Mesh& mesh, MeshWriter& out) {
    out.text("# torva-dxf\n");
    for (const RPT3& p : mesh.points) out.text("v "), out.point(p, " ");
    std::size_t group = 0;
    for (std::size_t i = 0; i < mesh.faces.size(); ++i) {
        for (; group < mesh.groups.size() && mesh.groups[group].firstFace == i; ++group)
            out.text("g " + oneWord(mesh.groups[group].name) + "\n");
        out.text("f");
        for (int k = 0; k < mesh.faces[i].count; ++k) {
            out.text(" ");
            out.number(long(mesh.corners[static_cast<std::size_t>(mesh.faces[i].first + k)]) + 1);
        }
        out.text("\n");
    }
}

void writePly(const Drawing& drawing, const Mesh& mesh, MeshWriter& out) {
    out.text("ply\nformat binary_little_endian 1.0\ncomment torva-dxf\nelement vertex ");
    out.number(long(mesh.points.size()));
    out.text("\nproperty double x\nproperty double y\nproperty double z\nelement face ");
    out.number(long(mesh.faces.size()));
    out.text("\nproperty list int int vertex_indices\nproperty uchar red\nproperty uchar green\n"
             "property uchar blue\nend_header\n");
    for (const RPT3& p : mesh.points) out.bytes(p.x), out.bytes(p.y), out.bytes(p.z);
    for (const Mesh::Face& face : mesh.faces) {
        out.bytes(face.count);
        for (int k = 0; k < face.count; ++k)
            out.bytes(mesh.corners[static_cast<std::size_t>(face.first + k)]);
        const Rgb color = visiblePen(drawing, face.pen, false);
        out.bytes(color.r), out.bytes(color.g), out.bytes(color.b);
    }
}

void writeTriangle(const RPT3 (&t)[3], MeshWriter& out) {
    const RPT3 n = areaVector(t, 3);
    const double length = std::sqrt(n.x * n.x + n.y * n.y + n.z * n.z);
    const double size = length > 0 ? length : 1;
    for (const double value : {n.x / size, n.y / size, n.z / size}) out.bytes(static_cast<float>(value));
    for (const RPT3& p : t)
        for (const double value : {p.x, p.y, p.z}) out.bytes(static_cast<float>(value));
    out.bytes(std::uint16_t(0));
}

void writeStl(const Drawing& /*drawing*/, const Mesh& mesh, MeshWriter& out) {
    std::string head = "torva-dxf";
    head.resize(80, ' ');
    out.text(head);
    std::size_t triangles = 0;
    for (const Mesh::Face& face : mesh.faces) triangles += static_cast<std::size_t>(face.count - 2);
    out.bytes(static_cast<std::uint32_t>(triangles));
    std::vector<RPT3> corners;
    std::vector<std::array<int, 3>> cut;
    for (const Mesh::Face& face : mesh.faces) {
        corners.clear();
        cut.clear();
        for (int k = 0; k < face.count; ++k)
            corners.push_back(mesh.points[static_cast<std::size_t>(
                mesh.corners[static_cast<std::size_t>(face.first + k)])]);
        triangulate(corners.data(), face.count, cut);
        for (const auto& [a, b, c] : cut)
            writeTriangle({corners[static_cast<std::size_t>(a)], corners[static_cast<std::size_t>(b)],
                           corners[static_cast<std::size_t>(c)]},
                          out);
    }
}

using Write = void (*)(const Drawing&, const Mesh&, MeshWriter&);

Write writerOf(const std::string& path) {
    const std::size_t point = path.find_last_of('.');
    std::string ending = point == std::string::npos ? "" : path.substr(point + 1);
    for (char& c : ending) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    if (ending == "obj") return writeObj;
    if (ending == "ply") return writePly;
    return ending == "stl" ? writeStl : nullptr;
}

} // namespace

bool isMeshFile(const std::string& path) {
    return writerOf(path) != nullptr;
}

std::string writeMesh(const Drawing& drawing, const std::string& path, long* faces) {
    const Write write = writerOf(path);
    if (!write) return "A mesh's name ends with .obj, .stl or .ply: " + path;
    const Mesh mesh = collect(drawing);
    *faces = static_cast<long>(mesh.faces.size());
    ReplacementFile target(path);
    FILE* file = std::fopen(target.path().c_str(), "wb");
    if (!file) return "Can't write " + path;
    bool failed = false;
    {
        MeshWriter out(file);
        write(drawing, mesh, out);
        out.flush();
        failed = out.failed();
    }
    failed = std::fclose(file) != 0 || failed;
    return failed ? "Can't write " + path : target.commit();
}

} // namespace host
