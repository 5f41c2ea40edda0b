// Moving a whole model.
#pragma once

#include "acis_file.h"

namespace ACIS {

/// Puts all bodies of the model where `matrix` (row vectors, the shift in its last row) takes them, by their
/// transformations. A matrix that changes nothing leaves the model as it is.
void placeModel(File& file, const double matrix[4][4]);

} // namespace ACIS
