// SPDX-License-Identifier: MIT
#include "core/settings.h"

#include <cstdio>
#include <cstring>

#include "core/clock.h"
#include "core/state.h"
#include "core/text.h"
#include "platform/files.h"
#include "platform/platform.h"

namespace tilo {
namespace {

constexpr const char* kCodes[18] = {"ALC", "BEE", "BOO", "CAN", "CAR", "COF", "DEL", "DRI", "DVD",
                                    "FRO", "FRU", "HAR", "MSC", "PAP", "POP", "TEA", "SWE", "WIN"};

char* CategoryCodeAt(SettingsRecord& s, int n) {
  if (n >= 1 && n <= 9) return s.category_code_a[n];
  if (n >= 10 && n <= 18) return s.category_code_b[n - 10];
  return nullptr;
}

template <typename T>
T ReadAt(const SettingsRecord& s, size_t offset) {
  T value;
  std::memcpy(&value, reinterpret_cast<const char*>(&s) + offset, sizeof value);
  return value;
}

// The values both initialisers share.
void SetCommonDefaults(SettingsRecord& s) {
  s.till_float = 100.00f;
  s.current_category = 14;
  s.new_customer_listing = 1;
  for (int b = 0; b < 8; ++b) {
    s.band_discount[b] = b + 1;
    s.band_credit_period[b] = b + 1;
  }
  s.band_discount_end = 99;
  s.tax1_switch = 2;
  s.tax1_rate = 2000;
  for (int n = 1; n <= 18; ++n) SetCategoryCode(s, n, kCodes[n - 1]);
  SetField(s.tax1_name, "TAX 1");
  SetField(s.tax2_name, "TAX 2");
  s.transaction_number = 1;
  s.transaction_number_high = 2;
  SetField(s.receipt_footer, "Always happy to help!");
  s.custom_line_store_name = 1;
  s.custom_line_store_address1 = 2;
  s.custom_line_store_address2 = 3;
  s.custom_line_store_address3 = 4;
  s.custom_line_store_telephone = 5;
  s.custom_line_date = 7;
  s.custom_line_by_line = 12;
  s.custom_line_total = 10;
  s.custom_line_clerk = 8;
  SetField(s.clerk_name[0], "Administrator");
  SetField(s.clerk_name[1], "Manager");
  for (int n = 2; n < 100; ++n) {
    char name[16];
    std::snprintf(name, sizeof name, "Clerk %d", n + 1);
    SetField(s.clerk_name[n], name);
  }
  for (auto& password : s.clerk_password) SetField(password, "7351");
}

// One deleted record of `size` bytes: the smallest file that passes the size test.
bool WriteEmptyRecordFile(const char* path, int64_t size) {
  std::vector<char> record(size_t(size), 0);
  const int64_t minus_one = -1;
  std::memcpy(record.data(), &minus_one, sizeof minus_one);
  return ReplaceFile(path, record.data(), size);
}

}  // namespace

void StampLastUsed(SettingsRecord& s) {
  Timestamp();
  const LocalTime& now = G().now;
  s.last_used_minute = now.minute;
  s.last_used_hour = now.hour;
  s.last_used_day = now.day;
  s.last_used_month = now.month;
  s.last_used_year = now.year;
}

std::string CategoryCode(const SettingsRecord& s, int n) {
  const char* code = CategoryCodeAt(const_cast<SettingsRecord&>(s), n);
  return code ? FieldText(code, 3) : std::string();
}

void SetCategoryCode(SettingsRecord& s, int n, const char* code) {
  char* slot = CategoryCodeAt(s, n);
  if (!slot) return;
  std::memset(slot, 0, 3);
  std::memcpy(slot, code, std::min<size_t>(3, std::strlen(code)));
}

int32_t BandDiscount(const SettingsRecord& s, int band) {
  return ReadAt<int32_t>(s, offsetof(SettingsRecord, receipt_printer_index) + 4 * size_t(band));
}

int64_t BandCreditPeriod(const SettingsRecord& s, int band) {
  return ReadAt<int64_t>(s, offsetof(SettingsRecord, free_configuration) + 8 * size_t(band));
}

void SetBandDiscount(SettingsRecord& s, int band, int32_t code) {
  std::memcpy(reinterpret_cast<char*>(&s) + offsetof(SettingsRecord, receipt_printer_index) +
                  4 * size_t(band),
              &code, sizeof code);
}

void SetBandCreditPeriod(SettingsRecord& s, int band, int64_t code) {
  std::memcpy(
      reinterpret_cast<char*>(&s) + offsetof(SettingsRecord, free_configuration) + 8 * size_t(band),
      &code, sizeof code);
}

double CategoryHistory(const SettingsRecord& s, int c, int d) {
  return ReadAt<double>(s, 3338 + 256 * size_t(c) + 8 * size_t(d));
}

void SetCategoryHistory(SettingsRecord& s, int c, int d, double value) {
  std::memcpy(reinterpret_cast<char*>(&s) + 3338 + 256 * size_t(c) + 8 * size_t(d), &value,
              sizeof value);
}

std::string ClerkName(const SettingsRecord& s, int64_t clerk) {
  if (clerk < 1 || clerk > 100) return {};
  return FieldText(s.clerk_name[clerk - 1]);
}

std::string ClerkPassword(const SettingsRecord& s, int64_t clerk) {
  if (clerk < 0 || clerk > 99) return {};
  return FieldText(s.clerk_password[clerk]);
}

bool Opensettings() {
  File f(kSettingsFile, File::Mode::Read);
  if (!f) return false;
  // A shorter file is a record of an earlier release: the rest stays zero.
  std::memset(&G().settings, 0, sizeof(SettingsRecord));
  f.read(&G().settings, sizeof(SettingsRecord));
  return true;
}

bool Savesettings() {
  return ReplaceFile(kSettingsFile, &G().settings, sizeof(SettingsRecord));
}

bool Firstrunsettings() {
  if (!WriteEmptyRecordFile(kFilmFile, sizeof(FilmRecord))) {
    Message("Data file: film.dat, not present.", "Fatal error");
    return false;
  }
  if (!WriteEmptyRecordFile("member.dat", 2094)) {
    Message("Data file: member.dat, not present.", "Fatal error");
    return false;
  }
  SettingsRecord& s = G().settings;
  std::memset(&s, 0, sizeof s);
  StampLastUsed(s);
  SetCommonDefaults(s);
  s.last_day = 0;
  if (!Savesettings()) {
    Message("Data file: wr.cfg, not present.", "Fatal error");
    return false;
  }
  if (!WriteEmptyRecordFile("mans.dat", 1058)) {
    Message("Data file: mans.dat, not present.", "Fatal error");
    return false;
  }
  return true;
}

void TakeLocaleCurrency(SettingsRecord& s) {
  std::string symbol = Utf8ToCp1252(platform().currency_symbol());
  std::memset(s.currency_symbol, 0, sizeof s.currency_symbol);
  std::memcpy(s.currency_symbol, symbol.data(), std::min<size_t>(4, symbol.size()));
  s.currency_end = 0;
  s.currency_set = 2;
}

void Resetsettings() {
  SettingsRecord& s = G().settings;
  const int64_t survivor = s.reset_survivor;
  std::memset(&s, 0, sizeof s);
  s.reset_survivor = survivor;
  StampLastUsed(s);
  SetCommonDefaults(s);
  const State& g = G();
  s.last_day = g.today_day;
  s.history_from_day = s.first_day = g.today_day;
  s.history_from_month = s.first_month = g.today_month;
  s.history_from_year = s.first_year = g.today_year;
  s.start_category = 15;
  s.default_category = 15;
  TakeLocaleCurrency(s);
}

void DefaultHeadingLines(HeadingLines& h) {
  SetField(h.site_name, "THE CORNER SHOP");
  SetField(h.site_road, "12 HIGH STREET");
  SetField(h.site_area, "MARKET TOWN");
  SetField(h.site_county, "AB1 2CD");
  SetField(h.site_postcode, "UNITED KINGDOM");
  SetField(h.site_telephone, "TEL 01234 567890");
  SetField(h.site_spare, "THE CORNER SHOP");
}

bool ReadHeadingLines(HeadingLines& h) {
  File f(kHeadingFile, File::Mode::Read);
  if (!f) return false;
  f.read(&h, sizeof h);
  return true;
}

bool WriteHeadingLines(const HeadingLines& h) {
  return ReplaceFile(kHeadingFile, &h, sizeof h);
}

}  // namespace tilo
