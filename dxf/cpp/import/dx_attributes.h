// Attributes of INSERTs: ATTRIB and ATTDEF.
#pragma once

#include "../text/dx_text_import.h"
#include "dx_insert.h"

int DxReadAttrib(DX_ATTRIB_TYPE* rec);
/// Sets the attribute on the pattern of the running INSERT and, as $ATTMODE says, draws it as a text.
int DxDrawAttrib(const DX_ATTRIB_TYPE* rec, const Mat44 m);
/// A definition: in the open it shows its tag, a constant one is drawn as an attribute, any other isn't
/// drawn.
int DxDrawAttdef(const DX_ATTRIB_TYPE* rec, const Mat44 m);
/// Name of the attribute that an order value stands for; null for the orders that name none.
const char* DxAttributeOfOrder(int order, const char* ownName);
/// Gives the active pattern the name of a DXF layer, where the configuration wants that.
void DxNameLayerOfPattern(const DX_NAME& layer);
void DxAttribCopyToText(const DX_ATTRIB_TYPE* rec, DX_TEXT_TYPE* text);
