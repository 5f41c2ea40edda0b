// A file that another program makes shorter while it is read.
#include "dx_select.h"
#include "services/session.h"

#include "dxf_text.h"
#include "temp_dir.h"

#include <gmock/gmock.h>

#include <csignal>
#include <filesystem>

namespace {

TEST(ShrinkingFile, EndsTheImportWithAPlaceAndNeverByASignal) {
    const TempDir dir;
    DxfText text = dxf();
    text.header("AC1027");
    for (int i = 0; i < 2000; ++i)
        text.entity("LINE", {{8, "0"}, {10, std::to_string(i)}, {20, "0"}, {11, "1"}, {21, "1"}});
    static volatile std::sig_atomic_t faults = 0; // of the host's own handler
    std::signal(SIGBUS, [](int) { faults = faults + 1; });
    for (const unsigned size : {0U, 4096U, 20'000U, 50'001U}) {
        dir.write("a.dxf", text.text());
        host::resetSession();
        host::session().language = "en";
        host::session().wantsAbort = [&] {
            std::filesystem::resize_file(dir.file("a.dxf"), size);
            return false;
        };
        DxfSelect(0, DX_IMPORT_2D, dir.file("a.dxf"));
        EXPECT_EQ(host::session().numbers["&DxfStat"], 9003) << size;
        EXPECT_THAT(host::session().messageArea, testing::Contains(testing::HasSubstr("became shorter")));
        EXPECT_THAT(host::session().messageArea, testing::Contains(testing::HasSubstr("ended in line")));
    }
    EXPECT_EQ(faults, 0) << "what belongs to the reading doesn't reach it";
    std::raise(SIGBUS);
    EXPECT_EQ(faults, 1) << "it is back when nothing is read";
    std::signal(SIGBUS, SIG_DFL);
    host::resetSession();
}

} // namespace
