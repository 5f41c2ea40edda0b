#include "rules.h"

#include <algorithm>
#include <array>

namespace validate {

namespace {

constexpr RuleInfo row(Rule rule, Level level, std::string_view text) {
    return {static_cast<int>(rule), level, text};
}

using enum Level;
using enum Rule;

constexpr RuleInfo kRules[] = {
    row(Unreadable, Error, "the file cannot be opened or read"),
    row(NotText, Error, "this is no text DXF"),
    row(HalfPair, Error, "the last group code has no value line"),
    row(BadCode, Error, "a group code is expected here"),
    row(CodeRange, Error, "the group code is outside of 0 to 1071"),
    row(UnknownSection, Error, "a section that this version does not know"),
    row(MissingSection, Error, "a required section is missing"),
    row(RepeatedSection, Error, "a section stands twice"),
    row(UnfinishedSection, Error, "a section is not closed by ENDSEC"),
    row(MissingEof, Error, "EOF is missing"),
    row(JunkBehindEof, Warning, "there is something behind EOF"),
    row(MissingEndTable, Error, "a table is not closed by ENDTAB"),
    row(MissingEndBlock, Error, "a block is not closed by ENDBLK"),
    row(MissingSeqEnd, Error, "vertices or attributes are not closed by SEQEND"),
    row(OutOfPlace, Error, "an entity, object or record stands where it may not"),
    row(SectionOrder, Error, "sections stand in the wrong order"),
    row(LongLine, Warning, "a line is longer than the version allows"),
    row(NulByte, Error, "a NUL byte in a text"),
    row(ControlByte, Warning, "a control byte in a text"),
    row(MissingTable, Error, "a required table is missing"),
    row(RepeatedTable, Error, "a table stands twice"),
    row(TableOrder, Note, "tables stand in an unusual order"),
    row(OutsideSections, Error, "groups stand outside of all sections"),
    row(UnknownTable, Error, "a table that this version does not know"),
    row(ByteOrderMark, Warning, "the file begins with a byte order mark"),
    row(UndefinedCode, Warning, "the group code has no meaning"),
    row(SectionName, Error, "a section or table has no name"),
    row(BadReal, Error, "a real is not a finite plain decimal"),
    row(BadInteger, Error, "an integer is not a plain decimal integer"),
    row(IntegerRange, Error, "an integer is out of the range of its group"),
    row(BadBoolean, Warning, "a flag is neither 0 nor 1"),
    row(BadHex, Error, "binary data are not pairs of hexadecimal digits"),
    row(ValueRange, Error, "a value is out of its range"),
    row(ZeroVector, Error, "a direction has no length"),
    row(BadPoint, Error, "the coordinates of a point are incomplete or out of order"),
    row(WrongCount, Error, "a count differs from the items present"),
    row(TableCount, Warning, "the count of a table is below its number of records"),
    row(KnotOrder, Error, "the knots of a spline decrease"),
    row(CurveSizes, Error, "knots, control points and degree of a spline do not fit"),
    row(BadLineWeight, Error, "a line weight that does not exist"),
    row(BadColour, Error, "a colour number that does not exist"),
    row(FaceIndex, Error, "a face names a vertex that does not exist"),
    row(OpenBoundary, Error, "a clipping polygon is not closed"),
    row(LinePatternSum, Note, "the length of a line type is not the sum of its dashes"),
    row(GroupsTogether, Warning, "groups that only make sense together are not together"),
    row(GroupOrder, Error, "groups whose order has a meaning are out of order"),
    row(RepeatedGroup, Warning, "a group that may stand once stands several times"),
    row(ExtendedOrder, Error, "extended data begin without a name or are followed by other groups"),
    row(ExtendedBraces, Error, "the braces of extended data do not match"),
    row(ExtendedTwice, Error, "an application has extended data twice"),
    row(ExtendedSize, Warning, "more than 16383 bytes of extended data"),
    row(AppGroup, Error, "an application group (102) is not closed, nested or not opened"),
    row(NestedData, Error, "the nested data of an entity do not match"),
    row(MissingHandle, Error, "a handle is missing"),
    row(RepeatedHandle, Error, "a handle is used twice"),
    row(ZeroHandle, Error, "an own handle is 0"),
    row(BadHandle, Error, "a handle is not 1 to 16 hexadecimal digits"),
    row(HandleSeed, Error, "a handle is not below $HANDSEED"),
    row(MissingOwner, Warning, "the owner (330) is missing"),
    row(LostOwner, Error, "the owner does not exist"),
    row(WrongOwner, Error, "the owner is of the wrong kind"),
    row(OwnerRing, Error, "owners form a ring"),
    row(LostHard, Error, "a hard pointer leads nowhere"),
    row(LostSoft, Warning, "a soft pointer leads nowhere"),
    row(WrongTarget, Error, "a pointer leads to the wrong kind of object"),
    row(UnknownLayer, Warning, "no such layer"),
    row(UnknownLineType, Error, "no such line type"),
    row(UnknownTextStyle, Error, "no such text style"),
    row(UnknownDimStyle, Error, "no such dimension style"),
    row(UnknownBlock, Error, "an insert of an undefined block"),
    row(UnknownApp, Error, "no such application name (APPID)"),
    row(MissingRecord, Error, "a record that each file needs is missing"),
    row(RepeatedName, Error, "a name is defined twice"),
    row(BadName, Error, "a name has characters that the version forbids"),
    row(LongName, Error, "a name is longer than the version allows"),
    row(EmptyName, Error, "a name is empty"),
    row(NameBlanks, Warning, "a name begins or ends with a blank"),
    row(BlockNoRecord, Error, "a BLOCK without its BLOCK_RECORD"),
    row(RecordNoBlock, Error, "a BLOCK_RECORD without its BLOCK"),
    row(LayoutNoBlock, Error, "a layout and its block do not point at each other"),
    row(BlockRing, Error, "a block inserts itself"),
    row(DimensionBlock, Error, "the block of a dimension is missing"),
    row(TableBlock, Error, "the block of a table is missing"),
    row(LayoutEntities, Error, "entities inside of the *Model_Space or *Paper_Space block"),
    row(BlockNames, Warning, "the two names of a block differ"),
    row(ReferencePath, Warning, "an external reference without a path"),
    row(SpaceFlag, Warning, "the paper space flag (67) contradicts the owner"),
    row(NoEntityMarker, Error, "the marker AcDbEntity is missing"),
    row(NoOwnMarker, Error, "a subclass marker is missing"),
    row(RepeatedMarker, Error, "a subclass marker stands twice"),
    row(MarkerOrder, Error, "subclass markers are in the wrong order"),
    row(EarlyMarker, Warning, "groups of R13 in an older file"),
    row(StrangeMarker, Warning, "a subclass marker that does not belong here"),
    row(MissingGroup, Error, "a required group is missing"),
    row(UsualGroup, Note, "a group that is always written is missing"),
    row(LaterGroup, Warning, "a group of another version"),
    row(UnknownGroup, Note, "a group that is not known here"),
    row(LaterKind, Error, "an entity or object of a later version"),
    row(UnknownKind, Note, "an unknown entity or object"),
    row(MissingClass, Error, "an entity or object without its CLASS"),
    row(ClassShape, Error, "the groups of a CLASS do not fit the version"),
    row(ClassFlag, Error, "a CLASS says wrongly whether it is an entity"),
    row(TableHead, Error, "a group that does not belong into a table head"),
    row(DimStyleHead, Error, "the head of the DIMSTYLE table does not list its handles"),
    row(EarlyGroup, Warning, "a group stands in front of the first subclass marker"),
    row(BadByte, Error, "a byte that the code page does not have"),
    row(BadUtf8, Error, "broken UTF-8"),
    row(CutEscape, Warning, "a \\U+ or \\M+ without its hexadecimal digits"),
    row(Utf8InCodePage, Warning, "text that looks like UTF-8 in a file with a code page"),
    row(UnknownCodePage, Warning, "an unknown code page"),
    row(NoRootDictionary, Error, "the OBJECTS section does not begin with the root dictionary"),
    row(NoGroupDictionary, Error, "the root dictionary lacks ACAD_GROUP"),
    row(RootEntry, Note, "the root dictionary lacks an entry that is always there"),
    row(RepeatedKey, Error, "a key of a dictionary stands twice"),
    row(ForeignEntry, Error, "an entry of a dictionary has another owner"),
    row(LayoutName, Error, "the name of a layout is not its key"),
    row(ImageDictionary, Error, "an image definition that ACAD_IMAGE_DICT does not list"),
    row(ImageReactor, Error, "an image and its reactor do not match"),
    row(EmptyGroup, Warning, "a group without entities"),
    row(EntryPair, Error, "the entries of a dictionary are not pairs of key and handle"),
    row(NoVersion, Warning, "$ACADVER is missing"),
    row(UnknownVersion, Error, "an unknown value of $ACADVER"),
    row(UnknownVariable, Warning, "an unknown header variable"),
    row(VariableCode, Error, "a header variable with the wrong group codes"),
    row(LaterVariable, Warning, "a header variable of another version"),
    row(NoHandleSeed, Error, "$HANDSEED is missing"),
    row(VariableName, Warning, "a header variable names something undefined"),
    row(VariableHandle, Error, "a header variable points at nothing"),
    row(VariableTwice, Warning, "a header variable stands twice"),
    row(VersionNotFirst, Warning, "$ACADVER is not the first header variable"),
};

static_assert(std::is_sorted(std::begin(kRules), std::end(kRules),
                             [](const RuleInfo& a, const RuleInfo& b) { return a.number < b.number; }));

constexpr size_t kNumbers = 1000;

/// Rule number to row.
constexpr std::array<uint8_t, kNumbers> kRowOf = [] {
    std::array<uint8_t, kNumbers> rows{};
    for (size_t i = 0; i < std::size(kRules); ++i)
        rows[static_cast<size_t>(kRules[i].number)] = static_cast<uint8_t>(i);
    return rows;
}();
static_assert(std::size(kRules) < 256);

} // namespace

std::span<const RuleInfo> allRules() {
    return kRules;
}

size_t indexOf(Rule rule) {
    return kRowOf[static_cast<size_t>(rule)];
}

Level levelOf(Rule rule) {
    return kRules[indexOf(rule)].level;
}

std::string_view levelName(Level level) {
    return level == Error ? "error" : level == Warning ? "warning" : "note";
}

} // namespace validate
