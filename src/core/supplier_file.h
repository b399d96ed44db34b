// SPDX-License-Identifier: MIT
// mans.dat, the suppliers: fixed records of 1058 bytes in the pattern of the
// inventory file, with an index but no NameKeys.
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/indexed_file.h"

namespace tilo {

#pragma pack(push, 1)
struct MansRecord {
  int64_t number;  // 1 to 2000000000000000; -1 deleted
  char name[42];
  int32_t held;  // shown by the advanced find; no form writes it
  uint8_t reserved_54[4];
  float price_a;  // shown by the advanced find; no form writes it
  float price_b;
  char road[30];
  char area[30];
  char town[30];
  char postcode[10];
  char telephone[20];
  char telephone_extension[20];
  char telephone2[20];
  char fax[194];
  char contact[60];
  char notes[204];
  char comment[30];
  char origination[40];
  char credit_limit[40];  // plain text, unlike a customer's limit
  char terms[100];
  char comment2[40];
  char email[124];
};
#pragma pack(pop)

static_assert(sizeof(MansRecord) == 1058);
static_assert(offsetof(MansRecord, number) == 0);
static_assert(offsetof(MansRecord, name) == 8);
static_assert(offsetof(MansRecord, held) == 50);
static_assert(offsetof(MansRecord, reserved_54) == 54);
static_assert(offsetof(MansRecord, price_a) == 58);
static_assert(offsetof(MansRecord, price_b) == 62);
static_assert(offsetof(MansRecord, road) == 66);
static_assert(offsetof(MansRecord, area) == 96);
static_assert(offsetof(MansRecord, town) == 126);
static_assert(offsetof(MansRecord, postcode) == 156);
static_assert(offsetof(MansRecord, telephone) == 166);
static_assert(offsetof(MansRecord, telephone_extension) == 186);
static_assert(offsetof(MansRecord, telephone2) == 206);
static_assert(offsetof(MansRecord, fax) == 226);
static_assert(offsetof(MansRecord, contact) == 420);
static_assert(offsetof(MansRecord, notes) == 480);
static_assert(offsetof(MansRecord, comment) == 684);
static_assert(offsetof(MansRecord, origination) == 714);
static_assert(offsetof(MansRecord, credit_limit) == 754);
static_assert(offsetof(MansRecord, terms) == 794);
static_assert(offsetof(MansRecord, comment2) == 894);
static_assert(offsetof(MansRecord, email) == 934);

inline constexpr int64_t kMansRecordSize = sizeof(MansRecord);
inline constexpr const char* kMansFile = "mans.dat";
// A supplier file of an earlier release: one record of a shorter layout.
inline constexpr int64_t kOldMansFileSize = 66;
inline constexpr int64_t kHighestSupplierNumber = 2000000000000000;
extern const IndexedFileLayout kMansLayout;

inline bool SupplierNumberInRange(int64_t number) {
  return number >= 1 && number <= kHighestSupplierNumber;
}

// Replaces a 66-byte mans.dat by one deleted record of today's layout, without a
// word when it works. False (after its message) when the new file can't be made.
bool UpgradeOldSupplierFile();
// Builds the supplier index from mans.dat; false when it can't be opened.
// Numbers are taken as they stand: no repair of bad numbers.
bool LoadSupplierIndex();

// Fetches supplier `number` into G().supplier; the number, or 0 when not there.
int64_t Fetchsupplier(int64_t number);
// Adds `record` under its number, reusing a deleted slot first.
bool Insertsupplier(const MansRecord& record);
// Deletes the supplier in G().supplier, found by the last lookup.
bool Removesupplier();
// Stores G().supplier over the record with its number.
bool Rewritesupplier();

}  // namespace tilo
