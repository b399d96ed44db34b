// SPDX-License-Identifier: MIT
// A stocked shop and scripted inventory forms: each form the logic opens takes
// the next scripted step, which fills the form as an operator would.
#pragma once

#include <deque>
#include <functional>

#include "inventory/items.h"
#include "sale/sale_fixture.h"

namespace tilo {

class ScriptedInventoryView : public InventoryView {
 public:
  std::deque<std::function<ItemButton(ItemForm&)>> items;
  std::deque<std::function<bool(BundleForm&)>> bundles;
  std::deque<std::function<ReceiveButton(ReceiveForm&)>> receipts;
  std::vector<ItemForm> opened;  // every form 800 as it opened
  int views = 0;

  ItemButton edit_item(ItemForm& form) override {
    opened.push_back(form);
    if (items.empty()) return ItemButton::Cancel;
    auto step = items.front();
    items.pop_front();
    return step(form);
  }
  bool edit_bundle(BundleForm& form) override {
    if (bundles.empty()) return false;
    auto step = bundles.front();
    bundles.pop_front();
    return step(form);
  }
  ReceiveButton receive_item(ReceiveForm& form) override {
    if (receipts.empty()) return ReceiveButton::Cancel;
    auto step = receipts.front();
    receipts.pop_front();
    return step(form);
  }
  bool view_item(const FilmRecord&) override {
    ++views;
    return true;
  }
};

class InventoryTest : public SaleTest {
 protected:
  void SetUp() override {
    SaleTest::SetUp();
    install_inventory_view(&view_);
    platform_.set_now(2026, 3, 14, 10, 5);
  }
  void TearDown() override {
    install_inventory_view(nullptr);
    SaleTest::TearDown();
  }
  // Fills a form with a valid item and presses `button`.
  static std::function<ItemButton(ItemForm&)> Fill(const std::string& description, float cost,
                                                   float retail, ItemButton button) {
    return [=](ItemForm& form) {
      SetField(form.record.description, description);
      form.record.cost_price = cost;
      form.record.retail_price = retail;
      return button;
    };
  }
  // The record at a file position, read straight from film.dat.
  FilmRecord AtPosition(int64_t position) {
    FilmRecord r{};
    const std::string bytes = Bytes("film.dat");
    std::memcpy(&r, bytes.data() + position * sizeof r, sizeof r);
    return r;
  }

  ScriptedInventoryView view_;
};

}  // namespace tilo
