#include "file_kind.h"

#include "services/open_file.h"
#include "words.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <unistd.h>

namespace fs = std::filesystem;
using namespace std::string_view_literals;

namespace tool {

namespace {

struct Mark {
    std::string_view bytes; ///< at the file's start
    FileKind kind;
    const char* name;
};

constexpr std::array kMarks{
    Mark{"AutoCAD Binary DXF"sv, FileKind::BinaryDxf, "a binary DXF file"},
    Mark{"SQLite format 3\0"sv, FileKind::DrawingFile, "a database"},
    Mark{"\x89PNG"sv, FileKind::Other, "a PNG picture"},
    Mark{"\xff\xd8\xff"sv, FileKind::Other, "a JPEG picture"},
    Mark{"GIF8"sv, FileKind::Other, "a GIF picture"},
    Mark{"II*\0"sv, FileKind::Other, "a TIFF picture"},
    Mark{"MM\0*"sv, FileKind::Other, "a TIFF picture"},
    Mark{"BM"sv, FileKind::Other, "a BMP picture"},
    Mark{"%PDF-"sv, FileKind::Other, "a PDF document"},
    Mark{"%!PS"sv, FileKind::Other, "a PostScript document"},
    Mark{"<svg"sv, FileKind::Other, "an SVG picture"},
    Mark{"<?xml"sv, FileKind::Other, "an XML document"},
    Mark{"<!DOCTYPE"sv, FileKind::Other, "an HTML document"},
    Mark{"PK\x03\x04"sv, FileKind::Other, "a ZIP archive"},
    Mark{"\x1f\x8b"sv, FileKind::Other, "a gzip archive"},
    Mark{"7z\xbc\xaf"sv, FileKind::Other, "a 7z archive"},
    Mark{"Rar!"sv, FileKind::Other, "a RAR archive"},
    Mark{"\x7f"
         "ELF"sv,
         FileKind::Other, "a program"},
    Mark{"\xd0\xcf\x11\xe0"sv, FileKind::Other, "an Office document"},
    Mark{"ACIS BinaryFile"sv, FileKind::Other, "a SAB solid"},
    Mark{"ASM BinaryFile"sv, FileKind::Other, "a SAB solid"},
};

struct Ending {
    std::string_view ending;
    std::string_view purpose;
    const char* advice;
};

/// Endings whose kind of file only one command makes.
constexpr std::array kEndings{
    Ending{".tdw", "tdw", "{} is a drawing file's name; 'torva-dxf import' makes drawing files"},
    Ending{".dxf", "dxf", "{} is a DXF file's name; 'torva-dxf convert' and 'export' make DXF files"},
    Ending{".svg", "picture", "{} is a picture's name; 'torva-dxf render' makes pictures"},
    Ending{".png", "picture", "{} is a picture's name; 'torva-dxf render' makes pictures"},
    Ending{".pdf", "picture", "{} is a picture's name; 'torva-dxf render' makes pictures"},
    Ending{".obj", "mesh", "{} is a mesh's name; 'torva-dxf export' makes meshes"},
    Ending{".stl", "mesh", "{} is a mesh's name; 'torva-dxf export' makes meshes"},
    Ending{".ply", "mesh", "{} is a mesh's name; 'torva-dxf export' makes meshes"},
};

} // namespace

static std::string lowerEnding(const std::string& path) {
    std::string ending = fs::path(path).extension().string();
    for (char& c : ending) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return ending;
}

/// "AC1027" and five zero bytes, a DWG's start; a text that begins with a version has a line end there.
static bool isDwg(std::string_view bytes) {
    return bytes.size() >= 7 && bytes.starts_with("AC") &&
           std::isdigit(static_cast<unsigned char>(bytes[2])) && bytes[6] == '\0';
}

FileLook lookAtFile(const std::string& path) {
    std::error_code error;
    if (!fs::is_regular_file(path, error)) return {};
    char buffer[32] = {};
    std::ifstream in(path, std::ios::binary);
    in.read(buffer, sizeof buffer);
    const std::string_view bytes(buffer, static_cast<std::size_t>(in.gcount()));
    if (isDwg(bytes)) return {FileKind::Dwg, words::say("a DWG of version {}", bytes.substr(0, 6))};
    for (const Mark& mark : kMarks)
        if (bytes.starts_with(mark.bytes)) return {mark.kind, words::say(mark.name)};
    return {};
}

/// The import takes this one for a file that is gone.
static bool hasRecoveredTwin(const std::string& path) {
    std::error_code error;
    const std::string stem = path.substr(0, path.size() - std::min(path.size(), lowerEnding(path).size()));
    return lowerEnding(path) == ".dxf" && fs::is_regular_file(stem + "_recovered.dxf", error);
}

std::string whyNotReadable(const std::string& path) {
    if (path == "-") return {};
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (!fs::exists(status) && hasRecoveredTwin(path)) return {};
    if (!fs::exists(status)) return path + ": " + words::systemWords(error ? error.value() : ENOENT);
    if (fs::is_directory(status)) return path + ": " + words::say("is a folder");
    if (fs::is_fifo(status)) return {};
    if (!fs::is_regular_file(status)) return path + ": " + words::say("is a device, not a file");
    if (!host::isRegular(path)) return words::say("{} is outside the folders of --confine", path);
    if (::access(path.c_str(), R_OK) != 0) return path + ": " + words::systemWords(errno);
    if (fs::file_size(path, error) == 0 && !error) return path + ": " + words::say("the file is empty");
    const FileLook look = lookAtFile(path);
    if (look.kind == FileKind::Other) return path + ": " + words::say("this is {}, not a drawing", look.name);
    return {};
}

std::string whyNotWritable(const std::string& target) {
    std::error_code error;
    if (fs::is_directory(target, error)) return words::say("is a folder");
    if (fs::exists(target, error))
        return ::access(target.c_str(), W_OK) == 0 ? "" : words::systemWords(errno);
    const fs::path parent = fs::absolute(target, error).parent_path();
    if (!fs::exists(parent, error)) return words::say("there is no folder {}", parent.string());
    if (::access(parent.c_str(), W_OK) != 0) return parent.string() + ": " + words::systemWords(errno);
    const fs::space_info space = fs::space(parent, error);
    return !error && space.available == 0 ? words::systemWords(ENOSPC) : "";
}

std::string whyNotTarget(const std::string& input, const std::string& target, const std::string& purpose) {
    std::error_code error;
    if (target == "-" || target.empty()) return {};
    if (!host::mayWrite(target)) return words::say("{} is outside the folders of --confine", target);
    if (fs::equivalent(input, target, error)) return words::say("input and output are one file: {}", target);
    if (fs::exists(target, error) && !fs::is_regular_file(target, error)) return {};
    for (const Ending& known : kEndings)
        if (lowerEnding(target) == known.ending && known.purpose != purpose)
            return words::say(known.advice, target);
    return {};
}

} // namespace tool
