// Objects: what a dictionary lists, layouts, groups.

#include "checks.h"
#include "cursor.h"
#include "value_checks.h"

#include <unordered_set>

namespace validate {

void checkDictionary(Session& session, const Record& record) {
    Model& model = session.model;
    Dictionary dictionary{record.object, model.entries.size(), 0};
    std::unordered_set<std::string> keys;
    for (Cursor cursor(record, "AcDbDictionary"); !cursor.atEnd(); cursor.step()) {
        if (cursor.code() == 350 || cursor.code() == 360) {
            session.out.add(Rule::EntryPair, session.at(cursor.tag()), "a handle without its key (3)");
        } else if (cursor.code() == 3) {
            const Tag& key = cursor.tag();
            Cursor next = cursor;
            next.step();
            if (next.code() != 350 && next.code() != 360) {
                session.out.add(Rule::EntryPair, session.at(key), "the key ", inQuotes(key.value),
                                " has no handle");
                continue;
            }
            if (!keys.insert(upperCase(key.value)).second)
                session.out.add(Rule::RepeatedKey, session.at(key), "the key ", inQuotes(key.value),
                                " stands twice");
            model.entries.push_back({key.value, handleValue(next.tag()), next.tag().line});
            cursor = next;
        }
    }
    dictionary.count = model.entries.size() - dictionary.first;
    model.dictionaries.push_back(dictionary);
}

void checkLayout(Session& session, const Record& record) {
    const size_t layout = record.rules->parts().size() - 1;
    const Tag* name = record.findIn(layout, 1);
    const Tag* block = record.findIn(layout, 330);
    session.model.layouts.push_back(
        {record.object, name ? name->value : std::string_view{}, block ? handleValue(*block) : 0});
}

void checkGroupObject(Session& session, const Record& record) {
    if (!record.find(340)) session.out.add(Rule::EmptyGroup, session.place, "a group without entities");
}

} // namespace validate
