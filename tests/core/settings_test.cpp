// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstring>

#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

using SettingsTest = ShopTest;

template <typename T>
T At(const std::string& bytes, size_t offset) {
  T v;
  std::memcpy(&v, bytes.data() + offset, sizeof v);
  return v;
}

TEST_F(SettingsTest, FreshDataSetHasTheFirstRunValuesAtTheirOffsets) {
  platform_.set_now(2026, 3, 9, 14, 5);
  MakeFreshShop();
  const std::string cfg = Bytes("wr.cfg");
  ASSERT_EQ(cfg.size(), 42550u);
  EXPECT_EQ(At<int32_t>(cfg, 76), 0);  // last_day marks the first run
  EXPECT_EQ(At<int32_t>(cfg, 480), 5);
  EXPECT_EQ(At<int32_t>(cfg, 484), 14);
  EXPECT_EQ(At<int32_t>(cfg, 488), 9);
  EXPECT_EQ(At<int32_t>(cfg, 492), 3);
  EXPECT_EQ(At<int32_t>(cfg, 496), 2026);
  EXPECT_FLOAT_EQ(At<float>(cfg, 3342), 100.0f);
  EXPECT_EQ(At<int32_t>(cfg, 40222), 14);
  EXPECT_EQ(At<int64_t>(cfg, 904), 1);
  EXPECT_EQ(At<int32_t>(cfg, 72), 99);
  for (int b = 1; b <= 8; ++b) {
    EXPECT_EQ(At<int32_t>(cfg, 36 + 4 * b), b);
    EXPECT_EQ(At<int64_t>(cfg, 1040 + 8 * b), b);
  }
  EXPECT_EQ(At<int64_t>(cfg, 1112), 2);
  EXPECT_EQ(At<int64_t>(cfg, 1144), 2000);
  EXPECT_EQ(cfg.substr(9, 27), "ALCBEEBOOCANCARCOFDELDRIDVD");
  EXPECT_EQ(cfg.substr(1382, 27), "FROFRUHARMSCPAPPOPTEASWEWIN");
  EXPECT_EQ(std::string(cfg.data() + 1409), "TAX 1");
  EXPECT_EQ(std::string(cfg.data() + 1415), "TAX 2");
  EXPECT_EQ(At<int32_t>(cfg, 1360), 1);
  EXPECT_EQ(At<int32_t>(cfg, 1364), 2);
  EXPECT_EQ(std::string(cfg.data() + 38842), "Always happy to help!");
  EXPECT_EQ(At<int32_t>(cfg, 33234), 1);
  EXPECT_EQ(At<int32_t>(cfg, 33262), 12);
  EXPECT_EQ(At<int32_t>(cfg, 33290), 10);
  EXPECT_EQ(At<int32_t>(cfg, 33294), 8);
  EXPECT_EQ(std::string(cfg.data() + 34762), "Administrator");
  EXPECT_EQ(std::string(cfg.data() + 34762 + 30), "Manager");
  EXPECT_EQ(std::string(cfg.data() + 34762 + 30 * 2), "Clerk 3");
  EXPECT_EQ(std::string(cfg.data() + 34762 + 30 * 99), "Clerk 100");
  for (int n = 0; n < 100; ++n) EXPECT_EQ(std::string(cfg.data() + 37762 + 10 * n), "7351");
  // The drawer and invoice defaults belong to the first start, not the installer.
  EXPECT_EQ(At<int32_t>(cfg, 40586), 0);
  EXPECT_EQ(At<int32_t>(cfg, 40790), 0);

  EXPECT_EQ(Bytes("film.dat").size(), 1874u);
  EXPECT_EQ(At<int64_t>(Bytes("film.dat"), 0), -1);
  EXPECT_EQ(Bytes("film.dat")[8], '\0');
  EXPECT_EQ(Bytes("member.dat").size(), 2094u);
  EXPECT_EQ(At<int64_t>(Bytes("member.dat"), 0), -1);
  EXPECT_EQ(Bytes("mans.dat").size(), 1058u);
  EXPECT_EQ(At<int64_t>(Bytes("mans.dat"), 0), -1);
}

TEST_F(SettingsTest, RoundTripKeepsEveryByteIncludingReserved) {
  std::string image(42550, '\0');
  for (size_t i = 0; i < image.size(); ++i) image[i] = char((i * 131 + 7) % 251);
  WriteBytes("wr.cfg", image);
  ASSERT_TRUE(Opensettings());
  ASSERT_TRUE(Savesettings());
  EXPECT_EQ(Bytes("wr.cfg"), image);
}

TEST_F(SettingsTest, ShortFileLeavesTheRestZero) {
  WriteBytes("wr.cfg", std::string(60, '\x11'));
  std::memset(&G().settings, 0x7f, sizeof(SettingsRecord));
  ASSERT_TRUE(Opensettings());
  EXPECT_EQ(G().settings.receipt_printer_index, 0x11111111);  // within the 60 bytes
  EXPECT_EQ(G().settings.last_day, 0);                        // beyond them
  EXPECT_EQ(G().settings.transaction_number, 0);
  EXPECT_EQ(G().settings.category_total_today[17], 0.0);
}

// The category history's offsets are held byte for byte by the rollover's model.
TEST_F(SettingsTest, BandArraysShareTheirOriginWithTheFieldBefore) {
  SettingsRecord& s = G().settings;
  s.receipt_printer_index = 42;
  s.free_configuration = 2;
  s.band_discount[2] = 5;
  s.band_credit_period[7] = 8;
  EXPECT_EQ(BandDiscount(s, 0), 42);
  EXPECT_EQ(BandDiscount(s, 3), 5);
  EXPECT_EQ(BandCreditPeriod(s, 0), 2);
  EXPECT_EQ(BandCreditPeriod(s, 8), 8);
}

TEST_F(SettingsTest, FileResetKeepsTheSurvivorAndSetsTheResetValues) {
  platform_.currency = "€";
  G().today_day = 4;
  G().today_month = 5;
  G().today_year = 2027;
  SettingsRecord& s = G().settings;
  std::memset(&s, 0x33, sizeof s);
  s.reset_survivor = 777;
  Resetsettings();
  Resetsettings();
  EXPECT_EQ(s.reset_survivor, 777);
  EXPECT_EQ(s.last_day, 4);
  EXPECT_EQ(s.first_year, 2027);
  EXPECT_EQ(s.history_from_month, 5);
  EXPECT_EQ(s.start_category, 15);
  EXPECT_EQ(s.default_category, 15);
  EXPECT_EQ(FieldText(s.tax1_name), "TAX 1");
  EXPECT_EQ(s.drawer_mode, 0);
  EXPECT_EQ(FieldText(s.drawer_code), "");
  EXPECT_EQ(s.invoice_line_total, 0);
  EXPECT_EQ(uint8_t(s.currency_symbol[0]), 0x80);  // the euro sign in Windows-1252
  EXPECT_EQ(s.currency_set, 2);
  EXPECT_EQ(s.today_items, 0);
  EXPECT_EQ(FieldText(s.clerk_password[99]), "7351");
}

}  // namespace
}  // namespace tilo
