// The byte ahead of each value of a binary model.
#pragma once

namespace ACIS {

enum Tag : unsigned char {
    CHAR = 2,
    SHORT = 3,
    INTEGER = 4,
    FLOAT = 5,
    DOUBLE = 6,
    STRING8 = 7,
    STRING16 = 8,
    STRING32 = 9,
    TRUE_TAG = 10,
    FALSE_TAG = 11,
    POINTER = 12,
    NAME = 13,
    NAME_PART = 14,
    OPEN = 15,
    CLOSE = 16,
    END = 17,
    LITERAL = 18,
    POSITION = 19,
    VECTOR = 20,
    ENUM = 21,
    PAIR = 22,
    LONG = 23
};

} // namespace ACIS
