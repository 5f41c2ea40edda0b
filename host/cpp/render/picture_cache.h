// Pictures ready to be drawn. A file is decoded once for a run, however often and wherever it is shown.
#pragma once

#include "pictures/picture.h"

#include <map>
#include <memory>
#include <string>

struct _cairo_surface;

namespace host {

class PictureCache {
public:
    PictureCache() = default;
    ~PictureCache();
    PictureCache(const PictureCache&) = delete;
    PictureCache& operator=(const PictureCache&) = delete;

    /// Announces that a picture will be shown over so many device units; ahead of the first surface().
    void wish(const std::string& file, double width, double height);
    /// The picture at the largest of the sizes announced, or less where that takes too much memory. Null for
    /// a file that can't be read.
    _cairo_surface* surface(const std::string& file);
    long decoded() const { return decoded_; } ///< how many times a file was decoded

private:
    struct Entry {
        double width = 0, height = 0;
        bool tried = false;
        Image image;
        _cairo_surface* surface = nullptr;
    };
    void dropOthers(const Entry& kept);

    std::map<std::string, Entry> entries_;
    std::size_t bytes_ = 0;
    long decoded_ = 0;
};

} // namespace host
