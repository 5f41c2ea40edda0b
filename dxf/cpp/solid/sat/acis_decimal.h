// Numbers as model files have them: whole ones without a point, others with 17 significant digits.
#pragma once

#include <cstdint>
#include <string>

namespace ACIS {

void appendWhole(std::string& out, std::int64_t n);
/// A whole and small number as an integer, another with `digits` significant digits and without zeros at its
/// end, as "%.17lg" has it.
void appendReal(std::string& out, double number, int digits = 17);

} // namespace ACIS
