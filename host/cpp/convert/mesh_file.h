// The faces of a drawing as a mesh file, for other programs: OBJ, STL, PLY.
#pragma once

#include "drawing/drawing.h"

#include <string>

namespace host {

/// Whether the name ends with .obj, .stl or .ply.
bool isMeshFile(const std::string& path);
/// Writes all visible faces; the format follows the name's ending. OBJ (text) has a group a pattern, PLY
/// (binary) the colour of each face, STL (binary) triangles. Lengths are the drawing's. `*faces` receives
/// their number. Empty, or what went wrong.
std::string writeMesh(const Drawing& drawing, const std::string& path, long* faces);

} // namespace host
