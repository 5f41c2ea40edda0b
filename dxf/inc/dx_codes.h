// Numbers that mean the same everywhere: version levels, error numbers, flags of blocks and layers, degrees.
#pragma once

/// What DxMiscCheckVersion asks for: true for the target named here and all newer ones.
enum DxLevel : int {
    DX_LEVEL_UTF8 = 4,       ///< ACAD21: strings in UTF-8
    DX_LEVEL_SHEETS = 5,     ///< ACAD18: a second sheet, backgrounds of texts, owners of line types
    DX_LEVEL_TRUE_COLOR = 5, ///< ACAD18: colours by their RGB
    DX_LEVEL_HANDLES = 6,    ///< ACAD14: handles, markers, LWPOLYLINE, OBJECTS, long names
    DX_LEVEL_3D = 7,         ///< anything but EASY: 3D, DIMENSION, VPORT, DIMSTYLE
};
/// DxWriteVersion of the plainest target.
inline constexpr int DX_FORMAT_EASY = 8;

enum DxError : int {
    DX_ERR_MEMORY = 1001,    ///< no memory
    DX_ERR_NO_MORE = 1005,   ///< no such object; the normal end of a walk through the host's
    DX_ERR_TEMPORARY = 1008, ///< a temporary file can't be opened
    DX_ERR_EXCEPTION = 2360, ///< an exception, or a table that couldn't grow
    DX_ERR_ARGUMENT = 3011,  ///< a missing argument
    DX_ERR_WRITE = 9000,     ///< writing failed
    DX_ERR_OPEN = 9001,      ///< a file can't be opened
    DX_ERR_END = 9003,       ///< end of the file
    DX_ERR_NOT_FOUND = 9005, ///< file not found, or a place that can't be regained
    DX_ERR_STOPPED = 9009,   ///< stopped by the user
};

/// Group 70 of a BLOCK.
enum DxBlockFlag : int {
    DX_BLOCK_ANONYMOUS = 1,
    DX_BLOCK_ATTRIBUTES = 2,
    DX_BLOCK_XREF = 4,
    DX_BLOCK_OVERLAY = 8,
    DX_BLOCK_REFERENCED = 64,
};

/// Group 70 of a LAYER.
enum DxLayerFlag : int {
    DX_LAYER_FROZEN = 1,
    DX_LAYER_FROZEN_BY_DEFAULT = 2,
    DX_LAYER_LOCKED = 4,
    DX_LAYER_XREF = 16,          ///< depends on an external reference
    DX_LAYER_XREF_RESOLVED = 32, ///< which was found
};

/// Degrees in one radian.
inline constexpr double DX_DEGREES = 57.29577951308232;
