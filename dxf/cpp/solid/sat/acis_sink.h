// Where a written model goes: single values become text, tagged bytes or lines to look at.
#pragma once

#include "acis_layout.h"
#include "acis_value.h"
#include "od_stream_buf.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace ACIS {

struct Header;

class Sink {
public:
    Sink(OdStreamBuf& out, int version) : out_(out), version_(version) {}
    virtual ~Sink() = default;
    virtual void head(const Header& header, std::int64_t records, std::int64_t bodies) = 0;
    virtual void begin(std::int64_t number, std::string_view name) = 0;
    virtual void end() = 0;
    virtual void finish() = 0; ///< behind the last record

    virtual void field(const Field&) {} ///< ahead of its values
    virtual void pointer(std::int64_t number) = 0;
    virtual void integer(std::int64_t n) = 0;
    virtual void longInteger(std::int64_t n) = 0;
    virtual void real(double number) = 0;
    virtual void tuple(Type type, const double* numbers, int count) = 0;
    virtual void logical(const Words& words, bool flag) = 0;
    virtual void code(const Words* words, std::int64_t n) = 0;
    virtual void string(std::string_view text) = 0;
    virtual void literal(std::string_view text) = 0;
    virtual void word(std::string_view text) = 0;
    virtual void open(std::string_view name) = 0;
    virtual void close() = 0;
    void flush();

protected:
    void spill() {
        if (buffer_.size() >= 65536) flush();
    }

    OdStreamBuf& out_;
    int version_;
    std::string buffer_;
};

class TextSink : public Sink {
public:
    TextSink(OdStreamBuf& out, int version, bool isNumbered) : Sink(out, version), isNumbered_(isNumbered) {}
    void head(const Header& header, std::int64_t records, std::int64_t bodies) override;
    void begin(std::int64_t number, std::string_view name) override;
    void end() override;
    void finish() override;
    void pointer(std::int64_t number) override;
    void integer(std::int64_t n) override;
    void longInteger(std::int64_t n) override { integer(n); }
    void real(double number) override;
    void tuple(Type type, const double* numbers, int count) override;
    void logical(const Words& words, bool flag) override;
    void code(const Words* words, std::int64_t n) override;
    void string(std::string_view text) override;
    void literal(std::string_view text) override;
    void word(std::string_view text) override;
    void open(std::string_view name) override;
    void close() override;

protected:
    void put(std::string_view text) { buffer_.append(text).push_back(' '); }
    bool isNumbered_;
};

class BinarySink : public Sink {
public:
    using Sink::Sink;
    void head(const Header& header, std::int64_t records, std::int64_t bodies) override;
    void begin(std::int64_t number, std::string_view name) override;
    void end() override;
    void finish() override;
    void pointer(std::int64_t number) override;
    void integer(std::int64_t n) override;
    void longInteger(std::int64_t n) override;
    void real(double number) override;
    void tuple(Type type, const double* numbers, int count) override;
    void logical(const Words& words, bool flag) override;
    void code(const Words* words, std::int64_t n) override;
    void string(std::string_view text) override;
    void literal(std::string_view text) override;
    void word(std::string_view text) override;
    void open(std::string_view name) override;
    void close() override;

private:
    void tag(unsigned char tag) { buffer_.push_back(static_cast<char>(tag)); }
    template <class T>
    void bytes(T value);
    void shortText(unsigned char tag, std::string_view text);
    void name(std::string_view name);
};

/// One line a record: "#5 face attrib=- id=-1 …". Numbers with 15 digits, so that a text and a binary file of
/// one model look alike.
class DumpSink : public TextSink {
public:
    DumpSink(OdStreamBuf& out, int version) : TextSink(out, version, false) {}
    void head(const Header& header, std::int64_t records, std::int64_t bodies) override;
    void begin(std::int64_t number, std::string_view name) override;
    void end() override;
    void finish() override { flush(); }
    void field(const Field& field) override;
    void pointer(std::int64_t number) override;
    void real(double number) override;
    void string(std::string_view text) override;
};

/// Product and kernel of what is written here, and the time in the form of "Thu Jan  1 00:00:00 2004".
std::string writtenProduct();
std::string writtenKernel(int version);
std::string writtenDate();
int writtenFlags(int version);
std::string_view endMarker(int version); ///< in the text form

} // namespace ACIS
