// The CLASSES section.

#include "section_walks.h"
#include "text.h"
#include "value_checks.h"

namespace validate {

void checkClass(Session& session, std::span<const Tag> tags) {
    const Tag& start = tags.front();
    session.place = {start.line, 0, start.value, Section::Classes};
    checkValues(session, tags.subspan(1));
    if (start.value != "CLASS") {
        session.out.add(Rule::OutOfPlace, session.place, inQuotes(start.value), " is no class");
        return;
    }
    constexpr int codes[] = {1, 2, 3, 90, 91, 280, 281};
    size_t i = 1;
    std::string_view name;
    int64_t entity = -1;
    for (const Tag& tag : tags) {
        if (tag.code == 1) name = tag.value;
        if (tag.code == 281) entity = readInteger(tag.value).value_or(-1);
    }
    session.model.classes.emplace_back(name, entity == 1);
    for (int code : codes) {
        if (code == 91 && !session.atLeast(Version::R2004)) continue;
        if (i >= tags.size() || tags[i].code != code) {
            session.out.add(Rule::ClassShape, session.at(tags[std::min(i, tags.size() - 1)]), "group ", code,
                            " expected in a CLASS of ", versionName(session.version));
            return;
        }
        ++i;
    }
    if (i < tags.size())
        session.out.add(Rule::ClassShape, session.at(tags[i]), "group ", tags[i].code,
                        " does not belong into a CLASS");
    const KindRules* rules = findKind(name);
    if (rules && (rules->kind().home == Home::Entity) != (entity == 1))
        session.out.add(Rule::ClassFlag, session.place, "the class ", name, " says ",
                        entity == 1 ? "that it is an entity" : "that it is no entity");
}

} // namespace validate
