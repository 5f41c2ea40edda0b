// Where in the file an entity stands, for the account's examples.
#pragma once

#include "account_state.h"

#include <cstdint>

class DxfDocument;

/// Behind the group 0 of an entity; no document where the place isn't known.
struct DxPlace {
    const DxfDocument* document = nullptr;
    std::int32_t position = 0;
};

/// Handle and line of the entity there. O(distance to the last such place), else O(file).
DxUnseen::Example DxExampleAt(const DxPlace& place);
