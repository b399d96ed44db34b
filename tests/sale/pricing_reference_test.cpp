// SPDX-License-Identifier: MIT
// Thousands of random baskets priced by the real entry routines and by a plain
// step-by-step model kept here (printf and strtof in the C locale), compared bit
// for bit; and the same totals again with a comma as the decimal separator.
#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <random>
#include <vector>

#include "sale/basket.h"
#include "sale/pricing.h"
#include "sale/sale_fixture.h"

namespace tilo {
namespace {

// ---- The reference model -------------------------------------------------

float RefMoney(double v) {
  char text[512];
  std::snprintf(text, sizeof text, "%.2f", v);
  return std::strtof(text, nullptr);
}

float RefTax(float t, int32_t no_tax_rounding) {
  char text[512];
  std::snprintf(text, sizeof text, "%.3f", double(t));
  const size_t n = std::strlen(text);
  const int digit = text[n - 1] - '0';
  if (digit > 4) text[n - 1] = '9';
  float v = std::strtof(text, nullptr);
  std::snprintf(text, sizeof text, "%.2f", double(v));
  v = std::strtof(text, nullptr);
  if (digit > 4 && no_tax_rounding != 0) v = float(double(v) - 0.01);
  return v;
}

struct RefLine {
  int64_t number = 0;
  float non_taxable = 0, taxable = 0, tax1 = 0, tax2 = 0, cost = 0, line_total = 0;
};

struct RefBasket {
  std::vector<RefLine> lines;
  float non_taxable = 0, taxable = 0, subtotal = 0, tax1 = 0, tax2 = 0, cost = 0, total = 0;
  std::vector<std::string> messages;
};

void RefAdd(RefBasket& m, const FilmRecord& item, int mode, const SettingsRecord& s) {
  if (m.lines.size() >= 400) {
    m.messages.push_back("Problem: Transaction limit 400 items");
    return;
  }
  float p = item.retail_price;
  if (s.trade_mode == 2) {
    if (s.trade_discount_mode == 0) {
      if (!(item.trade_price > 0)) {
        m.messages.push_back("Problem: Trade price option active, no trade price");
        return;
      }
      p = item.trade_price;
    } else if (s.trade_percent != 0) {
      p = RefMoney(double(p) - double(s.trade_percent) / 100.0 * double(p));
    }
  }
  if (mode == 2) p = 0;
  if (item.buy_one_get_one == 2) {
    int held = 0;
    for (const RefLine& l : m.lines) held += l.number == item.number;
    if (held % 2 == 1) p = 0;
  }
  if (RefMoney(double(m.total) + double(p)) > RefMoney(99999.99)) {
    m.messages.push_back("Problem: Transaction limit 100000.00");
    return;
  }
  RefLine line;
  line.number = item.number;
  line.cost = item.cost_price;
  line.line_total = p;
  if (p != 0 && item.tax == 0) {
    line.non_taxable = p;
    m.non_taxable = RefMoney(double(m.non_taxable) + double(p));
    m.total = RefMoney(double(m.total) + double(p));
  } else if (p != 0) {
    float t1 = 0;
    if (s.tax1_switch != 0 && s.tax1_rate > 0 && item.tax != 3) {
      const double with_line = double(p) + double(m.taxable);
      const bool over = RefMoney(with_line) > RefMoney(s.tax1_threshold);
      const bool below = RefMoney(m.taxable) < RefMoney(s.tax1_threshold);
      t1 = float(double(s.tax1_rate) * double(p) / 10000.0);
      if (s.tax1_threshold_on == 2 && below && over)
        t1 = float(double(s.tax1_rate) * with_line / 10000.0);
      t1 = RefTax(t1, item.no_tax_rounding);
      if (s.tax1_threshold_on == 2 && !over) t1 = 0;
      m.tax1 = RefMoney(double(m.tax1) + double(t1));
      line.tax1 = t1;
    }
    line.taxable = p;
    m.taxable = RefMoney(double(m.taxable) + double(p));
    float t2 = 0;
    if (s.tax2_switch != 0 && s.tax2_rate > 0 && item.tax != 2) {
      const double base = s.tax_on_tax == 0 ? double(p) : double(p) + double(t1);
      t2 = RefTax(float(double(s.tax2_rate) * base / 10000.0), item.no_tax_rounding);
      m.tax2 = RefMoney(double(m.tax2) + double(t2));
      line.tax2 = t2;
    }
    m.total = RefMoney(double(m.total) + double(p) + double(t1) + double(t2));
    line.line_total = float(double(p) + double(t1) + double(t2));
  }
  m.cost = float(double(m.cost) + double(line.cost));
  m.subtotal = RefMoney(double(m.subtotal) + double(p));
  m.lines.push_back(line);
}

void RefVoid(RefBasket& m, size_t row) {
  if (m.lines.empty()) {
    m.messages.push_back("Problem: No items");
    return;
  }
  const RefLine l = m.lines[row];
  if (l.non_taxable > 0) {
    m.non_taxable = RefMoney(double(m.non_taxable) - double(l.non_taxable));
    m.subtotal = RefMoney(double(m.subtotal) - double(l.non_taxable));
  }
  if (l.taxable > 0) {
    m.taxable = RefMoney(double(m.taxable) - double(l.taxable));
    m.subtotal = RefMoney(double(m.subtotal) - double(l.taxable));
  }
  m.total = RefMoney(double(m.total) - double(l.line_total));
  m.tax1 = RefMoney(double(m.tax1) - double(l.tax1));
  m.tax2 = RefMoney(double(m.tax2) - double(l.tax2));
  m.cost = float(double(m.cost) - double(l.cost));
  m.lines.erase(m.lines.begin() + ptrdiff_t(row));
  if (m.lines.empty()) m = RefBasket{{}, 0, 0, 0, 0, 0, 0, 0, m.messages};
}

// ---- Random baskets -------------------------------------------------------

struct Op {
  bool void_line = false;
  int item = 0;  // index into the items
  int mode = 0;
  double where = 0;  // which row a void takes, as a fraction of the rows
};

constexpr int kItems = 30;

struct Scenario {
  SettingsRecord settings{};
  std::vector<FilmRecord> items;
  std::vector<Op> ops;
};

class Generator {
 public:
  explicit Generator(uint64_t seed) : rng_(seed) {}

  Scenario Next(const SettingsRecord& base) {
    Scenario sc;
    sc.settings = base;
    SettingsRecord& s = sc.settings;
    s.negative_stock = 2;
    s.tax1_switch = Chance(0.8) ? 2 : 0;
    s.tax1_rate = Rate();
    s.tax2_switch = Chance(0.5) ? 2 : 0;
    s.tax2_rate = Rate();
    s.tax_on_tax = Chance(0.5) ? 2 : 0;
    s.tax1_threshold_on = Chance(0.4) ? 2 : 0;
    s.tax1_threshold = double(Int(0, 40000)) / 100.0;
    s.trade_mode = Chance(0.3) ? 2 : 0;
    s.trade_discount_mode = Chance(0.5) ? 2 : 0;
    s.trade_percent = Chance(0.2) ? 0.0f : float(double(Int(1, 9999)) / 100.0);

    // Always the same numbers in the same places, so the index stays valid
    // while the records change under it.
    const int count = kItems;
    for (int k = 0; k < count; ++k) {
      FilmRecord r{};
      r.number = k + 1;
      SetField(r.description, "R" + std::to_string(k + 1));
      r.retail_price = Price();
      r.trade_price = Chance(0.15) ? 0.0f : Price();
      r.cost_price = Price();
      r.tax = Int(0, 3);
      r.no_tax_rounding = Chance(0.3) ? 2 : 0;
      r.buy_one_get_one = Chance(0.15) ? 2 : 0;
      r.quantity = 5;
      sc.items.push_back(r);
    }
    const int ops = Int(1, 40);
    for (int k = 0; k < ops; ++k) {
      Op op;
      op.void_line = Chance(0.15);
      op.item = Int(0, count - 1);
      op.mode = Chance(0.1) ? kEntryFree : kEntryNormal;
      op.where = std::uniform_real_distribution<double>(0, 1)(rng_);
      sc.ops.push_back(op);
    }
    return sc;
  }

 private:
  bool Chance(double p) { return std::bernoulli_distribution(p)(rng_); }
  int Int(int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng_); }
  int64_t Rate() {
    switch (Int(0, 5)) {
      case 0:
        return 0;
      case 1:
        return 2000;
      case 2:
        return 1750;
      default:
        return Int(1, 9999);
    }
  }
  // Three decimals, mostly shop prices, now and then one large enough to reach
  // the limit of a transaction.
  float Price() {
    if (Chance(0.03)) return float(double(Int(1000000, 40000000)) / 1000.0);
    return float(double(Int(1, 300000)) / 1000.0);
  }
  std::mt19937_64 rng_;
};

class PricingReferenceTest : public SaleTest {
 protected:
  // Puts the scenario's items in film.dat and its settings in force.
  void Install(const Scenario& sc) {
    std::string bytes(reinterpret_cast<const char*>(sc.items.data()),
                      sc.items.size() * sizeof(FilmRecord));
    WriteBytes(kFilmFile, bytes);
    if (G().films.live != kItems) {
      ASSERT_TRUE(G().films.Load());
    }
    G().settings = sc.settings;
    std::memset(&G().basket, 0, sizeof(Basket));
    G().basket_list = BasketList{};
    platform_.clear_record();
  }

  static RefBasket Expected(const Scenario& sc) {
    RefBasket m;
    for (const Op& op : sc.ops) {
      if (op.void_line)
        RefVoid(m, m.lines.empty() ? 0 : size_t(op.where * double(m.lines.size())));
      else
        RefAdd(m, sc.items[size_t(op.item)], op.mode, sc.settings);
    }
    return m;
  }

  void Run(const Scenario& sc) {
    for (const Op& op : sc.ops) {
      if (op.void_line) {
        G().basket_list.selected = int(op.where * double(G().basket_list.rows.size()));
        Voiditem();
      } else {
        Addtobasket(sc.items[size_t(op.item)].number, op.mode);
      }
    }
  }

  static bool Same(float a, float b) { return std::memcmp(&a, &b, sizeof a) == 0; }

  // Every figure bit for bit; the first difference is reported with its basket.
  ::testing::AssertionResult Matches(const RefBasket& m, int basket) {
    const Basket& b = G().basket;
    auto fail = [&](const std::string& what) {
      return ::testing::AssertionFailure() << "basket " << basket << ": " << what;
    };
    if (b.line_count != int(m.lines.size()) && platform_.shown() != m.messages) {
      std::string seen;
      for (const auto& s : platform_.shown()) seen += "[" + s + "]";
      return fail("line_count " + std::to_string(b.line_count) + ", messages " + seen);
    }
    if (b.line_count != int(m.lines.size()))
      return fail("line_count " + std::to_string(b.line_count) + " vs " +
                  std::to_string(m.lines.size()));
    for (int i = 0; i < b.line_count; ++i) {
      const RefLine& l = m.lines[size_t(i)];
      if (b.number[i] != l.number || !Same(b.non_taxable[i], l.non_taxable) ||
          !Same(b.taxable[i], l.taxable) || !Same(b.tax1[i], l.tax1) || !Same(b.tax2[i], l.tax2) ||
          !Same(b.cost[i], l.cost) || !Same(b.line_total[i], l.line_total))
        return fail("line " + std::to_string(i) + " total " + ThreeDecimalText(b.line_total[i]) +
                    " vs " + ThreeDecimalText(l.line_total) + ", tax1 " +
                    ThreeDecimalText(b.tax1[i]) + " vs " + ThreeDecimalText(l.tax1));
    }
    if (!Same(b.total_non_taxable, m.non_taxable) || !Same(b.total_taxable, m.taxable) ||
        !Same(b.subtotal, m.subtotal) || !Same(b.total_tax1, m.tax1) ||
        !Same(b.total_tax2, m.tax2) || !Same(b.total_cost, m.cost) || !Same(b.total, m.total))
      return fail("totals " + MoneyText(b.total) + " vs " + MoneyText(m.total) + ", tax1 " +
                  MoneyText(b.total_tax1) + " vs " + MoneyText(m.tax1));
    if (platform_.shown() != m.messages) {
      std::string seen;
      for (const auto& s : platform_.shown()) seen += "[" + s + "]";
      return fail("messages differ: " + seen);
    }
    return ::testing::AssertionSuccess();
  }
};

TEST_F(PricingReferenceTest, RandomBasketsAgreeWithTheStepByStepModel) {
  Generator gen(20240611);
  const SettingsRecord base = G().settings;
  int lines = 0, refusals = 0;
  for (int basket = 0; basket < 3000; ++basket) {
    const Scenario sc = gen.Next(base);
    Install(sc);
    const RefBasket expected = Expected(sc);
    Run(sc);
    ASSERT_TRUE(Matches(expected, basket));
    lines += int(expected.lines.size());
    refusals += int(expected.messages.size());
  }
  // The baskets did reach the paths they are meant to.
  EXPECT_GT(lines, 20000);
  EXPECT_GT(refusals, 100);
}

// A locale whose decimal separator is a comma, built into the test's folder.
bool MakeCommaLocale(const std::string& folder) {
  const std::string source = folder + "/comma.src";
  std::FILE* f = std::fopen(source.c_str(), "w");
  if (!f) return false;
  std::fputs(
      "LC_CTYPE\ncopy \"POSIX\"\nEND LC_CTYPE\n"
      "LC_COLLATE\ncopy \"POSIX\"\nEND LC_COLLATE\n"
      "LC_MONETARY\ncopy \"POSIX\"\nEND LC_MONETARY\n"
      "LC_NUMERIC\ndecimal_point \",\"\nthousands_sep \".\"\ngrouping 3;3\nEND LC_NUMERIC\n"
      "LC_TIME\ncopy \"POSIX\"\nEND LC_TIME\n"
      "LC_MESSAGES\ncopy \"POSIX\"\nEND LC_MESSAGES\n",
      f);
  std::fclose(f);
  std::filesystem::create_directories(folder + "/locales");
  const std::string command = "localedef -c -i '" + source + "' -f ANSI_X3.4-1968 '" + folder +
                              "/locales/xx_COMMA' >/dev/null 2>&1";
  (void)std::system(command.c_str());
  setenv("LOCPATH", (folder + "/locales").c_str(), 1);
  return std::setlocale(LC_ALL, "xx_COMMA") != nullptr;
}

TEST_F(PricingReferenceTest, CommaDecimalSeparatorChangesNoTotal) {
  Generator gen(777);
  const SettingsRecord base = G().settings;
  std::vector<Scenario> scenarios;
  std::vector<RefBasket> expected;
  for (int basket = 0; basket < 300; ++basket) {
    scenarios.push_back(gen.Next(base));
    expected.push_back(Expected(scenarios.back()));  // worked out in the C locale
  }

  ASSERT_TRUE(MakeCommaLocale(folder_))
      << "localedef could not build a comma locale (the locales package is needed)";
  char probe[32];
  std::snprintf(probe, sizeof probe, "%.2f", 1.5);
  const std::string printed = probe;
  for (size_t k = 0; k < scenarios.size(); ++k) {
    Install(scenarios[k]);
    Run(scenarios[k]);
    if (!Matches(expected[k], int(k))) {
      std::setlocale(LC_ALL, "C");
      FAIL() << "basket " << k << " differs under the comma locale";
    }
  }
  const std::string total = Totalspanel().total;
  const std::string row = G().basket_list.rows.empty() ? "0.00" : G().basket_list.rows.back();
  std::setlocale(LC_ALL, "C");
  unsetenv("LOCPATH");

  EXPECT_EQ(printed, "1,50");  // the locale really was in force
  EXPECT_EQ(total.find(','), std::string::npos);
  EXPECT_EQ(row.find(','), std::string::npos);
  EXPECT_EQ(MoneyText(2.5), "2.50");
}

}  // namespace
}  // namespace tilo
