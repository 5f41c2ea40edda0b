// Lists of values.
#pragma once

#include <vector>

/// A list that owns copies of what is put into it.
template <class T>
using UtCList = std::vector<T>;
