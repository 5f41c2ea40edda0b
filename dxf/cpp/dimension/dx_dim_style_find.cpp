// Dimension styles by name.
#include "../session/dx_documents.h"
#include "dimension_state.h"
#include "dx_dim_import.h"

const DX_DIM_STYLE* DxFindDimStyle(std::string_view name) {
    const auto& styles = DxDocuments.currentTables().dimStyles;
    DX_DIM_STYLE_NAMES& names = DxDimStyleNames;
    if (names.table != &styles || names.count != styles.size()) {
        names = {&styles, styles.size(), {}};
        for (std::size_t i = 0; i < styles.size(); ++i)
            names.places.emplace(styles[i].name.view(), i); // the first of a name stays
    }
    const auto found = names.places.find(std::string(name));
    return found == names.places.end() ? nullptr : &styles[found->second];
}
