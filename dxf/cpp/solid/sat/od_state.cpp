#include "od_state.h"

ExSystemServices DxOdServices;
std::unique_ptr<ISATConverter> DxOdConverter;
