// The faces of a solid model as triangles, for pictures that hide or shade.
#pragma once

#include "drawing/face_list.h"
#include "drawing/solid.h"

#include <cstddef>

namespace host {

/// The faces of a solid where it stands, as triangles with hidden edges, of the solid's pen. Faces on
/// surfaces that aren't understood are left out; not more than about `limit` triangles.
FaceList solidFaces(const Solid& solid, std::size_t limit);

} // namespace host
