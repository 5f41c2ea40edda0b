// Attributes of INSERTs on their way to and from the host.
#pragma once

void DxAttribInit(); ///< Start of a session. Attributes aren't mapped yet: nothing to load.
void DxAttribEnd();  ///< End of a session: frees what was gathered.
