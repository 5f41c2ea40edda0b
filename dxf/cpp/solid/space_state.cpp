#include "space_state.h"

int DxMeshCaps = 1, DxFlatPlan = 1;

int Dx3dPolyFirst = 0;
int Dx3dPolyRaised = 0;
RPT3 Dx3dPolyStart{};
RPT3 Dx3dLastPoint{};
double Dx3dPolyBulge = 0;
int Dx3dPolyPen = 1, Dx3dPolyLineType = 1;

void DxResetSpaceState() {
    DxMeshCaps = DxFlatPlan = 1;
    Dx3dPolyFirst = Dx3dPolyRaised = 0;
    Dx3dPolyStart = Dx3dLastPoint = {0, 0, 0};
    Dx3dPolyBulge = 0;
    Dx3dPolyPen = Dx3dPolyLineType = 1;
}
