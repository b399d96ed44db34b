// SPDX-License-Identifier: MIT
// The supplier commands on mans.dat: the number offered, the range, the refusals,
// the deleted block, and a file that can't be written.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/startup.h"
#include "core/state.h"
#include "core/text.h"
#include "customers/suppliers.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

using Numbers = std::vector<int64_t>;
using Strings = std::vector<std::string>;

MansRecord Supplier(int64_t number) {
  MansRecord m{};
  m.number = number;
  if (number > 0) SetField(m.name, "SUPPLIER " + std::to_string(number));
  m.held = 5;  // no form writes it: it must survive an amend
  return m;
}

class ScriptedSupplierForm : public SupplierView {
 public:
  bool edit_supplier(SupplierForm& form) override {
    opened.push_back(form);
    if (!type) return false;
    type(form.record);
    return true;
  }
  std::function<void(MansRecord&)> type;
  std::vector<SupplierForm> opened;
};

struct Case {
  const char* name = "";
  Numbers file = {};  // numbers in file order; -1 deleted
  void (*command)() = nullptr;
  std::optional<std::string> reply = {};       // at the number prompt
  std::function<void(MansRecord&)> type = {};  // at the form; unset: Cancel
  Strings shown = {};
  Numbers after = {};  // numbers in file order afterwards
  Numbers findable = {};
  Numbers lost = {};
  std::optional<SupplierForm> opened = {};  // what the form opened on (number and mode)
  const char* spoil = nullptr;              // mans.dat turns into this before the command
};

auto Numbered(int64_t n) {
  return [n](MansRecord& r) {
    r.number = n;
    SetField(r.name, "NEW");
  };
}
void Leave(MansRecord&) {}

SupplierForm Opened(int64_t number, SupplierFormMode mode) {
  SupplierForm form{mode, MansRecord{}};
  form.record.number = number;
  return form;
}
const auto kNew = SupplierFormMode::New;

class SupplierTest : public ShopTest {
 protected:
  void Prepare(const Numbers& numbers) {
    ResetState();
    std::filesystem::remove_all("mans.dat");
    MakeFreshShop();
    std::string bytes;
    for (int64_t n : numbers) {
      const MansRecord r = Supplier(n);
      bytes.append(reinterpret_cast<const char*>(&r), sizeof r);
    }
    WriteBytes("mans.dat", bytes);
    ASSERT_TRUE(OpenStore());
    platform_.clear_record();
  }
  static MansRecord At(int64_t position) {
    MansRecord r;
    std::memcpy(&r, Bytes("mans.dat").data() + position * sizeof r, sizeof r);
    return r;
  }
};

TEST_F(SupplierTest, CommandsKeepTheFileAndItsIndexInStep) {
  const Case cases[] = {
      {.name = "offers the gap",
       .file = {-1, 1, 2, 3, 5},
       .command = Addsupplier,
       .type = Leave,
       .after = {4, 1, 2, 3, 5},
       .findable = {4, 5},
       .opened = Opened(4, kNew)},
      {.name = "offers 1 when free",
       .file = {2, 3},
       .command = Addsupplier,
       .type = Leave,
       .after = {2, 3, 1},
       .findable = {1},
       .opened = Opened(1, kNew)},
      {.name = "top of the range",
       .file = {1},
       .command = Addsupplier,
       .type = Numbered(2000000000000000),
       .after = {1, 2000000000000000},
       .findable = {2000000000000000},
       .opened = Opened(2, kNew)},
      {.name = "over the range",
       .file = {1},
       .command = Addsupplier,
       .type = Numbered(2000000000000001),
       .shown = {"Problem: Number outside range."},
       .after = {1},
       .lost = {2000000000000001}},
      {.name = "number 0",
       .file = {1},
       .command = Addsupplier,
       .type = Numbered(0),
       .shown = {"Problem: Number outside range."},
       .after = {1}},
      {.name = "number in use",
       .file = {-1, 1, 2},
       .command = Addsupplier,
       .type = Numbered(2),
       .shown = {"Problem: Number in use."},
       .after = {-1, 1, 2},
       .findable = {2}},
      {.name = "add cancelled", .file = {1}, .command = Addsupplier, .after = {1}, .lost = {2}},
      // Find shows the record and saves nothing, whatever the form held.
      {.name = "find",
       .file = {1, 5},
       .command = Findsupplier,
       .reply = "5",
       .type = Numbered(9),
       .after = {1, 5},
       .findable = {5},
       .lost = {9},
       .opened = Opened(5, SupplierFormMode::View)},
      {.name = "find unknown",
       .file = {1},
       .command = Findsupplier,
       .reply = "4",
       .shown = {"Supplier: Does not exist"},
       .after = {1}},
      {.name = "find -1",
       .file = {-1, 1},
       .command = Findsupplier,
       .reply = "-1",
       .after = {-1, 1}},
      {.name = "amend",
       .file = {1, 2},
       .command = Amendsupplier,
       .reply = "2",
       .type = [](MansRecord& r) { SetField(r.town, "LEEDS"); },
       .after = {1, 2},
       .findable = {2},
       .opened = Opened(2, SupplierFormMode::Amend)},
      {.name = "amend changes number",
       .file = {1, 2},
       .command = Amendsupplier,
       .reply = "2",
       .type = [](MansRecord& r) { r.number = 3; },
       .shown = {"Problem: Not possible to change number"},
       .after = {1, 2},
       .findable = {2},
       .lost = {3}},
      {.name = "amend unknown",
       .file = {1},
       .command = Amendsupplier,
       .reply = "7",
       .shown = {"Amend supplier: Supplier does not exist"},
       .after = {1}},
      {.name = "amend -1",
       .file = {-1, 1},
       .command = Amendsupplier,
       .reply = "-1",
       .after = {-1, 1}},
      {.name = "delete -1",
       .file = {-1, 1},
       .command = Deletesupplier,
       .reply = "-1",
       .shown = {"Delete supplier: Supplier does not exist"},
       .after = {-1, 1},
       .findable = {1}},
      {.name = "delete",
       .file = {1, 2, 3},
       .command = Deletesupplier,
       .reply = "2",
       .shown = {"Delete supplier: Supplier deleted."},
       .after = {1, -1, 3},
       .findable = {1, 3},
       .lost = {2}},
      // The last record of the file: its number goes, the highest stays.
      {.name = "delete at the end",
       .file = {1, 3, 2},
       .command = Deletesupplier,
       .reply = "2",
       .shown = {"Delete supplier: Supplier deleted."},
       .after = {1, 3, -1},
       .findable = {1, 3},
       .lost = {2}},
      {.name = "file can't be opened",
       .file = {1},
       .command = Addsupplier,
       .type = Leave,
       .shown = {"Fatal error: Data file: mans.dat, not present."},
       .after = {1},
       .findable = {1},
       .lost = {2},
       .spoil = "folder"},
      {.name = "disk full",
       .file = {1},
       .command = Addsupplier,
       .type = Leave,
       .shown = {"Problem: Not able to write to mans.dat"},
       .after = {1},
       .findable = {1},
       .lost = {2},
       .spoil = "/dev/full"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    Prepare(c.file);
    if (c.spoil) {
      std::filesystem::rename("mans.dat", "mans.bak");
      if (std::string(c.spoil) == "folder")
        std::filesystem::create_directory("mans.dat");
      else
        std::filesystem::create_symlink(c.spoil, "mans.dat");
    }
    ScriptedSupplierForm form;
    form.type = c.type;
    install_supplier_view(&form);
    if (c.reply) platform_.queue_prompt(c.reply);
    c.command();
    install_supplier_view(nullptr);

    EXPECT_EQ(platform_.shown(), c.shown);
    if (c.opened) {
      ASSERT_EQ(form.opened.size(), 1u);
      EXPECT_EQ(form.opened[0].record.number, c.opened->record.number);
      EXPECT_EQ(form.opened[0].mode, c.opened->mode);
    }
    for (int64_t n : c.findable) EXPECT_TRUE(G().suppliers.Contains(n)) << n;
    for (int64_t n : c.lost) EXPECT_FALSE(G().suppliers.Contains(n)) << n;
    if (c.spoil) {
      std::filesystem::remove_all("mans.dat");
      std::filesystem::rename("mans.bak", "mans.dat");
    }
    // The file holds what it should, and the index finds each record where it lies,
    // a refused write notwithstanding.
    const NumberIndex& index = G().suppliers.index;
    ASSERT_EQ(Bytes("mans.dat").size(), c.after.size() * sizeof(MansRecord));
    for (size_t i = 0; i < c.after.size(); ++i) {
      EXPECT_EQ(At(int64_t(i)).number, c.after[i]);
      if (c.after[i] < 1) continue;
      const size_t slot = Findnumber(index, c.after[i]);
      ASSERT_LT(slot, index.size());
      EXPECT_EQ(index[slot].position, int64_t(i));
    }
  }
}

TEST_F(SupplierTest, AnAmendKeepsWhatNoFormWritesAndAFreedSlotIsReused) {
  Prepare({1, 3, 2});
  ScriptedSupplierForm form;
  form.type = [](MansRecord& r) { SetField(r.credit_limit, "ASK FIRST"); };
  install_supplier_view(&form);
  platform_.queue_prompt("3");
  Amendsupplier();
  EXPECT_EQ(FieldText(At(1).credit_limit), "ASK FIRST");
  EXPECT_EQ(At(1).held, 5);
  EXPECT_EQ(FieldText(At(1).name), "SUPPLIER 3");

  platform_.queue_prompt("2");
  Deletesupplier();
  EXPECT_EQ(Offersuppliernumber(), 2);
  form.type = Leave;
  Addsupplier();
  install_supplier_view(nullptr);
  EXPECT_EQ(At(2).number, 2);
  EXPECT_EQ(Bytes("mans.dat").size(), 3 * sizeof(MansRecord));
  EXPECT_EQ(Offersuppliernumber(), 4);
}

}  // namespace
}  // namespace tilo
