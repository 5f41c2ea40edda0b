#include "convert/binary_dxf.h"
#include "host_fixture.h"

#include <random>

namespace {

class BinaryDxf : public FolderTest {
protected:
    static std::string textOf(const std::string& bytes, bool expected = true) {
        return collect([&](FILE* out) { return host::binaryDxfToText(bytes, out); }, expected);
    }
    static std::string binaryOf(const std::string& text, bool expected = true) {
        return collect([&](FILE* out) { return host::textDxfToBinary(text, out); }, expected);
    }

private:
    template <typename Convert>
    static std::string collect(const Convert& convert, bool expected) {
        char* data = nullptr;
        std::size_t size = 0;
        FILE* out = ::open_memstream(&data, &size);
        EXPECT_EQ(convert(out), expected);
        std::fclose(out);
        std::string result(data, size);
        std::free(data);
        return result;
    }
};

const std::string head(host::binaryDxfSentinel);

std::string text(const char* version) {
    return std::string("  0\nSECTION\n  9\n$ACADVER\n  1\n") + version +
           "\n 10\n-0.1\n 40\n1.0E+20\n 41\n3.0\n 70\n    -1\n 90\n2147483647\n160\n  -900000000000000\n290\n"
           "     1\n310\n00FF7F\n1071\n       -5\n1001\nÄpp\n  5\n\n  0\nEOF\n";
}

} // namespace

TEST_F(BinaryDxf, TextComesBackFromBothLayouts) {
    for (const char* version : {"AC1009", "AC1032"}) {
        const std::string binary = binaryOf(text(version));
        EXPECT_EQ(binary.substr(0, 22), head);
        EXPECT_EQ(binary[23] == 'S', std::string_view(version) == "AC1009") << "codes of one byte";
        EXPECT_EQ(textOf(binary), text(version));
    }
    EXPECT_EQ(textOf(head + std::string("\0S\0\1a\nb\0\xff\xe9\3x\0", 13)), "  0\nS\n  1\na^Jb\n1001\nx\n")
        << "a value stays one line; 255 announces a wide code";
}

TEST_F(BinaryDxf, NumbersAreTakenAsFarAsTheyGo) {
    const auto value = [](const std::string& group) {
        const std::string result = textOf(binaryOf("  0\nX\n" + group + "\n"));
        return result.substr(result.rfind('\n', result.size() - 2) + 1);
    };
    EXPECT_EQ(value("70\n99999"), " 32767\n") << "limited to what the width holds";
    EXPECT_EQ(value("70\nabc"), "     0\n");
    EXPECT_EQ(value("40\n +1.5e3x"), "1500.0\n");
    EXPECT_EQ(value("310\n0aF"), "0A\n") << "half a byte is lost";
    const std::string longest(600, 'A');
    const std::string chunks = textOf(binaryOf("  0\nX\n310\n" + longest + "\n"));
    EXPECT_EQ(std::count(chunks.begin(), chunks.end(), 'A'), 600);
    EXPECT_EQ(UtPos(chunks, std::string(255, 'A')), -1) << "no chunk above 127 bytes";
}

TEST_F(BinaryDxf, CutFilesGiveTheirWholeGroups) {
    const std::string whole = binaryOf(text("AC1032"));
    const std::string expected = text("AC1032");
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const bool any = length >= 22 + 2 + 8;
        const std::string part = textOf(whole.substr(0, length), any);
        EXPECT_EQ(expected.compare(0, part.size(), part), 0) << length;
        EXPECT_EQ(std::count(part.begin(), part.end(), '\n') % 2, 0) << length;
    }
    EXPECT_EQ(textOf(head + std::string("\0\0S\0\x50\0\1\0", 8)), "  0\nS\n") << "80 has no known width";
    textOf("", false);
    textOf("AutoCAD Binary DXF\r\n", false);
    binaryOf("no groups", false);
    binaryOf("  0\nX\nnot a code\nY\n", false);
}

TEST_F(BinaryDxf, RandomBytesDoNoHarm) {
    std::mt19937 random(11);
    for (int round = 0; round < 300; ++round) {
        std::string bytes = head + std::string("\0\0S\0", round % 2 ? 4 : 1);
        for (int i = 0; i < 200; ++i) bytes += static_cast<char>(random() % (round % 3 ? 256 : 12));
        FILE* out = std::fopen("/dev/null", "wb");
        host::binaryDxfToText(bytes, out);
        host::textDxfToBinary(bytes.substr(22), out);
        std::fclose(out);
    }
}

TEST_F(BinaryDxf, TheHostConvertsByContentAndExtension) {
    const std::string source = write("in.anything", binaryOf(text("AC1015")));
    EXPECT_EQ(UtConvertDwg2Dxf(source, path("out.dxf")), 0);
    EXPECT_EQ(contentOf(path("out.dxf")), text("AC1015"));
    EXPECT_NE(UtConvertDwg2Dxf(path("none"), path("a.dxf")), 0);
    EXPECT_NE(UtConvertDwg2Dxf(write("bad", head), path("a.dxf")), 0);
    EXPECT_NE(UtConvertDwg2Dxf(source, path("no/such/folder.dxf")), 0);
    const std::string dwg = write("x.dwg", "AC1015 and more");
    EXPECT_NE(UtConvertDwg2Dxf(dwg, path("a.dxf")), 0) << "no converter";
    EXPECT_FALSE(std::filesystem::exists(path("a.dxf"))) << "a failure leaves no target";
    host::session().dwgConverter = "cp --";
    EXPECT_EQ(UtConvertDwg2Dxf(dwg, path("$(touch x); .dxf")), 0) << "no shell sees the names";
    EXPECT_EQ(contentOf(path("$(touch x); .dxf")), "AC1015 and more");
    for (const char* broken : {"false", "/no/such/program", "true"}) {
        host::session().dwgConverter = broken;
        EXPECT_NE(UtConvertDwg2Dxf(dwg, path("b.dxf")), 0) << broken;
    }
}
