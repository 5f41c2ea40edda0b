#include "dx_acds.h"

#include "../import/import_state.h"
#include "../session/dx_documents.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "../session/session_state.h"
#include "solid_state.h"
#include "ut_hex.h"

namespace {

constexpr int maxLine = 2048;
constexpr int badHex = 4009;

/// One record of the section. While measuring, it is read and forgotten.
int readRecord() {
    DX_ACDSRECORD_TYPE unused;
    if (const int error = DxAcisAddEmptyAcisRecord()) return error;
    return DxAcisReadRecord(DxCheckPass ? &unused : &DxAcdsRecords.back());
}

} // namespace

int DxReadAcdsSection() {
    DxDisplay(DxMsg(5779));
    DxPair pair;
    const int error = DxReadPair(pair);
    if (error || pair.code != 2 || pair.text != "ACDSDATA") return error;
    DxfDocument& document = DxDocuments.requireCurrent();
    document.sectionSeen.Set(1);
    document.acdsRead.Set(1);
    for (;;) {
        if (const int failed = DxReadPair(pair)) return failed;
        if (pair.code != 0) continue;
        if (pair.text == "ENDSEC") return 0;
        if (pair.text != "ACDSRECORD") continue;
        if (const int failed = readRecord()) return failed;
    }
}

int DxAcisAddEmptyAcisRecord() {
    if (!DxCheckPass) DxAcdsRecords.emplace_back();
    return 0;
}

int DxAcisReadRecord(DX_ACDSRECORD_TYPE* record) {
    DxPair pair;
    for (;;) {
        if (const int error = DxReadPair(pair, maxLine)) return error;
        if (pair.code == 0) break;
        if (pair.code == 320) record->handle = DxHexToU32(pair.text);
        if (pair.code != 310) continue;
        if (pair.text.size() % 2 != 0) {
            DxUnGetLine();
            return badHex;
        }
        UtHexToByte(pair.text, record->data);
    }
    DxUnGetLine();
    record->ready = !record->data.empty();
    return 0;
}

const DX_ACDSRECORD_TYPE* DxAcisGetAcdsRecord(const DX_3DSOLID_TYPE* solid) {
    for (const DX_ACDSRECORD_TYPE& record : DxAcdsRecords)
        if (record.handle == solid->base.handle) return &record;
    return nullptr;
}

int DxReadAcdsFree() {
    DxAcdsRecords.clear();
    DxSolidQueue.clear();
    return 0;
}
