// SPDX-License-Identifier: MIT
#include "core/customer_file.h"

#include "core/state.h"

namespace tilo {

const IndexedFileLayout kMemberLayout{
    "member.dat",
    kMemberRecordSize,
    8,  // name
    true,
    {"Data file: member.dat, not present.", "Data file: member.dat, not present.",
     "Data file: member.dat, not present.", "Not able to write to member.dat",
     "Not able to write member.dat", "Not able to write member.dat"}};

bool LoadCustomerIndex() { return G().members.Load(); }

}  // namespace tilo
