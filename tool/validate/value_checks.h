#pragma once
// Checks of single values by the type of their group code, and of the names that tables define.

#include "session.h"

namespace validate {

/// Checks the values of tags: numbers, handles, binary data, texts and their encoding.
void checkValues(Session& session, std::span<const Tag> tags);

/// Checks characters and length of a name that a table record or a block defines.
void checkDefinedName(Session& session, const Place& place, Names table, std::string_view name);

/// Notes that a name is used; whether it is defined is known when the file is read.
void useName(Session& session, const Place& place, Names table, std::string_view name);

/// Notes a definition, reports a second one of the same name.
void defineName(Session& session, const Place& place, Names table, std::string_view name);

/// A handle value, reported when it is none; 0 then.
uint64_t handleValue(const Tag& tag);

} // namespace validate
