// Pictures and embedded data.

#include "checks.h"
#include "cursor.h"
#include "value_checks.h"

namespace validate {

namespace {

/// A polygon must end where it starts.
void checkClipPolygon(Session& session, const Record& record) {
    const Tag *firstX = nullptr, *lastX = nullptr;
    double first[2] = {}, last[2] = {};
    size_t count = 0;
    for (size_t i = record.body; i + 1 < record.extended; ++i) {
        if (record.tags[i].code != 14 || record.tags[i + 1].code != 24) continue;
        lastX = &record.tags[i];
        last[0] = readReal(record.tags[i].value);
        last[1] = readReal(record.tags[i + 1].value);
        if (!firstX) {
            firstX = lastX;
            first[0] = last[0];
            first[1] = last[1];
        }
        ++count;
    }
    if (count < 3)
        session.out.add(Rule::OpenBoundary, session.place, "a clipping polygon of ", count, " points");
    else if (first[0] != last[0] || first[1] != last[1])
        session.out.add(Rule::OpenBoundary, session.at(*lastX),
                        "the clipping polygon does not end where it begins");
}

} // namespace

void checkImage(Session& session, const Record& record) {
    if (record.integer(71, 1) == 2) checkClipPolygon(session, record);
    if (record.name != "IMAGE") return;
    const Tag* definition = record.find(340);
    if (definition && readHandle(definition->value) == uint64_t{0})
        session.out.add(Rule::LostHard, session.at(*definition), "an image without its definition (340)");
    const Tag* reactor = record.find(360);
    session.model.images.push_back({record.object, reactor ? handleValue(*reactor) : 0});
}

void checkImageDefinition(Session& session, const Record& record) {
    session.model.imageDefinitions.push_back(record.object);
}

void checkImageReactor(Session& session, const Record& record) {
    const Tag* image = record.find(330);
    session.model.imageReactors.emplace_back(record.object, image ? handleValue(*image) : 0);
}

void checkByteCount(Session& session, const Record& record) {
    const Tag* count = record.find(90);
    if (!count) return;
    size_t bytes = 0;
    for (size_t i = record.body; i < record.extended; ++i)
        if (record.tags[i].code == 310) bytes += trimmed(record.tags[i].value).size() / 2;
    const auto said = readInteger(count->value);
    if (said && *said != static_cast<int64_t>(bytes))
        session.out.addAs(Level::Warning, Rule::WrongCount, session.at(*count), "group 90 says ", *said,
                          " bytes, there are ", bytes);
}

} // namespace validate
