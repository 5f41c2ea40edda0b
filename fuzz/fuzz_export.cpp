// A drawing made from any bytes, written as DXF of each version: the judge of files has no error to find.
#include "dx_select.h"
#include "fuzz_files.h"
#include "services/session.h"
#include "validate.h"

#include <array>
#include <cstdio>

static constexpr std::array FORMATS{"ACAD32", "ACAD27", "ACAD24", "ACAD21", "ACAD18",
                                    "ACAD15", "ACAD14", "ACAD13", "ACAD12"};

static void judge(const std::string& text) {
    const validate::Report report = validate::validateText(text, {.limit = 3});
    if (report.errors == 0) return;
    for (const validate::Finding& finding : report.findings)
        if (finding.level == validate::Level::Error)
            std::fprintf(stderr, "line %zu: %d %s\n", finding.line, finding.number, finding.text.c_str());
    std::abort();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const FuzzFolder folder("export");
    if (size < 2) return 0;
    setenv("HD_U", TORVA_BUILD_DATA, 0);
    setenv("HD_VE", "1700", 0);
    host::resetSession();
    host::session().maxElements = 20'000;
    const std::string config =
        "#FLAGS-START\nREAD_LAYER=ATTR\nLAYER_ELEM=ATTR\nLAYERFLAG_TEXT=0\nLAYERFLAG_DIM=0\n"
        "LAYERFLAG_HATCH=0\nLAYERFLAG_ARROW=0\nPEN_LOOKS=1\nLAYER_STATES=1\nFULL_GROUPS=1\n"
        "VERSION=" +
        std::string(FORMATS[data[0] % FORMATS.size()]) + "\n#FLAGS-END\n#EOF\n";
    const std::string path = folder.write("keep.dxd", config);
    const int isSolid = data[1] & 1;
    host::session().texts["$DxfConfig"] = path;
    DxfSelect(0, isSolid ? DX_IMPORT_3D : DX_IMPORT_2D, folder.write("in.dxf", data + 2, size - 2));
    host::session().texts["$DxfConfig"] = path;
    DxfSelect(0, isSolid ? DX_EXPORT_3D : DX_EXPORT_2D, folder.file("out.dxf"));
    if (host::session().numbers["&DxfStat"] == 0) judge(folder.read("out.dxf"));
    folder.tidy();
    return 0;
}
