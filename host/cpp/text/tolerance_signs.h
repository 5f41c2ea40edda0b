// The face of geometric tolerances, which has a sign in the place of each small letter.
#pragma once

namespace host {

/// The sign in the place of a letter; other characters stay.
char32_t toleranceSignFor(char32_t c);

} // namespace host
