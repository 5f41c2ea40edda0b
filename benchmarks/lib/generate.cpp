#include "generate.h"

#include <charconv>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <unistd.h>

namespace bench {

namespace {

constexpr int LAYERS = 50;

/// Appends pairs as drawing programs write them: codes right-aligned to three columns, reals as short as they
/// come back.
class Writer {
public:
    explicit Writer(std::size_t bytes) { out.reserve(bytes + bytes / 50 + 65536); }

    void text(int code, std::string_view value) {
        if (code < 10) out += ' ';
        if (code < 100) out += ' ';
        out += std::to_string(code);
        out += '\n';
        out += value;
        out += '\n';
    }
    void real(int code, double value) {
        char digits[32];
        const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
        text(code, std::string_view(digits, static_cast<std::size_t>(end - digits)));
    }
    void point(int code, double x, double y) {
        real(code, x);
        real(code + 10, y);
        text(code + 20, "0.0");
    }
    std::string out;
};

/// A fixed sequence of numbers from 0 to 1, rounded so that lengths vary as measured coordinates' do.
class Numbers {
public:
    double next() {
        state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<double>(state_ >> 40) / static_cast<double>(1ULL << 24);
    }
    double coordinate() { return static_cast<double>(static_cast<std::int64_t>(next() * 1e10)) / 1e6; }

private:
    std::uint64_t state_ = 1;
};

std::string layerName(int index) {
    return "LAYER-" + std::to_string(index);
}

void writeHead(Writer& file) {
    file.text(0, "SECTION");
    file.text(2, "HEADER");
    file.text(9, "$ACADVER");
    file.text(1, "AC1015");
    file.text(0, "ENDSEC");
    file.text(0, "SECTION");
    file.text(2, "TABLES");
    file.text(0, "TABLE");
    file.text(2, "LAYER");
    file.text(70, std::to_string(LAYERS));
    for (int i = 0; i < LAYERS; ++i) {
        file.text(0, "LAYER");
        file.text(2, layerName(i));
        file.text(70, "0");
        file.text(62, std::to_string(1 + i % 7));
        file.text(6, "CONTINUOUS");
    }
    file.text(0, "ENDTAB");
    file.text(0, "ENDSEC");
}

void writeEntity(Writer& file, Numbers& numbers, std::size_t index) {
    static constexpr const char* NAMES[] = {"LINE", "ARC", "CIRCLE"};
    static constexpr const char* MARKERS[] = {"AcDbLine", "AcDbCircle", "AcDbCircle"};
    const std::size_t kind = index % 3;
    char handle[20];
    *std::to_chars(handle, handle + sizeof handle - 1, index + 256, 16).ptr = 0;
    file.text(0, NAMES[kind]);
    file.text(5, handle);
    file.text(100, "AcDbEntity");
    file.text(8, layerName(static_cast<int>(numbers.next() * LAYERS)));
    file.text(100, MARKERS[kind]);
    file.point(10, numbers.coordinate(), numbers.coordinate());
    if (kind == 0) {
        file.point(11, numbers.coordinate(), numbers.coordinate());
        return;
    }
    file.real(40, numbers.coordinate() / 100);
    if (kind != 1) return;
    file.text(100, "AcDbArc");
    file.real(50, numbers.coordinate() / 100);
    file.real(51, numbers.coordinate() / 100);
}

} // namespace

std::string generateLinework(std::size_t bytes) {
    Writer file(bytes);
    Numbers numbers;
    writeHead(file);
    file.text(0, "SECTION");
    file.text(2, "ENTITIES");
    for (std::size_t i = 0; file.out.size() < bytes; ++i) writeEntity(file, numbers, i);
    file.text(0, "ENDSEC");
    file.text(0, "EOF");
    return std::move(file.out);
}

std::size_t countEntities(const std::string& dxf) {
    std::size_t count = 0;
    for (std::size_t at = 0; (at = dxf.find("AcDbEntity\n", at)) != std::string::npos; ++at) ++count;
    return count;
}

TempFile::TempFile(const std::string& name, const std::string& content, const std::string& extension)
    : path_(std::filesystem::temp_directory_path() / (name + "-" + std::to_string(getpid()) + extension)) {
    std::ofstream stream(path_, std::ios::binary);
    stream.write(content.data(), static_cast<std::streamsize>(content.size()));
    if (!stream.flush()) throw std::runtime_error("can't write " + path_);
}

TempFile::~TempFile() {
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
}

} // namespace bench
