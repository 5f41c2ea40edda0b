#include "export_state.h"

#include <algorithm>
#include <iterator>

int DxBlockOpen = 0;
UtCString DxBlockLayer;
int DxEntityCount = 0;
int DxPatCounter = 1;
int DxBlockType = DX_BLOCK_PLAIN;
int DxPatsOneWork = 1;
DxTable<int> DxPlainPats;
int DxElemColor = 0;
int DxTextColor = 0;
int DxArrowColor = 0;
int DxHatchColor = 0;
int DxDimTextColor = 0;
int DxDimArrowColor = 0;
int DxBlockMatrixMode = 0;
int DxBlockBufferWanted = 0;
std::uint32_t DxModelSpaceHandle = 0;
std::uint32_t DxModelSpaceDict = 0;
std::uint32_t DxByBlockLtypeHandle = 0;
std::uint32_t DxOwnerHandle = 0;
long DxUnwrittenCounts[DX_UNWRITTEN_COUNT] = {};
std::set<std::string> DxUsedApps;
std::uint32_t DxFirstKeptHandle;
std::vector<bool> DxHandlesTaken;
std::map<std::string, int> DxDefinitionNumbers;
std::unordered_map<int, int> DxPlacedDefinitions;
std::map<int, UtCString> DxDefinitionBlocks;

void DxResetExportState() {
    DxUsedApps.clear();
    DxFirstKeptHandle = 0;
    DxHandlesTaken.clear();
    DxDefinitionNumbers.clear();
    DxPlacedDefinitions.clear();
    DxDefinitionBlocks.clear();
    DxBlockOpen = 0;
    DxBlockLayer = "0";
    DxEntityCount = 0;
    DxPatCounter = 1;
    DxBlockType = DX_BLOCK_PLAIN;
    DxPatsOneWork = 1;
    DxPlainPats.free();
    DxElemColor = DxTextColor = DxArrowColor = DxHatchColor = 0;
    DxDimTextColor = DxDimArrowColor = 0;
    DxBlockMatrixMode = DxBlockBufferWanted = 0;
    DxModelSpaceHandle = DxModelSpaceDict = DxByBlockLtypeHandle = DxOwnerHandle = 0;
    std::fill(std::begin(DxUnwrittenCounts), std::end(DxUnwrittenCounts), 0L);
}
