// The tree of dictionaries: root, layouts, pictures; and the kinds of entities and objects met.

#include "reference_checks.h"
#include "text.h"

#include <algorithm>
#include <unordered_set>

namespace validate {

namespace {

uint32_t firstObject(const Model& model) {
    for (uint32_t i = 0; i < model.objects.size(); ++i)
        if (model.objects[i].section == Section::Objects) return i;
    return kNone;
}

struct RootEntry {
    std::string_view key;
    Version since;
};

constexpr RootEntry kRootEntries[] = {
    {"ACAD_MLINESTYLE", Version::R13},
    {"ACAD_LAYOUT", Version::R2000},
    {"ACAD_PLOTSTYLENAME", Version::R2000},
};

/// The root dictionary, null when there is none.
const Dictionary* checkRoot(Session& session) {
    Model& model = session.model;
    const uint32_t first = firstObject(model);
    if (first == kNone) {
        session.out.add(Rule::NoRootDictionary, {0, 0, {}, Section::Objects}, "there are no objects");
        return nullptr;
    }
    const Object& object = model.objects[first];
    const Place place = model.placeOf(first);
    if (model.kindOf(object) != "DICTIONARY" || (object.hasOwner && object.owner != 0)) {
        session.out.add(Rule::NoRootDictionary, place,
                        "the first object is not the root dictionary, whose owner is 0");
        return nullptr;
    }
    // The root is the first dictionary that was read, whatever its handle.
    const Dictionary& root = model.dictionaries.front();
    if (model.entryOf(root, "ACAD_GROUP") == 0)
        session.out.add(Rule::NoGroupDictionary, place, "the root dictionary lacks ACAD_GROUP");
    for (const RootEntry& entry : kRootEntries)
        if (session.atLeast(entry.since) && model.entryOf(root, entry.key) == 0)
            session.out.add(Rule::RootEntry, place, "the root dictionary lacks ", entry.key);
    return &root;
}

void checkEntryOwners(Session& session) {
    const Model& model = session.model;
    for (const Dictionary& dictionary : model.dictionaries)
        for (size_t i = dictionary.first; i < dictionary.first + dictionary.count; ++i) {
            const DictionaryEntry& entry = model.entries[i];
            const uint32_t target = model.find(entry.target);
            if (target == kNone || !model.objects[target].hasOwner) continue;
            if (model.objects[target].owner == model.objects[dictionary.object].handle) continue;
            session.out.addAs(session.atLeast(Version::R2000) ? Level::Error : Level::Warning,
                              Rule::ForeignEntry, model.placeOf(dictionary.object).at(entry.line),
                              "the entry ", inQuotes(entry.key), " belongs to ",
                              handleText(model.objects[target].owner));
        }
}

void checkLayoutNames(Session& session, const Dictionary& root) {
    const Model& model = session.model;
    const Dictionary* layouts = model.dictionaryAt(model.entryOf(root, "ACAD_LAYOUT"));
    if (!layouts) return;
    std::unordered_map<uint64_t, std::string_view> keys;
    for (size_t i = layouts->first; i < layouts->first + layouts->count; ++i)
        keys.emplace(model.entries[i].target, model.entries[i].key);
    for (const Layout& layout : model.layouts) {
        const auto key = keys.find(model.objects[layout.object].handle);
        if (key == keys.end())
            session.out.add(Rule::LayoutName, model.placeOf(layout.object),
                            "ACAD_LAYOUT does not list the layout ", inQuotes(layout.name));
        else if (!sameName(key->second, layout.name))
            session.out.add(Rule::LayoutName, model.placeOf(layout.object), "the layout ",
                            inQuotes(layout.name), " has the key ", inQuotes(key->second));
    }
}

void checkImages(Session& session, const Dictionary& root) {
    const Model& model = session.model;
    std::unordered_set<uint64_t> listed;
    if (const Dictionary* images = model.dictionaryAt(model.entryOf(root, "ACAD_IMAGE_DICT")))
        for (size_t i = images->first; i < images->first + images->count; ++i)
            listed.insert(model.entries[i].target);
    for (uint32_t definition : model.imageDefinitions)
        if (!listed.count(model.objects[definition].handle))
            session.out.add(Rule::ImageDictionary, model.placeOf(definition),
                            "ACAD_IMAGE_DICT does not list this image definition");
    std::unordered_map<uint64_t, uint64_t> imageOf;
    for (const auto& [reactor, image] : model.imageReactors)
        imageOf.emplace(model.objects[reactor].handle, image);
    for (const Image& image : model.images) {
        const Place place = model.placeOf(image.object);
        const auto found = imageOf.find(image.reactor);
        if (image.reactor == 0)
            session.out.addAs(Level::Warning, Rule::ImageReactor, place, "the image has no reactor (360)");
        else if (found != imageOf.end() && found->second != model.objects[image.object].handle)
            session.out.addAs(found->second ? Level::Error : Level::Warning, Rule::ImageReactor, place,
                              "the reactor ", handleText(image.reactor), " belongs to another image");
    }
}

// --- kinds

bool isEntitySection(Section section) {
    return section == Section::Entities || section == Section::Blocks;
}

void checkKind(Session& session, uint32_t object, bool hasClass) {
    const Place place = session.model.placeOf(object);
    const KindRules* rules = findKind(place.kind);
    const bool entity = isEntitySection(place.section);
    if (!rules) {
        if (hasClass) return;
        if (session.atLeast(Version::R14) && entity)
            session.out.add(Rule::MissingClass, place, "the entity ", inQuotes(place.kind),
                            " is not built in and has no CLASS");
        else
            session.out.add(Rule::UnknownKind, place, inQuotes(place.kind), " is not known and has no CLASS");
        return;
    }
    const Kind& kind = rules->kind();
    if (session.version < kind.since) {
        // With a CLASS it is a kind of its own making, which readers keep as it is.
        if (hasClass) return;
        session.out.add(Rule::LaterKind, place, place.kind, " came with ", versionName(kind.since));
        return;
    }
    if (hasClass || session.version < kind.classFrom || session.version > kind.classUntil) return;
    // Files of 2000 without any CLASS are common, and readers know the kinds that are built in since.
    const Level level = kind.classUntil < kLast || session.version < Version::R2000 ? Level::Note
                        : entity                                                    ? Level::Error
                                                                                    : Level::Warning;
    session.out.addAs(level, Rule::MissingClass, place, place.kind, " has no CLASS");
}

} // namespace

void checkDictionaries(Session& session) {
    const Dictionary* root = checkRoot(session);
    checkEntryOwners(session);
    if (!root) return;
    checkLayoutNames(session, *root);
    checkImages(session, *root);
}

void checkKinds(Session& session) {
    const Model& model = session.model;
    std::unordered_set<std::string_view> classes;
    for (const auto& entry : model.classes) classes.insert(entry.first);
    std::vector<bool> seen(model.kinds.size(), false);
    for (uint32_t i = 0; i < model.objects.size(); ++i) {
        const Object& object = model.objects[i];
        const bool counts = isEntitySection(object.section) ||
                            (object.section == Section::Objects && session.atLeast(Version::R13));
        if (!counts || seen[object.kind]) continue;
        seen[object.kind] = true;
        checkKind(session, i, classes.count(model.kinds[object.kind]) != 0);
    }
}

} // namespace validate
