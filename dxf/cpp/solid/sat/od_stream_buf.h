// The streams that the converter works on.
#pragma once

#include "ut.h"

#include <cstddef>
#include <exception>
#include <string>
#include <string_view>

class OdError : public std::exception {
public:
    explicit OdError(int code, std::string text) : code_(code), text_(std::move(text)) {}
    int code() const { return code_; }
    const char* what() const noexcept override { return text_.c_str(); }

private:
    int code_;
    std::string text_;
};

class OdError_FileNotFound : public OdError {
public:
    explicit OdError_FileNotFound(const UtCString& name);
};

/// Code 53: access denied; 339: sharing violation; 48: any other.
class OdError_FileException : public OdError {
public:
    OdError_FileException(int code, const UtCString& name);
};

class OdStreamBuf {
public:
    virtual ~OdStreamBuf() = default;
    virtual std::size_t length() const = 0;
    /// Copies up to `size` bytes from the position on; gives their number.
    virtual std::size_t getBytes(void* bytes, std::size_t size) = 0;
    virtual void putBytes(const void* bytes, std::size_t size) = 0;
    /// The whole content, when it is in memory.
    virtual std::string_view view() const { return {}; }
};

class OdBaseFileBuf : public OdStreamBuf {
public:
    ~OdBaseFileBuf() override;
    void close();

protected:
    std::FILE* handle_ = nullptr;
    UtCString name_;
    int shareMode_ = 0;
    int accessMode_ = 0;
    bool wasWritten_ = false;
};

/// An existing file, mapped for reading.
class OdRdFileBuf : public OdBaseFileBuf {
public:
    explicit OdRdFileBuf(const UtCString& name);
    ~OdRdFileBuf() override;
    std::size_t length() const override { return map_.size; }
    std::size_t getBytes(void* bytes, std::size_t size) override;
    void putBytes(const void*, std::size_t) override;
    std::string_view view() const override { return {map_.data, map_.size}; }

private:
    UT_FILE_VIEW map_;
    std::size_t position_ = 0;
};

/// A new file, written through a buffer.
class OdWrFileBuf : public OdBaseFileBuf {
public:
    explicit OdWrFileBuf(const UtCString& name);
    ~OdWrFileBuf() override;
    std::size_t length() const override { return length_; }
    std::size_t getBytes(void*, std::size_t) override { return 0; }
    void putBytes(const void* bytes, std::size_t size) override;
    void flush(); ///< Throws when the bytes can't be written.

private:
    static constexpr std::size_t BUFFER = 8192;
    std::string buffer_;
    std::size_t length_ = 0;
};

/// A stream in memory.
class OdMemoryBuf : public OdStreamBuf {
public:
    std::size_t length() const override { return content.size(); }
    std::size_t getBytes(void*, std::size_t) override { return 0; }
    void putBytes(const void* bytes, std::size_t size) override {
        content.append(static_cast<const char*>(bytes), size);
    }
    std::string_view view() const override { return content; }

    std::string content;
};
