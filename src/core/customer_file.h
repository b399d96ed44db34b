// SPDX-License-Identifier: MIT
// member.dat, the customers: fixed records of 2094 bytes in the pattern of the
// inventory file, with their own index and NameKeys. The record still carries
// the loan block (ten slots of items out) of the rental system it came from.
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/indexed_file.h"

namespace tilo {

#pragma pack(push, 1)
struct MemberRecord {
  int64_t number;  // 1 to 100000000000000000; -1 deleted
  char name[30];
  char road[30];
  char area[30];
  char town[30];
  char postcode[10];
  char telephone[20];
  char telephone_extension[20];
  char telephone2[20];
  // The form takes up to 29 characters here, so a long fax runs on into
  // shipping_address_1.
  char fax[20];
  char shipping_address_1[60];
  char shipping_address_2[30];
  char shipping_address_3[30];
  char shipping_address_4[30];
  char shipping_address_5[10];
  char title[6];
  char initials[8];
  char contact[60];
  char notes[200];
  int32_t group;  // 1 to 2000
  uint8_t reserved_656[20];
  char comment[30];
  char credit_card[40];
  char credit_card2[80];
  char credit_card_expiry[20];
  char credit_card2_expiry[160];
  int32_t terms;  // 1 to 8, a row of the terms table
  int32_t last_transaction;
  char comment2[40];
  char email[40];
  float total_purchases;
  uint8_t reserved_1098[12];
  char origination[12];
  char last_used[16];     // "%02d:%02d%02d/%02d/%d", or "NEW" until first used
  char last_payment[16];  // same form; empty until the first payment
  int64_t reserved_1154[10];
  char reserved_1234[10][16];
  char reserved_1394[10][16];
  float balance;
  float credit_limit;
  uint8_t reserved_1562[16];
  int32_t transactions;
  int64_t tax;  // 1 taxable, 0 not
  int64_t loan_item[10];
  int64_t reserved_1670[10];
  char loan_out[10][16];
  char loan_due[10][16];
  uint8_t reserved_2070[20];
  int32_t reserved_2090;
};
#pragma pack(pop)

static_assert(sizeof(MemberRecord) == 2094);
static_assert(offsetof(MemberRecord, number) == 0);
static_assert(offsetof(MemberRecord, name) == 8);
static_assert(offsetof(MemberRecord, road) == 38);
static_assert(offsetof(MemberRecord, area) == 68);
static_assert(offsetof(MemberRecord, town) == 98);
static_assert(offsetof(MemberRecord, postcode) == 128);
static_assert(offsetof(MemberRecord, telephone) == 138);
static_assert(offsetof(MemberRecord, telephone_extension) == 158);
static_assert(offsetof(MemberRecord, telephone2) == 178);
static_assert(offsetof(MemberRecord, fax) == 198);
static_assert(offsetof(MemberRecord, shipping_address_1) == 218);
static_assert(offsetof(MemberRecord, shipping_address_2) == 278);
static_assert(offsetof(MemberRecord, shipping_address_3) == 308);
static_assert(offsetof(MemberRecord, shipping_address_4) == 338);
static_assert(offsetof(MemberRecord, shipping_address_5) == 368);
static_assert(offsetof(MemberRecord, title) == 378);
static_assert(offsetof(MemberRecord, initials) == 384);
static_assert(offsetof(MemberRecord, contact) == 392);
static_assert(offsetof(MemberRecord, notes) == 452);
static_assert(offsetof(MemberRecord, group) == 652);
static_assert(offsetof(MemberRecord, reserved_656) == 656);
static_assert(offsetof(MemberRecord, comment) == 676);
static_assert(offsetof(MemberRecord, credit_card) == 706);
static_assert(offsetof(MemberRecord, credit_card2) == 746);
static_assert(offsetof(MemberRecord, credit_card_expiry) == 826);
static_assert(offsetof(MemberRecord, credit_card2_expiry) == 846);
static_assert(offsetof(MemberRecord, terms) == 1006);
static_assert(offsetof(MemberRecord, last_transaction) == 1010);
static_assert(offsetof(MemberRecord, comment2) == 1014);
static_assert(offsetof(MemberRecord, email) == 1054);
static_assert(offsetof(MemberRecord, total_purchases) == 1094);
static_assert(offsetof(MemberRecord, reserved_1098) == 1098);
static_assert(offsetof(MemberRecord, origination) == 1110);
static_assert(offsetof(MemberRecord, last_used) == 1122);
static_assert(offsetof(MemberRecord, last_payment) == 1138);
static_assert(offsetof(MemberRecord, reserved_1154) == 1154);
static_assert(offsetof(MemberRecord, reserved_1234) == 1234);
static_assert(offsetof(MemberRecord, reserved_1394) == 1394);
static_assert(offsetof(MemberRecord, balance) == 1554);
static_assert(offsetof(MemberRecord, credit_limit) == 1558);
static_assert(offsetof(MemberRecord, reserved_1562) == 1562);
static_assert(offsetof(MemberRecord, transactions) == 1578);
static_assert(offsetof(MemberRecord, tax) == 1582);
static_assert(offsetof(MemberRecord, loan_item) == 1590);
static_assert(offsetof(MemberRecord, reserved_1670) == 1670);
static_assert(offsetof(MemberRecord, loan_out) == 1750);
static_assert(offsetof(MemberRecord, loan_due) == 1910);
static_assert(offsetof(MemberRecord, reserved_2070) == 2070);
static_assert(offsetof(MemberRecord, reserved_2090) == 2090);

inline constexpr int64_t kMemberRecordSize = sizeof(MemberRecord);
inline constexpr const char* kMemberFile = "member.dat";
extern const IndexedFileLayout kMemberLayout;

// Builds the customer index and NameKeys from member.dat; false when it can't be
// opened. A number of zero or below that is not -1 counts as deleted.
bool LoadCustomerIndex();

// Fetches customer `number` into G().member; returns the number, or 0 when it
// is not there (or the read failed, after its message).
int64_t Fetchmember(int64_t number);
// Adds `record` under its number, reusing the slot deleted longest ago first.
// "Number in use." when the number is taken.
bool Insertmember(const MemberRecord& record);
// Deletes the customer in G().member, found by the last lookup.
bool Removemember();
// Stores G().member over the record with its number ("Invalid number." when it
// is unknown or below 1), then refreshes its NameKeys.
bool Rewritemember();

// Completes a new record as an add does: last_used "NEW", last_payment empty,
// the loan block and the reserved arrays zero or empty.
void CompleteNewMember(MemberRecord& record);

}  // namespace tilo
