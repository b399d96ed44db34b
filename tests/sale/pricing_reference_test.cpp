// SPDX-License-Identifier: MIT
// Thousands of random baskets priced by the real entry routines and by a plain
// step-by-step model kept here (printf and strtof in the C locale), compared bit
// for bit; and the same totals again with a comma as the decimal separator.
#include <gtest/gtest.h>

#include <array>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <random>

#include "platform/files.h"
#include "sale/pricing.h"
#include "sale/sale_fixture.h"

namespace tilo {
namespace {

float RefMoney(double v) {
  char text[512];
  std::snprintf(text, sizeof text, "%.2f", v);
  return std::strtof(text, nullptr);
}

float RefTax(float t, int32_t no_tax_rounding) {
  char text[512];
  std::snprintf(text, sizeof text, "%.3f", double(t));
  char& third = text[std::strlen(text) - 1];
  const bool up = third > '4';
  if (up) third = '9';
  std::snprintf(text, sizeof text, "%.2f", double(std::strtof(text, nullptr)));
  const float v = std::strtof(text, nullptr);
  return up && no_tax_rounding != 0 ? float(double(v) - 0.01) : v;
}

// The model keeps the basket's own record: lines and totals in the same fields.
struct Model {
  Basket b{};
  std::vector<std::string> messages;

  void Add(const FilmRecord& item, int mode, const SettingsRecord& s) {
    float p = item.retail_price;
    if (s.trade_mode == 2 && s.trade_discount_mode == 0) {
      if (!(item.trade_price > 0)) return Refuse("Trade price option active, no trade price");
      p = item.trade_price;
    } else if (s.trade_mode == 2 && s.trade_percent != 0) {
      p = RefMoney(double(p) - double(s.trade_percent) / 100.0 * double(p));
    }
    int held = 0;
    for (int i = 0; i < b.line_count; ++i) held += b.number[i] == item.number;
    if (mode == 2 || (item.buy_one_get_one == 2 && held % 2 == 1)) p = 0;
    if (RefMoney(double(b.total) + p) > RefMoney(99999.99))
      return Refuse("Transaction limit 100000.00");
    const int i = b.line_count++;
    b.number[i] = item.number;
    b.cost[i] = item.cost_price;
    b.line_total[i] = p;
    if (p != 0 && item.tax == 0) {
      b.non_taxable[i] = p;
      b.total_non_taxable = RefMoney(double(b.total_non_taxable) + p);
      b.total = RefMoney(double(b.total) + p);
    } else if (p != 0) {
      float t1 = 0, t2 = 0;
      const double sum = double(p) + b.total_taxable;
      const bool over = RefMoney(sum) > RefMoney(s.tax1_threshold);
      if (s.tax1_switch != 0 && s.tax1_rate > 0 && item.tax != 3) {
        const bool catch_up = RefMoney(b.total_taxable) < RefMoney(s.tax1_threshold) && over;
        const double base = s.tax1_threshold_on == 2 && catch_up ? sum : double(p);
        t1 = RefTax(float(double(s.tax1_rate) * base / 10000.0), item.no_tax_rounding);
        if (s.tax1_threshold_on == 2 && !over) t1 = 0;
        b.total_tax1 = RefMoney(double(b.total_tax1) + t1);
        b.tax1[i] = t1;
      }
      b.taxable[i] = p;
      b.total_taxable = RefMoney(double(b.total_taxable) + p);
      if (s.tax2_switch != 0 && s.tax2_rate > 0 && item.tax != 2) {
        const double base = s.tax_on_tax == 0 ? double(p) : double(p) + t1;
        t2 = RefTax(float(double(s.tax2_rate) * base / 10000.0), item.no_tax_rounding);
        b.total_tax2 = RefMoney(double(b.total_tax2) + t2);
        b.tax2[i] = t2;
      }
      b.total = RefMoney(double(b.total) + p + t1 + t2);
      b.line_total[i] = float(double(p) + t1 + t2);
    }
    b.total_cost = float(double(b.total_cost) + b.cost[i]);
    b.subtotal = RefMoney(double(b.subtotal) + p);
  }

  void Void(int row) {
    if (b.line_count == 0) return Refuse("No items");
    const float nt = b.non_taxable[row], tx = b.taxable[row];
    b.total_non_taxable = nt > 0 ? RefMoney(double(b.total_non_taxable) - nt) : b.total_non_taxable;
    b.total_taxable = tx > 0 ? RefMoney(double(b.total_taxable) - tx) : b.total_taxable;
    if (nt > 0) b.subtotal = RefMoney(double(b.subtotal) - nt);
    if (tx > 0) b.subtotal = RefMoney(double(b.subtotal) - tx);
    b.total = RefMoney(double(b.total) - b.line_total[row]);
    b.total_tax1 = RefMoney(double(b.total_tax1) - b.tax1[row]);
    b.total_tax2 = RefMoney(double(b.total_tax2) - b.tax2[row]);
    b.total_cost = float(double(b.total_cost) - b.cost[row]);
    for (int k = row; k < b.line_count; ++k) SetLine(b, k, GetLine(b, k + 1));
    if (--b.line_count == 0) b = Basket{};
  }

  void Refuse(const char* text) { messages.push_back(std::string("Problem: ") + text); }
};

// One basket: settings, thirty items numbered 1 to 30, and what the operator does
// (an item to add, free or not, or a row to void).
struct Scenario {
  SettingsRecord settings{};
  std::vector<FilmRecord> items;
  std::vector<std::array<int, 3>> ops;  // {void?, item or row per mille, mode}
};

Scenario RandomScenario(std::mt19937_64& rng, const SettingsRecord& base) {
  auto chance = [&](double p) { return std::bernoulli_distribution(p)(rng); };
  auto in = [&](int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng); };
  auto rate = [&] { return chance(0.2) ? 0 : chance(0.3) ? 2000 : in(1, 9999); };
  // Three decimals; now and then a price that reaches the limit of a transaction.
  auto price = [&] {
    return float(double(chance(0.03) ? in(1000000, 40000000) : in(1, 300000)) / 1000.0);
  };
  Scenario sc{base, {}, {}};
  SettingsRecord& s = sc.settings;
  s.negative_stock = 2;
  s.tax1_switch = chance(0.8) ? 2 : 0;
  s.tax1_rate = rate();
  s.tax2_switch = chance(0.5) ? 2 : 0;
  s.tax2_rate = rate();
  s.tax_on_tax = chance(0.5) ? 2 : 0;
  s.tax1_threshold_on = chance(0.4) ? 2 : 0;
  s.tax1_threshold = double(in(0, 40000)) / 100.0;
  s.trade_mode = chance(0.3) ? 2 : 0;
  s.trade_discount_mode = chance(0.5) ? 2 : 0;
  s.trade_percent = chance(0.2) ? 0.0f : float(double(in(1, 9999)) / 100.0);
  for (int k = 1; k <= 30; ++k) {
    FilmRecord r{};
    r.number = k;
    SetField(r.description, "R" + std::to_string(k));
    r.retail_price = price();
    r.trade_price = chance(0.15) ? 0.0f : price();
    r.cost_price = price();
    r.tax = in(0, 3);
    r.no_tax_rounding = chance(0.3) ? 2 : 0;
    r.buy_one_get_one = chance(0.15) ? 2 : 0;
    sc.items.push_back(r);
  }
  for (int k = in(1, 40); k > 0; --k)
    sc.ops.push_back({chance(0.15), in(0, 999), chance(0.1) ? kEntryFree : kEntryNormal});
  return sc;
}

class PricingReferenceTest : public SaleTest {
 protected:
  Model Expected(const Scenario& sc) {
    Model m;
    for (const auto& [is_void, pick, mode] : sc.ops) {
      if (is_void)
        m.Void(pick * m.b.line_count / 1000);
      else
        m.Add(sc.items[size_t(pick * 30 / 1000)], mode, sc.settings);
    }
    return m;
  }

  // The same basket through the real routines; film.dat keeps its numbers in the
  // same places, so the index stays valid while the records change under it.
  void Run(const Scenario& sc) {
    // Written over in place: truncating the file each time would wait on the disk.
    File film(kFilmFile, File::Mode::ReadWrite);
    film.write(sc.items.data(), int64_t(sc.items.size() * sizeof(FilmRecord)));
    film.close();
    if (G().films.live != 30) G().films.Load();
    G().settings = sc.settings;
    B() = Basket{};
    G().basket_list = BasketList{};
    platform_.clear_record();
    for (const auto& [is_void, pick, mode] : sc.ops) {
      if (is_void) {
        G().basket_list.selected = pick * B().line_count / 1000;
        Voiditem();
      } else {
        Addtobasket(pick * 30 / 1000 + 1, mode);
      }
    }
  }

  // Every amount of every line and every total, bit for bit, and the messages.
  ::testing::AssertionResult Matches(const Model& m, int basket) {
    const auto& a = B();
    const bool same = a.line_count == m.b.line_count &&
                      std::memcmp(a.number, m.b.number, sizeof a.number) == 0 &&
                      std::memcmp(a.non_taxable, m.b.non_taxable, 7 * sizeof a.non_taxable) == 0 &&
                      std::memcmp(&a.total_non_taxable, &m.b.total_non_taxable, 8 * 4) == 0;
    if (same && platform_.shown() == m.messages) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << "basket " << basket << ": lines " << a.line_count << "/" << m.b.line_count
           << ", total " << ThreeDecimalText(a.total) << "/" << ThreeDecimalText(m.b.total)
           << ", tax1 " << ThreeDecimalText(a.total_tax1) << "/" << ThreeDecimalText(m.b.total_tax1)
           << ", messages " << platform_.shown().size() << "/" << m.messages.size();
  }
};

TEST_F(PricingReferenceTest, RandomBasketsAgreeWithTheStepByStepModel) {
  std::mt19937_64 rng(20240611);
  const SettingsRecord base = S();
  int lines = 0, refusals = 0;
  for (int basket = 0; basket < 3000; ++basket) {
    const Scenario sc = RandomScenario(rng, base);
    const Model expected = Expected(sc);
    Run(sc);
    ASSERT_TRUE(Matches(expected, basket));
    lines += expected.b.line_count;
    refusals += int(expected.messages.size());
  }
  EXPECT_GT(lines, 20000);  // the baskets did reach the paths they are meant to
  EXPECT_GT(refusals, 100);
}

TEST_F(PricingReferenceTest, CommaDecimalSeparatorChangesNoTotal) {
  std::mt19937_64 rng(777);
  std::vector<Scenario> scenarios;
  std::vector<Model> expected;  // worked out in the C locale
  for (int basket = 0; basket < 300; ++basket) {
    scenarios.push_back(RandomScenario(rng, S()));
    expected.push_back(Expected(scenarios.back()));
  }
  ASSERT_TRUE(UseCommaLocale())
      << "localedef could not build a comma locale (the locales package is needed)";
  char probe[32];
  std::snprintf(probe, sizeof probe, "%.2f", 1.5);
  int differ = -1;
  for (size_t k = 0; k < scenarios.size() && differ < 0; ++k) {
    Run(scenarios[k]);
    if (!Matches(expected[k], int(k))) differ = int(k);
  }
  const std::string shown = Totalspanel().total + MoneyText(2.5);
  UseCLocale();
  EXPECT_STREQ(probe, "1,50");  // the locale really was in force
  EXPECT_EQ(differ, -1);
  EXPECT_EQ(shown.find(','), std::string::npos);
}

}  // namespace
}  // namespace tilo
