// Pictures that drawings name: any bytes as JPEG, PNG or TIFF, read whole, shrunk and converted.
#include "fuzz_files.h"
#include "pictures/picture.h"

#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const FuzzFolder folder("picture");
    const std::string path = folder.write("in", data, size);
    std::string error;
    const auto reader = host::openPicture(path, error, 1);
    if (!reader) return 0;
    if (reader->width < 1 || reader->height < 1) std::abort();
    if (1.0 * reader->width * reader->height > 4e6) return 0;
    std::vector<std::uint8_t> row(static_cast<std::size_t>(reader->width) * 4);
    for (int y = 0; y < reader->height && reader->readRow(row.data()); ++y) {
    }
    host::convertPicture(path, folder.file("out.jpg"), host::PictureKind::Jpeg);
    host::convertPicture(path, folder.file("out.tif"), host::PictureKind::Tiff);
    return 0;
}
