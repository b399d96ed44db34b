// SPDX-License-Identifier: MIT
// Clerks: the table of 99 clerks in the settings record (a name, a numeric
// password, available or not), the log-on that nobody gets past without a
// valid password, the set-up of one clerk, and the rights form that keeps
// commands from the clerks other than 1 (Administrator) and 2 (Manager).
// The forms' rules live here; the windows only show them.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>

namespace tilo {

inline constexpr int kClerks = 99;
inline constexpr int kPasswordBoxLength = 9;  // what the log-on box holds
inline constexpr int kPasswordLength = 8;     // what a clerk's password may be
inline constexpr int kClerkNameBox = 28;      // what the name box gives back

// 0 for the Administrator and the Manager, 2 for every other clerk.
int Restriction(int64_t clerk);

// The log-on form: the clerk shown on its line and the digits typed.
struct LogonForm {
  int clerk = 1;
  std::string password;
};
// The form as it opens: clerk 1, nothing typed.
LogonForm Openlogon();
// "%d %s": the clerk's number and name (Windows-1252).
std::string Logonline(const LogonForm& form);
// "Up" (+1) and "Down" (-1): the next available clerk, wrapping over 1 to 99.
void Steplogon(LogonForm& form, int direction);
// A key of the keypad: a digit is added while the box holds fewer than 9,
// "C" empties it, "CE" takes off the last digit.
void Logonkey(LogonForm& form, const std::string& key);
// "OK": with the right password for the clerk on the line, logs the clerk on
// and answers true. Otherwise answers false and the form starts again.
bool Acceptlogon(LogonForm& form);
// Makes `clerk` the clerk on duty: the rights, the menus, the activity log, the
// window title.
void Logonclerk(int64_t clerk);

// The set-up of one clerk.
struct ClerkForm {
  int clerk = 0;
  std::string name;  // Windows-1252
  bool available = true;
  std::string password;
  std::string password_again;
};
ClerkForm Openclerkform(int clerk);
// Whether the "Available" tick may be changed (never for clerks 1 and 2).
bool Mayhideclerk(int clerk);
// "OK": stores what it may and answers true when the form closes. A refused
// password keeps the form open with the name already stored.
bool Acceptclerkform(const ClerkForm& form);

// "Operator setup": refuses a restricted clerk, asks for the clerk's number,
// runs the clerk's form and confirms. `form` shows the form and answers true
// when it closed on OK.
using ClerkFormRunner = std::function<bool(int clerk)>;
void Operatorsetup(const ClerkFormRunner& form);

// The rights form: one tick per right, in the order of the form.
enum Right {
  kRightConfiguration,
  kRightDeleteInventory,
  kRightDeleteCustomer,
  kRightPruneCustomers,
  kRightCustomerBalance,
  kRightStatusDisplay,
  kRightTakings,
  kRightPrintTakings,
  kRightPurgeTakings,
  kRightPurgeLogFiles,
  kRightTakingsAmendment,
  kRightFileReset,
  kRightNewInventory,
  kRightInventoryReceived,
  kRightAmendInventory,
  kRightTaxSetup,
  kRightDiscountButton,
  kRightAdjustButton,
  kRightTradeButton,
  kRightWeightButton,
  kRightCashback,
  kRightNonInventory,
  kRightRefunds,
  kRightTillOpen,
  kRightReportMenu,
  kRightActivityMenu,
  kRightHideCost,
  kRights
};
// The tick's wording.
const char* Rightlabel(int right);
// A tick means the thing is kept from restricted clerks.
using RightsForm = std::array<bool, kRights>;
RightsForm Openrightsform();
// "All": ticks or clears every box but "New inventory" and "Inventory received".
void Tickallrights(RightsForm& form, bool ticked);
// "OK": each flag stored by its own coding.
void Acceptrightsform(const RightsForm& form);
// "User control": only the Administrator and the Manager reach the form.
using RightsFormRunner = std::function<void()>;
void Usercontrol(const RightsFormRunner& form);

}  // namespace tilo
