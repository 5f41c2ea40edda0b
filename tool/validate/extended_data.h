#pragma once
// Extended data (1000 to 1071) and application groups (102), which any record may carry.

#include "session.h"

namespace validate {

/// Checks the extended data of a record.
void checkExtendedData(Session& session, const Record& record);

/// Checks the application group whose 102 stands at `at`; returns the index of its last tag.
size_t checkAppGroup(Session& session, const Record& record, size_t at);

/// Notes a pointer of a record to be followed once the file is read. Null pointers are no pointers.
void addPointer(Session& session, const Record& record, const Tag& tag, Strength strength,
                std::string_view wanted = {});

/// What a handle of this code promises, seen from the code alone.
Strength strengthOf(int code);

} // namespace validate
