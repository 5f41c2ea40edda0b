// CiBitmap: pictures by cursor.
#include "ci_bitmap.h"

#include "drawing/context.h"
#include "drawing/host_state.h"
#include "pictures/picture.h"
#include "services/failure.h"
#include "services/session.h"
#include "services/system_path.h"
#include "ut.h"

#include <cmath>
#include <filesystem>

using namespace host;

static Pattern* patternAt(const DsCsr& cursor) {
    return callFails() ? nullptr : openDrawing().find(cursor.Get().patNo);
}

static Bitmap* bitmapAt(const DsCsr& cursor) {
    Pattern* pattern = patternAt(cursor);
    const int row = cursor.Get().partNo;
    if (!pattern || row < 0 || static_cast<std::size_t>(row) >= pattern->bitmaps.size()) return nullptr;
    return &pattern->bitmaps[static_cast<std::size_t>(row)];
}

static int aim(DsCsr& cursor, int row) {
    const Pattern* pattern = patternAt(cursor);
    if (!pattern || static_cast<std::size_t>(row) >= pattern->bitmaps.size()) return errorNoSuchObject;
    cursor.Get().partNo = row;
    return 0;
}

int CiBitmap::First(DsCsr& cursor) {
    return aim(cursor, 0);
}

int CiBitmap::Next(DsCsr& cursor) {
    return aim(cursor, cursor.Get().partNo + 1);
}

int CiBitmap::Count(const DsCsr& cursor, long* count) {
    const Pattern* pattern = patternAt(cursor);
    if (!pattern) return errorNoSuchObject;
    *count = static_cast<long>(pattern->bitmaps.size());
    return 0;
}

static bool hasArea(const RPT3& u, const RPT3& v) {
    const double x = u.y * v.z - u.z * v.y, y = u.z * v.x - u.x * v.z, z = u.x * v.y - u.y * v.x;
    const double area = std::hypot(x, y, z);
    return std::isfinite(area) && area > 0;
}

static void tell(const std::string& line) {
    session().messageArea.push_back(line);
    if (session().onMessage) session().onMessage(line);
}

int CiBitmap::Add(DsCsr* cursor, const UtCString& path, const RPT3& origin, const RPT3* u, const RPT3* v) {
    Pattern* pattern = patternAt(*cursor);
    if (!pattern) return errorNoSuchObject;
    const std::string file = systemPath(path);
    std::error_code error;
    if (!hasArea(*u, *v) || !std::isfinite(origin.x + origin.y + origin.z) ||
        !std::filesystem::exists(file, error))
        return errorNotApplicable;
    const double factor = contextFactor(contextId_);
    Bitmap bitmap;
    bitmap.file = std::filesystem::absolute(file, error).lexically_normal().string();
    bitmap.origin = scaled(origin, factor);
    bitmap.u = scaled(*u, factor);
    bitmap.v = scaled(*v, factor);
    std::string why;
    if (const auto picture = openPicture(bitmap.file, why)) {
        bitmap.width = picture->fileWidth;
        bitmap.height = picture->fileHeight;
    } else {
        tell("Picture " + bitmap.file + " won't show: " + why);
    }
    cursor->Get().partNo = static_cast<int>(pattern->bitmaps.size());
    pattern->bitmaps.push_back(std::move(bitmap));
    ++openDrawing().elementCount;
    return 0;
}

int CiBitmap::Get(const DsCsr& cursor, RPT3* corner, RPT3* along, RPT3* down, int* width, int* height) {
    const Bitmap* bitmap = bitmapAt(cursor);
    if (!bitmap) return errorNoSuchObject;
    const double back = 1 / contextFactor(contextId_);
    *corner = scaled(bitmap->origin, back);
    *along = scaled(bitmap->u, back);
    *down = scaled(bitmap->v, back);
    *width = bitmap->width;
    *height = bitmap->height;
    return 0;
}

int CiBitmap::SetClip(const DsCsr& cursor, const RPT* points, int count) {
    Bitmap* bitmap = bitmapAt(cursor);
    if (!bitmap) return errorNoSuchObject;
    bitmap->outline.clear();
    if (count >= 3) bitmap->outline.assign(points, points + count);
    return 0;
}

int CiBitmap::GetClip(const DsCsr& cursor, int index, RPT* point) {
    const Bitmap* bitmap = bitmapAt(cursor);
    if (!bitmap || index < 0 || static_cast<std::size_t>(index) >= bitmap->outline.size())
        return errorNoSuchObject;
    *point = bitmap->outline[static_cast<std::size_t>(index)];
    return 0;
}

/// The file that a picture is read from: itself, or what it held before an export wrote another one there.
static std::string sourceOf(const Bitmap& bitmap) {
    const auto kept = drawingState().keptPictures.find(bitmap.file);
    return kept == drawingState().keptPictures.end() ? bitmap.file : kept->second;
}

/// Keeps the content of a file that is about to be replaced and that pictures of the drawing still need.
static void keepSource(const std::string& target) {
    std::error_code error;
    const std::string path = std::filesystem::absolute(target, error).lexically_normal().string();
    if (!std::filesystem::exists(path, error) || drawingState().keptPictures.contains(path)) return;
    for (const Pattern& pattern : openDrawing().patterns)
        for (const Bitmap& bitmap : pattern.bitmaps)
            if (bitmap.file == path) {
                drawingState().keptPictures[path] = keepInMemory(path);
                return;
            }
}

int CiBitmap::Export(const DsCsr& cursor, const UtCString& path, int format, int /*mode*/) {
    constexpr int writeFailed = 9000;
    const Bitmap* bitmap = bitmapAt(cursor);
    if (!bitmap) return errorNoSuchObject;
    if (format != 1 && format != 2) return errorNotApplicable;
    const PictureKind kind = format == 1 ? PictureKind::Tiff : PictureKind::Jpeg;
    keepSource(systemPath(path));
    const std::string why = convertPicture(sourceOf(*bitmap), systemPath(path), kind);
    if (why.empty()) return 0;
    tell("Picture " + path.str() + " wasn't written: " + why);
    return writeFailed;
}
