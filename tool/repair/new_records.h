#pragma once
// Records that a file lacks, with the values that other programs give them: by version, without handle and
// owner where their place gives these.

#include "document.h"

namespace repair {

/// Handle and owner of a record, where the version has them.
void setIds(Document& document, Record& record, uint64_t handle, uint64_t owner);

Table newTable(Document& document, std::string_view name);

/// A record of LTYPE, LAYER, STYLE, APPID, DIMSTYLE or BLOCK_RECORD; it gets a handle and its table as owner.
Record newTableRecord(Document& document, const Table& table, std::string_view name);

/// An empty block with its own handles. `record` is the handle of its block record.
Block newBlock(Document& document, std::string_view name, uint64_t record);

/// An object of this kind that belongs to `owner`, with a handle and its marker if it has one.
Record newObject(Document& document, std::string_view kind, std::string_view marker, uint64_t owner);

} // namespace repair
