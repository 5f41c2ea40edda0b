// Forms of surfaces and curves that an older version can't hold, rebuilt as B-splines.
#pragma once

#include "acis_writer.h"

namespace ACIS {

constexpr double REBUILD_TOLERANCE = 1e-6; ///< in the model's unit

/// Finds the faces whose surface, or a curve of whose loops, has a form that `version` can't hold, and adds
/// what is to be written in its place: B-splines within REBUILD_TOLERANCE, with the same parameters, so that
/// curves of parameters stay true. Where no shape is known the form stays as it is. The number of these
/// faces.
std::size_t rebuildFaces(File& file, int version, Substitutes& substitutes);

} // namespace ACIS
