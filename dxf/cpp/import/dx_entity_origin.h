// What entities are, kept with what they draw: an entity that nobody touches leaves as it came.
#pragma once

#include "rpt.h"

#include <cstdint>
#include <string>
#include <string_view>

/// Holds while one entity is read and drawn, from behind its group 0 on.
class DxEntityOrigin {
public:
    /// `m` is the matrix that the entity goes through.
    DxEntityOrigin(std::string_view name, const Mat44 m);
    /// The entity is drawn: tells the host what it was. 0 or the host's error.
    int keep() const;

private:
    enum class Step { None, Single, Insert, Definition };
    static Step stepOf(std::string_view name);

    Step step_ = Step::None;
    std::string name_;
    std::int32_t start_ = 0;
};
