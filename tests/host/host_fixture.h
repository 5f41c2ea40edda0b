// A fresh host for each test, and the shortest words for what tests say most often.
#pragma once

#include "ci.h"
#include "drawing/drawing.h"
#include "drawing/dump.h"
#include "drawing/host_state.h"
#include "ds.h"
#include "ov.h"
#include "services/failure.h"
#include "services/session.h"
#include "uo.h"
#include "ut.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>

class HostTest : public testing::Test {
protected:
    HostTest() { host::resetSession(); }
    ~HostTest() override { host::resetSession(); }

    static int newPattern(int code = 211) {
        int number = 0;
        EXPECT_EQ(ovpat(&code, &number), 0);
        return number;
    }

    static int control(int code, int number) { return ovpat(&code, &number); }

    static void setUnit(int unit) {
        int format = 0;
        double scale = 0;
        ASSERT_EQ(ovform(8, &format, &scale, &unit), 0);
    }

    static int setScale(double scale) {
        int format = 0;
        int unit = 0;
        return ovform(7, &format, &scale, &unit);
    }

    static DsCsr cursorOf(int pattern) {
        DsCsr cursor;
        EXPECT_EQ(DsCursorFromPatNo(pattern, &cursor), 0);
        return cursor;
    }

    /// The dump from the first pattern on.
    static std::string patterns() {
        const std::string dump = host::dumpDrawing(host::openDrawing());
        const std::size_t at = dump.find("pattern ");
        return at == std::string::npos ? "" : dump.substr(at);
    }
};

/// A folder of its own, removed with the test.
class FolderTest : public HostTest {
protected:
    FolderTest() {
        std::string name = (std::filesystem::temp_directory_path() / "torva-host-XXXXXX").string();
        folder_ = ::mkdtemp(name.data());
    }
    ~FolderTest() override { std::filesystem::remove_all(folder_); }

    std::string path(const std::string& name) const { return folder_ + "/" + name; }

    std::string write(const std::string& name, const std::string& content) const {
        std::ofstream(path(name), std::ios::binary) << content;
        return path(name);
    }

    static std::string contentOf(const std::string& file) {
        std::ifstream in(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

    std::string folder_;
};
