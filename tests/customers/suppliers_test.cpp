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
  Numbers after = {};      // in file order afterwards: the index holds these, no more
  int64_t offered = 0;     // the number Add puts in the form
  const char* spoil = "";  // mans.dat turns into this before the command
};

auto Numbered(int64_t n) {
  return [n](MansRecord& r) { r.number = n; };
}
void Leave(MansRecord&) {}

class SupplierTest : public ShopTest {};

TEST_F(SupplierTest, CommandsKeepTheFileAndItsIndexInStep) {
  // clang-format off
  const Case cases[] = {
      {"offers the gap", {-1, 1, 2, 3, 5}, Addsupplier, {}, Leave, {}, {4, 1, 2, 3, 5}, 4},
      {"offers 1 when free", {2, 3}, Addsupplier, {}, Leave, {}, {2, 3, 1}, 1},
      {"top of the range", {1}, Addsupplier, {}, Numbered(2000000000000000), {},
       {1, 2000000000000000}, 2},
      {"over the range", {1}, Addsupplier, {}, Numbered(2000000000000001),
       {"Problem: Number outside range."}, {1}},
      {"number 0", {1}, Addsupplier, {}, Numbered(0), {"Problem: Number outside range."}, {1}},
      {"number in use", {-1, 1, 2}, Addsupplier, {}, Numbered(2), {"Problem: Number in use."},
       {-1, 1, 2}, 3},
      {"add cancelled", {1}, Addsupplier, {}, {}, {}, {1}, 2},
      // Find shows the record and saves nothing, whatever the form held.
      {"find", {1, 5}, Findsupplier, "5", Numbered(9), {}, {1, 5}},
      {"find unknown", {1}, Findsupplier, "4", {}, {"Supplier: Does not exist"}, {1}},
      {"find -1", {-1, 1}, Findsupplier, "-1", {}, {}, {-1, 1}},
      {"amend", {1, 2}, Amendsupplier, "2", [](MansRecord& r) { SetField(r.town, "LEEDS"); }, {},
       {1, 2}},
      {"amend changes number", {1, 2}, Amendsupplier, "2", Numbered(3),
       {"Problem: Not possible to change number"}, {1, 2}},
      {"amend unknown", {1}, Amendsupplier, "7", {}, {"Amend supplier: Supplier does not exist"},
       {1}},
      {"delete -1", {-1, 1}, Deletesupplier, "-1", {}, {"Delete supplier: Supplier does not exist"},
       {-1, 1}},
      {"delete", {1, 2, 3}, Deletesupplier, "2", {}, {"Delete supplier: Supplier deleted."},
       {1, -1, 3}},
      // The file's last record: its number leaves the index, the highest stays.
      {"delete at the end", {1, 3, 2}, Deletesupplier, "2", {},
       {"Delete supplier: Supplier deleted."}, {1, 3, -1}},
      {"file can't be opened", {1}, Addsupplier, {}, Leave,
       {"Fatal error: Data file: mans.dat, not present."}, {1}, 2, "folder"},
      {"disk full", {1}, Addsupplier, {}, Leave, {"Problem: Not able to write to mans.dat"}, {1},
       2, "/dev/full"},
  };
  // clang-format on
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    ResetState();
    MakeFreshShop();
    std::string bytes;
    for (int64_t n : c.file) {
      const MansRecord r = Supplier(n);
      bytes.append(reinterpret_cast<const char*>(&r), sizeof r);
    }
    WriteBytes("mans.dat", bytes);
    ASSERT_TRUE(OpenStore());
    platform_.clear_record();
    const std::string spoil = c.spoil;
    if (!spoil.empty()) {
      std::filesystem::rename("mans.dat", "mans.bak");
      if (spoil == "folder")
        std::filesystem::create_directory("mans.dat");
      else
        std::filesystem::create_symlink(spoil, "mans.dat");
    }
    ScriptedSupplierForm form;
    form.type = c.type;
    install_supplier_view(&form);
    if (c.reply) platform_.queue_prompt(c.reply);
    c.command();
    install_supplier_view(nullptr);
    if (!spoil.empty()) {
      std::filesystem::remove_all("mans.dat");
      std::filesystem::rename("mans.bak", "mans.dat");
    }

    EXPECT_EQ(platform_.shown(), c.shown);
    if (c.offered != 0) {
      EXPECT_EQ(form.opened.at(0).record.number, c.offered);
    }
    // The index holds the live numbers of the file, each where it lies, a refused
    // write notwithstanding; what no form writes survives an amend.
    const std::string file = Bytes("mans.dat");
    ASSERT_EQ(file.size(), c.after.size() * sizeof(MansRecord));
    NumberIndex live, expected;
    for (const IndexEntry& e : G().suppliers.index)
      if (e.number > 0) live.push_back(e);
    for (size_t i = 0; i < c.after.size(); ++i) {
      MansRecord r;
      std::memcpy(&r, file.data() + i * sizeof r, sizeof r);
      EXPECT_EQ(r.number, c.after[i]);
      if (r.number > 0) expected.push_back({r.number, int64_t(i)});
      if (i < c.file.size() && c.file[i] == r.number && r.number > 0) {
        EXPECT_EQ(r.held, 5);
      }
    }
    Sortindex(expected, expected.size());
    EXPECT_EQ(live, expected);
  }
}

}  // namespace
}  // namespace tilo
