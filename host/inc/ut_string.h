// UtCString: the host's text type, and the text services around it.
//
// A UtCString holds UTF-8. Bytes of another code page enter through the encoding constructor and leave
// through Ansi(); both know the Windows and ISO code pages of drawing files by their Windows numbers
// (1252, 932, 28592 for ISO 8859-2, 65001 for UTF-8, 1200 for UTF-16 little endian).
#pragma once

#include <compare>
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

inline constexpr int UT_CP_UTF8 = 65001;
inline constexpr int UT_CP_UTF16 = 1200;

class UtCString {
public:
    UtCString() = default;
    /// Takes the bytes as they stand; they are expected to be UTF-8 (or plain ASCII, or a file name).
    UtCString(const char* text) : text_(text ? text : "") {} // NOLINT: texts convert freely
    UtCString(std::string_view text) : text_(text) {}        // NOLINT
    UtCString(std::string text) : text_(std::move(text)) {}  // NOLINT
    /// Converts bytes of code page `codePage` to UTF-8. A byte that the code page doesn't define becomes
    /// the character U+0080 to U+009F or U+F8A0 to U+F8FF of its number, which Ansi() turns back into it;
    /// ill-formed UTF-8 and UTF-16 becomes U+FFFD. So the result is always well formed.
    UtCString(std::string_view bytes, int codePage);

    const char* c_str() const { return text_.c_str(); }
    const std::string& str() const { return text_; }
    std::size_t Len() const { return text_.size(); }
    bool IsEmpty() const { return text_.empty(); }
    /// True for a text of digits with an optional sign in front and blanks around it.
    bool IsNumber() const;
    /// The text in code page `codePage`; a character that it lacks becomes the seven characters
    /// "\U+XXXX" (beyond U+FFFF: one escape for each half of its surrogate pair).
    std::string Ansi(int codePage) const;
    UtCString Lower() const; ///< ASCII letters lower-cased.
    UtCString Upper() const; ///< ASCII letters upper-cased.

    UtCString& operator+=(const UtCString& other) {
        text_ += other.text_;
        return *this;
    }
    friend UtCString operator+(UtCString a, const UtCString& b) { return a += b; }
    friend bool operator==(const UtCString&, const UtCString&) = default;
    friend auto operator<=>(const UtCString&, const UtCString&) = default; // NOLINT(modernize-use-nullptr)

private:
    std::string text_;
};

/// Texts in order of addition. AddUnique costs O(1), whatever the length of the list.
class UtCStringList {
public:
    /// Adds `text` unless the list holds it. True when the list grew.
    bool AddUnique(const UtCString& text);
    void Empty();
    std::size_t Count() const { return texts_.size(); }
    const UtCString& operator[](std::size_t i) const { return texts_[i]; }

private:
    std::vector<UtCString> texts_;
    std::unordered_set<std::string> seen_;
};

/// printf into a UtCString. The text is as long as it needs to be.
UtCString UtFormat(const char* format, ...) __attribute__((format(printf, 1, 2)));
/// printf with a format that isn't known at compile time, such as a message of the catalogue.
/// A translation whose conversions don't match those of `original` is not used: `original` is.
UtCString UtFormatMsg(const UtCString& format, const char* original, ...);

/// Blanks, tabs and line ends cut at the right, left, both sides; in place.
void UtRtrim(std::string& text);
void UtLtrim(std::string& text);
void UtTrim(std::string& text);
void UtRtrim(char* text);
void UtLtrim(char* text);
void UtTrim(char* text);

/// Position of `part` in `text`, -1 if it isn't there.
int UtPos(std::string_view text, std::string_view part);

/// Splits `line` at the first `delimiter`: `firstPart` gets what stands before it, `line` keeps what
/// follows. Without a delimiter, `firstPart` gets all and `line` becomes empty.
void UtGetNextPart(std::string& line, char delimiter, std::string& firstPart);

/// The byte of Unicode character `unicode` in single-byte code page `codePage`; false if it has none.
bool UtCUtf_Unicode2Ansi(unsigned unicode, int codePage, unsigned char& byte);
