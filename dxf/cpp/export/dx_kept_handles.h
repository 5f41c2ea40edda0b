// Handles of entities that leave as what they were.
#pragma once

#include <cstdint>
#include <string_view>

/// Lets new handles begin behind all that entities may keep. Ahead of all that takes handles for the body.
void DxReserveKeptHandles();
/// The handle of an entity whose group 5 was `value`: that, where nobody else has it, else a new one.
std::uint32_t DxTakeKeptHandle(std::string_view value);
