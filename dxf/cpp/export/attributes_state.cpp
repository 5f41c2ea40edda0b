#include "attributes_state.h"

std::map<std::string, std::string> DxAttribNames;
std::vector<DX_ATTRIB_TYPE> DxAttribList;
