// SPDX-License-Identifier: MIT
#include "core/customer_file.h"

#include <cstring>

#include "core/state.h"
#include "core/text.h"

namespace tilo {

const IndexedFileLayout kMemberLayout{
    kMemberFile,
    kMemberRecordSize,
    int(offsetof(MemberRecord, name)),
    true,  // numbers of zero or below count as deleted
    {"Data file: member.dat, not present.", "Not able to read member.dat", "Member.dat",
     "Not able to write to member.dat", "Not able to write member.dat",
     "Not able to write member.dat"}};

bool LoadCustomerIndex() {
  return G().members.Load();
}

int64_t Fetchmember(int64_t number) {
  return G().members.Fetch(number, &G().member);
}

bool Insertmember(const MemberRecord& record) {
  return G().members.Insert(&record);
}

bool Removemember() {
  return G().members.Remove(&G().member);
}

bool Rewritemember() {
  State& g = G();
  if (!g.members.Rewrite(&g.member)) return false;
  g.members.UpdateNameKey(&g.member);
  return true;
}

void CompleteNewMember(MemberRecord& record) {
  SetField(record.last_used, "NEW");
  std::memset(record.last_payment, 0, sizeof record.last_payment);
  record.reserved_2090 = 0;
  std::memset(record.reserved_1154, 0, sizeof record.reserved_1154);
  std::memset(record.reserved_1234, 0, sizeof record.reserved_1234);
  std::memset(record.reserved_1394, 0, sizeof record.reserved_1394);
  std::memset(record.loan_item, 0, sizeof record.loan_item);
  std::memset(record.reserved_1670, 0, sizeof record.reserved_1670);
  std::memset(record.loan_out, 0, sizeof record.loan_out);
  std::memset(record.loan_due, 0, sizeof record.loan_due);
}

}  // namespace tilo
