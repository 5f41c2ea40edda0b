// Open drawing files of a session.
#pragma once

#include "dx_objects.h"
#include "dx_reader.h"
#include "dx_types.h"
#include "ut_file.h"

#include <cstdio>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// Base of the property templates.
class BaseProperty {
public:
    virtual ~BaseProperty() = default;
    virtual int& Word() { return word_; }

private:
    int word_ = 0;
};

/// A value with virtual set and get.
template <class T>
class Property : public BaseProperty {
public:
    explicit Property(T value = T()) : value_(value) {}
    virtual void Set(const T& value) { value_ = value; }
    virtual const T& Get() const { return value_; }

private:
    T value_;
};

/// A value that is given at the start and read from then on.
template <class T>
class ReadOnlyProperty : public BaseProperty {
public:
    explicit ReadOnlyProperty(T value) : value_(std::move(value)) {}
    virtual const T& Get() const { return value_; }

private:
    T value_;
};

class DxfDocument;

/// Entities of a block, read once for all its INSERTs.
struct DxStoredEntities;

/// Neighbouring INSERTs of one block within another.
struct DX_NESTED_INSERTS {
    std::string block;
    int count;
};

/// One BLOCK of a file: where its entities are. The section scan fills it.
struct DX_BLOCK_TYPE {
    DX_NAME layer;         ///< 8
    DX_NAME lineType;      ///< 6; from the layer when absent
    int color;             ///< 62; from the layer when absent
    int flags;             ///< 70; 4: external reference
    DX_NAME name;          ///< 2
    std::uint32_t handle;  ///< 5
    RPT3 base;             ///< 10 20 30
    UtCString path;        ///< 1, path of an external reference
    std::int32_t filePos;  ///< position of the first group of the first entity
    DxfDocument* document; ///< whose stream filePos belongs to

    double entities = 0; ///< in the block itself
    std::vector<DX_NESTED_INSERTS> inserts;
    double expanded = -1;      ///< entities of the block and of all that it inserts; below 0 until counted
    bool holdsNothing = false; ///< but INSERTs of blocks that hold nothing; known with `expanded`
    bool leadsToRing = false;  ///< it inserts, at last, blocks that insert each other; known with `expanded`
    int walks = 0;             ///< how many times its entities have been drawn
    bool canBeStored = true;
    mutable bool isCounted = false;                 ///< what becomes of its entities is in the account
    std::shared_ptr<const DxStoredEntities> stored; ///< null until its entities were drawn a few times
};

struct DxNameHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view name) const { return std::hash<std::string_view>{}(name); }
};

/// First layer of a list by name, O(1) on average. Catches up with what was appended since the last call;
/// names of records don't change.
class DxLayerIndex {
public:
    explicit DxLayerIndex(bool anyCase) : anyCase_(anyCase) {} ///< the case of ASCII letters doesn't count
    int find(const DxTable<DX_LAYER_TYPE>& layers, std::string_view name); ///< -1 when there is none
    void clear();

private:
    std::unordered_map<std::string, int, DxNameHash, std::equal_to<>> byName_;
    std::size_t indexed_ = 0;
    std::size_t lastFound_ = 0; ///< answer of the last search, below indexed_
    bool anyCase_;
};

/// The tables that a file's TABLES section fills. Layers, line types and styles have an index by exact name
/// for lookups (DxFindLayer and its like); the tables are filled through DxTable… functions only.
struct DxTables {
    DxTable<DX_LAYER_TYPE> layers;
    DxTable<DX_LTYPE_TYPE> lineTypes;
    DxTable<DX_STYLE_TYPE> styles;
    DxTable<DX_VIEW_TYPE> views;
    DxTable<DX_DIM_STYLE> dimStyles;
    DxTable<DX_BLOCK_RECORD_TYPE> blockRecords;

    /// Index of the first layer of exactly this name, -1 when there is none.
    int findLayer(std::string_view name);
    /// The same for a name of which the case of ASCII letters doesn't count; a layer of exactly this name
    /// comes first.
    int findLayerOfAnyCase(std::string_view name);
    void clear();
    /// Takes another list of layers in the place of the present one.
    void replaceLayers(DxTable<DX_LAYER_TYPE> list);

private:
    DxLayerIndex layerIndex_{false}, upperLayerIndex_{true};
};

/// What the OBJECTS section of a file says.
struct DxObjects {
    DxTable<DX_GEODATA_TYPE> geoData;
    DxTable<DX_LAYOUT_TYPE> layouts;
    std::vector<DX_IMAGE_DEF_TYPE> imageDefs;

    /// The layout of a block record: each of them names the other. Null when there is none.
    const DX_LAYOUT_TYPE* layoutOf(const DX_BLOCK_RECORD_TYPE& record) const;
    const DX_IMAGE_DEF_TYPE* imageDef(std::uint32_t handle) const; ///< The first of this handle, or null.
};

/// One open file. Owns its stream, its mapping and its temporary file.
class DxfDocument {
public:
    DxfDocument(FILE* stream, DxfDocument* parentDocument, const UtCString& fileName,
                const UtCString& temporaryName);
    ~DxfDocument(); ///< Closes the stream, removes the temporary file.
    DxfDocument(const DxfDocument&) = delete;
    DxfDocument& operator=(const DxfDocument&) = delete;

    Property<int> objectsRead;             ///< 1 when the OBJECTS section has been read
    Property<int> sectionSeen;             ///< 1 when the last section reader found its section
    Property<int> acdsRead;                ///< 1 when the ACDSDATA section has been read
    Property<FILE*> file;                  ///< the open stream, owned
    ReadOnlyProperty<DxfDocument*> parent; ///< current document at the opening; null for the main file
    ReadOnlyProperty<UtCString> name;      ///< the name that was asked for
    ReadOnlyProperty<UtCString> tempName;  ///< path of a converted text DXF, else empty; owned
    Property<int> recovered;               ///< 1 when the "_recovered.dxf" twin was read
    UtCString prefix;                      ///< base name, empty for the main file
    UtCString foundAs;                     ///< path of the file that the name led to, ahead of a conversion
    DxTables tables;                       ///< copies of the manager's at the opening
    DxObjects objects;
    std::deque<DX_BLOCK_TYPE> blocks; ///< block definitions found in this file; they keep their addresses
    std::int32_t entitiesPos = -1;    ///< of an external reference: its ENTITIES section, -1 until found
    /// Version and code page of an external reference's strings; 0 where they are those of the session.
    int version = 0, codePage = 0;

    void addBlock(const DX_BLOCK_TYPE& block);
    /// The first block of exactly this name, null when there is none. O(1) on average.
    DX_BLOCK_TYPE* findBlock(std::string_view name);
    /// The same in this document or the innermost around it that has such a block.
    DX_BLOCK_TYPE* findBlockOutwards(std::string_view name);

    UT_FILE_ID id;            ///< of the file that was found, ahead of a conversion
    UT_FILE_VIEW view;        ///< the file in memory
    std::size_t position = 0; ///< offset of the next byte to read

private:
    std::unordered_map<std::string, DX_BLOCK_TYPE*, DxNameHash, std::equal_to<>> blockIndex_;
};

/// The documents of a session.
class DxfDocManager {
public:
    FILE* stream = nullptr;          ///< current stream when no document is
    DxfDocument* current_ = nullptr; ///< current document, or null
    std::map<FILE*, DxfDocument*> byStream;
    std::map<UtCString, std::unique_ptr<DxfDocument>> byName; ///< owns the documents
    DxTables tables;
    bool keepsTables = false; ///< the tables of a template outlive its file (an export with USE_TEMPLATE)

    /// Opens a document by name, searching and converting as needed, and makes it current. A name that is
    /// open gives its stream and changes nothing. Null when there is no such file, or one too large for
    /// 32-bit positions, which is reported.
    FILE* open(const UtCString& name, const UtCString& mode);
    /// The open document of this name, or of another name that leads to the same file. Null when none is
    /// open.
    DxfDocument* findOpen(const UtCString& name);
    /// Whether somebody made the file of an open document shorter.
    bool anyShrank() const;
    /// Makes the document of `stream` current; a stream of no document becomes the manager's own.
    void select(FILE* stream);
    /// Closes all documents. With `keepTables` the current document's tables survive in the manager.
    void closeAll(bool keepTables);
    /// Tables of the current document, else the manager's.
    DxTables& currentTables() { return current_ ? current_->tables : tables; }
    FILE* currentStream() const { return current_ ? current_->file.Get() : stream; }
    /// The current document; throws std::exception "DxfDocManager::current_ == 0" when there is none.
    DxfDocument& requireCurrent();

private:
    std::unique_ptr<DxfDocument> load(const UtCString& name, const UtCString& mode);
};

extern DxfDocManager DxDocuments;

/// Finds a file: as it stands, else beside the main file, the current file, its conversion's text and the
/// main file's source. 0, with `path` a file that exists, or 9005.
int DxReadFindPath(UtCString& path);
/// Whether a file reaches the reader by a conversion only: a DWG by its extension, or a binary DXF.
bool DxReadNeedsConvert(const UtCString& name);
/// Converts a DWG or binary DXF and sets `wasConverted` to 1, else to 0. `converted`: as
/// `target` below. 0 or the conversion's error.
int DxReadCheckConvert(const UtCString& name, UtCString& converted, int& wasConverted);
/// Converts DWG or binary DXF to a temporary text DXF. `target` holds a suffix for its name and becomes its
/// path, which the caller removes. 0 or the conversion's error.
int DxReadConvertDwg2Dxf(const UtCString& source, UtCString& target);

/// A scoped ticket to a place in a file, which may lie in another document. Going out of scope with the
/// stream switched, it returns and reads on to its end marker.
class DxfEntityFilePosition {
public:
    DxfEntityFilePosition(FILE* stream, std::int32_t offset, const UtCString& marker, int markerCode);
    ~DxfEntityFilePosition();
    DxfEntityFilePosition(const DxfEntityFilePosition&) = delete;
    DxfEntityFilePosition& operator=(const DxfEntityFilePosition&) = delete;
    void Disarm() { switched_ = false; } ///< Nothing is left to restore.

private:
    UtCString marker_;
    int markerCode_;
    DX_SAVE save_;
    bool switched_ = false;
};
