// torva-dxf validate: what is wrong with DXF files.
#include "options.h"

#include "validate.h"

#include <iostream>

namespace tool {

int runValidateCommand(const Options& options) {
    validate::Options wish;
    wish.files = options.inputs;
    wish.json = options.json;
    wish.strict = options.strict;
    return validate::runValidate(wish, std::cout, std::cerr);
}

} // namespace tool
