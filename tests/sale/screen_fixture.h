// SPDX-License-Identifier: MIT
// A stocked shop for the sale screen's rules, with a screen that records what it
// was told to show.
#pragma once

#include <string>
#include <vector>

#include "sale/commands.h"
#include "sale/screen.h"
#include "sale_fixture.h"

namespace tilo {

struct RecordingView : ScreenView {
  std::vector<std::string> calls;
  std::string box;
  void focus_item_box() override { calls.push_back("focus item box"); }
  void focus_tender_amount() override { calls.push_back("focus tender"); }
  std::string item_box_text() override { return box; }
  void set_item_box_text(const std::string& text) override { box = text; }
  void item_box_caret_to_end() override { calls.push_back("caret to end"); }
  void category_changed(int previous, int current) override {
    calls.push_back("category " + std::to_string(previous) + " to " + std::to_string(current));
  }
  void set_title(const std::string& title) override { calls.push_back("title " + title); }
  void quit() override { calls.push_back("quit"); }
};

class ScreenTest : public SaleTest {
 protected:
  void SetUp() override {
    SaleTest::SetUp();
    install_screen_view(&view_);
    ClearHandlers();
    InstallScreenHandlers();
  }
  void TearDown() override {
    install_screen_view(nullptr);
    ClearHandlers();
    SaleTest::TearDown();
  }
  // An item on the quick-select panel of `category`.
  FilmRecord Shelve(int64_t number, int32_t category, int32_t omit = 0) {
    FilmRecord r{};
    r.number = number;
    SetField(r.description, "ITEM " + std::to_string(number));
    r.retail_price = 1.0f;
    r.quantity = 50;
    r.stock_picture = 3;
    r.display_category = category;
    r.omit_quick_select = omit;
    EXPECT_TRUE(Insertnumber(r));
    return r;
  }
  // The numbers on the page as it stands.
  static std::vector<int64_t> Page() {
    const ScreenState& s = G().screen;
    return std::vector<int64_t>(s.quick_number, s.quick_number + s.page_size);
  }
  static std::vector<int64_t> Numbers(std::initializer_list<int64_t> n) { return n; }

  RecordingView view_;
};

}  // namespace tilo
