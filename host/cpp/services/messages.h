// The message catalogue's memory.
#pragma once

namespace host {

/// Forgets the texts that were read, so that the next question reads the catalogue anew.
void forgetCatalogue();

} // namespace host
