// What content is made from, told to the host: runs of elements, texts and hatches of one entity each, and
// the patterns that an INSERT has drawn.
#pragma once

#include "origin.h"
#include "origin_state.h"

/// The active pattern is settled for what the entity draws next: its content begins here.
void DxOriginNotePattern();
/// The active pattern goes on where `full` has no more room: an entity that has drawn nothing yet begins
/// here.
void DxOriginFollow(int full);
/// What the entity has drawn was made from `text`. Content of several lists or patterns, and none, isn't
/// kept. 0 or the host's error.
int DxOriginKeep(std::string text);
/// Tells the host of runs whose elements it has been given. 0 or the host's error.
int DxOriginHandOver(int patNo);

/// The pattern of an INSERT's own is active: all patterns from here on belong to the INSERT.
void DxPlacedBegin();
/// They end here. `text` is what the INSERT was made from.
void DxPlacedEnd(std::string text);
/// Tells the host of all INSERTs of the pass, when their patterns hold what they will hold.
int DxPlacedTell();
