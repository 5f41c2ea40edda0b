// Texts of a pattern on their way out.
#pragma once

int DxWritePatText(int pat); ///< All texts of the pattern, and the attributes that no text stands for.
