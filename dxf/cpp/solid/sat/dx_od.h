// The converter of SAT and SAB files.
#pragma once

/// Starts (anything but 0) or stops (0) the converter. There is none yet: stopping finds nothing to stop.
void DxOdInit(int start);
