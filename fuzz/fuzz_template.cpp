// The files that an export takes along: any bytes as template, rules of layers, font table or catalogue.
// Whatever they hold, the export of a drawing ends.
#include "dx_select.h"
#include "fuzz_files.h"
#include "services/messages.h"
#include "services/session.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const FuzzFolder folder("template");
    static const std::string tables = folder.file("1700/int/dxf/font");
    static const bool isMade = std::filesystem::create_directories(tables);
    if (size < 1 || !isMade) return 0;
    setenv("HD_U", folder.file("").c_str(), 1);
    host::resetSession();
    host::forgetCatalogue();
    host::session().cataloguePaths = {folder.file("")};
    host::session().language = "xx";
    std::string config = "#FLAGS-START\n";
    switch (data[0] % 4) {
    case 0:
        config += "USE_TEMPLATE=1\nTEMPLATE_NAME=" + folder.write("t.dxf", data + 1, size - 1) + "\n";
        break;
    case 1:
        config += "USE_BYLAYER=1\nBYLAYER_NAME=" + folder.write("t.xls", data + 1, size - 1) + "\n";
        break;
    case 2:
        for (const char* name : {"/txt.chr", "/std.1"})
            folder.write("1700/int/dxf/font" + std::string(name), data + 1, size - 1);
        break;
    default: folder.write("cad_msg.xx.txt", data + 1, size - 1); break;
    }
    const std::string path = folder.write("c.dxd", config + "#FLAGS-END\n#EOF\n");
    static const std::string drawing = folder.write(
        "in.dxf",
        "0\nSECTION\n2\nENTITIES\n0\nTEXT\n8\nA\n10\n1\n20\n1\n40\n2\n1\nab%%c\n0\nLINE\n8\nB\n6\nDASHED\n"
        "10\n0\n20\n0\n11\n5\n21\n5\n0\nENDSEC\n0\nEOF\n");
    for (const int operation : {DX_IMPORT_2D, DX_EXPORT_2D}) {
        host::session().texts["$DxfConfig"] = path;
        DxfSelect(0, operation, operation == DX_IMPORT_2D ? drawing : folder.file("out.dxf"));
    }
    folder.tidy();
    return 0;
}
