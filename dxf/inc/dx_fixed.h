// Fixed strings and growing tables of plain records.
#pragma once

#include "ut.h"

#include <cstddef>
#include <cstring>
#include <new>
#include <string_view>
#include <type_traits>
#include <utility>

/// Bytes of the first `count` characters of UTF-8, all of them when it has fewer.
inline std::size_t DxCharsLength(std::string_view text, std::size_t count) {
    if (text.size() <= count) return text.size();
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool beginsChar = (static_cast<unsigned char>(text[i]) & 0xC0) != 0x80;
        if (beginsChar && count-- == 0) return i;
    }
    return text.size();
}

/// A text of at most N - 1 characters within a record, UTF-8. Longer texts are cut. Plain memory, so that
/// records can be grown and copied as such; an empty one costs a byte, not its room.
template <std::size_t N>
struct DxFixed {
    static constexpr std::size_t LIMIT = N - 1; ///< characters
    char s[4 * LIMIT + 1];                      ///< a character has up to four bytes

    DxFixed() { s[0] = 0; } // NOLINT: the rest is never read

    void assign(std::string_view text) {
        std::size_t n = DxCharsLength(text, LIMIT);
        if (n > 4 * LIMIT) n = 4 * LIMIT;      // continuation bytes of no character
        if (n) std::memcpy(s, text.data(), n); // a view of nothing has no address
        s[n] = 0;
    }
    void clear() { s[0] = 0; }
    bool empty() const { return s[0] == 0; }
    std::string_view view() const { return {s}; }
    const char* c_str() const { return s; }
};

/// Names and other strings of records: at most 160 characters.
using DX_NAME = DxFixed<161>;

/// A list of plain records that grows through the host's memory service, so that a refused allocation is an
/// error number; only a copy of the whole list, which has no result to give one, throws std::bad_alloc.
/// Growth is by half of the size; all bytes of new records are zero.
template <class T>
class DxTable {
    static_assert(std::is_trivially_copyable_v<T>, "records are moved as plain memory");

public:
    DxTable() = default;
    DxTable(const DxTable& other) { *this = other; }
    DxTable(DxTable&& other) noexcept { swap(other); }
    DxTable& operator=(const DxTable& other) {
        if (this == &other) return *this;
        count_ = 0;
        if (reserve(other.count_)) throw std::bad_alloc();
        if (other.count_) std::memcpy(static_cast<void*>(data_), other.data_, other.count_ * sizeof(T));
        count_ = other.count_;
        return *this;
    }
    DxTable& operator=(DxTable&& other) noexcept {
        swap(other);
        return *this;
    }
    ~DxTable() { free(); }

    /// Appends a record. 0, or the host's allocation error with the table as it was.
    int add(const T& record) {
        const T copy = record; // the argument may live in this table
        if (count_ == capacity_) {
            if (const int error = reserve(count_ + count_ / 2 + 8)) return error;
        }
        data_[count_++] = copy;
        return 0;
    }
    /// Makes room for `count` records. 0 or the host's allocation error.
    int reserve(std::size_t count) {
        if (count <= capacity_) return 0;
        void* block = data_;
        constexpr std::size_t size = sizeof(T); // NOLINT(bugprone-sizeof-expression): of pointers, too
        if (const int error = UtAllocMemoryBlock(&block, count, size, 1, 0)) return error;
        data_ = static_cast<T*>(block);
        capacity_ = count;
        return 0;
    }
    void clear() { count_ = 0; }
    void free() {
        void* block = data_;
        if (block) UtFreeMemory(&block);
        data_ = nullptr;
        count_ = capacity_ = 0;
    }
    void swap(DxTable& other) noexcept {
        std::swap(data_, other.data_);
        std::swap(count_, other.count_);
        std::swap(capacity_, other.capacity_);
    }
    std::size_t size() const { return count_; }
    std::size_t capacity() const { return capacity_; }
    bool empty() const { return count_ == 0; }
    T& operator[](std::size_t i) { return data_[i]; }
    const T& operator[](std::size_t i) const { return data_[i]; }
    T& back() { return data_[count_ - 1]; }
    T* begin() { return data_; }
    T* end() { return data_ + count_; }
    const T* begin() const { return data_; }
    const T* end() const { return data_ + count_; }

private:
    T* data_ = nullptr;
    std::size_t count_ = 0;
    std::size_t capacity_ = 0;
};
