#include "variables.h"

#include "suggest.h"
#include "words.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace tool {

/// docs/macro-variables.md tells their meaning.
static constexpr std::array kVariables{
    "$DxfConfig",      "$DxfCustomConf",   "$DxfDfltFont",  "$DxfLoadInto",    "$DxfMatrix",
    "$DxfName",        "$DxfPaperUnit",    "$DxfUnit",      "&Dxf3dLines",     "&Dxf3DSolidsAsSubObjects",
    "&DxfBlockCopies", "&DxfByLayer",      "&DxfColAttr",   "&DxfDimUsrTxt",   "&DxfExt",
    "&DxfFixFont",     "&DxfHeader",       "&DxfInsbase",   "&DxfJoinTexts",   "&DxfModus",
    "&DxfNoPolyWidth", "&DxfPaper",        "&DxfPaperUnit", "&DxfParseExt",    "&DxfReadPdMode",
    "&DxfShowDraw",    "&DxfSplineApprox", "&DxfUnit",      "&DxfUseActOrder", "&DxfUserLtScale",
    "&DxfVerbose",
};

std::string whyNoVariable(const std::string& text) {
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos || equals < 2 || (text[0] != '&' && text[0] != '$'))
        return words::say("'{}' isn't of the form '&Name=number' or '$Name=text'", text);
    const std::string name = text.substr(0, equals);
    if (std::find(kVariables.begin(), kVariables.end(), name) == kVariables.end())
        return words::say("unknown variable {}", name) +
               didYouMean(name, {kVariables.begin(), kVariables.end()});
    if (text[0] == '$') return {};
    char* end = nullptr;
    std::strtod(text.c_str() + equals + 1, &end);
    return end != text.c_str() + equals + 1 && *end == '\0' ? ""
                                                            : words::say("'{}': a number is wanted", text);
}

} // namespace tool
