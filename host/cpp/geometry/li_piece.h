// Contour elements as pieces of geometry, and back.
#pragma once

#include "geometry/piece.h"
#include "li.h"

namespace host {

Piece pieceOf(const LI_ELEM& elem);
/// Sets type and points of `elem` and expands it.
void setPiece(LI_ELEM* elem, const Piece& piece);

} // namespace host
