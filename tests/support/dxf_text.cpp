#include "dxf_text.h"

static void append(DxfGroups& to, const DxfGroups& groups) {
    to.insert(to.end(), groups.begin(), groups.end());
}

static void appendSection(DxfGroups& to, const std::string& name, const DxfGroups& groups) {
    append(to, {{0, "SECTION"}, {2, name}});
    append(to, groups);
    append(to, {{0, "ENDSEC"}});
}

std::string dxfLines(const DxfGroups& groups, const std::string& lineEnd) {
    std::string text;
    for (const DxfGroup& group : groups) {
        const std::string code = std::to_string(group.code);
        if (code.size() < 3) text.append(3 - code.size(), ' ');
        text += code + lineEnd + group.value + lineEnd;
    }
    return text;
}

DxfText dxf() {
    return {};
}

DxfText& DxfText::header(const std::string& version, const DxfGroups& variables) {
    header_ = {{9, "$ACADVER"}, {1, version}};
    append(header_, variables);
    return *this;
}

DxfText& DxfText::layer(const std::string& name, int color, const std::string& lineType, int flags) {
    return record("LAYER",
                  {{2, name}, {70, std::to_string(flags)}, {62, std::to_string(color)}, {6, lineType}});
}

DxfText& DxfText::record(const std::string& table, const DxfGroups& groups) {
    tables_[table].push_back({0, table});
    append(tables_[table], groups);
    return *this;
}

DxfText& DxfText::block(const std::string& name, const DxfGroups& entities, const DxfGroups& head) {
    append(blocks_, {{0, "BLOCK"}, {2, name}});
    append(blocks_, head.empty() ? DxfGroups{{70, "0"}, {10, "0"}, {20, "0"}, {30, "0"}} : head);
    append(blocks_, entities);
    append(blocks_, {{0, "ENDBLK"}});
    return *this;
}

DxfText& DxfText::entity(const std::string& name, const DxfGroups& groups) {
    entities_.push_back({0, name});
    append(entities_, groups);
    return *this;
}

DxfText& DxfText::raw(const DxfGroups& groups) {
    append(entities_, groups);
    return *this;
}

DxfText& DxfText::section(const std::string& name, const DxfGroups& groups, bool last) {
    appendSection(last ? late_ : early_, name, groups);
    return *this;
}

DxfText& DxfText::lineEnd(const std::string& text) {
    lineEnd_ = text;
    return *this;
}

std::string DxfText::text() const {
    DxfGroups all;
    if (!header_.empty()) appendSection(all, "HEADER", header_);
    append(all, early_);
    DxfGroups tables;
    for (const auto& [name, records] : tables_) {
        append(tables, {{0, "TABLE"}, {2, name}});
        append(tables, records);
        append(tables, {{0, "ENDTAB"}});
    }
    appendSection(all, "TABLES", tables);
    appendSection(all, "BLOCKS", blocks_);
    appendSection(all, "ENTITIES", entities_);
    append(all, late_);
    append(all, {{0, "EOF"}});
    return dxfLines(all, lineEnd_);
}
