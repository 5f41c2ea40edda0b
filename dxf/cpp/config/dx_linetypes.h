// Line types: their records, the built-in ones, and the host's number for a name.
#pragma once

#include "config_state.h"
#include "dx_types.h"

#include <string_view>

void DxInitLType(DX_LTYPE_TYPE* lineType); ///< A record as the tables start one.
/// Gives the line type at `index` of the current table the dash pattern that either name has built in.
void DxInitLinetypes(std::string_view name, std::string_view alias, int index);
/// Appends a line type as configurations do: solid until its dashes are known. 0 or the allocation error.
int DxAddLinetype(int number, std::string_view name);
/// Name of the first line type of the current table, empty when there is none.
std::string_view DxFirstLinetype();
/// Host number of an entity's line type, with ByBlock and ByLayer resolved. An unknown name gives 1 and is
/// reported.
int DxResolveLinetype(const DX_ENTITY_BASE_TYPE& entity, std::string_view layerLineType);
