#include "write.h"

namespace repair {

namespace {

class Writer {
public:
    explicit Writer(std::string_view lineEnd) : lineEnd_(lineEnd) {}

    void pair(const Pair& pair) {
        const std::string code = std::to_string(pair.code);
        if (code.size() < 3) out_.append(3 - code.size(), ' ');
        out_ += code;
        out_ += lineEnd_;
        out_ += pair.value;
        out_ += lineEnd_;
    }
    void pairs(const std::vector<Pair>& pairs) {
        for (const Pair& p : pairs) pair(p);
    }
    void records(const std::vector<Record>& records) {
        for (const Record& record : records) pairs(record.pairs);
    }
    void open(std::string_view name) {
        pair({0, "SECTION"});
        pair({2, name});
    }
    void close() { pair({0, "ENDSEC"}); }

    void header(const Document& document) {
        open("HEADER");
        for (const Variable& variable : document.header) {
            pair(variable.name);
            pairs(variable.values);
        }
        close();
    }
    void tables(const Document& document) {
        open("TABLES");
        for (const Table& table : document.tables) {
            pairs(table.head.pairs);
            records(table.records);
            pair({0, "ENDTAB"});
        }
        close();
    }
    void blocks(const Document& document) {
        open("BLOCKS");
        for (const Block& block : document.blocks) {
            pairs(block.begin.pairs);
            records(block.entities);
            pairs(block.end.pairs);
        }
        close();
    }
    void section(std::string_view name, const std::vector<Record>& content) {
        open(name);
        records(content);
        close();
    }
    void raw(const RawSection& section) {
        open(section.name);
        pairs(section.head);
        records(section.records);
        close();
    }
    std::string take() { return std::move(out_); }

private:
    std::string_view lineEnd_;
    std::string out_{};
};

} // namespace

std::string writeText(const Document& document, std::string_view lineEnd) {
    Writer writer(lineEnd);
    writer.pairs(document.front);
    if (document.hasHeader) writer.header(document);
    if (document.hasClasses) writer.section("CLASSES", document.classes);
    if (document.hasTables) writer.tables(document);
    if (document.hasBlocks) writer.blocks(document);
    if (document.hasEntities) writer.section("ENTITIES", document.entities);
    if (document.hasObjects) writer.section("OBJECTS", document.objects);
    for (const RawSection& section : document.others) writer.raw(section);
    writer.pair({0, "EOF"});
    return writer.take();
}

} // namespace repair
