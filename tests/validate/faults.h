#pragma once
// Files that break one rule each, in one place of an otherwise valid file.

#include "valid_file.h"

#include <functional>
#include <ostream>
#include <span>

struct Fault {
    int rule;
    int version;
    const char* what; ///< a part of the finding's text or place
    std::function<void(DxfFile&)> make;
    std::function<void(std::string&)> edit = {}; ///< what groups can't say, on the text
};

std::span<const Fault> oneFaultFiles();

/// The text of the file with the fault.
std::string faultyText(const Fault& fault);

inline void PrintTo(const Fault& fault, std::ostream* out) {
    *out << fault.rule << " in AC" << fault.version;
}
