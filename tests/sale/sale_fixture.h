// SPDX-License-Identifier: MIT
// A fresh shop with its settings loaded and its inventory index built, and a
// quick way to stock it: the ground of every basket and commit test.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "core/film_record.h"
#include "core/inventory.h"
#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "sale/basket.h"
#include "support/shop_fixture.h"

namespace tilo {

class SaleTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    MakeFreshShop();
    ASSERT_TRUE(Opensettings());
    ASSERT_TRUE(G().films.Load());
    // Plain money by default: tests switch on what they examine.
    G().settings.tax1_switch = 0;
    G().settings.tax1_rate = 0;
  }

  // Adds an item to film.dat; returns its record for further use.
  FilmRecord Stock(int64_t number, float retail, int32_t tax = 0, int32_t quantity = 10,
                   const std::string& description = "") {
    FilmRecord r{};
    r.number = number;
    SetField(r.description, description.empty() ? "ITEM " + std::to_string(number) : description);
    r.retail_price = retail;
    r.cost_price = retail / 2;
    r.tax = tax;
    r.quantity = quantity;
    r.display_category = 3;
    EXPECT_TRUE(Insertnumber(r));
    return r;
  }
  void Store(const FilmRecord& r) {
    G().film = r;
    EXPECT_TRUE(Rewritefilm());
  }
  FilmRecord Item(int64_t number) {
    EXPECT_EQ(Fetchfilm(number), number);
    return G().film;
  }

  static Basket& B() { return G().basket; }
  static SettingsRecord& S() { return G().settings; }
  // The messages since the last call, and a clean record for the next step.
  std::vector<std::string> Shown() {
    auto shown = platform_.shown();
    platform_.clear_record();
    return shown;
  }
};

}  // namespace tilo
