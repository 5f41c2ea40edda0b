// The tree of dictionaries: its root, the entries, layouts and their blocks, plot styles of layers.

#include "mends.h"
#include "new_records.h"
#include "text.h"

#include <algorithm>
#include <filesystem>
#include <unordered_map>
#include <unordered_set>

namespace repair {

using validate::sameName;

namespace {

bool isDictionary(const Record& record) {
    return record.kind() == "DICTIONARY" || record.kind() == "ACDBDICTIONARYWDFLT";
}

/// Index of the group with the handle behind a key, 0 when the key has none.
size_t entryAt(const Record& dictionary, size_t key) {
    const auto& pairs = dictionary.pairs;
    if (pairs[key].code != 3 || key + 1 >= dictionary.extendedStart()) return 0;
    return pairs[key + 1].code == 350 || pairs[key + 1].code == 360 ? key + 1 : 0;
}

/// Handle of a key, 0 when it isn't there.
uint64_t entryOf(const Record& dictionary, std::string_view key) {
    for (size_t i = dictionary.bodyStart(); i < dictionary.extendedStart(); ++i)
        if (const size_t entry = entryAt(dictionary, i); entry && sameName(dictionary.pairs[i].value, key))
            return validate::readHandle(dictionary.pairs[entry].value).value_or(0);
    return 0;
}

class DictionaryMend {
public:
    DictionaryMend(Document& document, Log& log) : document_(document), log_(log) {}

    void run() {
        if (!document_.hasObjects)
            log_.addAt(Rule::MissingSection, 0, Section::None, "the section OBJECTS is added");
        document_.hasObjects = true;
        findRoot();
        if (document_.atLeast(Version::R2000) && !root().ownerPair()) {
            log_.add(Rule::MissingOwner, root(), Section::Objects,
                     "the owner of the root dictionary becomes 0");
            root().insert(root().bodyStart(), {330, "0"});
        }
        document_.forEachRecord([&](const Record& record, Section) { handles_.insert(record.handle()); });
        for (Record& object : document_.objects)
            if (isDictionary(object)) mendEntries(object);
        if (entryOf(root(), "ACAD_GROUP") == 0) {
            log_.add(Rule::NoGroupDictionary, root(), Section::Objects,
                     "ACAD_GROUP is added to the root dictionary");
            addEntry("ACAD_GROUP", "DICTIONARY");
        }
        if (!document_.atLeast(Version::R2000)) return;
        mendLayouts();
        mendPlotStyles();
        listImages();
    }

private:
    Record& root() { return document_.objects.front(); }

    // --- the root

    bool mayBeRoot(const Record& object) const {
        return object.kind() == "DICTIONARY" && object.owner() == 0 && entryOf(object, "ACAD_GROUP") != 0;
    }

    void findRoot() {
        auto& objects = document_.objects;
        if (!objects.empty() && objects.front().kind() == "DICTIONARY" && objects.front().owner() == 0)
            return;
        auto found =
            std::find_if(objects.begin(), objects.end(), [&](const Record& r) { return mayBeRoot(r); });
        if (found == objects.end())
            found = std::find_if(objects.begin(), objects.end(), [](const Record& object) {
                return object.kind() == "DICTIONARY" && entryOf(object, "ACAD_GROUP") != 0;
            });
        if (found == objects.end()) {
            objects.insert(objects.begin(), newObject(document_, "DICTIONARY", "AcDbDictionary", 0));
            log_.addAt(Rule::NoRootDictionary, 0, Section::Objects, "a root dictionary is added");
            return;
        }
        log_.add(Rule::NoRootDictionary, *found, Section::Objects,
                 "the root dictionary is put in front, its owner is 0");
        std::rotate(objects.begin(), found, found + 1);
        if (Pair* owner = root().ownerPair()) owner->value = "0";
    }

    /// A new object under a new key of the root. Gives its handle; ends all references to objects.
    uint64_t addEntry(std::string_view key, std::string_view kind) {
        Record object = newObject(document_, kind, "AcDbDictionary", root().handle());
        const uint64_t handle = object.handle();
        handles_.insert(handle);
        append(root(), key, handle);
        document_.objects.push_back(std::move(object));
        return handle;
    }

    void append(Record& dictionary, std::string_view key, uint64_t handle) {
        const size_t at = dictionary.extendedStart();
        dictionary.insert(at, {3, document_.keep(std::string(key))});
        dictionary.insert(at + 1, document_.handlePair(350, handle));
    }

    static void dropEntry(Record& dictionary, std::string_view key) {
        for (size_t i = dictionary.bodyStart(); i < dictionary.extendedStart(); ++i)
            if (entryAt(dictionary, i) && sameName(dictionary.pairs[i].value, key))
                return dictionary.erase(i, 2);
    }

    Record* object(uint64_t handle) {
        if (handle == 0) return nullptr;
        for (Record& object : document_.objects)
            if (object.handle() == handle) return &object;
        return nullptr;
    }

    // --- entries

    /// Each entry is a key and a handle that leads to something, no key stands twice.
    void mendEntries(Record& dictionary) {
        std::unordered_set<std::string> keys;
        size_t i = dictionary.bodyStart();
        for (; i < dictionary.extendedStart() && dictionary.pairs[i].value != "AcDbDictionary"; ++i) {
        }
        while (++i < dictionary.extendedStart() && dictionary.pairs[i].code != 100) {
            const Pair& pair = dictionary.pairs[i];
            const size_t entry = entryAt(dictionary, i);
            if (pair.code == 350 || pair.code == 360) {
                leaveOut(dictionary, Rule::EntryPair, i--, 1, "a handle without its key");
            } else if (pair.code == 3 && entry == 0) {
                leaveOut(dictionary, Rule::EntryPair, i--, 1, "a key without its handle");
            } else if (pair.code == 3 && !keys.insert(validate::upperCase(pair.value)).second) {
                leaveOut(dictionary, Rule::RepeatedKey, i--, 2, "the second entry of a key");
            } else if (pair.code == 3) {
                const uint64_t target = validate::readHandle(dictionary.pairs[entry].value).value_or(0);
                if (handles_.count(target) && target != 0)
                    ++i;
                else
                    leaveOut(dictionary, Rule::LostHard, i--, 2, "an entry that leads nowhere");
            }
        }
    }

    void leaveOut(Record& dictionary, Rule rule, size_t at, size_t count, const char* what) {
        const Pair pair = dictionary.pairs[at];
        log_.add(rule, dictionary, Section::Objects, what, ", ", inQuotes(pair.value), ", is left out");
        dictionary.erase(at, count);
    }

    // --- layouts

    /// The pair of the block of a layout: the 330 behind its last marker.
    static Pair* blockOf(Record& layout) {
        Pair* found = nullptr;
        bool inside = false;
        for (Pair& pair : layout.pairs) {
            if (pair.code == 100) inside = pair.value == "AcDbLayout";
            if (inside && pair.code == 330 && !found) found = &pair;
        }
        return found;
    }

    static std::string_view layoutName(const Record& layout) {
        bool inside = false;
        for (const Pair& pair : layout.pairs) {
            if (pair.code == 100) inside = pair.value == "AcDbLayout";
            if (inside && pair.code == 1) return pair.value;
        }
        return {};
    }

    void mendLayouts() {
        std::unordered_map<uint64_t, Record*> records;
        for (Record& record : document_.table("BLOCK_RECORD")->records)
            records.emplace(record.handle(), &record);
        std::unordered_map<uint64_t, uint64_t> layoutOfBlock; // by the handle of the block record
        for (Record& layout : document_.objects) {
            if (layout.kind() != "LAYOUT") continue;
            Pair* block = blockOf(layout);
            if (block && !records.count(validate::readHandle(block->value).value_or(0)))
                findBlock(layout, *block, records);
            if (block) layoutOfBlock.emplace(validate::readHandle(block->value).value_or(0), layout.handle());
        }
        for (auto& [handle, record] : records) pointBack(*record, layoutOfBlock[handle]);
        nameLayouts();
    }

    void findBlock(const Record& layout, Pair& block, const std::unordered_map<uint64_t, Record*>& records) {
        for (const auto& [handle, record] : records)
            if (validate::readHandle(record->text(340)).value_or(0) == layout.handle() &&
                layout.handle() != 0) {
                log_.add(Rule::LayoutNoBlock, layout, Section::Objects, "the layout gets its block");
                block.value = document_.handlePair(330, handle).value;
                return;
            }
    }

    void pointBack(Record& record, uint64_t layout) {
        Pair* pair = record.find(340);
        const uint64_t said = pair ? validate::readHandle(pair->value).value_or(0) : 0;
        if (said == layout || (layout == 0 && handles_.count(said) == 0 && said == 0)) return;
        log_.add(Rule::LayoutNoBlock, record, Section::Tables, "the block ", inQuotes(record.text(2)),
                 layout ? " gets its layout" : " loses a layout that isn't its own");
        if (pair)
            pair->value = document_.handlePair(340, layout).value;
        else
            record.insert(record.extendedStart(), document_.handlePair(340, layout));
    }

    /// Each layout stands in ACAD_LAYOUT under its name.
    void nameLayouts() {
        std::vector<std::pair<std::string_view, uint64_t>> layouts;
        for (const Record& object : document_.objects)
            if (object.kind() == "LAYOUT") layouts.emplace_back(layoutName(object), object.handle());
        if (layouts.empty()) return;
        uint64_t handle = entryOf(root(), "ACAD_LAYOUT");
        if (!handle) {
            log_.add(Rule::RootEntry, root(), Section::Objects,
                     "ACAD_LAYOUT is added to the root dictionary");
            handle = addEntry("ACAD_LAYOUT", "DICTIONARY");
        }
        Record* dictionary = object(handle);
        if (!dictionary || !isDictionary(*dictionary)) return;
        for (const auto& [name, layout] : layouts) nameLayout(*dictionary, name, layout);
    }

    void nameLayout(Record& dictionary, std::string_view name, uint64_t layout) {
        for (size_t i = dictionary.bodyStart(); i < dictionary.extendedStart(); ++i) {
            const size_t entry = entryAt(dictionary, i);
            if (!entry || validate::readHandle(dictionary.pairs[entry].value) != layout) continue;
            if (sameName(dictionary.pairs[i].value, name)) return;
            if (entryOf(dictionary, name) != 0) return; // another layout has the name
            log_.add(Rule::LayoutName, dictionary, Section::Objects, "the key ",
                     inQuotes(dictionary.pairs[i].value), " becomes ", inQuotes(name));
            dictionary.pairs[i].value = name;
            return;
        }
        if (entryOf(dictionary, name) != 0) return;
        log_.add(Rule::LayoutName, dictionary, Section::Objects, "the layout ", inQuotes(name), " is listed");
        append(dictionary, name, layout);
    }

    // --- plot styles

    uint64_t placeholder() {
        for (const Record& object : document_.objects)
            if (object.kind() == "ACDBPLACEHOLDER") return object.handle();
        dropEntry(root(), "ACAD_PLOTSTYLENAME"); // whatever it led to has no style
        const uint64_t styles = addEntry("ACAD_PLOTSTYLENAME", "ACDBDICTIONARYWDFLT");
        Record style = newObject(document_, "ACDBPLACEHOLDER", {}, styles);
        Record& dictionary = document_.objects.back();
        append(dictionary, "Normal", style.handle());
        dictionary.pairs.push_back({100, "AcDbDictionaryWithDefault"});
        dictionary.pairs.push_back(document_.handlePair(340, style.handle()));
        handles_.insert(style.handle());
        document_.objects.push_back(std::move(style));
        return document_.objects.back().handle();
    }

    /// Strict readers refuse a layer without its plot style.
    void mendPlotStyles() {
        std::unordered_set<uint64_t> styles;
        for (const Record& object : document_.objects)
            if (object.kind() == "ACDBPLACEHOLDER") styles.insert(object.handle());
        for (Record& layer : document_.table("LAYER")->records) {
            Pair* plot = layer.find(390);
            const uint64_t said = plot ? validate::readHandle(plot->value).value_or(0) : 0;
            if (said != 0 && styles.count(said)) continue;
            if (plotStyle_ == 0) plotStyle_ = placeholder();
            if (layer.line() != 0)
                log_.add(plot ? Rule::LostHard : Rule::MissingGroup, layer, Section::Tables, "the layer ",
                         inQuotes(layer.text(2)), " gets its plot style (390)");
            if (plot)
                plot->value = document_.handlePair(390, plotStyle_).value;
            else
                layer.insert(layer.extendedStart(), document_.handlePair(390, plotStyle_));
        }
    }

    // --- pictures

    void listImages() {
        std::vector<std::pair<std::string, uint64_t>> images;
        for (const Record& object : document_.objects)
            if (object.kind() == "IMAGEDEF")
                images.emplace_back(std::filesystem::path(object.text(1)).stem().string(), object.handle());
        if (images.empty()) return;
        uint64_t handle = entryOf(root(), "ACAD_IMAGE_DICT");
        Record* dictionary = object(handle);
        for (auto& [name, image] : images) {
            if (dictionary && lists(*dictionary, image)) continue;
            if (!dictionary) dictionary = object(addEntry("ACAD_IMAGE_DICT", "DICTIONARY"));
            std::string key = name.empty() ? "IMAGE" : name;
            for (int n = 1; entryOf(*dictionary, key) != 0; ++n) key = name + "_" + std::to_string(n);
            log_.add(Rule::ImageDictionary, *dictionary, Section::Objects, "the picture ", inQuotes(key),
                     " is listed");
            append(*dictionary, key, image);
        }
    }

    static bool lists(const Record& dictionary, uint64_t handle) {
        for (size_t i = dictionary.bodyStart(); i < dictionary.extendedStart(); ++i)
            if (const size_t entry = entryAt(dictionary, i))
                if (validate::readHandle(dictionary.pairs[entry].value) == handle) return true;
        return false;
    }

    Document& document_;
    Log& log_;
    std::unordered_set<uint64_t> handles_{};
    uint64_t plotStyle_ = 0;
};

} // namespace

void mendDictionaries(Document& document, Log& log) {
    if (document.atLeast(Version::R13)) DictionaryMend(document, log).run();
}

} // namespace repair
