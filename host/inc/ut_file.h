// What a file is beyond its name, and what became of the view of one.
#pragma once

#include "ut.h"

#include <compare>

/// Which file it is, whatever name leads to it.
struct UT_FILE_ID {
    unsigned long long device = 0, number = 0;
    auto operator<=>(const UT_FILE_ID&) const = default;
};
/// The identity of the file behind a stream. False when there is none.
bool UtFileIdOfStream(FILE* stream, UT_FILE_ID& id);
/// The identity of the file that `path` leads to. False when there is no such file.
bool UtFileIdOfPath(const UtCString& path, UT_FILE_ID& id);

/// Whether somebody made the file shorter while it was being viewed: what of it is gone reads as 0 bytes. The
/// host learns of it when such a byte is read.
bool UtFileShrank(const UT_FILE_VIEW& view);
