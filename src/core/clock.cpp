// SPDX-License-Identifier: MIT
#include "core/clock.h"

#include <cstdio>
#include <cstdlib>
#include <string>

#include "core/state.h"
#include "core/text.h"

namespace tilo {

void Timestamp() {
  State& g = G();
  g.now = platform().now();
  std::snprintf(g.stamp_text, sizeof g.stamp_text, "%02d:%02d%02d/%02d/%d", g.now.hour,
                g.now.minute, g.now.day, g.now.month, g.now.year);
}

void Datestamp() {
  State& g = G();
  g.now = platform().now();
  std::snprintf(g.date_text, sizeof g.stamp_text, "%02d/%02d/%d", g.now.day, g.now.month,
                g.now.year);
}

namespace {
int Digits(const char* text, int from, int count) {
  std::string part;
  for (int i = from; i < from + count && text[i] != '\0'; ++i) part += text[i];
  return std::atoi(part.c_str());
}
}  // namespace

int Shortdate() {
  char* text = G().pretty_date;
  for (int i = 0; i < 5; ++i)
    if (text[i] == '\0') return 0;
  int day = Digits(text, 5, 2);
  int month = Digits(text, 8, 2);
  int year = Digits(text, 11, 4);
  if (day == 0 || day > 31 || month == 0 || month > 12 || year < 1980) return 0;
  std::string pretty = Utf8ToCp1252(platform().short_date(year, month, day));
  std::snprintf(text, sizeof G().pretty_date, "%s", pretty.c_str());
  return 1;
}

int DaysInMonth(int month, int year) {
  static const int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (month == 2 && year % 4 == 0) return 29;
  return days[(month - 1 + 12) % 12];
}

}  // namespace tilo
