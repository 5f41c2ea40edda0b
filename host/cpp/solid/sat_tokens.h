// A solid model's file, SAT or SAB, as the tokens of its records. Only what a picture of it needs is looked
// at: versions up to 700, whose fields differ, need no telling apart for that.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace host {

enum class SatKind : std::uint8_t { Pointer, Number, Word, Logical, Open, Close };

struct SatToken {
    SatKind kind = SatKind::Word;
    double number = 0;     ///< of a pointer too: the number of a record, -1 for none
    std::string_view text; ///< of the file
};

struct SatRecord {
    std::string_view kind; ///< last part of the name: "edge", "curve", "surface"
    std::string_view leaf; ///< first part: "tedge", "ellipse", "plane"
    std::size_t first = 0, count = 0;
};

/// The tokens of a file, which must outlive them.
struct SatModel {
    std::vector<SatToken> tokens;
    std::vector<SatRecord> records;      ///< by number; one that the file lacks has no kind
    std::vector<std::size_t> subRecords; ///< by number: place of the brace that opens it

    /// The record that a pointer leads to; null for none.
    const SatRecord* at(const SatToken& pointer) const;
};

/// Splits a file. A damaged one gives the records in front of the damage.
SatModel splitSat(std::string_view data);

} // namespace host
