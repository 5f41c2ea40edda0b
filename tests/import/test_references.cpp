#include "blocks.h"

#include <gtest/gtest.h>

namespace {

ImportOptions beside(const std::map<std::string, std::string>& files) {
    ImportOptions options = unshifted();
    options.files = files;
    return options;
}
DxfText referring(const std::string& path) {
    return drawing()
        .block("X", {}, DxfGroups{{70, "4"}, {1, path}} + at(10, {0, 0, 0}))
        .entity("INSERT", insertOf("X", 10, 0))
        .entity("LINE", at(10, {7, 7}) + at(11, {8, 8}));
}

TEST(ExternalReference, ItsFileIsFoundBesideTheDrawing) {
    const std::string other =
        drawing().block("Y", line(0, 0, 1, 0)).entity("INSERT", insertOf("Y", 1, 0)).text();
    for (const char* path : {"other.dxf", "C:\\plans\\other.dxf", "../elsewhere/other.dxf"}) {
        const auto result = importText(referring(path).text(), beside({{"other.dxf", other}}));
        EXPECT_EQ(result.stat, 0);
        EXPECT_EQ(elementsOf(result.dump), "move 11 0\ndraw 12 0\nmove 7 7\ndraw 8 8\n") << path;
    }
}

TEST(ExternalReference, MissingCyclicOrEmptyCostsNoMoreThanItself) {
    const std::string rest = "move 7 7\ndraw 8 8\n";
    const auto missing = importText(referring("none.dxf").text(), unshifted());
    EXPECT_EQ(elementsOf(missing.dump), rest);
    EXPECT_TRUE(missing.hasLine("Block X nicht definiert!")) << missing.protocol;
    const auto garbage =
        importText(referring("other.dxf").text(), beside({{"other.dxf", "no DXF\nat all\n"}}));
    EXPECT_EQ(garbage.stat, 0);
    EXPECT_EQ(elementsOf(garbage.dump), rest) << garbage.protocol;
    const auto ring =
        importText(referring("other.dxf").text(), beside({{"other.dxf", referring("other.dxf").text()}}));
    EXPECT_EQ(ring.stat, 0);
    EXPECT_EQ(count(ring.dump, "draw "), 2) << ring.dump;
}

} // namespace
