// Finding the end of a line of text DXF.
#pragma once

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

/// The first line feed or 0 byte in [at, end), or `end`. Lines of DXF are short: most end within the first
/// step.
inline const char* DxScanLineStop(const char* at, const char* end) {
#if defined(__SSE2__)
    const __m128i lineFeed = _mm_set1_epi8('\n');
    const __m128i zero = _mm_setzero_si128();
    for (; end - at >= 16; at += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
        const __m128i hits = _mm_or_si128(_mm_cmpeq_epi8(bytes, lineFeed), _mm_cmpeq_epi8(bytes, zero));
        if (const int mask = _mm_movemask_epi8(hits)) return at + __builtin_ctz(static_cast<unsigned>(mask));
    }
#endif
    while (at != end && *at != '\n' && *at) ++at;
    return at;
}
