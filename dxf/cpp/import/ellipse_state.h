// Sines and cosines of ellipses' samples. A block's arcs come again under each INSERT with the same
// parameters.
#pragma once

inline constexpr int DX_MOST_SAMPLES = 25; ///< of an ellipse

/// Values at start, start + step, … , then at the points a quarter turn beyond the first and the last of
/// them.
struct DX_SAMPLE_SINES {
    double start, step; ///< radians
    int count;          ///< of samples, 0: nothing is kept here
    double cosine[DX_MOST_SAMPLES + 2], sine[DX_MOST_SAMPLES + 2];
};

inline constexpr unsigned DX_SAMPLE_SINES_COUNT = 64;
extern DX_SAMPLE_SINES DxSampleSines[DX_SAMPLE_SINES_COUNT]; ///< each at a place that its parameters give

void DxResetEllipseState();
