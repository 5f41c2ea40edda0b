// Dimensions as files have them: the DIMENSION of each kind with a block of lines, arrows and text as a
// program draws it.
#pragma once

#include "dxf_text.h"

#include <string>
#include <vector>

enum class DimArrow { None, Filled, Tick, Dot };

/// What dimensions of a kind may differ in.
struct DimShape {
    double degrees = 0; ///< of the dimension line
    DimArrow arrow = DimArrow::Filled;
    bool hasGap = false;    ///< the line is broken for the text
    bool isOutside = false; ///< arrows point at the extension lines from outside
    bool hasExtensions = true;
    int pieces = 1;        ///< of a line without gap
    double noise = 0;      ///< of all points of the block
    bool asBlocks = false; ///< arrows are INSERTs of named blocks
    bool textFirst = false, asMtext = false;
    std::string text = "12.50";
    std::vector<std::string> tolerances; ///< one or two, smaller texts behind the value
};

/// A dimension on its way into a DxfText.
struct DimEntity {
    DxfGroups block, entity;
};

/// Linear: from (0, 0) over 40 units at `degrees`, the dimension line 15 units to the left.
DimEntity linearDimension(const DimShape& shape, double x = 0, double y = 0);
/// About (100, 100), radius 20, from 10 to 70 degrees.
DimEntity angularDimension(const DimShape& shape);
/// Of a circle about (200, 0) with radius 30, at 30 degrees.
DimEntity radiusDimension(const DimShape& shape);
DimEntity diameterDimension(const DimShape& shape);
/// Of the feature (50, 20) from the origin (10, 10). `isX`: what is measured.
DimEntity ordinateDimension(bool isX);

/// Adds it with its block, on layer `layer`.
void addDimension(DxfText& file, const std::string& block, const DimEntity& dimension,
                  const std::string& layer = "DIM", const std::string& name = "DIMENSION");
