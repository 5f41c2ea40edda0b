// What content of the drawing was made from: a run of a pattern's elements, texts, hatches or dimensions
// remembers it as a text, and so does a pattern that a placed definition drew. It holds for as long as nobody
// touches the content: the drawing keeps a mark of the content as it was, and compares.
//
// Definitions are patterns that are no content by themselves, but what placed ones were drawn from.
#pragma once

#include "ut_string.h"

#include <string>
#include <string_view>
#include <vector>

/// The lists of a pattern that runs lie in.
enum OV_CONTENT : int { OV_ELEMENTS = 0, OV_TEXTS = 1, OV_HATCHES = 2, OV_DIMENSIONS = 3 };

/// A run and what it was made from.
struct OV_ORIGIN {
    OV_CONTENT list = OV_ELEMENTS;
    int first = 0, count = 0; ///< rows of the list, from 0
    std::string_view text;    ///< valid until the pattern gets another origin
};

/// Length of one of a pattern's lists; 0 for no pattern. O(1).
int UoContentCount(int patNo, OV_CONTENT list);
/// `count` rows of a list from `first` were made from `text`. Behind all earlier runs of the list. 0, 1005
/// for no pattern, 3011 for rows that there aren't.
int UoOriginAdd(int patNo, OV_CONTENT list, int first, int count, std::string text);
/// Origin `index` of the pattern, from 0, in the order in which they were added. 1005 when there is none.
int UoOriginGet(int patNo, int index, OV_ORIGIN* origin);
/// Whether nothing of the run of origin `index` was touched since. O(length of the run).
bool UoOriginIsIntact(int patNo, int index);

/// The texts speak of coordinates that are those of the drawing plus (dx, dy); where that isn't (0, 0),
/// nothing counts as untouched.
void UoOriginFrame(double dx, double dy);

/// Pattern `patNo` and `members` hold what a placed definition drew, which `text` tells; the members become
/// parts of the pattern. 0 or 1005.
int UoPlacedSet(int patNo, const std::vector<int>& members, std::string_view text);
/// Whether a pattern is what a placed definition drew, and from what. `isIntact` may be null, which costs
/// less. 1005 when it isn't.
int UoPlacedGet(int patNo, bool* isIntact, std::string_view* text);
/// The pattern with the text of which this one is a part, itself included; 0: none.
int UoPlacedOwner(int patNo);

/// A new definition without a text. Its number, from 1.
int UoDefinitionAdd(const UtCString& name);
/// Gives a definition a text. 0 or 1005.
int UoDefinitionText(int number, std::string_view text);
/// Name and text of a definition. 1005 when there is none of this number.
int UoDefinitionGet(int number, UtCString* name, std::string_view* text);
/// From here on new patterns belong to the definition, and walks find its patterns alone; 0: the drawing's
/// content again. Gives the number that was open.
int UoDefinitionOpen(int number);
