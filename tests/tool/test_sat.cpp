// Solid models by the command.
#include "../solid/models.h"
#include "tool_fixture.h"

#include <gmock/gmock.h>

using testing::HasSubstr;

TEST_F(Tool, SolidModelsAreConvertedAndShown) {
    dir.write("a.sat", boxModel(400));
    ASSERT_EQ(run("sat a.sat b.sab").status, 0);
    ASSERT_EQ(run("sat b.sab c.sat").status, 0);
    EXPECT_EQ(dir.read("c.sat").substr(0, 4), "700 ");
    const Outcome dump = run("sat --dump c.sat");
    EXPECT_EQ(dump.status, 0);
    EXPECT_THAT(dump.out, HasSubstr("#15 plane-surface"));
    EXPECT_EQ(run("sat --dump b.sab").out, dump.out);
    dir.write("bad.sat", replaced(boxModel(700), "$4 $9", "$400 $9"));
    dir.write("kept.sat", "kept");
    const Outcome bad = run("sat bad.sat kept.sat");
    EXPECT_EQ(bad.status, 1);
    EXPECT_THAT(bad.err, HasSubstr("record 3"));
    EXPECT_EQ(dir.read("kept.sat"), "kept");
    EXPECT_EQ(run("sat none.sat x.sat").status, 1);
    for (const char* line : {"sat a.sat", "sat --dump a.sat b.sat", "sat --extract a.dxf", "sat"})
        EXPECT_EQ(run(line).status, 2) << line;
}
