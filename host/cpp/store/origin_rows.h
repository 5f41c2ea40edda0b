// Rows of what content was made from. Part of rows.h.
#pragma once

#include "drawing/drawing.h"

#include <array>

namespace host {

template <class Record>
struct Row;

/// A pattern that is part of a definition.
struct DefinitionPattern {
    int definition = 0;
};

template <>
struct Row<Origin> {
    static constexpr int since = 4;
    static constexpr const char* table = "origins";
    static constexpr std::array keys{"pattern", "position"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("list", r.list), v("first", r.first), v("count", r.count), v("mark", r.mark), v("text", r.text);
    }
};

template <>
struct Row<Placed> {
    static constexpr int since = 4;
    static constexpr const char* table = "placed_patterns";
    static constexpr std::array keys{"pattern", "position"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("members", r.members), v("mark", r.mark), v("text", r.text);
    }
};

template <>
struct Row<Definition> {
    static constexpr int since = 4;
    static constexpr const char* table = "definitions";
    static constexpr std::array keys{"position"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("name", r.name), v("text", r.text);
    }
};

template <>
struct Row<DefinitionPattern> {
    static constexpr int since = 4;
    static constexpr const char* table = "definition_patterns";
    static constexpr std::array keys{"pattern"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("definition", r.definition);
    }
};

} // namespace host
