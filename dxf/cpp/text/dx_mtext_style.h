// Styles for the fonts within an MTEXT.
#pragma once

#include "dx_fixed.h"

#include <string_view>

/// The name of a style for the font of an "\F" or "\f" code, as it stands there with its options; a style is
/// made if there is none. `isFileCode` for "\F". `style` stays as it is when the table has no room.
void DxMtextFindStyle(std::string_view font, bool isFileCode, DX_NAME* style);
