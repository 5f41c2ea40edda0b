// BLOCK_RECORD records.
#include "../session/dx_documents.h"
#include "../session/dx_fields.h"
#include "dx_tables_import.h"
#include "dx_tables_read.h"

namespace {

using R = DX_BLOCK_RECORD_TYPE;
constexpr auto fields = dxFields<R>({{2, &R::name}, {5, &R::handle}, {340, &R::layoutHandle}});

} // namespace

int DxReadBlockRecord(DxTableNames& /*names*/) {
    DX_BLOCK_RECORD_TYPE record = {};
    if (const int error = DxReadFields(record, fields, [](const DxPair&) {})) return error;
    return DxTableAddBlockRecord(record.name.view(), record.handle, record.layoutHandle, 0);
}

int DxTableAddBlockRecord(std::string_view name, unsigned long handle, unsigned long layoutHandle,
                          unsigned long third) {
    DX_BLOCK_RECORD_TYPE record = {};
    record.name.assign(name);
    record.handle = static_cast<std::uint32_t>(handle);
    record.layoutHandle = static_cast<std::uint32_t>(layoutHandle);
    record.third = static_cast<std::uint32_t>(third);
    return DxDocuments.currentTables().blockRecords.add(record) ? 2360 : 0;
}
