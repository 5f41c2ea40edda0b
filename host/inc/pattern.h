// What a pattern has beside its names, attributes and content: a placement, whether it is seen.
#pragma once

/// Switches a pattern on or off. 0, or 1005 when there is no such pattern.
int UoPatSetVisible(int patNo, bool visible);
