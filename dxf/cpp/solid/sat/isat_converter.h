// What the module needs of a converter of SAT and SAB files.
#pragma once

#include "od_stream_buf.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace ACIS {
struct ENTITY;
struct Counts;
} // namespace ACIS

/// A reader and writer of solid models. A version word is the version in its low 24 bits, with bit 24 for
/// text, bit 25 for binary and, on writing, bit 31 for a number in front of each record.
class ISATConverter {
public:
    /// Reads a model in place of what was there. False, with `problem` set, when it can't be read; a stream
    /// under 16 bytes is an empty model.
    virtual bool read(OdStreamBuf& stream, std::uint32_t* version, int flag) = 0;
    /// Writes the model at another version. The model itself stays as it is.
    virtual bool write(OdStreamBuf& stream, std::uint32_t version, int flag) = 0;
    virtual const std::vector<ACIS::ENTITY>& entities() const = 0;
    virtual double& scale() = 0;
    /// What was wrong with the last file, with the number of the record.
    virtual const std::string& problem() const = 0;
    virtual ~ISATConverter() = default;
};

/// A model by its boundary.
class OdIBrFile {
public:
    virtual ACIS::Counts counts() const = 0;
    virtual ~OdIBrFile() = default;
};
