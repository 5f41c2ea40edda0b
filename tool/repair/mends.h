#pragma once
// The mends, in the order in which they are done: each finds its places ready by those in front of it.

#include "log.h"

namespace repair {

void mendText(Document& document, Log& log);         ///< text_mend.cpp: code pages, UTF-8
void mendHeader(Document& document, Log& log);       ///< header_mend.cpp: variables
void mendTables(Document& document, Log& log);       ///< table_mend.cpp: tables, their heads, needed records
void mendBlocks(Document& document, Log& log);       ///< block_mend.cpp: blocks, block records, SEQENDs
void mendNames(Document& document, Log& log);        ///< name_mend.cpp: names that nothing defines
void mendHandles(Document& document, Log& log);      ///< handle_mend.cpp: missing, bad and repeated handles
void mendDictionaries(Document& document, Log& log); ///< dictionary_mend.cpp: root, entries, layouts
void mendOwners(Document& document, Log& log);       ///< owner_mend.cpp
void mendPointers(Document& document, Log& log);     ///< pointer_mend.cpp
void mendCounts(Document& document, Log& log);       ///< count_mend.cpp
void mendClasses(Document& document, Log& log);      ///< class_mend.cpp
void mendHandleSeed(Document& document, Log& log);   ///< header_mend.cpp: last, when all handles are given

} // namespace repair
