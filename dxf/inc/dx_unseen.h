// The account of an import: what was met in the file and isn't seen in the drawing, by kind and reason.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Why an entity isn't seen. The file hides it itself up to DX_LAST_HIDDEN; it is lost from DX_FIRST_LOST on.
enum class DxReason : std::uint8_t {
    None,
    LayerOff,    ///< its layer is off
    LayerFrozen, ///< its layer is frozen
    Invisible,   ///< it has the flag of invisible entities
    PointsOff,   ///< points are shown as nothing
    FillsOff,    ///< fills are switched off
    Definition,  ///< of an attribute, for INSERTs to come
    SheetWindow, ///< the viewport that is the sheet itself
    NoReader,    ///< nothing reads this kind
    OtherSpace,  ///< of a space that isn't read
    NoBlock,     ///< its block isn't in the file
    Recursive,   ///< its block inserts itself
    TooDeep,     ///< blocks nest too deeply
    NotInserted, ///< a block that nothing inserts which is drawn
    Nothing,     ///< it has no size, no text, no content
    Ended,       ///< the import ended ahead of it
};
inline constexpr DxReason DX_LAST_HIDDEN = DxReason::SheetWindow;
inline constexpr DxReason DX_FIRST_LOST = DxReason::NoReader;

/// Entities of one kind that aren't seen, for one reason.
struct DxUnseen {
    std::string kind; ///< text of group 0; "BLOCK" for whole blocks
    DxReason reason = DxReason::None;
    bool inBlocks = false; ///< of blocks, each counted once however often it is inserted; else of ENTITIES
    long count = 0;
    /// The first of them; handle and line are 0 where they aren't known.
    struct Example {
        std::uint32_t handle = 0;
        long line = 0;    ///< of the name in group 0, from 1
        std::string file; ///< an external reference that the line is of, empty for the drawing itself
        std::string
            name; ///< of the block, the layer or the layout that it is about, empty where it is about none
    } example;
};

/// Whether the file itself hides what has this reason.
constexpr bool DxIsHidden(DxReason reason) {
    return reason != DxReason::None && reason <= DX_LAST_HIDDEN;
}
/// The reason in words that don't change, for machines: "no reader", "layer off" …
std::string_view DxReasonKey(DxReason reason);
/// The same in the host's language.
std::string DxReasonText(DxReason reason);
/// One line for the user about what is lost, or about what the file hides: "lost: 293 DIMENSION (no reader),
/// 12 INSERT (block not found)". Empty when there is nothing to tell.
std::string DxAccountLine(const std::vector<DxUnseen>& unseen, bool hidden);
