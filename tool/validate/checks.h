#pragma once
// Checks of single kinds that go beyond their rows. Each sees a record whose groups stand in their rows.

#include "session.h"

namespace validate {

// curve_checks.cpp
void checkLwPolyline(Session& session, const Record& record);
void checkSpline(Session& session, const Record& record);
void checkXline(Session& session, const Record& record);
void checkMline(Session& session, const Record& record);
void checkMesh(Session& session, const Record& record);

// hatch_check.cpp
void checkHatch(Session& session, const Record& record);

// annotation_checks.cpp
void checkText(Session& session, const Record& record);
void checkMText(Session& session, const Record& record);
void checkLeader(Session& session, const Record& record);
void checkDimension(Session& session, const Record& record);
void checkTable(Session& session, const Record& record);
void checkMultiLeader(Session& session, const Record& record);

// image_checks.cpp
void checkImage(Session& session, const Record& record);
void checkImageDefinition(Session& session, const Record& record);
void checkImageReactor(Session& session, const Record& record);
void checkByteCount(Session& session, const Record& record);

// table_checks.cpp
void checkLayer(Session& session, const Record& record);
void checkLineType(Session& session, const Record& record);
void checkBlockRecord(Session& session, const Record& record);

// object_checks.cpp
void checkDictionary(Session& session, const Record& record);
void checkLayout(Session& session, const Record& record);
void checkGroupObject(Session& session, const Record& record);

} // namespace validate
