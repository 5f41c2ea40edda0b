// A solid model's file in memory: SAT or SAB of any version.
#pragma once

#include "acis_class.h"
#include "acis_value.h"
#include "isat_converter.h"

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ACIS {

/// A record's name as files write it, and the class that knows it.
struct RecordName {
    std::string_view name;
    const Class* isA;
};

/// One record: its name and its values. What its class doesn't know of it (`UnknownPart`) follows the known
/// fields.
struct ENTITY {
    const RecordName* kind = nullptr; ///< null: the file has no record of this number
    std::uint32_t first = 0;
    std::uint32_t count = 0;

    bool isA(Id id) const { return kind && kind->isA->id == id; }
};

/// One sub-record, for all its users.
struct SubRecord {
    const SubClass* isA = nullptr; ///< null: `SubUnknown`
    std::string_view name;
    std::uint32_t first = 0;
    std::uint32_t count = 0;
    bool isModern = false; ///< was in ASM's own layout
    bool isRaw = false;    ///< its values are the tokens as they stood
    bool isOpen = true;    ///< while it is read
};

struct Header {
    int version = TARGET_VERSION;
    std::int64_t counts[3] = {0, 0, 0}; ///< records, bodies, flags, as the file said
    std::string product, kernel, date;
    double unit = -1, resabs = 1e-6, resnor = 1e-10; ///< millimetres per unit (-1: not said), tolerances
    bool isBinary = false;
};

/// How many of a kind a model has.
struct Counts {
    std::size_t bodies = 0, faces = 0, edges = 0, vertices = 0;
};

class File : public ISATConverter, public OdIBrFile {
public:
    bool read(OdStreamBuf& stream, std::uint32_t* version, int flag) override;
    bool write(OdStreamBuf& stream, std::uint32_t version, int flag) override;
    const std::vector<ENTITY>& entities() const override { return records; }
    double& scale() override { return scale_; }
    const std::string& problem() const override { return problem_; }
    Counts counts() const override;

    /// Reads a model from memory; as `read`.
    bool load(std::string_view data);
    /// The model as a file of `version` (with the bits of a version word); empty when it can't be made.
    std::string save(std::uint32_t version);
    void clear();

    Header header;
    std::vector<ENTITY> records; ///< by number
    std::vector<ENTITY> history; ///< records of the history section, which no version written here has
    std::vector<SubRecord> subs; ///< by number
    ValueStore values;
    TextStore texts;
    std::deque<RecordName> names;

    /// Value `at` of record `number`, all of which stand ahead of anything of variable length.
    const Value& value(std::int64_t number, std::size_t at) const {
        return values[records[static_cast<std::size_t>(number)].first + at];
    }
    /// The record a pointer value leads to, null for none.
    const ENTITY* at(const Value& pointer) const;

private:
    std::string problem_;
    double scale_ = 1;
};

/// Reads `data` behind what tells its format. False with a text that names the record.
bool readModel(File& file, std::string_view data, std::string& problem);
/// Lists that run in a ring, or coedges that never come back: false, with a text that names the record.
bool checkChains(const File& file, std::string& problem);
/// The model's records as text, a line each with the names of the fields; stable, for comparing. With
/// `version` as a file of that version holds it, else as it was read.
std::string dumpModel(const File& file, int version = 0);

constexpr std::uint32_t VERSION_TEXT = 0x01000000, VERSION_BINARY = 0x02000000, VERSION_NUMBERED = 0x80000000;
bool isReadable(std::int64_t version); ///< A version that `read` accepts.

} // namespace ACIS
