// Group codes as data: tables of (code, member of a record), and the one loop that fills records from pairs.
//
// The kind of value follows from the member's type, so that a row can't contradict its record. A point is one
// row: code 10 implies 20 and 30. The rows are indexed by code when the program is compiled; a code that
// stands twice is a compile error. A lookup costs one load from a dense array.
#pragma once

#include "dx_fixed.h"
#include "dx_reader.h"
#include "rpt.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

/// How a value differs from the usual reading of its member's type.
enum DxFieldFlags : std::uint8_t {
    DX_PLAIN = 0,
    DX_UPPER = 1,     ///< names: ASCII letters upper-cased
    DX_UNLIMITED = 2, ///< reals: without the limit of 1e19
};

/// One row: group code and member of record R.
template <class R>
struct DxField {
    enum class Kind : std::uint8_t { Integer, Real, Hex, Name, Point, PointOf4, Triple };

    int code;
    Kind kind;
    DxFieldFlags flags;
    std::uint8_t index = 0; ///< of a point among several
    union {
        int R::*integer;
        double R::*real;
        std::uint32_t R::*hex;
        DX_NAME R::*name;
        RPT3 R::*point;
        RPT3 (R::*points)[4];
        double (R::*triple)[3];
    };

    constexpr DxField(int c, int R::*m) : code(c), kind(Kind::Integer), flags(DX_PLAIN), integer(m) {}
    constexpr DxField(int c, double R::*m, DxFieldFlags f = DX_PLAIN)
        : code(c), kind(Kind::Real), flags(f), real(m) {}
    constexpr DxField(int c, std::uint32_t R::*m) : code(c), kind(Kind::Hex), flags(DX_PLAIN), hex(m) {}
    constexpr DxField(int c, DX_NAME R::*m, DxFieldFlags f = DX_PLAIN)
        : code(c), kind(Kind::Name), flags(f), name(m) {}
    constexpr DxField(int c, RPT3 R::*m) : code(c), kind(Kind::Point), flags(DX_PLAIN), point(m) {}
    constexpr DxField(int c, RPT3 (R::*m)[4], std::uint8_t i)
        : code(c), kind(Kind::PointOf4), flags(DX_PLAIN), index(i), points(m) {}
    constexpr DxField(int c, double (R::*m)[3]) : code(c), kind(Kind::Triple), flags(DX_PLAIN), triple(m) {}

    constexpr int components() const { return kind < Kind::Point ? 1 : 3; }
};

/// Upper-cases the ASCII letters of a name in place.
inline void DxUpperName(DX_NAME& name) {
    for (char* c = name.s; *c; ++c) {
        if (*c >= 'a' && *c <= 'z') *c = static_cast<char>(*c - 'a' + 'A');
    }
}

/// The rows of a record with their index by code. Made by dxFields.
template <class R, std::size_t N>
class DxFieldTable {
public:
    /// Codes from here on are left to hooks: extended data begins at 1000.
    static constexpr unsigned codeLimit = 512;

    consteval explicit DxFieldTable(const DxField<R> (&rows)[N])
        : DxFieldTable(rows, std::make_index_sequence<N>()) {}

    /// Stores the value if the table has the code. False if it hasn't.
    bool store(R& record, int code, std::string_view text) const {
        if (static_cast<unsigned>(code) >= codeLimit || slots_[code] == 0) return false;
        const unsigned slot = slots_[code] - 1u;
        put(record, rows_[slot / slotsARow], slot % slotsARow, text);
        return true;
    }

private:
    /// Whether a record has room for such a member: compilers warn of code for one that can't be there.
    template <class Member>
    static constexpr bool mayHold = sizeof(R) >= sizeof(Member);
    static constexpr unsigned slotsARow = 4; // a row has at most three components
    static_assert(N * slotsARow < 256, "the index holds one byte a code");

    template <std::size_t... I>
    consteval DxFieldTable(const DxField<R> (&rows)[N], std::index_sequence<I...> /*order*/)
        : rows_{rows[I]...} {
        for (std::size_t row = 0; row < N; ++row) {
            for (int component = 0; component < rows[row].components(); ++component) {
                const int code = rows[row].code + 10 * component;
                if (code < 0 || static_cast<unsigned>(code) >= codeLimit) throw "group code out of range";
                if (slots_[code]) throw "group code stands twice";
                slots_[code] = static_cast<std::uint8_t>(row * slotsARow + component + 1);
            }
        }
    }

    static void putComponent(RPT3& point, unsigned component, std::string_view text) {
        (component == 0 ? point.x : component == 1 ? point.y : point.z) = DxfReadConvDouble(text);
    }

    static void put(R& record, const DxField<R>& row, unsigned component, std::string_view text) {
        using Kind = typename DxField<R>::Kind;
        switch (row.kind) {
        case Kind::Integer: record.*row.integer = DxAtoi(text); break;
        case Kind::Real:
            record.*row.real = row.flags & DX_UNLIMITED ? DxAtof(text) : DxfReadConvDouble(text);
            break;
        case Kind::Hex: record.*row.hex = DxHexToU32(text); break;
        case Kind::Name:
            if constexpr (mayHold<DX_NAME>) {
                (record.*row.name).assign(text);
                if (row.flags & DX_UPPER) DxUpperName(record.*row.name);
            }
            break;
        case Kind::Point: putComponent(record.*row.point, component, text); break;
        case Kind::PointOf4:
            if constexpr (mayHold<RPT3[4]>) putComponent((record.*row.points)[row.index], component, text);
            break;
        case Kind::Triple: (record.*row.triple)[component] = DxfReadConvDouble(text); break;
        }
    }

    DxField<R> rows_[N];
    std::uint8_t slots_[codeLimit] = {}; // row * slotsARow + component + 1, 0 for no row
};

/// Makes the table of record R: constexpr auto fields = dxFields<R>({{10, &R::centre}, {40, &R::radius}}).
template <class R, std::size_t N>
consteval DxFieldTable<R, N> dxFields(const DxField<R> (&rows)[N]) {
    return DxFieldTable<R, N>(rows);
}

/// Reads pairs into `record` up to the next group 0, which is handed back. A pair that the table doesn't know
/// goes to `rest` (const DxPair&), which may keep what concerns it. Values are cut to `maxLength` - 1 bytes.
/// 0 or the reader's error.
template <class R, std::size_t N, class Rest>
int DxReadFields(R& record, const DxFieldTable<R, N>& fields, Rest&& rest, int maxLength = 161) {
    const bool showPercent = DxShowsPercent();
    DxPair pair;
    for (;;) {
        if (const int error = DxReadPair(pair, maxLength, showPercent)) return error;
        if (pair.code == 0) {
            DxUnGetLine();
            return 0;
        }
        if (!fields.store(record, pair.code, pair.text)) rest(pair);
    }
}
