// SPDX-License-Identifier: MIT
// "Amend balance": the one way, besides sales and payments, to change what a
// customer owes once the record exists.
#pragma once

#include <optional>
#include <string>

namespace tilo {

// The new balance as typed: an amount as "Payment" reads it (a point before
// the pence in every locale), here with an optional leading minus for a credit.
// nullopt for an empty or non-numeric text.
std::optional<float> Balanceamount(const std::string& typed);

// Asks for the customer, then the new balance over the current one; stores it
// and logs the before and after in the activity log.
void Amendbalance();

}  // namespace tilo
