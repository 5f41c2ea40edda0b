// The faces of a solid model as triangles, for pictures that hide or shade.
#pragma once

#include "drawing/face_list.h"
#include "drawing/solid.h"

#include <cstddef>

namespace host {

/// A point of the model where the solid stands.
RPT3 placed(const Solid& solid, const RPT3& p);
/// The faces of a solid where it stands, as triangles with hidden edges, of the solid's pen. Faces on
/// surfaces that aren't understood are left out; not more than about `limit` triangles.
FaceList solidFaces(const Solid& solid, std::size_t limit);

} // namespace host
