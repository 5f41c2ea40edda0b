// Options and mapping tables of one session, as configuration files and macro variables set them.
#pragma once

#include "dx_fixed.h"
#include "dx_mapping_index.h"

/// Order values: which identifying field of a pattern a layer or block name goes into.
enum DxOrder : int {
    DX_ORDER_GROUP = 0,
    DX_ORDER_LEVEL = 1,
    DX_ORDER_CLASS = 2,
    DX_ORDER_NAME = 3,
    DX_ORDER_ATTR = 4,
    DX_ORDER_FIXED = 5,
    DX_ORDER_NONE = 6,
};

/// Element classes in the order of DxLayerKinds.
enum DxElementClass : int {
    DX_CLASS_ELEMENT = 0,
    DX_CLASS_TEXT = 1,
    DX_CLASS_HATCH = 2,
    DX_CLASS_DIMENSION = 3,
    DX_CLASS_ARROW = 4,
    DX_CLASS_COUNT = 5,
};

struct DX_CHAR_PAIR {
    int dxf;
    int host;
};
struct DX_CHAR_TEXT {
    DX_NAME text;
    int code;
};
struct DX_ATTR_PAIR {
    DX_NAME dxf;
    DxFixed<255> host;
};
struct DX_LAYER_PAIR {
    DX_NAME dxf;
    DxFixed<60> host;
};
/// A font of the DXF side and its host side.
struct DX_FONT_TYPE {
    int number;       ///< host font number, 0: by name
    DX_NAME font;     ///< DXF font name
    DX_NAME hostFont; ///< host font name when number is 0
    double factor;    ///< width factor, 0: none given
    DX_NAME style;    ///< style name
};

// ---- options, with their keys ----------------------------------------------------------------------
extern int DxAllLayers;                    ///< ALL_LAYERS: layers that are off are read too
extern int DxUseInsBase;                   ///< USE_REF; the import driver sets it from &DxfInsbase first
extern int DxDimMode;                      ///< ASO_DIM: 0 associative, 1 free only, 2 block only
extern int DxDimStyleCompat;               ///< ASO_DIM=2: the further switch of the dimension styles
extern int DxWriteAsoDim;                  ///< WRITE_ASO_DIM
extern int DxFillMode;                     ///< FILLMODE; 2: $FILLMODE of the file decides
extern int DxPdMode;                       ///< READ_PDMODE
extern int DxExportView;                   ///< EXPORT_VIEW
extern int DxDigits;                       ///< NO_KOMMA, DIGITS: decimals of all doubles written
extern int DxBlockToPattern, DxBlockOrder; ///< READ_BLOCK
extern int DxInsertAttr;   ///< INSERT_ATTR: attributes of an INSERT have a pattern of their own
extern int DxLayerStates;  ///< LAYER_STATES: layers that aren't shown arrive and leave in their state
extern int DxInsertArrays; ///< INSERT_ARRAYS: each instance of an array of INSERTs is drawn
extern int DxAllSections;  ///< ALL_SECTIONS: sections in any order, and several of a name
extern int DxKeepLooks; ///< PEN_LOOKS: pens for true colours, line weights and what takes its layer's colour
extern int DxKeepEntities; ///< KEEP_ENTITIES: what entities were goes to the host beside what they draw
extern int DxKeepBlocks;   ///< KEEP_BLOCKS: INSERTs and their blocks likewise
extern int DxLayerToPattern, DxLayerOrder; ///< READ_LAYER
extern int DxDimInBlock;                   ///< DIM_IN_BLOCK
extern int DxWriteTol;                     ///< TOL
extern int DxExoMode;                      ///< EXO
extern double DxExoDefault;                ///< EXO_DFLT
extern double DxLtScale;                   ///< LT_SCALE, &DxfUserLtScale
extern int DxUseTemplate;                  ///< USE_TEMPLATE
extern UtCString DxTemplateName;           ///< TEMPLATE_NAME
extern int DxUseByLayer;                   ///< USE_BYLAYER, &DxfByLayer
extern UtCString DxByLayerFile;            ///< BYLAYER_NAME
extern int DxViews;                        ///< VIEWS
extern int DxFillContour;                  ///< FILL_CONTOUR
extern int DxUseUcs;                       ///< USE_UCS
extern int DxWriteInsUnits;                ///< WRITE_INSUNITS: the file names its unit
extern int DxUseGeoref;                    ///< USE_GEOREF
extern int DxPaperSize;                    ///< PAPER_SIZE: sheets have the size of their paper
extern int DxAllVertices;                  ///< ALL_VERTICES: those beyond the announced number are taken
extern int DxClipImages;                   ///< CLIP_IMAGES: images show what is within their boundary
extern int DxFullGroups;                   ///< FULL_GROUPS: groups at their default are written
extern int DxFillSegType;                  ///< FILL_SEGTYPE
extern double DxFillSegValue;              ///< FILL_SEGVAL
extern int DxKeepHatchPattern;             ///< KEEP_HATCH: hatches keep the pattern of the file
extern int DxKeepDimLines;                 ///< KEEP_DIM: dimensions show the lines of the file's block
extern int DxLineAsHatch;                  ///< LINE_AS_HATCH
extern int DxWriteTxtOrg;                  ///< WRITE_TXT_ORG
extern int DxWriteHatch;                   ///< WRITE_HATCH
extern int DxWriteAttr;                    ///< WRITE_ATTR
extern int DxWriteFill;                    ///< WRITE_FILL
extern int DxWritePoly;                    ///< WRITE_POLY
extern int DxPatternToBlock;               ///< WRITE_BLOCKS
extern int DxMaxElements;                  ///< ELEMENTS: elements of a pattern before a new one is begun
extern double DxTextFactor;                ///< TEXTFACTOR
extern int DxLayerKinds[DX_CLASS_COUNT];   ///< order value of each element class
extern UtCString DxLayerFixedNames[DX_CLASS_COUNT]; ///< fixed name of each class
extern UtCString DxUnitOption;                      ///< UNIT: stored, no effect
extern double DxPosition;                           ///< POSIT: stored, no effect

// ---- from macro variables only ---------------------------------------------------------------------
extern int DxColAttr;            ///< &DxfColAttr
extern int DxDimUsrTxt;          ///< &DxfDimUsrTxt
extern int DxNoPolyWidth;        ///< &DxfNoPolyWidth
extern int DxJoinTexts;          ///< &DxfJoinTexts
extern int DxMeshEdges;          ///< MESH_EDGES: a mesh in a flat picture is its visible edges
extern int Dx3dLines;            ///< &Dxf3dLines, MODUS_3D=2
extern int DxSolidsAsSubObjects; ///< &Dxf3DSolidsAsSubObjects
extern int DxBlockCopies;        ///< &DxfBlockCopies
extern int DxLuPrec;             ///< linear precision of the header

// ---- mapping tables --------------------------------------------------------------------------------
extern DxTable<DX_COLOR_PAIR> DxPenToCad;  ///< first match wins
extern DxTable<DX_COLOR_PAIR> DxFillToCad; ///< first match wins
extern DxTable<DX_COLOR_PAIR> DxFillToDxf; ///< first match on the host fill wins
extern int DxPenToDxf[1024];               ///< by host pen
extern DxTable<DX_LT_PAIR> DxLtToCad;
extern DxTable<DX_CHAR_PAIR> DxCharPairs[2]; ///< main file, special file
extern DxTable<DX_CHAR_TEXT> DxCharTexts[2];
extern DxTable<DX_FONT_TYPE> DxFonts; ///< #FONT-…, behind the default font that the session start adds
extern DxTable<DX_ATTR_PAIR> DxAttrMap;
extern DxTable<DX_LAYER_PAIR> DxLayerMap;
extern int DxDefaultPen, DxDefaultFill; ///< -1 until set, then 10
extern int DxSpecialCadFont;            ///< "@" line of #FONT-DXF-TO-CAD: host font, -1 if none
extern UtCString DxSpecialDxfFont;      ///< "@" line of #FONT-CAD-TO-DXF: DXF font
extern int DxFinishCode;                ///< "^" line of #CHAR-CAD-TO-DXF: host code, -1 if none
extern DX_NAME DxFinishText;            ///< what the text ends with then, bytes of the DXF side

// ---- running values of layer and pen mapping -------------------------------------------------------
extern DX_NAME DxActLayer;        ///< layer of the current entity
extern UtCString DxActHostLayer;  ///< of an export: what the host calls DxActLayer
extern DX_NAME DxActLt;           ///< line type of that layer
extern int DxActColor;            ///< colour of that layer
extern int DxByLayerColor;        ///< colour of the classification's layer, 0 when unset
extern DX_NAME DxByLayerLt;       ///< line type of the classification's layer
extern int DxAttrPen, DxAttrFill; ///< colour attribute of the current pattern, -1 if none
/// Names of the pattern being exported: group, level, class, name, attribute "layer", attribute "obstat".
extern UtCString DxPatNames[6];
extern int DxLastPen, DxLastLt; ///< what DxSetPenLt handed to the host last, -1 before the first time

// ---- lookups over the mapping tables -----------------------------------------------------------------
extern DxPairIndex DxPenToCadIndex;                                ///< DxPenToCad by colour
extern DxPairIndex DxFillToCadIndex;                               ///< DxFillToCad by colour
extern DxPairIndex DxFillToDxfIndex;                               ///< DxFillToDxf by host fill
extern DxLtIndex DxLtToCadIndex;                                   ///< DxLtToCad by name
extern DxRecordIndex<DX_ATTR_PAIR, DX_NAME> DxAttrIndex;           ///< DxAttrMap by DXF name
extern DxRecordIndex<DX_LAYER_PAIR, DX_NAME> DxLayerMapIndex;      ///< DxLayerMap by DXF name
extern DxRecordIndex<DX_LAYER_PAIR, DxFixed<60>> DxHostLayerIndex; ///< DxLayerMap by host name

/// Start values of all of the above but DxUseInsBase.
void DxResetConfigState();
