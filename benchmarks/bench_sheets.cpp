// Sheets and pictures: many layouts with viewports of one model against the model alone, and a large picture.
#include "drawing/drawing.h"
#include "dx_select.h"
#include "pictures/picture.h"
#include "services/session.h"

#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/resource.h>

static std::string pairs(std::initializer_list<std::pair<int, std::string>> groups) {
    std::string text;
    for (const auto& [code, value] : groups) text += std::to_string(code) + "\n" + value + "\n";
    return text;
}

static std::string section(const char* name, const std::string& content) {
    return pairs({{0, "SECTION"}, {2, name}}) + content + pairs({{0, "ENDSEC"}});
}

/// A model of so many lines and `layouts` layouts in blocks, with ten viewports each.
static std::string drawing(int lines, int layouts) {
    std::string records = pairs({{0, "TABLE"}, {2, "BLOCK_RECORD"}, {70, "1"}}), blocks, objects, entities;
    for (int i = 0; i < layouts; ++i) {
        char record[16], layout[16];
        std::snprintf(record, sizeof record, "%X", 0x1000 + i);
        std::snprintf(layout, sizeof layout, "%X", 0x9000 + i);
        const std::string name = "*Paper_Space" + std::to_string(i);
        records += pairs({{0, "BLOCK_RECORD"}, {5, record}, {2, name}, {340, layout}});
        blocks += pairs({{0, "BLOCK"}, {8, "0"}, {2, name}, {70, "0"}, {10, "0"}, {20, "0"}});
        for (int v = 1; v <= 11; ++v)
            blocks += pairs({{0, "VIEWPORT"},
                             {8, "0"},
                             {67, "1"},
                             {10, std::to_string(v * 20)},
                             {20, "50"},
                             {40, "18"},
                             {41, "40"},
                             {69, std::to_string(v)},
                             {12, "500"},
                             {22, "500"},
                             {45, "1000"}});
        blocks += pairs({{0, "ENDBLK"}});
        objects += pairs({{0, "LAYOUT"},
                          {5, layout},
                          {100, "AcDbPlotSettings"},
                          {44, "297"},
                          {45, "210"},
                          {100, "AcDbLayout"},
                          {1, "Sheet " + std::to_string(i)},
                          {330, record}});
    }
    for (int i = 0; i < lines; ++i)
        entities += pairs({{0, "LINE"},
                           {8, "0"},
                           {10, std::to_string(i % 1000)},
                           {20, std::to_string(i / 1000)},
                           {11, std::to_string(i % 1000 + 1)},
                           {21, "7.5"}});
    return section("HEADER", pairs({{9, "$ACADVER"}, {1, "AC1015"}})) +
           section("TABLES", records + pairs({{0, "ENDTAB"}})) + section("BLOCKS", blocks) +
           section("ENTITIES", entities) + section("OBJECTS", objects) + pairs({{0, "EOF"}});
}

static double importSeconds(const std::string& text) {
    const std::string path = (std::filesystem::temp_directory_path() / "torva-bench-sheets.dxf").string();
    std::ofstream(path, std::ios::binary) << text;
    double best = 1e9;
    for (int i = 0; i < 3; ++i) {
        host::resetSession();
        host::session().numbers["&DxfParseExt"] = 0;
        host::session().numbers["&DxfPaper"] = 2;
        const auto start = std::chrono::steady_clock::now();
        DxfSelect(0, DX_IMPORT_2D, path.c_str());
        best =
            std::min(best, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
        if (host::session().numbers["&DxfStat"] != 0) return -1;
    }
    std::filesystem::remove(path);
    return best;
}

/// Reads a picture of so many megapixels at the size of a screen.
static void readPicture(int megapixels) {
    const std::string path = (std::filesystem::temp_directory_path() / "torva-bench-sheets.tif").string();
    const std::uint32_t width = 10'000, height = static_cast<std::uint32_t>(megapixels) * 100;
    {
        // One strip of grey pixels without compression: the directory, then a file with a hole.
        std::ofstream out(path, std::ios::binary);
        const auto put = [&out](std::uint32_t value, int bytes) {
            for (int i = 0; i < bytes; ++i) out.put(static_cast<char>(value >> (8 * i)));
        };
        out.write("II*\0", 4);
        put(8, 4), put(8, 2);
        const std::uint32_t pixels = 8 + 2 + 8 * 12 + 4;
        const std::uint32_t entries[8][3] = {
            {256, 4, width}, {257, 4, height}, {258, 3, 8},      {259, 3, 1},
            {262, 3, 1},     {273, 4, pixels}, {278, 4, height}, {279, 4, width * height}};
        for (const auto& entry : entries) put(entry[0], 2), put(entry[1], 2), put(1, 4), put(entry[2], 4);
        put(0, 4);
        out.seekp(std::streamoff{pixels} + std::streamoff{width} * height - 1);
        out.put('\0');
    }
    host::Image image;
    const auto start = std::chrono::steady_clock::now();
    const std::string error = host::loadImage(path, 2000, 2000, image);
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    std::filesystem::remove(path);
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("picture of %d megapixels: %.2f s, at most %ld MB of memory%s\n", megapixels, seconds,
                usage.ru_maxrss / 1024, error.empty() ? "" : (" (" + error + ")").c_str());
}

int main(int argc, char** argv) {
    const bool smoke = argc > 1 && std::strcmp(argv[1], "--smoke") == 0;
    const int lines = smoke ? 1000 : 100'000, layouts = smoke ? 5 : 200;
    const double alone = importSeconds(drawing(lines, 0)), with = importSeconds(drawing(lines, layouts));
    std::printf("model of %d lines: %.3f s; with %d layouts and %d viewports: %.3f s (%.2f times)\n", lines,
                alone, layouts, layouts * 10, with, with / alone);
    readPicture(smoke ? 2 : 200);
    return alone > 0 && with > 0 ? 0 : 1;
}
