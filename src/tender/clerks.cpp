// SPDX-License-Identifier: MIT
#include "tender/clerks.h"

#include <cstdio>

#include "core/activity_log.h"
#include "core/clock.h"
#include "core/packed.h"
#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "platform/platform.h"
#include "sale/basket.h"
#include "sale/screen.h"

namespace tilo {
namespace {

bool Privileged(int64_t clerk) {
  return clerk == 1 || clerk == 2;
}

// Where each right is kept. A "free" flag keeps a command from restricted
// clerks at 0 and frees it at any other value; an "inhibit" flag keeps its
// command back at 2. The record holds some of them as 64-bit numbers.
struct RightFlag {
  const char* label;
  int64_t SettingsRecord::*wide;
  int32_t SettingsRecord::*narrow;
  int free_item;  // index into free_item, or -1
  bool inhibit;
};

using S = SettingsRecord;
const RightFlag kRightFlags[kRights] = {
    {"Configuration", &S::free_configuration, nullptr, -1, false},
    {"Delete Inventory", nullptr, nullptr, 0, false},
    {"Delete customer", nullptr, nullptr, 1, false},
    {"Prune customers", nullptr, nullptr, 2, false},
    {"Customer balance", nullptr, nullptr, 3, false},
    {"Status display", nullptr, nullptr, 4, false},
    {"Takings", nullptr, nullptr, 5, false},
    {"Print takings", nullptr, nullptr, 6, false},
    {"Purge takings", nullptr, nullptr, 7, false},
    {"Purge log files", nullptr, nullptr, 8, false},
    {"Takings amendment", nullptr, nullptr, 9, false},
    {"File reset", nullptr, nullptr, 10, false},
    {"New inventory", nullptr, &S::free_new_inventory, -1, false},
    {"Inventory received", nullptr, &S::free_inventory_received, -1, false},
    {"Amend inventory", nullptr, &S::free_amend_inventory, -1, false},
    {"Tax setup", nullptr, &S::free_tax_setup, -1, false},
    {"Inhibit discount button", &S::inhibit_discount_button, nullptr, -1, true},
    {"Inhibit adjust price button", &S::inhibit_adjust_button, nullptr, -1, true},
    {"Inhibit trade price button", &S::inhibit_trade_button, nullptr, -1, true},
    {"Inhibit by weight button", &S::inhibit_weight_button, nullptr, -1, true},
    {"Cashback", nullptr, &S::inhibit_cashback, -1, true},
    {"Non inventory sale", nullptr, &S::inhibit_non_inventory, -1, true},
    {"Refunds", nullptr, &S::inhibit_refunds, -1, true},
    {"Inhibit manual till open", nullptr, &S::inhibit_till_open, -1, true},
    {"Report menu", nullptr, &S::restrict_report_menu, -1, true},
    {"Activity menu", nullptr, &S::restrict_activity_menu, -1, true},
    {"Do not display cost price", nullptr, &S::hide_cost, -1, true},
};

int64_t FlagValue(const RightFlag& f) {
  const SettingsRecord& s = G().settings;
  if (f.free_item >= 0) return s.free_item[f.free_item];
  if (f.wide) return FieldOf(s, f.wide);
  return FieldOf(s, f.narrow);
}

void SetFlag(const RightFlag& f, int64_t value) {
  SettingsRecord& s = G().settings;
  if (f.free_item >= 0)
    s.free_item[f.free_item] = value;
  else if (f.wide)
    SetField(s, f.wide, value);
  else
    SetField(s, f.narrow, int32_t(value));
}

}  // namespace

int Restriction(int64_t clerk) {
  return Privileged(clerk) ? 0 : 2;
}

LogonForm Openlogon() {
  return LogonForm{};
}

std::string Logonline(const LogonForm& form) {
  return std::to_string(form.clerk) + " " + ClerkName(G().settings, form.clerk);
}

void Steplogon(LogonForm& form, int direction) {
  const SettingsRecord& s = G().settings;
  int clerk = form.clerk;
  for (int tries = 0; tries < kClerks; ++tries) {
    clerk += direction < 0 ? -1 : 1;
    if (clerk > kClerks) clerk = 1;
    if (clerk < 1) clerk = kClerks;
    if (s.clerk_available[clerk] == 0) break;
  }
  form.clerk = clerk;
}

void Logonkey(LogonForm& form, const std::string& key) {
  if (key == "C") {
    form.password.clear();
  } else if (key == "CE") {
    if (!form.password.empty()) form.password.pop_back();
  } else if (key.size() == 1 && key[0] >= '0' && key[0] <= '9') {
    if (int(form.password.size()) < kPasswordBoxLength) form.password += key;
  }
}

bool Acceptlogon(LogonForm& form) {
  // The number is read back from the start of the clerk's line.
  const int64_t clerk = LeadingNumber(Logonline(form));
  if (clerk < 1 || clerk > kClerks || form.password != ClerkPassword(G().settings, clerk)) {
    form = Openlogon();
    return false;
  }
  Logonclerk(clerk);
  return true;
}

void Logonclerk(int64_t clerk) {
  State& g = G();
  SettingsRecord& s = g.settings;
  s.clerk_number = clerk;
  g.screen.restricted_clerk = Restriction(clerk);
  Clearbasket();
  screen_view().settings_changed();

  Timestamp();
  const std::string name = ClerkName(s, clerk);
  const std::string entry =
      StampedEntry("Log on.") + "Clerk: " + std::to_string(clerk) + ", " + name + "\r\n";
  if (!AppendToLog(entry)) Message("Unable to open bun4.dat", "Problem");

  screen_view().set_title("TILO Retail    Assoc: " + std::to_string(clerk) + ", " +
                          Cp1252ToUtf8(name));
}

ClerkForm Openclerkform(int clerk) {
  ClerkForm form;
  form.clerk = clerk;
  if (clerk < 1 || clerk > kClerks) return form;
  const SettingsRecord& s = G().settings;
  form.name = ClerkName(s, clerk);
  form.available = s.clerk_available[clerk] == 0;
  return form;
}

bool Mayhideclerk(int clerk) {
  return !Privileged(clerk);
}

bool Acceptclerkform(const ClerkForm& form) {
  if (form.clerk < 1 || form.clerk > kClerks) return true;
  SettingsRecord& s = G().settings;
  // The record's field holds 29 characters and its terminator.
  if (form.name.size() > sizeof s.clerk_name[0] - 1) {
    Message("Name too long", "Problem");
    return false;
  }
  SetField(s.clerk_name[form.clerk - 1], form.name);
  if (!form.available && Mayhideclerk(form.clerk)) {
    // The password is not read for a clerk taken off the list.
    s.clerk_available[form.clerk] = 2;
    return true;
  }
  if (form.password.size() > kPasswordLength || form.password_again.size() > kPasswordLength) {
    Message("Password too long", "Problem");
    return false;
  }
  if (form.password != form.password_again) {
    Message("Passwords do not match", "Problem");
    return false;
  }
  SetField(s.clerk_password[form.clerk], form.password);
  s.clerk_available[form.clerk] = 0;
  return true;
}

void Operatorsetup(const ClerkFormRunner& form) {
  if (G().screen.restricted_clerk == 2) {
    Message("Administrator or manager", "Restricted access");
    return;
  }
  std::optional<std::string> reply =
      platform().prompt("Please enter the clerk number (1-99):", "Operator setup");
  if (!reply) return;
  const int64_t clerk = LeadingNumber(*reply);
  if (clerk < 1 || clerk > kClerks) {
    Message("Outside range", "Problem");
    return;
  }
  if (form(int(clerk))) Message("Amended", "Clerk");
}

const char* Rightlabel(int right) {
  if (right < 0 || right >= kRights) return "";
  return kRightFlags[right].label;
}

RightsForm Openrightsform() {
  RightsForm form{};
  for (int r = 0; r < kRights; ++r) {
    const RightFlag& f = kRightFlags[r];
    form[r] = f.inhibit ? FlagValue(f) == 2 : FlagValue(f) == 0;
  }
  return form;
}

void Tickallrights(RightsForm& form, bool ticked) {
  for (int r = 0; r < kRights; ++r)
    if (r != kRightNewInventory && r != kRightInventoryReceived) form[r] = ticked;
}

void Acceptrightsform(const RightsForm& form) {
  for (int r = 0; r < kRights; ++r) {
    const RightFlag& f = kRightFlags[r];
    if (f.inhibit)
      SetFlag(f, form[r] ? 2 : 0);
    else
      SetFlag(f, form[r] ? 0 : 2);
  }
}

void Usercontrol(const RightsFormRunner& form) {
  if (Privileged(G().settings.clerk_number)) form();
}

}  // namespace tilo
