// TABLES on its way out.
#pragma once

#include "dx_types.h"

int DxWriteTableSection(); ///< The whole section, into the header stream.
int DxTableWriteVports();
int DxTableWriteLTypes();
int DxTableWriteLayers();
int DxTableWriteStyles();
int DxTableWriteDimStyles();
int DxTableWriteView();
int DxTableWriteUCS();
int DxTableWriteAppid();
int DxTableWriteBlockRecords();
int DxTableWriteLType(const DX_LTYPE_TYPE* ltype, std::uint32_t tableHandle); ///< 3011 for null
int DxTableWriteConstLType(const char* name, std::uint32_t tableHandle, std::uint32_t* handleOut);
/// One LAYER record into the header stream, whatever stream is current.
int DxWriteNewLayer(const DX_LAYER_TYPE* layer, std::uint32_t tableHandle);
int DxWriteCloseSection(); ///< ENDSEC into the header stream.
