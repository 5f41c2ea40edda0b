// Bytes as hexadecimal digits, and texts of files by line.
#pragma once

#include "ut_string.h"

#include <string>
#include <string_view>

/// Appends the bytes that pairs of hexadecimal digits stand for. What is no digit counts as 0; a digit
/// without a partner is left out.
void UtHexToByte(std::string_view digits, std::string& bytes);
/// Adds the lines of a file that hold `word` to the list. 0, or 9001 when it can't be opened.
int UtFileToStringList(const UtCString& path, UtCStringList& list, const char* word);
