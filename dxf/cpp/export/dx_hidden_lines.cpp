#include "dx_hidden_lines.h"

#include "../host/dx_host.h"

#include "ov.h"
#include "uo.h"
#include "ut.h"

/// The image is drawn into a pattern of its own, which goes when it has been copied.
static int addHiddenLines(int pat) {
    int image = 0;
    if (const int error = Dxovpat(211, &image)) return error;
    int hide = 1;
    int redraw = 7;
    int error = ov3dhidden(&hide, &pat, &image);
    if (!error) error = ovredraw(&redraw);
    if (!error) error = Dxovcopy(image, pat);
    const int removed = Dxovpat(17, &image);
    return error ? error : removed;
}

int DxHiddPats() {
    constexpr int ALL_PATTERNS = 2;
    int* patterns = nullptr;
    int count = 0;
    int error = UoFiltAttrToPatList("", ALL_PATTERNS, &patterns, &count);
    for (int i = 0; i < count; ++i) {
        const int failed = addHiddenLines(patterns[i]);
        if (!error) error = failed;
    }
    void* block = patterns;
    if (block) UtFreeMemory(&block);
    return error;
}
