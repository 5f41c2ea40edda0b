#include "text/tolerance_signs.h"

#include <string_view>

namespace host {

char32_t toleranceSignFor(char32_t c) {
    // a angularity, b perpendicularity, c flatness, d profile of a surface, e circularity, f parallelism,
    // g cylindricity, h runout, i symmetry, j position, k profile of a line, l least and m most material,
    // n diameter, p projected zone, r concentricity, s whatever the size, t total runout, u straightness
    constexpr std::u32string_view signs = U"∠⟂⏥⌓○⫽⌭↗⌯⌖⌒ⓁⓂ⌀oⓅq◎Ⓢ⌰⏤vwxyz";
    static_assert(signs.size() == 26);
    return c >= 'a' && c <= 'z' ? signs[c - 'a'] : c;
}

} // namespace host
