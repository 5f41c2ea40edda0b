// Blocks: many INSERTs of one block, measuring and drawing pass together, with the memory beyond the drawing;
// files with many definitions, with many external references, and with blocks that explode.
#include "drawing/drawing.h"
#include "dx_select.h"
#include "floor.h"
#include "generate.h"
#include "services/session.h"
#include "session/dx_documents.h"
#include "timing.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <malloc.h>
#include <memory>
#include <string>
#include <vector>

static std::size_t heapInUse() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

static std::string sectionOf(const char* name, const std::string& content) {
    return "  0\nSECTION\n  2\n" + std::string(name) + "\n" + content + "  0\nENDSEC\n";
}
/// What a block of that many lines holds.
static std::string linesOf(int lines) {
    std::string text;
    for (int i = 0; i < lines; ++i) {
        const std::string at = std::to_string(i);
        text += "  0\nLINE\n  8\n0\n 10\n" + at + ".25\n 20\n0.5\n 30\n0.0\n 11\n" + at +
                ".75\n 21\n8.125\n 31\n0.0\n";
    }
    return text;
}
static std::string drawingOf(const std::string& blocks, const std::string& entities) {
    return sectionOf("HEADER", "  9\n$ACADVER\n  1\nAC1015\n") + sectionOf("BLOCKS", blocks) +
           sectionOf("ENTITIES", entities) + "  0\nEOF\n";
}
/// Names of the blocks, by number.
static std::string blockName(int i) {
    return std::string("BLOCK-").append(std::to_string(i));
}
static void addBlock(std::string& blocks, const std::string& name, const std::string& content,
                     const std::string& path = {}) {
    blocks += "  0\nBLOCK\n  8\n0\n  2\n" + name + "\n 70\n" + (path.empty() ? "0" : "4") +
              "\n 10\n0.0\n 20\n0.0\n 30\n0.0\n  1\n" + path + "\n" + content + "  0\nENDBLK\n  8\n0\n";
}
static void addInsert(std::string& entities, const std::string& name, int i) {
    entities += "  0\nINSERT\n  8\n0\n  2\n" + name + "\n 10\n" + std::to_string(i % 1000) + ".5\n 20\n" +
                std::to_string(i / 1000) + ".5\n 30\n0.0\n";
}

/// One import of a file, and what is worth telling of it.
struct Run {
    double stat = -1, seconds = 0;
    double elements = 0;
    double megabytesBeyond = 0; ///< of memory, at most, beyond the drawing
    std::size_t documents = 0;  ///< files that were open in the end

    explicit Run(const std::string& path, int runs = 3) {
        const bench::TempFile settings("torva-bench-config", "#EOF\n", ".dxd");
        std::size_t peak = 0, before = 0;
        seconds = bench::secondsOf(runs, [&] {
            host::resetSession();
            host::session().maxElements = 1'000'000'000;
            host::session().texts["$DxfConfig"] = settings.path();
            host::session().onStatus = [&](const std::string&) {
                peak = std::max(peak, heapInUse());
                documents = std::max(documents, DxDocuments.byName.size());
            };
            before = heapInUse();
            peak = 0;
            DxfSelect(0, DX_IMPORT_2D, path.c_str());
            peak = std::max(peak, heapInUse()) - before;
        });
        std::size_t drawing = 0;
        for (const host::Pattern& pattern : host::openDrawing().patterns) {
            elements += static_cast<double>(pattern.elements.size());
            drawing += sizeof pattern + pattern.elements.size() * sizeof(host::Element);
        }
        megabytesBeyond = (static_cast<double>(peak) - static_cast<double>(drawing)) / 1e6;
        stat = host::session().numbers["&DxfStat"];
    }
};

/// A pattern that is full goes on in another one with a Move of its own, so that there may be more elements.
static bool isWhole(const Run& run, double elements) {
    return run.stat == 0 && run.elements >= elements;
}

/// INSERTs of a block of 50 lines. The floor reads what the block and an INSERT hold as often as they are
/// drawn, once.
static bool insertOne(int inserts) {
    constexpr int lines = 50;
    std::string blocks, entities;
    addBlock(blocks, "ONE", linesOf(lines));
    for (int i = 0; i < inserts; ++i) addInsert(entities, "ONE", i);
    const std::string dxf = drawingOf(blocks, entities);
    const double floorSeconds = bench::secondsOf(3, [&] {
        for (int i = 0; i < inserts; ++i) bench::runFloor(blocks);
        bench::runFloor(entities);
    });
    const bench::TempFile file("torva-bench-blocks", dxf);
    const Run run(file.path());
    const double drawn = double(inserts) * lines;
    std::printf(
        "%6d INSERTs of a block of %d lines  floor %7.3f s  import %7.3f s  ratio %5.2f  %6.2f million "
        "lines/s  %6.2f million elements/s  %.1f MB beyond the drawing\n",
        inserts, lines, floorSeconds, run.seconds, run.seconds / floorSeconds, drawn / run.seconds / 1e6,
        run.elements / run.seconds / 1e6, run.megabytesBeyond);
    return isWhole(run, drawn * 2);
}

static bool insertMany(int definitions) {
    std::string blocks, entities;
    for (int i = 0; i < definitions; ++i) {
        const std::string name = blockName(i);
        addBlock(blocks, name, linesOf(1));
        addInsert(entities, name, i);
    }
    const std::string dxf = drawingOf(blocks, entities);
    const double floorSeconds = bench::secondsOf(3, [&] { bench::runFloor(dxf); });
    const bench::TempFile file("torva-bench-definitions", dxf);
    const Run run(file.path());
    std::printf("%6d definitions, each inserted once  floor %7.3f s  import %7.3f s  ratio %5.2f  %6.0f ns a "
                "definition  %.0f bytes a definition beyond the drawing\n",
                definitions, floorSeconds, run.seconds, run.seconds / floorSeconds,
                run.seconds / definitions * 1e9, run.megabytesBeyond * 1e6 / definitions);
    return isWhole(run, definitions * 2.0);
}

static bool refer(int references, int files) {
    std::string blocks, entities;
    std::vector<std::unique_ptr<bench::TempFile>> referred;
    for (int i = 0; i < files; ++i)
        referred.push_back(
            std::make_unique<bench::TempFile>("torva-bench-" + blockName(i), drawingOf("", linesOf(50))));
    for (int i = 0; i < references; ++i) {
        addBlock(blocks, blockName(i), "", referred[static_cast<std::size_t>(i % files)]->path());
        addInsert(entities, blockName(i), i);
    }
    const bench::TempFile file("torva-bench-references", drawingOf(blocks, entities));
    const Run run(file.path());
    std::printf("%6d external references to %d files  import %7.3f s, %zu documents opened\n", references,
                files, run.seconds, run.documents);
    return isWhole(run, references * 100.0) && run.documents == static_cast<std::size_t>(files) + 1;
}

/// Levels of blocks that each insert the next 10 times: how long until the import stops.
static bool explode(int levels, std::size_t limit) {
    std::string blocks;
    for (int level = 0; level < levels; ++level) {
        std::string inserts;
        for (int i = 0; i < 10; ++i) addInsert(inserts, blockName(level + 1), i);
        addBlock(blocks, blockName(level), inserts);
    }
    addBlock(blocks, blockName(levels), linesOf(1));
    std::string entities;
    addInsert(entities, blockName(0), 0);
    const bench::TempFile settings("torva-bench-config", "#EOF\n", ".dxd");
    const bench::TempFile file("torva-bench-explosion", drawingOf(blocks, entities));
    host::resetSession();
    host::session().maxElements = limit;
    host::session().texts["$DxfConfig"] = settings.path();
    const double seconds = bench::secondsOf(1, [&] { DxfSelect(0, DX_IMPORT_2D, file.path().c_str()); });
    const double stat = host::session().numbers["&DxfStat"];
    std::printf("%6d levels of 10 INSERTs each, at most %zu elements: %7.3f s, outcome %g, %zu elements\n",
                levels, limit, seconds, stat, host::openDrawing().elementCount);
    return stat == 9009 && host::openDrawing().elementCount > 0;
}

int main(int argc, char** argv) {
    const bool smoke = argc > 1 && std::strcmp(argv[1], "--smoke") == 0;
    setenv("HD_WORK_DIR", std::filesystem::temp_directory_path().c_str(), 0);
    const int size = smoke ? 100 : 1;
    const bool ok = insertOne(50'000 / size) && insertOne(100'000 / size) && insertMany(25'000 / size) &&
                    insertMany(50'000 / size) && refer(1000 / size, 10) &&
                    explode(7, 10'000'000 / static_cast<std::size_t>(size)) && explode(20, 50'000'000);
    return ok ? 0 : 1;
}
