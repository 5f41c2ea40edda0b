// The ACDSDATA section on its way out: schemas, then a record a solid.
#include "../session/dx_writer.h"
#include "dx_acds.h"
#include "solid_state.h"

namespace {

/// Kinds of values, and schemas by their place in the file. The last four are for what the first two say
/// about their columns.
enum Kind { FLAG = 1, HANDLE_BYTE = 7, ID = 10, BYTES = 15 };
enum Schema { THUMBNAILS, MODELS, TREATED, LEGACY, INDEXED, HANDLES };

constexpr const char* entityId = "AcDbDs::ID";
constexpr const char* modelColumn = "ASM_Data";

/// Begins one.
void writeSchema(Schema schema, const char* name) {
    DxWriteString(0, "ACDSSCHEMA");
    DxWriteInt(90, schema);
    DxWriteString(1, name);
}

void writeColumn(const char* name, Kind kind, int size) {
    DxWriteString(2, name);
    DxWriteInt(280, kind);
    DxWriteInt(91, size);
}

/// What is said of the schema itself, or of its column `of`.
void writeRemark(Schema schema, const char* of, Schema remark, const char* name, Kind kind, int code) {
    DxWriteString(101, "ACDSRECORD");
    if (of)
        DxWriteString(1, of);
    else
        DxWriteInt(95, schema);
    DxWriteInt(90, remark);
    DxWriteString(2, name);
    DxWriteInt(280, kind);
    DxWriteInt(code, 1);
}

constexpr const char* treated = "AcDbDs::TreatedAsObjectData";
constexpr const char* legacy = "AcDbDs::Legacy";
constexpr const char* indexed = "AcDs:Indexable";
constexpr const char* handles = "AcDbDs::HandleAttribute";

/// A schema of bytes that belong to an entity.
void writeDataSchema(Schema schema, const char* name, const char* column) {
    constexpr int handleSize = 8, anySize = 0;
    writeSchema(schema, name);
    writeColumn(entityId, ID, handleSize);
    writeColumn(column, BYTES, anySize);
    writeRemark(schema, nullptr, TREATED, treated, FLAG, 291);
    writeRemark(schema, nullptr, LEGACY, legacy, FLAG, 291);
    writeRemark(schema, entityId, INDEXED, indexed, FLAG, 291);
    writeRemark(schema, entityId, HANDLES, handles, HANDLE_BYTE, 282);
}

/// All six, since programs find them by their places.
void writeSchemas() {
    writeDataSchema(THUMBNAILS, "AcDb_Thumbnail_Schema", "Thumbnail_Data");
    writeDataSchema(MODELS, "AcDb3DSolid_ASM_Data", modelColumn);
    writeSchema(TREATED, "AcDbDs::TreatedAsObjectDataSchema");
    writeColumn(treated, FLAG, 0);
    writeSchema(LEGACY, "AcDbDs::LegacySchema");
    writeColumn(legacy, FLAG, 0);
    writeSchema(INDEXED, "AcDbDs::IndexedPropertySchema");
    writeColumn(indexed, FLAG, 0);
    writeSchema(HANDLES, "AcDbDs::HandleAttributeSchema");
    writeColumn(handles, HANDLE_BYTE, 1);
    DxWriteInt(284, 1);
}

/// Lines of 127 bytes, two digits a byte.
void writeBytes(std::string_view data) {
    constexpr std::size_t lineBytes = 127;
    constexpr const char* digits = "0123456789ABCDEF";
    std::string line;
    for (std::size_t from = 0; from < data.size(); from += lineBytes) {
        line.clear();
        for (const char c : data.substr(from, lineBytes)) {
            const auto byte = static_cast<unsigned char>(c);
            line += digits[byte >> 4];
            line += digits[byte & 15];
        }
        DxWriteString(310, line);
    }
}

void writeRecord(const DX_ACDSRECORD_TYPE& record) {
    DxWriteString(0, "ACDSRECORD");
    DxWriteInt(90, MODELS);
    DxWriteString(2, entityId);
    DxWriteInt(280, ID);
    DxWriteVariableReference2(320, record.handle);
    DxWriteString(2, modelColumn);
    DxWriteInt(280, BYTES);
    DxWriteInt(94, static_cast<int>(record.data.size()));
    writeBytes(record.data);
}

} // namespace

int DxWriteAcdsSection() {
    constexpr int formatVersion = 2, schemaRoom = 8;
    if (DxAcdsRecords.empty()) return DxWriteError();
    DxWriteString(0, "SECTION");
    DxWriteString(2, "ACDSDATA");
    DxWriteInt(70, formatVersion);
    DxWriteInt(71, schemaRoom);
    writeSchemas();
    for (const DX_ACDSRECORD_TYPE& record : DxAcdsRecords) writeRecord(record);
    DxAcdsRecords.clear();
    return DxWriteString(0, "ENDSEC");
}
