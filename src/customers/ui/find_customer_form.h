// SPDX-License-Identifier: MIT
// Form 804 "FIND CUSTOMER": one customer found by the name find, with "OK",
// "Cancel" and "Next".
#pragma once

#include "inventory/find_view.h"

class QWidget;

namespace tilo {

FindChoice ShowFindCustomer(QWidget* parent, const MemberRecord& m);

}  // namespace tilo
