// SPDX-License-Identifier: MIT
#include "core/supplier_file.h"

#include "core/state.h"
#include "platform/files.h"

namespace tilo {

const IndexedFileLayout kMansLayout{
    kMansFile,
    kMansRecordSize,
    -1,     // no NameKeys
    false,  // bad numbers stay as they are
    {"Data file: mans.dat, not present.", "Not able to read mans.dat", "Mans.dat",
     "Not able to write to mans.dat", "Not able to write mans.dat", "Not able to write mans.dat"}};

bool UpgradeOldSupplierFile() {
  auto size = FileSize(kMansFile);
  if (!size || *size != kOldMansFileSize) return true;
  MansRecord blank{};
  blank.number = -1;
  if (ReplaceFile(kMansFile, &blank, sizeof blank)) return true;
  // The wording names the customer file; it has always read so.
  Message("Data file: member.dat, not present.", "Fatal error");
  return false;
}

bool LoadSupplierIndex() {
  return G().suppliers.Load();
}

int64_t Fetchsupplier(int64_t number) {
  return G().suppliers.Fetch(number, &G().supplier);
}

bool Insertsupplier(const MansRecord& record) {
  return G().suppliers.Insert(&record);
}

bool Removesupplier() {
  return G().suppliers.Remove(&G().supplier);
}

bool Rewritesupplier() {
  return G().suppliers.Rewrite(&G().supplier);
}

}  // namespace tilo
