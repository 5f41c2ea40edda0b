#include "dx_documents.h"

#include "dx_messages.h"
#include "dx_protocol.h"
#include "session_state.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <stdexcept>

DxfDocManager DxDocuments;

// ---- tables ----------------------------------------------------------------------------------------

void DxLayerIndex::clear() {
    byName_.clear();
    indexed_ = 0;
}

int DxLayerIndex::find(const DxTable<DX_LAYER_TYPE>& layers, std::string_view name) {
    const auto key = [this](std::string_view text) {
        return anyCase_ ? UtCString(text).Upper().str() : std::string(text);
    };
    if (indexed_ > layers.size()) clear();
    // Neighbouring entities mostly stand on one layer.
    if (!anyCase_ && lastFound_ < indexed_ && layers[lastFound_].name.view() == name)
        return static_cast<int>(lastFound_);
    for (; indexed_ < layers.size(); ++indexed_)
        byName_.try_emplace(key(layers[indexed_].name.view()), static_cast<int>(indexed_));
    const auto found = anyCase_ ? byName_.find(key(name)) : byName_.find(name);
    if (found == byName_.end()) return -1;
    lastFound_ = static_cast<std::size_t>(found->second);
    return found->second;
}

int DxTables::findLayer(std::string_view name) {
    return layerIndex_.find(layers, name);
}

int DxTables::findLayerOfAnyCase(std::string_view name) {
    const int exact = findLayer(name);
    return exact < 0 ? upperLayerIndex_.find(layers, name) : exact;
}

void DxTables::replaceLayers(DxTable<DX_LAYER_TYPE> list) {
    layers = std::move(list);
    layerIndex_.clear();
    upperLayerIndex_.clear();
}

void DxTables::clear() {
    layers.free();
    lineTypes.free();
    styles.free();
    views.free();
    dimStyles.free();
    blockRecords.free();
    layerIndex_.clear();
    upperLayerIndex_.clear();
}

// ---- one document ----------------------------------------------------------------------------------

DxfDocument::DxfDocument(FILE* stream, DxfDocument* parentDocument, const UtCString& fileName,
                         const UtCString& temporaryName)
    : file(stream), parent(parentDocument), name(fileName), tempName(temporaryName) {}

DxfDocument::~DxfDocument() {
    UtFileUnmap(view);
    if (FILE* const stream = file.Get()) UtFileClose(stream);
    if (!tempName.Get().IsEmpty()) UtFileRemove(tempName.Get());
}

// ---- the manager -----------------------------------------------------------------------------------

static UtCString baseName(const UtCString& path) {
    const std::string file = UtPathFile(path).str();
    return file.substr(0, file.rfind('.'));
}

/// `path` with "_recovered.dxf" in place of ".dxf".
static UtCString withRecovered(std::string path) {
    constexpr std::string_view EXTENSION = ".dxf", TWIN = "_recovered.dxf";
    for (std::size_t at = 0; (at = path.find(EXTENSION, at)) != std::string::npos; at += TWIN.size())
        path.replace(at, EXTENSION.size(), TWIN);
    return path;
}

/// Finds the file that a repair tool leaves beside `path`: its names are lower-case. Where upper and lower
/// case differ, the folders keep theirs. 0, with `path` the file, or 9005.
static int findRecoveredTwin(UtCString& path) {
    const UtCString folder = UtPathDir(path);
    const UtCString name = withRecovered(UtPathFile(path).Lower().str());
    const UtCString twins[] = {withRecovered(path.Lower().str()),
                               folder.IsEmpty() ? name : UtPathJoin(folder, name)};
    for (UtCString twin : twins) {
        if (DxReadFindPath(twin)) continue;
        path = twin;
        return 0;
    }
    path = twins[0];
    return 9005;
}

/// What a name leads to: the file to read, and how it was come by.
struct FoundFile {
    UtCString path;
    UtCString source;    ///< the same ahead of a conversion
    UtCString converted; ///< a text DXF made for this, else empty
    int recovered = 0;
    bool exists = false;
};

/// The file that a name leads to, ahead of any conversion. False when there is none.
static bool locate(FoundFile& found, const UtCString& name) {
    found.path = name;
    if (DxReadFindPath(found.path) == 0) return true;
    found.recovered = 1;
    return findRecoveredTwin(found.path) == 0;
}

static FoundFile findFile(const UtCString& name, std::size_t documentCount) {
    FoundFile found;
    if (!locate(found, name)) return found;
    found.source = found.path;
    UtCString converted = std::to_string(documentCount);
    int wasConverted = 0;
    if (DxReadCheckConvert(found.path, converted, wasConverted)) {
        DxProtoMsg(DxMsg(5809, found.path.c_str()), 1); // it may be a text all the same
    } else if (wasConverted) {
        found.path = found.converted = converted;
        if (!UtIsFile(found.path)) {
            findRecoveredTwin(found.path);
            found.recovered = 1;
        }
    }
    found.exists = true;
    return found;
}

std::unique_ptr<DxfDocument> DxfDocManager::load(const UtCString& name, const UtCString& mode) {
    const FoundFile found = findFile(name, byName.size());
    if (!found.exists) return nullptr;
    FILE* const opened = UtFileOpen(found.path, mode.c_str());
    if (!opened) {
        if (!found.converted.IsEmpty()) UtFileRemove(found.converted);
        return nullptr;
    }
    const bool isMain = byName.empty();
    const bool hasSource = isMain && !DxSourceFileName.IsEmpty();
    auto document =
        std::make_unique<DxfDocument>(opened, current_, hasSource ? DxSourceFileName : name, found.converted);
    if (UtFileMap(opened, document->view)) return nullptr;
    if (document->view.size > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) {
        DxProtoMsg(UtFormat("File %s is too large, 2 GiB at most can be read!", name.c_str()), 1);
        return nullptr;
    }
    if (!isMain) document->prefix = baseName(name);
    document->foundAs = found.source;
    UtFileIdOfPath(found.source, document->id);
    document->tables = tables;
    document->recovered.Set(found.recovered);
    return document;
}

void DxfDocument::addBlock(const DX_BLOCK_TYPE& block) {
    blocks.push_back(block);
    blockIndex_.try_emplace(std::string(block.name.view()), &blocks.back());
}

DX_BLOCK_TYPE* DxfDocument::findBlock(std::string_view blockName) {
    const auto found = blockIndex_.find(blockName);
    return found == blockIndex_.end() ? nullptr : found->second;
}

DX_BLOCK_TYPE* DxfDocument::findBlockOutwards(std::string_view blockName) {
    DX_BLOCK_TYPE* block = nullptr;
    for (DxfDocument* document = this; document && !block; document = document->parent.Get())
        block = document->findBlock(blockName);
    return block;
}

FILE* DxfDocManager::open(const UtCString& name, const UtCString& mode) {
    if (const auto found = byName.find(name); found != byName.end()) return found->second->file.Get();
    std::unique_ptr<DxfDocument> document = load(name, mode);
    if (!document) return nullptr;
    FILE* const opened = document->file.Get();
    byStream[opened] = document.get();
    byName[name] = std::move(document);
    select(opened);
    return opened;
}

DxfDocument* DxfDocManager::findOpen(const UtCString& name) {
    if (const auto found = byName.find(name); found != byName.end()) return found->second.get();
    FoundFile file;
    UT_FILE_ID id;
    if (!locate(file, name) || !UtFileIdOfPath(file.path, id)) return nullptr;
    for (const auto& [otherName, document] : byName)
        if (document->id == id) return document.get();
    return nullptr;
}

bool DxfDocManager::anyShrank() const {
    return std::any_of(byName.begin(), byName.end(),
                       [](const auto& entry) { return UtFileShrank(entry.second->view); });
}

void DxfDocManager::select(FILE* wanted) {
    const auto found = byStream.find(wanted);
    if (found != byStream.end()) {
        current_ = found->second;
    } else {
        current_ = nullptr;
        stream = wanted;
    }
}

void DxfDocManager::closeAll(bool keepTables) {
    if (keepTables && current_)
        tables = std::move(current_->tables);
    else
        tables.clear();
    DxReadForget();
    byName.clear();
    byStream.clear();
    current_ = nullptr;
    stream = nullptr;
}

DxfDocument& DxfDocManager::requireCurrent() {
    if (!current_) throw std::runtime_error("DxfDocManager::current_ == 0");
    return *current_;
}

// ---- finding and converting files ------------------------------------------------------------------

int DxReadFindPath(UtCString& path) {
    if (UtIsFile(path)) return 0;
    const DxfDocument* const current = DxDocuments.current_;
    if (!current) return 9005;
    const DxfDocument* root = current;
    while (root->parent.Get()) root = root->parent.Get();

    const UtCString places[] = {root->name.Get(), current->name.Get(), current->tempName.Get(),
                                DxSourceFileName};
    const UtCString tails[] = {UtPathFile(path), path};
    for (const UtCString& place : places) {
        if (place.IsEmpty() && &place != &places[0]) continue;
        for (const UtCString& tail : tails) {
            const UtCString candidate = UtPathJoin(UtPathDir(place), tail);
            if (!UtIsFile(candidate)) continue;
            path = candidate;
            return 0;
        }
    }
    return 9005;
}

static bool isBinaryDxf(const UtCString& name) {
    FILE* const stream = UtFileOpen(name, "rb");
    if (!stream) return false;
    std::array<char, 255> first{};
    const bool isRead = std::fgets(first.data(), static_cast<int>(first.size()), stream) != nullptr;
    UtFileClose(stream);
    return isRead && std::strncmp(first.data(), "AutoCAD Binary DXF", 18) == 0;
}

bool DxReadNeedsConvert(const UtCString& name) {
    return UtPathExt(name) == "dwg" || isBinaryDxf(name);
}

int DxReadCheckConvert(const UtCString& name, UtCString& converted, int& wasConverted) {
    wasConverted = DxReadNeedsConvert(name) ? 1 : 0;
    return wasConverted ? DxReadConvertDwg2Dxf(name, converted) : 0;
}

int DxReadConvertDwg2Dxf(const UtCString& source, UtCString& target) {
    target = UtTempFileName(UtGetTempDir(), "dxf") + target + ".dxf";
    return UtConvertDwg2Dxf(source, target);
}

// ---- a place in a file -----------------------------------------------------------------------------

DxfEntityFilePosition::DxfEntityFilePosition(FILE* stream, std::int32_t offset, const UtCString& marker,
                                             int markerCode)
    : marker_(marker), markerCode_(markerCode), save_() {
    if (stream != DxDocuments.currentStream()) {
        DxSaveActPos(&save_);
        DxDocuments.select(stream);
        switched_ = true;
    }
    DxReadSeek(offset);
}

DxfEntityFilePosition::~DxfEntityFilePosition() {
    const DxfDocument* const ended = DxReadEnded;
    if (!switched_ || DxRestoreActPos(&save_)) return;
    DxPair pair;
    while (DxReadPair(pair) == 0)
        if (pair.code == markerCode_ && pair.text == marker_.str()) break;
    if (ended) DxReadEnded = ended; // which is why this ticket goes out of scope
}
