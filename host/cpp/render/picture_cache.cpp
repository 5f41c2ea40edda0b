#include "render/picture_cache.h"

#include <cairo.h>

#include <algorithm>

namespace host {

PictureCache::~PictureCache() {
    for (auto& [file, entry] : entries_) cairo_surface_destroy(entry.surface);
}

void PictureCache::wish(const std::string& file, double width, double height) {
    Entry& entry = entries_[file];
    entry.width = std::max(entry.width, width);
    entry.height = std::max(entry.height, height);
}

/// More than this in memory is too much: pictures are decoded again then.
static constexpr std::size_t kMostBytes = std::size_t{512} << 20;

void PictureCache::dropOthers(const Entry& kept) {
    for (auto& [file, entry] : entries_) {
        if (&entry == &kept || !entry.surface) continue;
        cairo_surface_destroy(entry.surface);
        bytes_ -= entry.image.pixels.size() * 4;
        entry.surface = nullptr;
        entry.image = {};
        entry.tried = false;
    }
}

cairo_surface_t* PictureCache::surface(const std::string& file) {
    Entry& entry = entries_[file];
    if (entry.tried) return entry.surface;
    entry.tried = true;
    ++decoded_;
    constexpr double enough = 64;
    Image& image = entry.image;
    if (!loadImage(file, std::max(entry.width, enough), std::max(entry.height, enough), image).empty())
        return nullptr;
    bytes_ += image.pixels.size() * 4;
    if (bytes_ > kMostBytes) dropOthers(entry);
    entry.surface =
        cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(image.pixels.data()),
                                            CAIRO_FORMAT_ARGB32, image.width, image.height, image.width * 4);
    if (cairo_surface_status(entry.surface) != CAIRO_STATUS_SUCCESS) {
        cairo_surface_destroy(entry.surface);
        entry.surface = nullptr;
    }
    return entry.surface;
}

} // namespace host
