// Images that wait for the OBJECTS section.
#pragma once

int DxImageQueueDraw();  ///< Draws what waits. IMAGE isn't read yet, so nothing does. 0 or an error number.
void DxImageQueueFree(); ///< Empties the queue.
