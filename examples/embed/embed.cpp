// The smallest program that embeds the module: imports the drawing that its command line names and prints
// what came, pattern by pattern. It speaks to the host by the API alone, as the module does; a CAD program
// brings its own host in place of the reference host that is linked here.
#include "ci.h"
#include "ci_text.h"
#include "dx_report.h"
#include "dx_select.h"
#include "uo.h"

#include <cstdio>
#include <cstdlib>

namespace {

/// Elements of a pattern by type, and the way that they go.
void printElements(int context, DsCsr pattern) {
    CiElem elements(context);
    int count = 0, type = 0;
    RPT3 last{0, 0, 0};
    for (int error = elements.First(pattern, &type); error == 0; error = elements.Next(pattern, &type)) {
        RPT3 target;
        if (elements.GetMove(pattern, &target) == 0 || elements.GetDraw(pattern, &target) == 0) last = target;
        ++count;
    }
    std::printf("  %d elements, the last line ends at %g %g\n", count, last.x, last.y);
}

void printTexts(int context, DsCsr pattern) {
    CiText texts(context);
    long count = 0;
    RPT3 point;
    UtCString text;
    if (CiText::Count(pattern, &count) != 0 || count == 0 || texts.First(pattern) != 0) return;
    if (texts.Get(pattern, 1, 1, &point, &text) == 0)
        std::printf("  %ld texts, the first \"%s\" at %g %g\n", count, text.c_str(), point.x, point.y);
}

void printDrawing() {
    int context = 0;
    if (CiContext::Add(&context) != 0) return;
    CiPat patterns(context);
    DsCsr pattern;
    for (int error = patterns.First(pattern); error == 0; error = patterns.Next(pattern)) {
        UtCString layer;
        UoGetSingleAttr(DsCursorToPatNo(&pattern), "layer", &layer);
        std::printf("pattern %d, layer %s\n", DsCursorToPatNo(&pattern), layer.c_str());
        printElements(context, pattern);
        printTexts(context, pattern);
    }
    CiContext::Del(context);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: embed DRAWING.dxf\n");
        return 2;
    }
    // Where the module finds its templates, catalogues and fonts: $HD_U/$HD_VE.
    setenv("HD_U", TORVA_DATA, 0);
    setenv("HD_VE", "1700", 0);
    setenv("VE", "1700", 0);

    // Each layer becomes a pattern; what steers a run is set ahead of it.
    UoPutMacVarS("$DxfConfig", TORVA_DATA "/1700/int/dxf/dflt/keep.dxd");
    DxfSelect(0, DX_IMPORT_2D, argv[1]);

    int stat = 1;
    UoGetMacVarI("&DxfStat", &stat);
    for (const DxReportMessage& message : DxGetImportReport().messages)
        std::printf("* %s\n", message.text.c_str());
    if (stat != 0) std::printf("the import ended with error %d\n", stat);
    printDrawing();
    return stat == 0 ? 0 : 1;
}
