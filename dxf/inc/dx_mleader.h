// The record of MULTILEADER.
#pragma once

#include "dx_entity_base.h"
#include "rpt.h"

#include <string>
#include <vector>

/// One line with a head.
struct DX_MLEADER_LINE {
    std::vector<RPT3> vertices; ///< 10 20 30, world coordinates, the head's first
    int colour = 0;             ///< 92, raw
    double arrowSize = -1;      ///< 40; below 0: that of the context
    std::uint32_t arrow = 0;    ///< 341, block of the head; 0: that of the entity
};

/// Lines that meet in one point.
struct DX_MLEADER_BRANCH {
    int hasEnd = 0;           ///< 290
    int hasLanding = 0;       ///< 291
    RPT3 end{0, 0, 0};        ///< 10 20 30, where the lines meet
    RPT3 direction{0, 0, 0};  ///< 11 21 31, of the landing
    double landingLength = 0; ///< 40
    std::vector<DX_MLEADER_LINE> lines;
};

/// A text that a block's attribute shows.
struct DX_MLEADER_ATTRIBUTE {
    std::uint32_t definition = 0; ///< 330, handle of the ATTDEF
    std::string text;             ///< 302
};

/// What its context data say; these hold the entity as it is drawn, in world coordinates. Raw colours have
/// their kind in the highest byte: 0xC0 ByLayer, 0xC1 ByBlock, 0xC2 RGB, 0xC3 an index.
struct DX_MLEADER_TYPE {
    DX_ENTITY_BASE_TYPE base;

    // ---- context, outside of its leaders
    double textHeight;            ///< 41
    double arrowSize;             ///< 140
    int hasText;                  ///< 290
    std::string text;             ///< 304, format codes as in an MTEXT
    double textNormal[3];         ///< 11 21 31
    std::uint32_t textStyle;      ///< 340
    RPT3 textPoint;               ///< 12 22 32, at the first line
    RPT3 textDirection;           ///< 13 23 33
    double textRotation;          ///< 42, radians
    double boxWidth;              ///< 43
    double lineSpacing;           ///< 45
    int textColour;               ///< 90, raw
    int alignment;                ///< 171; 1 left 2 centre 3 right
    int backColour;               ///< 91, raw
    double backScale;             ///< 141
    int isWindowBack, isBackFill; ///< 291, 292
    int hasBlock;                 ///< 296
    std::uint32_t block;          ///< 341
    double blockNormal[3];        ///< 14 24 34
    RPT3 blockPoint;              ///< 15 25 35
    RPT3 blockScale;              ///< 16 26 36
    double blockRotation;         ///< 46, radians
    int blockColour;              ///< 93, raw
    std::vector<DX_MLEADER_BRANCH> branches;

    // ---- the entity's own groups
    int pathType;        ///< 170; 0 none 1 straight 2 spline
    int lineColour;      ///< 91, raw
    std::uint32_t arrow; ///< 342, block of the heads; 0: a filled triangle
    int hasFrame;        ///< 292
    std::vector<DX_MLEADER_ATTRIBUTE> attributes;
};
