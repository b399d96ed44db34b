// SPDX-License-Identifier: MIT
#include "core/supplier_file.h"

#include "core/state.h"

namespace tilo {

const IndexedFileLayout kMansLayout{
    "mans.dat",
    kMansRecordSize,
    -1,     // no NameKeys
    false,  // bad numbers stay as they are
    {"Data file: mans.dat, not present.", "Data file: mans.dat, not present.",
     "Data file: mans.dat, not present.", "Not able to write to mans.dat",
     "Not able to write mans.dat", "Not able to write mans.dat"}};

bool LoadSupplierIndex() { return G().suppliers.Load(); }

}  // namespace tilo
