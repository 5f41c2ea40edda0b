// Sheets, detail views, pictures and the georeference in the drawing file.
#pragma once

#include "drawing/drawing.h"

#include <cstdint>

namespace host {

class Database;
class Tables;

void writeSheets(Tables& tables, const Drawing& drawing);
/// Behind the tables of patterns and views. Throws StoreError for references that lead nowhere.
void readSheets(Database& db, std::int64_t version, Drawing& drawing);

} // namespace host
