#include "go.h"
#include "host_fixture.h"
#include "os.h"
#include "trt.h"

#include <filesystem>
#include <unistd.h>

namespace {

const std::string catalogueFolder = std::string(TORVA_SOURCE_DIR) + "/int/dxf/dflt";

} // namespace

TEST_F(HostTest, MacroVariablesOfBothKinds) {
    double number = 7;
    int integer = 7;
    UtCString text("old");
    EXPECT_NE(UoGetMacVarD("&A", &number), 0);
    EXPECT_NE(UoGetMacVarS("$A", &text), 0);
    EXPECT_EQ(number, 7);
    EXPECT_EQ(text, "old");
    for (const auto& [given, cut] : {std::pair{-2.9, -2}, {1e300, 2147483647}, {-1e300, -2147483647 - 1}}) {
        UoPutMacVarD("&A", given);
        EXPECT_EQ(UoGetMacVarI("&A", &integer), 0);
        EXPECT_EQ(integer, cut);
        EXPECT_EQ(SuGetVarReal("&A", &number), 0);
        EXPECT_EQ(number, given);
    }
    UoPutMacVarS("$A", "");
    EXPECT_EQ(SuVarGetString("$A", &text), 0) << "an empty one exists";
    EXPECT_TRUE(text.IsEmpty());
}

TEST_F(FolderTest, MessagesComeInTheLanguageOfTheSession) {
    EXPECT_EQ(TrtMsgGet("cad_msg.txt", 5712, "dflt"), "dflt") << "no catalogue";
    host::session().cataloguePaths = {folder_, catalogueFolder};
    EXPECT_EQ(TrtMsgGet("cad_msg.txt", 5712, "dflt"), "Zeichne ...");
    EXPECT_EQ(TrtMsgGet("cad_msg.txt", 1, "dflt"), "dflt");
    host::session().language = "en";
    EXPECT_EQ(TrtMsgGet("cad_msg.txt", 5712, "dflt"), "Drawing ...");
    host::session().language = "xx";
    write("cad_msg.xx.txt", "remark\n5712\tA\tB \r\nx\t\n99999999999\ttoo large\n5713\t\n");
    EXPECT_EQ(TrtMsgGet("cad_msg.txt", 5712, "dflt"), "A\tB ") << "all behind the first tab";
    EXPECT_EQ(TrtMsgGet("cad_msg.txt", 5713, "dflt"), "");
}

TEST(Catalogue, EnglishFitsGermanMessageByMessage) {
    const auto read = [](const std::string& language) {
        std::map<int, std::string> texts;
        std::ifstream in(catalogueFolder + "/cad_msg." + language + ".txt");
        for (std::string line; std::getline(in, line);)
            texts[std::stoi(line)] = line.substr(line.find('\t') + 1);
        return texts;
    };
    const auto german = read("de");
    const auto english = read("en");
    EXPECT_GE(german.size(), 100U);
    EXPECT_EQ(english.size(), german.size());
    const auto conversions = [](const std::string& text) {
        std::string found;
        for (std::size_t i = text.find('%'); i < text.size(); i = text.find('%', i + 2)) {
            const std::size_t end = text.find_first_of("sdfg%", i + 1);
            found += text.substr(i, end - i + 1);
        }
        return found;
    };
    for (const auto& [number, text] : german) {
        ASSERT_TRUE(english.contains(number)) << number;
        EXPECT_EQ(conversions(english.at(number)), conversions(text)) << number;
    }
}

TEST_F(FolderTest, OnlyWhatCanBeReadToAnEndIsAFile) {
    const std::string file = write("a.dxf", "x");
    EXPECT_TRUE(UtIsFile(file));
    EXPECT_TRUE(UtIsFile(folder_ + "\\a.dxf")) << "the other system's separator";
    FILE* stream = UtFileOpen(folder_ + "\\a.dxf", "rb");
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(UtFileClose(stream), 0);
    for (const std::string& none : {folder_, path("none"), std::string("/dev/zero"), std::string(),
                                    file + std::string(1, '\0') + "b", std::string(5000, 'x')}) {
        EXPECT_FALSE(UtIsFile(none)) << none;
        EXPECT_EQ(UtFileOpen(none, "rb"), nullptr) << none;
    }
    EXPECT_EQ(UtFileOpen(folder_, "wb"), nullptr);
    FILE* full = UtFileOpen("/dev/full", "wb");
    ASSERT_NE(full, nullptr);
    std::fputs("text", full);
    EXPECT_NE(UtFileClose(full), 0) << "a full disk is told at the latest when closing";
    EXPECT_EQ(UtFileRename(file, path("b.dxf")), 0);
    EXPECT_EQ(UtFileMove(path("b.dxf"), path("c.dxf")), 0);
    EXPECT_NE(UtFileRemove(path("b.dxf")), 0);
    EXPECT_EQ(UtFileRemove(path("c.dxf")), 0);
    EXPECT_NE(UtTempFileName(folder_, "dxf"), UtTempFileName(folder_, "dxf"));
}

TEST_F(FolderTest, LinesEndInAnyWay) {
    FILE* stream = UtFileOpen(write("lines", "a\nb\r\n\rc\r\rd"), "rb");
    std::string all;
    for (std::string line; UtReadLine(stream, line) == 0;) all += line + ",";
    EXPECT_EQ(all, "a,b,,c,,d,");
    UtFileClose(stream);
}

TEST_F(FolderTest, FilesAreSeenWholeAndPipesRefused) {
    const std::string content = std::string(3'000'000, 'p') + "end";
    FILE* stream = UtFileOpen(write("file", content), "rb");
    UT_FILE_VIEW view;
    ASSERT_EQ(UtFileMap(stream, view), 0);
    EXPECT_EQ(std::string_view(view.data, view.size), content);
    EXPECT_EQ(std::fgetc(stream), 'p') << "the stream itself stays where it was";
    UtFileUnmap(view);
    UtFileClose(stream);
    stream = UtFileOpen(write("empty", ""), "rb");
    ASSERT_EQ(UtFileMap(stream, view), 0);
    EXPECT_EQ(view.data, nullptr);
    UtFileUnmap(view);
    UtFileClose(stream);
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    EXPECT_EQ(UtFileOpen("/dev/fd/" + std::to_string(ends[0]), "rb"), nullptr)
        << "a pipe would be waited for, and is no file that can be looked at twice";
    ::close(ends[0]);
    ::close(ends[1]);
}

TEST_F(FolderTest, TemporaryFilesStayWhileTheyAreNeeded) {
    const UtCString folder(std::filesystem::path(write("any", "")).parent_path().string());
    const auto touch = [](const UtCString& path, const char* mode) {
        FILE* const stream = UtFileOpen(path, mode);
        ASSERT_NE(stream, nullptr);
        EXPECT_EQ(UtFileClose(stream), 0);
    };
    for (int i = 0; i < 40; ++i) {
        const UtCString path = UtTempFileName(folder, "T");
        touch(path, "w");
        touch(path, "a");
        EXPECT_EQ(UtFileRemove(path), 0);
    }
    const UtCString path = UtTempFileName(folder, "T");
    touch(path, "w");
    UtTempFileName(folder, "T"); // clears what killed programs left
    EXPECT_TRUE(std::filesystem::exists(path.str()));
    EXPECT_EQ(UtFileRemove(path), 0);
}

TEST_F(HostTest, PathsOfBothSystems) {
    EXPECT_EQ(UtPathDir("a/b\\c.dxf"), "a/b");
    EXPECT_EQ(UtPathDir("/c"), "/");
    EXPECT_EQ(UtPathDir("c"), "");
    EXPECT_EQ(UtPathFile("C:\\x\\y.DXF"), "y.DXF");
    EXPECT_EQ(UtPathExt("a.b\\y.Dxf"), "dxf");
    EXPECT_EQ(UtPathExt("a.b/y"), "");
    EXPECT_EQ(UtPathJoin("a/", "b"), "a/b");
    EXPECT_EQ(UtPathJoin("", "b"), "b");
    ::setenv("TORVA_T", "v", 1);
    ::unsetenv("TORVA_NONE");
    EXPECT_EQ(UtPathEnvToAbs("$TORVA_T/$TORVA_NONE$/$1"), "v/$TORVA_NONE$/$1");
    EXPECT_EQ(OsGetEnvDflt("TORVA_NONE", "d"), "d");
    ::setenv("TORVA_T", "", 1);
    EXPECT_EQ(OsGetEnvDflt("TORVA_T", "d"), "d") << "empty counts as not set";
}

TEST_F(HostTest, MemoryBlocksGrowClearedAndKeepTheirContent) {
    void* block = nullptr;
    ASSERT_EQ(UtAllocMemoryBlock(&block, 3, 4, 1, 0), 0);
    auto* bytes = static_cast<unsigned char*>(block);
    for (int i = 0; i < 12; ++i) bytes[i] = static_cast<unsigned char>(i + 1);
    ASSERT_EQ(UtAllocMemoryBlock(&block, 100, 4, 1, 0), 0);
    bytes = static_cast<unsigned char*>(block);
    for (int i = 0; i < 400; ++i) EXPECT_EQ(bytes[i], i < 12 ? i + 1 : 0) << i;
    void* const old = block;
    EXPECT_EQ(UtAllocMemoryBlock(&block, std::size_t{1} << 62, 8, 1, 0), 1001) << "the product overflows";
    EXPECT_EQ(block, old);
    UtFreeMemory(&block);
    EXPECT_EQ(block, nullptr);
    UtFreeMemory(&block);
}

TEST_F(HostTest, DialogsAnswerForTheUser) {
    UtCString name;
    EXPECT_NE(CiInput(0).SelectFileName("?", 1, "*.dxf", "dxf", &name), 0) << "refused";
    host::session().fileDialogAnswer = "x.dxf";
    EXPECT_EQ(CiInput(0).SelectFileName("?", 1, "*.dxf", "dxf", &name), 0);
    EXPECT_EQ(name, "x.dxf");
    int id = 0;
    EXPECT_NE(GoMaskGetIdOrCreateEx(4, "", "unknown", &id), 0);
    ASSERT_EQ(GoMaskGetIdOrCreateEx(4, "", "dxf_store", &id), 0);
    EXPECT_EQ(GoMaskShowEx(4, id), 0);
    EXPECT_EQ(host::session().masks[1].shown, 1);
    int pen = 5;
    int lineType = 2;
    int code = 6;
    ovpenlt(&code, &pen, &lineType);
    int font = 3;
    double height = 7;
    double factor = 2;
    EXPECT_NE(UoTextParSave(2), 0) << "nothing saved";
    UoTextParSave(1);
    ovtextparams(&code, &font, &height, &factor);
    UoTextParSave(2);
    code = 5;
    ovtextparams(&code, &font, &height, &factor);
    EXPECT_EQ(height, 2.5);
}

/// A small piece of work on the host that passes errors up.
static int drawSomething() {
    int code = 211;
    int number = 0;
    if (const int error = ovpat(&code, &number)) return error;
    void* block = nullptr;
    if (const int error = UtAllocMemoryBlock(&block, 10, 10, 1, 0)) return error;
    UtFreeMemory(&block);
    DsCsr cursor;
    if (const int error = DsCursorFromPatNo(number, &cursor)) return error;
    if (const int error = ovdraw(2, 0, 0, 0)) return error;
    FILE* stream = UtFileOpen("/dev/null", "wb");
    if (!stream) return 9001;
    if (const int error = UtFileClose(stream)) return error;
    return UoSetSingleAttr(number, "a", "b");
}

TEST_F(HostTest, EachCallCanBeMadeToFailOnce) {
    host::failCall(0);
    ASSERT_EQ(drawSomething(), 0);
    const long calls = host::callCount();
    EXPECT_EQ(calls, 7);
    for (long n = 1; n <= calls; ++n) {
        host::failCall(n);
        EXPECT_NE(drawSomething(), 0) << "call " << n;
        EXPECT_EQ(drawSomething(), 0) << "only that one";
    }
    host::failCall(calls + 1);
    EXPECT_EQ(drawSomething(), 0);
}
