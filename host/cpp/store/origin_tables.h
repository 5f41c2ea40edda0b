// What content was made from, in a drawing file.
#pragma once

#include "store/table_reader.h"
#include "store/table_writer.h"

namespace host {

void putOrigins(Tables& tables, const Drawing& drawing);
/// Behind the patterns.
void readOrigins(Database& db, Drawing& drawing);

} // namespace host
