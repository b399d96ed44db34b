// SPDX-License-Identifier: MIT
// The shop the desktop's menu entry opens: one folder per user, made with a shop
// in it on the first launch.
#pragma once

#include <string>

namespace tilo {

// $TILO_SHOP when it is set, else TILO in the user's home folder. A visible
// folder, as the printouts, exports and backups the shopkeeper looks for are in it.
std::string HomeShopFolder();

// Makes `folder` if it is missing (with its parents) and keeps it the user's
// alone. On the first launch, when it holds no shop yet, asks whether to start
// with the demo shop or an empty one and runs the installer `newshop` there.
// Then makes it the current folder. False, after a message, when there is no
// shop to open (the question cancelled, or the folder or shop could not be made).
bool EnterHomeShop(const std::string& folder, const std::string& newshop);

}  // namespace tilo
