// Font files of the system: finding them by family, and the measures of their glyphs.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace host {

/// A glyph as its font file has it. Lengths are relative to the height of the file's capital letters.
struct FileGlyph {
    unsigned index = 0; ///< 0: the file lacks the character
    double advance = 0;
    double left = 0; ///< from the origin to the drawn part
    double ink = 0;  ///< width of the drawn part
};

/// One opened face. Glyphs are measured once and kept.
class FontFile {
public:
    /// Null when the file can't be read as a scalable font.
    static std::unique_ptr<FontFile> open(const std::string& path, int faceIndex);
    ~FontFile();
    FontFile(const FontFile&) = delete;
    FontFile& operator=(const FontFile&) = delete;

    const FileGlyph& glyph(char32_t c);
    /// Whether all strokes of the face have one width and round ends.
    bool hasSingleStrokes() const { return singleStrokes_; }
    /// Width of strokes where all have one, relative to the capital letters: that of a bar.
    double strokeWidth() { return glyph('|').index ? glyph('|').ink : 0; }
    double emPerCap() const { return emPerCap_; } ///< em square relative to the capital letters
    std::string family() const;
    const std::string& path() const { return path_; }
    int faceIndex() const { return faceIndex_; }
    bool italic() const { return italic_; }
    bool bold() const { return bold_; }

private:
    struct Handles;
    FontFile(std::unique_ptr<Handles> handles, std::string path, int faceIndex);
    double capHeight() const;

    std::unique_ptr<Handles> handles_;
    std::string path_;
    int faceIndex_;
    bool italic_ = false, bold_ = false, singleStrokes_ = false;
    double unitsPerCap_ = 1; ///< font units in the height of the capital letters
    double emPerCap_ = 1;
    std::unordered_map<char32_t, FileGlyph> glyphs_;
};

/// All font files that texts have asked for, opened once. Fontconfig finds them.
class FontLibrary {
public:
    FontLibrary();
    ~FontLibrary();
    FontLibrary(const FontLibrary&) = delete;
    FontLibrary& operator=(const FontLibrary&) = delete;

    /// True when a family of this name is installed, letter case aside.
    bool hasFamily(const std::string& family);
    /// The file that comes closest to a family and style; null when the system has no font at all.
    FontFile* find(const std::string& family, bool bold, bool italic);
    /// A file that has character `c`; null when no font has it.
    FontFile* findFor(char32_t c);

private:
    void listFamilies();
    FontFile* openOnce(const std::string& path, int faceIndex);

    std::unordered_set<std::string> families_; ///< installed ones, lower case; empty until asked for
    std::unordered_map<std::string, FontFile*> byStyle_;
    std::unordered_map<char32_t, FontFile*> byChar_;
    std::unordered_map<std::string, std::unique_ptr<FontFile>> files_; ///< by path and face index
};

} // namespace host
