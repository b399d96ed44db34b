// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "core/customer_file.h"
#include "core/startup.h"
#include "core/state.h"
#include "core/supplier_file.h"
#include "core/text.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

using RecordFileTest = ShopTest;

MemberRecord Member(int64_t number, const char* name) {
  MemberRecord m{};
  m.number = number;
  SetField(m.name, name);
  SetField(m.town, "LEEDS");
  return m;
}

MansRecord Supplier(int64_t number, const char* name) {
  MansRecord m{};
  m.number = number;
  SetField(m.name, name);
  return m;
}

template <typename Record>
std::string FileOf(const std::vector<Record>& records) {
  return std::string(reinterpret_cast<const char*>(records.data()),
                     records.size() * sizeof(Record));
}

template <typename Record>
Record RecordAt(const std::string& file, int64_t position) {
  Record r;
  std::memcpy(&r, file.data() + position * sizeof(Record), sizeof r);
  return r;
}

// A shop whose customer file holds a deleted record, a record numbered 0 and two
// live customers, opened as a start does.
class CustomerFileTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    MakeFreshShop();
    MemberRecord zero = Member(0, "ZED");
    WriteBytes("member.dat", FileOf(std::vector<MemberRecord>{Member(-1, ""), Member(5, "SMITH"),
                                                              zero, Member(3, "JONES")}));
    ASSERT_TRUE(OpenStore());
    platform_.clear_record();
  }
};

TEST_F(CustomerFileTest, TheStartIndexesCustomersAndTreatsNumberZeroAsDeleted) {
  const IndexedFile& members = G().members;
  EXPECT_EQ(members.slot_count, 4);
  EXPECT_EQ(members.live, 2);
  EXPECT_EQ(members.deleted, 2);
  ASSERT_GE(members.index.size(), 4u);
  EXPECT_EQ(members.index[0], (IndexEntry{-1, 0}));
  EXPECT_EQ(members.index[1], (IndexEntry{-1, 2}));
  EXPECT_EQ(members.index[2], (IndexEntry{3, 3}));
  EXPECT_EQ(members.index[3], (IndexEntry{5, 1}));
  // The record numbered 0 still feeds its name bytes until a rebuild.
  EXPECT_EQ(members.name_keys[2], (NameKey{'Z', 'E'}));
  EXPECT_EQ(members.name_keys[1], (NameKey{'S', 'M'}));

  EXPECT_EQ(Fetchmember(5), 5);
  EXPECT_EQ(FieldText(G().member.name), "SMITH");
  EXPECT_EQ(members.position, 1);
  EXPECT_EQ(Fetchmember(4), 0);
  EXPECT_EQ(Fetchmember(0), 0);
  EXPECT_TRUE(platform_.messages.empty());
}

TEST_F(CustomerFileTest, DeleteMarksTheRecordAndKeepsTheRestOfIt) {
  ASSERT_EQ(Fetchmember(5), 5);
  ASSERT_TRUE(Removemember());
  const MemberRecord gone = RecordAt<MemberRecord>(Bytes("member.dat"), 1);
  EXPECT_EQ(gone.number, -1);
  EXPECT_EQ(gone.name[0], 0);
  EXPECT_EQ(gone.name[1], 0);
  EXPECT_EQ(std::string(gone.name + 2), "ITH");
  EXPECT_EQ(FieldText(gone.town), "LEEDS");
  EXPECT_EQ(G().members.name_keys[1], (NameKey{0, 0}));
  EXPECT_EQ(Fetchmember(5), 0);
  // An add takes the slot deleted longest ago, and the new record reads back.
  MemberRecord added = Member(10, "BROWN");
  CompleteNewMember(added);
  ASSERT_TRUE(Insertmember(added));
  EXPECT_EQ(Bytes("member.dat").size(), 4 * 2094u);
  ASSERT_EQ(Fetchmember(10), 10);
  EXPECT_EQ(G().members.position, 0);
  EXPECT_EQ(FieldText(G().member.last_used), "NEW");
  EXPECT_FALSE(Insertmember(Member(3, "AGAIN")));
  EXPECT_EQ(platform_.shown(), std::vector<std::string>{"Problem: Number in use."});
}

TEST_F(CustomerFileTest, RewriteStoresTheBufferAndRefusesUnknownNumbers) {
  ASSERT_EQ(Fetchmember(3), 3);
  SetField(G().member.name, "JOHNSON");
  G().member.balance = 12.5f;
  ASSERT_TRUE(Rewritemember());
  const MemberRecord stored = RecordAt<MemberRecord>(Bytes("member.dat"), 3);
  EXPECT_EQ(FieldText(stored.name), "JOHNSON");
  EXPECT_EQ(stored.balance, 12.5f);
  EXPECT_EQ(G().members.name_keys[3], (NameKey{'J', 'O'}));

  const std::string before = Bytes("member.dat");
  G().member.number = 99;
  EXPECT_FALSE(Rewritemember());
  G().member.number = 0;
  EXPECT_FALSE(Rewritemember());
  EXPECT_EQ(platform_.shown(),
            (std::vector<std::string>{"Problem: Invalid number.", "Problem: Invalid number."}));
  EXPECT_EQ(Bytes("member.dat"), before);
}

TEST_F(RecordFileTest, SuppliersAreIndexedWithoutNameKeysOrRepair) {
  MakeFreshShop();
  WriteBytes("mans.dat", FileOf(std::vector<MansRecord>{Supplier(-1, ""), Supplier(0, "ZERO"),
                                                        Supplier(2000000000000000, "LAST"),
                                                        Supplier(7, "ACME")}));
  ASSERT_TRUE(OpenStore());
  const IndexedFile& suppliers = G().suppliers;
  EXPECT_EQ(suppliers.slot_count, 4);
  EXPECT_EQ(suppliers.deleted, 1);
  EXPECT_EQ(suppliers.live, 3);  // a number 0 is taken as it stands
  EXPECT_TRUE(suppliers.name_keys.empty());
  EXPECT_TRUE(suppliers.Contains(0));

  EXPECT_EQ(Fetchsupplier(7), 7);
  EXPECT_EQ(FieldText(G().supplier.name), "ACME");
  SetField(G().supplier.terms, "30 DAYS");
  ASSERT_TRUE(Rewritesupplier());
  EXPECT_EQ(FieldText(RecordAt<MansRecord>(Bytes("mans.dat"), 3).terms), "30 DAYS");

  ASSERT_TRUE(Insertsupplier(Supplier(8, "NEW")));
  EXPECT_EQ(FieldText(RecordAt<MansRecord>(Bytes("mans.dat"), 0).name), "NEW");
  ASSERT_EQ(Fetchsupplier(2000000000000000), 2000000000000000);
  ASSERT_TRUE(Removesupplier());
  EXPECT_EQ(RecordAt<MansRecord>(Bytes("mans.dat"), 2).number, -1);
  EXPECT_TRUE(SupplierNumberInRange(2000000000000000));
  EXPECT_FALSE(SupplierNumberInRange(2000000000000001));
  EXPECT_FALSE(SupplierNumberInRange(0));
}

}  // namespace
}  // namespace tilo
