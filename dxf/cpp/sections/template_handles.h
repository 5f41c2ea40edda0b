// Handles that the export's templates give to their objects. The export counts its own from 201 (hexadecimal)
// on.
#pragma once

#include <cstdint>

inline constexpr std::uint32_t DX_HANDLE_PLACEHOLDER = 0xF; ///< plot style of all layers
inline constexpr std::uint32_t DX_HANDLE_LAYOUT_MODEL = 0x22;
inline constexpr std::uint32_t DX_HANDLE_LAYOUT_PAPER = 0x1E;
inline constexpr std::uint32_t DX_HANDLE_LAYOUT_PAPER0 = 0x26;
inline constexpr std::uint32_t DX_HANDLE_PAPER_RECORD = 0x1B;  ///< block record *Paper_Space
inline constexpr std::uint32_t DX_HANDLE_PAPER0_RECORD = 0x1C; ///< block record *Paper_Space0
inline constexpr std::uint32_t DX_HANDLE_IMAGE_DICTIONARY = 0x5E;
