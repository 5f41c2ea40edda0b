#pragma once
// The check of one record against the rows of its kind: handle and owner, subclass markers, groups.

#include "session.h"

namespace validate {

/// Reads handle, owner and extent of a record, notes it in the model, makes it the session's place.
/// `rows` is working memory that `record.rows` points into afterwards.
void readRecord(Session& session, Record& record, std::vector<RowUse>& rows);

/// Checks the record by the rows of its kind, then its extended data, then what the kind's own check adds.
void checkRecord(Session& session, Record& record, std::vector<RowUse>& rows);

} // namespace validate
