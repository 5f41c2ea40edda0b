// Blocks: many INSERTs of one block, measuring and drawing pass together, with the memory beyond the drawing;
// and a file with many definitions.
#include "drawing/drawing.h"
#include "dx_select.h"
#include "floor.h"
#include "generate.h"
#include "services/session.h"
#include "timing.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <malloc.h>
#include <string>

static std::size_t heapInUse() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

static std::string sectionOf(const char* name, const std::string& content) {
    return "  0\nSECTION\n  2\n" + std::string(name) + "\n" + content + "  0\nENDSEC\n";
}
static std::string drawingOf(const std::string& blocks, const std::string& entities) {
    return sectionOf("HEADER", "  9\n$ACADVER\n  1\nAC1015\n") + sectionOf("BLOCKS", blocks) +
           sectionOf("ENTITIES", entities) + "  0\nEOF\n";
}
/// Names of the blocks, by number.
static std::string blockName(int i) {
    return std::string("BLOCK-").append(std::to_string(i));
}
static void addBlock(std::string& blocks, const std::string& name, int lines) {
    blocks += "  0\nBLOCK\n  8\n0\n  2\n" + name + "\n 70\n0\n 10\n0.0\n 20\n0.0\n 30\n0.0\n";
    for (int i = 0; i < lines; ++i) {
        const std::string at = std::to_string(i);
        blocks += "  0\nLINE\n  8\n0\n 10\n" + at + ".25\n 20\n0.5\n 30\n0.0\n 11\n" + at +
                  ".75\n 21\n8.125\n 31\n0.0\n";
    }
    blocks += "  0\nENDBLK\n  8\n0\n";
}
static void addInsert(std::string& entities, const std::string& name, int i) {
    entities += "  0\nINSERT\n  8\n0\n  2\n" + name + "\n 10\n" + std::to_string(i % 1000) + ".5\n 20\n" +
                std::to_string(i / 1000) + ".5\n 30\n0.0\n";
}

static bool measure(const char* what, const std::string& dxf, double expected) {
    const bench::TempFile settings("torva-bench-config", "#EOF\n", ".dxd");
    const bench::TempFile file("torva-bench-blocks", dxf);
    std::size_t peak = 0, before = 0;
    const double seconds = bench::secondsOf(3, [&] {
        host::resetSession();
        host::session().maxElements = 1'000'000'000;
        host::session().texts["$DxfConfig"] = settings.path();
        host::session().onStatus = [&](const std::string&) { peak = std::max(peak, heapInUse()); };
        before = heapInUse();
        peak = 0;
        DxfSelect(0, DX_IMPORT_2D, file.path().c_str());
        peak = std::max(peak, heapInUse()) - before;
    });
    std::size_t elements = 0, drawing = 0;
    for (const host::Pattern& pattern : host::openDrawing().patterns) {
        elements += pattern.elements.size();
        drawing += sizeof pattern + pattern.elements.size() * sizeof(host::Element);
    }
    const auto made = static_cast<double>(elements);
    std::printf(
        "%-34s %6.1f MB  import %7.3f s  %9.0f elements %6.2f million/s  %.1f MB beyond the drawing\n", what,
        static_cast<double>(dxf.size()) / 1e6, seconds, made, made / seconds / 1e6,
        (static_cast<double>(peak) - static_cast<double>(drawing)) / 1e6);
    // A pattern that is full goes on in another one with a Move of its own.
    return host::session().numbers["&DxfStat"] == 0 && made >= expected;
}

/// 20 levels of blocks that each insert the next 10 times: how long until the host's limit stops it.
static bool explode(std::size_t limit) {
    std::string blocks;
    for (int level = 0; level < 20; ++level) {
        blocks += "  0\nBLOCK\n  8\n0\n  2\n" + blockName(level) + "\n";
        for (int i = 0; i < 10; ++i) addInsert(blocks, blockName(level + 1), i);
        blocks += "  0\nENDBLK\n";
    }
    addBlock(blocks, blockName(20), 1);
    std::string entities;
    addInsert(entities, blockName(0), 0);
    const bench::TempFile settings("torva-bench-config", "#EOF\n", ".dxd");
    const bench::TempFile file("torva-bench-explosion", drawingOf(blocks, entities));
    host::resetSession();
    host::session().maxElements = limit;
    host::session().texts["$DxfConfig"] = settings.path();
    const double seconds = bench::secondsOf(1, [&] { DxfSelect(0, DX_IMPORT_2D, file.path().c_str()); });
    const double stat = host::session().numbers["&DxfStat"];
    std::printf("explosion, limit %9zu elements: %7.3f s, outcome %g, %zu elements\n", limit, seconds, stat,
                host::openDrawing().elementCount);
    return stat == 9009;
}

int main(int argc, char** argv) {
    const bool smoke = argc > 1 && std::strcmp(argv[1], "--smoke") == 0;
    setenv("HD_WORK_DIR", std::filesystem::temp_directory_path().c_str(), 0);
    const int inserts = smoke ? 1000 : 100'000;
    const int definitions = smoke ? 500 : 50'000;
    constexpr int linesABlock = 50, elementsALine = 2;

    std::string blocks, entities;
    addBlock(blocks, "ONE", linesABlock);
    for (int i = 0; i < inserts; ++i) addInsert(entities, "ONE", i);
    if (!measure("INSERTs of a block of 50 lines", drawingOf(blocks, entities),
                 double(inserts) * linesABlock * elementsALine))
        return 1;

    blocks.clear();
    entities.clear();
    for (int i = 0; i < definitions; ++i) {
        const std::string name = blockName(i);
        addBlock(blocks, name, 1);
        addInsert(entities, name, i);
    }
    if (!measure("definitions, each inserted once", drawingOf(blocks, entities),
                 double(definitions) * elementsALine))
        return 1;
    return explode(smoke ? 50'000 : 50'000'000) ? 0 : 1;
}
