// LAYOUT objects. Their groups mean different things in the two subclasses that they consist of.
#include "../session/dx_documents.h"
#include "../session/dx_fields.h"
#include "dx_objects_import.h"

namespace {

using R = DX_LAYOUT_TYPE;
constexpr auto plotFields = dxFields<R>({
    {4, &R::paperName, DX_UPPER},
    {40, &R::marginLeft},
    {41, &R::marginBottom},
    {44, &R::paperWidth},
    {45, &R::paperHeight},
    {70, &R::plotFlags},
    {72, &R::paperUnits},
    {73, &R::plotRotation},
    {75, &R::scaleType},
    {142, &R::scaleNumerator},
    {143, &R::scaleDenominator},
    {147, &R::scaleFactor},
});
constexpr auto layoutFields = dxFields<R>({
    {1, &R::name},
    {12, &R::base},
    {13, &R::ucsOrigin},
    {14, &R::extMin},
    {15, &R::extMax},
    {16, &R::ucsX},
    {17, &R::ucsY},
    {70, &R::flags},
    {71, &R::tabOrder},
    {146, &R::elevation},
    {330, &R::blockRecord},
});

DX_LAYOUT_TYPE startValues() {
    DX_LAYOUT_TYPE layout{};
    layout.paperUnits = 1;
    layout.scaleType = 16;
    layout.scaleFactor = layout.scaleNumerator = layout.scaleDenominator = 1;
    layout.ucsX = {1, 0, 0};
    layout.ucsY = {0, 1, 0};
    return layout;
}

enum class Subclass { None, PlotSettings, Layout };

Subclass subclassOf(std::string_view name) {
    if (name == "AcDbLayout") return Subclass::Layout;
    return name == "AcDbPlotSettings" ? Subclass::PlotSettings : Subclass::None;
}

} // namespace

int DxGetLayout() {
    DX_LAYOUT_TYPE layout = startValues();
    Subclass subclass = Subclass::None;
    DxPair pair;
    for (;;) {
        if (const int error = DxReadPair(pair)) return error;
        if (pair.code == 0) break;
        if (pair.code == 5)
            layout.handle = DxHexToU32(pair.text);
        else if (pair.code == 100)
            subclass = subclassOf(pair.text);
        else if (subclass == Subclass::Layout)
            layoutFields.store(layout, pair.code, pair.text);
        else if (subclass == Subclass::PlotSettings)
            plotFields.store(layout, pair.code, pair.text);
    }
    DxUnGetLine();
    return DxDocuments.requireCurrent().objects.layouts.add(layout) ? 2360 : 0;
}
