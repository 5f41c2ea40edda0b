#include "dx_true_colors.h"

#include "ds.h"
#include "dx_colors.h"

#include <limits>

static int squareDistance(int a, int b) {
    int sum = 0;
    for (const int shift : {0, 8, 16}) {
        const int d = (a >> shift & 0xFF) - (b >> shift & 0xFF);
        sum += d * d;
    }
    return sum;
}

int DxNearestColor(int rgb) {
    int nearest = 1;
    int least = std::numeric_limits<int>::max();
    for (int color = 1; color < DX_COLOR_COUNT; ++color) {
        const int distance = squareDistance(DsPaletteRgb(color), rgb);
        if (distance >= least) continue;
        least = distance;
        nearest = color;
    }
    return nearest;
}
