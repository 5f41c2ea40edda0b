#include "text_state.h"

std::vector<std::unique_ptr<DxFontTable>> DxFontTables;
std::unordered_map<std::string, int> DxFontTableIndex;
std::vector<std::unique_ptr<DxCadFontTable>> DxCadFontTables;
std::unordered_map<int, int> DxCadFontTableIndex;
std::unordered_map<std::string, DxFaceTable> DxFaceTables;
std::array<DxCharMap, 2> DxCharMaps;
int DxFinishPending;
double DxWrittenDescent;
int DxTextTooSmallTold;
DxTextOptions DxTextOptionsRead;
std::vector<DX_TEXT_PLACE> DxTextList;
std::size_t DxTextListSize;
std::unordered_map<const DxTables*, DxStyleIndex> DxStyleIndexes;
const DxTables* DxLastStyleTables;
DxStyleIndex* DxLastStyleIndex;

void DxResetTextState() {
    DxFontTables.clear();
    DxFontTableIndex.clear();
    DxCadFontTables.clear();
    DxCadFontTableIndex.clear();
    DxFaceTables.clear();
    DxCharMaps = {};
    DxFinishPending = 0;
    DxWrittenDescent = 0;
    DxTextTooSmallTold = 0;
    DxTextOptionsRead = {};
    DxTextList.clear();
    DxTextListSize = 0;
    DxStyleIndexes.clear();
    DxLastStyleTables = nullptr;
    DxLastStyleIndex = nullptr;
}
