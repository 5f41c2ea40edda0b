// Runs the command in a folder of its own.
#pragma once

#include "temp_dir.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstdlib>
#include <string>
#include <sys/wait.h>

struct Outcome {
    int status = -1;
    std::string out, err;
};

class Tool : public testing::Test {
protected:
    /// Runs the command in the test's folder.
    Outcome run(const std::string& arguments,
                const std::string& environment = "LC_ALL=C HD_WORK_DIR=") const {
        const std::string line = "cd " + dir.path() + " && env -u HD_U -u HD_VE -u VE " + environment +
                                 " " TORVA_TOOL " " + arguments + " >" + scratch.file("out") + " 2>" +
                                 scratch.file("err");
        const int status = std::system(line.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status), scratch.read("out"),
                scratch.read("err")};
    }
    nlohmann::json info(const std::string& arguments) const {
        return nlohmann::json::parse(run("info --json " + arguments).out);
    }
    std::string dump(const std::string& arguments) const { return run("dump " + arguments).out; }

    TempDir dir;
    TempDir scratch; ///< beside, so that `dir` shows what the command leaves
    const std::string bracket = TORVA_SOURCE_DIR "/examples/bracket.dxf";
};
