// What an import drew, short enough to stand in a test.
#pragma once

#include "import_text.h"

#include <initializer_list>
#include <sstream>
#include <string>

/// The lines of the drawing below its patterns, without pens. Pens are of no concern to most tests.
inline std::string elementsOf(const std::string& dump) {
    std::istringstream lines(dump);
    std::string result;
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("  ", 0) == 0 && line.rfind("  pen", 0) != 0) result += line.substr(2) + "\n";
    }
    return result;
}

/// A configuration with these flags.
inline std::string flags(const std::string& lines) {
    return "#FLAGS-START\n" + lines + "#FLAGS-END\n#EOF\n";
}

/// Options under which coordinates stay where they are.
inline ImportOptions unshifted() {
    ImportOptions options;
    options.numbers["&DxfInsbase"] = 1;
    return options;
}

/// Elements of an import of `text` with its coordinates kept.
inline std::string drawn(const DxfText& text, ImportOptions options = unshifted()) {
    return elementsOf(importText(text.text(), options).dump);
}
/// Elements of one entity.
inline std::string drawnEntity(const std::string& name, const DxfGroups& groups,
                               ImportOptions options = unshifted()) {
    return drawn(dxf().header("AC1015").entity(name, groups), std::move(options));
}

/// Group values with codes that ascend by 10: at(10, {1, 2, 3}) is 10 / 1, 20 / 2, 30 / 3.
inline DxfGroups at(int code, std::initializer_list<double> values) {
    DxfGroups groups;
    for (const double value : values) {
        std::ostringstream text;
        text.precision(17);
        text << value;
        groups.push_back({code, text.str()});
        code += 10;
    }
    return groups;
}
inline DxfGroups operator+(DxfGroups a, const DxfGroups& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}
