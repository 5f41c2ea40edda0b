#include "account_state.h"

int DxEntityDrawn = 0;
DxReason DxEntityReason = DxReason::None;
int DxEntityInSpace = 0;
int DxAccountsBlock = 0;
std::map<DxAccountKey, std::size_t> DxAccountRows;
DX_LINE_MARK DxAccountMark;

void DxResetAccountState() {
    DxEntityDrawn = 0;
    DxEntityReason = DxReason::None;
    DxEntityInSpace = 0;
    DxAccountsBlock = 0;
    DxAccountRows.clear();
    DxAccountMark = DX_LINE_MARK{};
}
