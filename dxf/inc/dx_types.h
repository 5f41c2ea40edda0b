// Chief header of the module's records.
#pragma once

#include "dx_entity_base.h"
#include "dx_fixed.h"
#include "dx_insert.h"
#include "dx_linework.h"
#include "dx_polyline.h"
#include "dx_tables.h"
