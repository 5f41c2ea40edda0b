// Arrows that stand by themselves, on the road to the host. Points and lengths are the module's (dx_frame.h).
#pragma once

/// Look of the arrows to come: kind of head (OV_ARROW_KIND), and its length and width.
int DxovArrowLook(int kind, int pen, int lineType, double length, double width);
/// A point of an arrow: op 2 begins one, 1 goes on; `kind` is the head at this point. 0 or the host's error.
int Dxovarrow(int op, double x, double y, double cx, double cy, int kind);
