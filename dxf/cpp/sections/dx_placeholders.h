// What the export's templates leave open, and the handles that templates and module share.
//
// A value "#NAME#" of a template is a placeholder. Those of references stand for handles that are taken at
// the start of an export, before anything refers to them; under group 5 a template says that it holds the
// object. The handle of an object that no template holds is 0: nothing refers to it then.
#pragma once

#include <cstdint>
#include <string_view>

/// Handles that templates and module share. 0: the file has no such object.
struct DX_EXPORT_HANDLES {
    std::uint32_t paperSpace = 0, paperSpace0 = 0; ///< block records
    std::uint32_t layoutModel = 0, layoutPaper = 0, layoutPaper0 = 0;
    std::uint32_t viewport = 0;  ///< the active VPORT
    std::uint32_t plotStyle = 0; ///< of all layers
    std::uint32_t imageDict = 0; ///< dictionary of image definitions, always 5E
    std::uint32_t materialByLayer = 0, styleRealistic = 0, styleWireframe = 0;
};
extern DX_EXPORT_HANDLES DxHandles;

/// Takes the handles above, DxModelSpaceHandle, DxModelSpaceDict and DxByBlockLtypeHandle, as the target's
/// templates need them. Targets without handles have none.
void DxTakeHandles();

/// Writes a pair of a template, with its placeholder filled in. 0 or the export's error.
int DxWriteTemplatePair(int code, std::string_view value);

/// Name of the OBJECTS template of the target's version.
const char* DxObjectsTemplateName();
