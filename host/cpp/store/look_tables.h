// Looks of layers and pens in a drawing file.
#pragma once

#include "store/table_reader.h"
#include "store/table_writer.h"

namespace host {

void putLooks(Tables& tables, const Drawing& drawing);
/// Behind the layers.
void readLooks(Database& db, Drawing& drawing);

} // namespace host
