// Fixed strings and growing tables of plain records.
#pragma once

#include "ut.h"

#include <cstddef>
#include <cstring>
#include <new>
#include <string_view>
#include <type_traits>
#include <utility>

/// Bytes of a text of the file's code page that have room in `most`: no escape "\U+XXXX" is divided.
inline std::size_t DxFittingLength(std::string_view text, std::size_t most) {
    constexpr std::size_t escapeLength = 7;
    if (text.size() <= most || most == 0) return text.size() < most ? text.size() : most;
    const std::size_t at = text.substr(0, most + 2).rfind("\\U+", most - 1);
    return at != std::string_view::npos && at + escapeLength > most ? at : most;
}

/// A char array of N bytes that holds at most N - 1 bytes and a 0. Bytes are in the code page of the file.
/// Longer texts are cut. Trivial on purpose: records are grown and copied as plain memory.
template <std::size_t N>
struct DxFixed {
    char s[N];

    void assign(std::string_view text) {
        const std::size_t n = text.size() < N ? text.size() : DxFittingLength(text, N - 1);
        if (n) std::memcpy(s, text.data(), n); // a view of nothing has no address
        s[n] = 0;
    }
    void clear() { s[0] = 0; }
    bool empty() const { return s[0] == 0; }
    std::string_view view() const { return {s}; }
    const char* c_str() const { return s; }
};

/// Names and other strings of records: at most 160 bytes.
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
