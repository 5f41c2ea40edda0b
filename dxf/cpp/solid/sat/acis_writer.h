// Writing a model at another version than its own.
#pragma once

#include "acis_file.h"

#include <unordered_map>

namespace ACIS {

class Sink;

/// What is written in place of what the model has. The values of the substitutes stand in the model's store.
struct Substitutes {
    std::unordered_map<std::size_t, SubRecord> subs; ///< by number
    std::unordered_map<std::size_t, ENTITY> records; ///< by number
    std::vector<ENTITY> added;                       ///< numbered behind the model's records
};

/// Writes the model, with what the version doesn't have left out and what it wants added: records without a
/// place in it are taken out of their lists, fields are dropped or get a sound value. False, with a text,
/// when it can't be done.
bool writeModel(const File& file, std::uint32_t version, const Substitutes& substitutes, OdStreamBuf& out,
                std::string& problem);

/// Whether a file of `version` has room for the record.
bool hasPlace(const File& file, const ENTITY& entity, int version);

} // namespace ACIS
