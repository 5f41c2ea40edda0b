#include "dx_protocol.h"

#include "dx_messages.h"
#include "os.h"
#include "ov.h"
#include "session_state.h"
#include "ut.h"

#include <cstdio>

static constexpr char RULE[] = "------------------------------------------";

static FILE* DxProtoFile = nullptr;                 // the protocol file, null when it isn't open
static UtCString DxProtoPath;                       // its path
static UtCStringList DxProtoList;                   // the texts reported so far in this run
static std::vector<DxReportMessage> DxProtoTold[2]; // the messages of the last import and export
static int DxProtoDirection = 0;                    // 1 while an export reports

/// One line into the protocol file. A disk that is full costs the protocol, not the run.
static void writeLine(const UtCString& line) {
    if (!DxProtoFile) return;
    std::fputs(line.c_str(), DxProtoFile);
    std::fputc('\n', DxProtoFile);
}

static void closeFile() {
    if (DxProtoFile) UtFileClose(DxProtoFile);
    DxProtoFile = nullptr;
}

int DxProtoOpen(int isExport) {
    closeFile();
    DxProtoList.Empty();
    DxProtoDirection = isExport ? 1 : 0;
    DxProtoTold[DxProtoDirection].clear();
    DxProtoPath = UtPathJoin(OsGetEnvDflt("HD_WORK_DIR", UtGetTempDir()), "dxf.proto");
    DxProtoFile = UtFileOpen(DxProtoPath, "a");
    if (DxProtoFile)
        writeLine(RULE);
    else
        DxProtoMsg(DxMsg(5732, DxProtoPath), 1);
    return 0;
}

int DxProtoName(int isExport) {
    if (!DxProtoFile) return 0;
    writeLine(UtFormat(isExport ? "%s-EXPORT: %s" : "%s-IMPORT: %s", "DXF", DxFileName.c_str()));
    writeLine(UtFormat("%s: %s %s", DxMsg(5733).c_str(), UtDate().c_str(), UtTime().c_str()));
    return 0;
}

int DxProtoMsg(const UtCString& text, int beep) {
    if (!DxProtoList.AddUnique(text)) return 0;
    DxProtoTold[DxProtoDirection].push_back({text.str(), beep ? 1 : 0});
    if (beep) DxBeep(text);
    writeLine(text);
    return 0;
}

int DxProtoClose(int isExport, int outcome) {
    if (DxProtoFile) {
        writeLine(outcome ? DxMsg(5705, outcome) : DxMsg(isExport ? 5734 : 5735));
        writeLine(RULE);
    }
    closeFile();
    DxProtoList.Empty();
    return 0;
}

const std::vector<DxReportMessage>& DxProtoMessages(int isExport) {
    return DxProtoTold[isExport ? 1 : 0];
}

void DxDisplay(const UtCString& text) {
    ovdisplay(text, 0);
}

void DxBeep(const UtCString& text) {
    ovwritealpha(text);
}
