// SPDX-License-Identifier: MIT
#include "reports/takings.h"

#include <charconv>
#include <cstdio>
#include <cstdlib>

#include "core/activity_log.h"
#include "core/clock.h"
#include "core/state.h"
#include "core/text.h"
#include "documents/print_job.h"
#include "platform/platform.h"

namespace tilo {
namespace {

constexpr const char* kWeekdays[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                     "Thursday", "Friday", "Saturday"};
constexpr const char* kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                   "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

TakingsDate Today() {
  const State& g = G();
  return {g.today_day, g.today_month, g.today_year};
}

// Days since 1 March of year 0 by the rule of four: a serial number of dates that
// agrees with the month table the list walks by.
int64_t Serial(TakingsDate d) {
  int64_t days = int64_t(d.year) * 365 + (d.year + 3) / 4;  // Januarys of the years before
  for (int m = 1; m < d.month; ++m) days += DaysInMonth(m, d.year);
  return days + d.day;
}

// The field of `text` at `start`, at most `width` characters, as atoi reads it.
int Field(const std::string& text, size_t start, size_t width) {
  if (start >= text.size()) return 0;
  return std::atoi(text.substr(start, width).c_str());
}

// An amount typed with a point as its decimal sign whatever the locale; nullopt
// for anything else.
std::optional<double> Amount(const std::string& text) {
  size_t a = text.find_first_not_of(' '), b = text.find_last_not_of(' ');
  if (a == std::string::npos) return std::nullopt;
  const char* first = text.data() + a;
  const char* last = text.data() + b + 1;
  if (*first == '+') ++first;
  double value = 0;
  auto [end, error] = std::from_chars(first, last, value, std::chars_format::fixed);
  if (error != std::errc() || end != last) return std::nullopt;
  return value;
}

std::optional<int> AskDate(bool amendment, const std::string& title) {
  const TakingsDate today = Today();
  std::optional<std::string> text =
      platform().prompt(TakingsPrompt(today, amendment), title, DefaultTakingsDate(today));
  if (!text) return std::nullopt;
  std::optional<int> index = Takingsindex(*text, today, amendment);
  if (!index) Message("Non valid date", "Problem");
  return index;
}

bool TenderOpen() {
  return G().tender_form_open == 2;
}

std::string Format(const char* format, double value) {
  char text[64];
  std::snprintf(text, sizeof text, format, value);
  return text;
}

// Where the printed listing has got to: the days, and the next one to print.
struct TakingsPrint {
  std::vector<TakingsDay> days;
  std::string header;
  size_t next = 0;
};

void PrintTakingsPage(TakingsPrint& job, PrintTarget& target) {
  // Each copy starts again from the first day.
  if (G().print_job.page_number == 1) job.next = 0;
  ListingPage page = Startlistingpage(target, job.header);
  while (job.next < job.days.size()) {
    page.text(0, TakingsPrintRow(job.days[job.next++]));
    ++page.row;
    if (job.next < job.days.size() && Listingpagefull(page)) return;
  }
}

}  // namespace

TakingsDate DaysBefore(TakingsDate d, int days) {
  d.day -= days;
  while (d.day < 1) {
    if (--d.month < 1) {
      d.month = 12;
      --d.year;
    }
    d.day += DaysInMonth(d.month, d.year);
  }
  return d;
}

TakingsDate NextDay(TakingsDate d) {
  if (++d.day > DaysInMonth(d.month, d.year)) {
    d.day = 1;
    if (++d.month > 12) {
      d.month = 1;
      ++d.year;
    }
  }
  return d;
}

std::string DefaultTakingsDate(TakingsDate today) {
  const TakingsDate d = DaysBefore(today, 14);
  char text[40];
  std::snprintf(text, sizeof text, "%02d-%02d-%d", d.day, d.month, d.year);
  return text;
}

std::string TakingsPrompt(TakingsDate today, bool amendment) {
  char text[64];
  std::snprintf(text, sizeof text,
                amendment ? "Amend (Earliest 01-%02d-%d):" : "From (Earliest 01-%2d-%d):",
                today.month, today.year - 1);
  return text;
}

std::optional<int> Takingsindex(const std::string& text, TakingsDate today, bool amendment) {
  const TakingsDate d{Field(text, 0, 2), Field(text, 3, 2), Field(text, 6, 4)};
  if (d.day < 1 || d.month < 1 || d.month > 12 || d.year < 1994) return std::nullopt;
  if (d.year != today.year && d.year != today.year - 1) return std::nullopt;
  if (d.day > DaysInMonth(d.month, d.year)) return std::nullopt;
  const int64_t index = Serial(today) - Serial(d);
  const bool today_allowed = amendment && index == 0;
  if (index < 0 || (index == 0 && !today_allowed)) return std::nullopt;
  // Nothing before the first of this month a year ago, the earliest the prompt offers.
  if (Serial(d) < Serial({1, today.month, today.year - 1}) || index > kTakingsLastSlot)
    return std::nullopt;
  return int(index);
}

const char* TakingsWeekday(int start_weekday, int index) {
  return kWeekdays[((start_weekday - index) % 7 + 7) % 7];
}

std::vector<TakingsDay> TakingsDays(const SettingsRecord& s, int start_weekday, int index,
                                    TakingsDate from) {
  std::vector<TakingsDay> days;
  TakingsDate date = from;
  for (int i = index; i >= 1; --i, date = NextDay(date)) {
    if (i > kTakingsLastSlot) continue;
    TakingsDay day{i, date, TakingsWeekday(start_weekday, i), s.takings_history[i], {}};
    const int length = DaysInMonth(date.month, date.year);
    // The month's sum needs every one of its days still in the history.
    if (date.day == length && i + length - 1 <= kTakingsLastSlot) {
      double sum = 0;
      for (int k = i; k < i + length; ++k) sum += s.takings_history[k];
      day.month_total = sum;
    }
    days.push_back(day);
  }
  return days;
}

std::string TakingsListRow(const TakingsDay& day) {
  char text[160];
  int n = std::snprintf(text, sizeof text, "%-20s%2d/%2d/%d    %.2f", day.weekday, day.date.day,
                        day.date.month, day.date.year, day.takings);
  if (day.month_total)
    std::snprintf(text + n, sizeof text - n, "    Month: %.2f", *day.month_total);
  return text;
}

std::string TakingsPrintRow(const TakingsDay& day) {
  char text[160];
  int n = std::snprintf(text, sizeof text, "%-12s%2d/%2d/%d  %.2f", day.weekday, day.date.day,
                        day.date.month, day.date.year, day.takings);
  if (day.month_total) std::snprintf(text + n, sizeof text - n, "  Month: %.2f", *day.month_total);
  return text;
}

void Purgetakings(SettingsRecord& s) {
  for (int k = 1; k <= kTakingsPurgedSlots; ++k) s.takings_history[k] = 0;
}

std::optional<std::vector<TakingsDay>> Takingslist() {
  if (TenderOpen()) return std::nullopt;
  std::optional<int> index = AskDate(false, "Takings list");
  if (!index) return std::nullopt;
  return TakingsDays(G().settings, G().start_weekday, *index, DaysBefore(Today(), *index));
}

void Printtakings() {
  if (TenderOpen()) return;
  std::optional<int> index = AskDate(false, "Print takings");
  if (!index) return;
  const TakingsDate from = DaysBefore(Today(), *index);
  TakingsPrint job;
  job.days = TakingsDays(G().settings, G().start_weekday, *index, from);
  char header[64];
  std::snprintf(header, sizeof header, "Takings: %d/%d/%d", from.day, from.month, from.year);
  job.header = header;
  Runpagedjob([&job](PrintTarget& target) { PrintTakingsPage(job, target); });
}

void Takingsamendment() {
  if (TenderOpen()) return;
  std::optional<int> index = AskDate(true, "Takings amendment");
  if (!index) return;
  SettingsRecord& s = G().settings;
  const TakingsDate date = DaysBefore(Today(), *index);
  double slot = *index == 0 ? double(s.till_takings) : double(s.takings_history[*index]);
  std::optional<std::string> text;
  if (*index == 0) {
    text = platform().prompt("Takings", "Today", Format("%.2f", slot));
  } else {
    char caption[80];
    std::snprintf(caption, sizeof caption, "%s %2d/%2d/%d",
                  TakingsWeekday(G().start_weekday, *index), date.day, date.month, date.year);
    text = platform().prompt(caption, "Takings amendment", Format("%.2f", slot));
  }
  if (!text) return;
  const std::optional<double> value = Amount(*text);
  if (!value) {
    Message("Non valid amount", "Problem");
    return;
  }
  slot = *value;
  if (*index == 0)
    s.till_takings = slot;
  else
    s.takings_history[*index] = slot;
  if (!Savesettings()) Message("Unable to save settings", "Problem");

  char tail[120];
  if (*index == 0)
    std::snprintf(tail, sizeof tail, "\r\nfor %d/%d/%d: %.2f\r\n", date.day, date.month, date.year,
                  slot);
  else
    std::snprintf(tail, sizeof tail, "\r\nfor %d/%d/%d: ", date.day, date.month, date.year);
  Timestamp();
  std::string entry = "\r\n" + LogStamp() + "  Takings amendment" + tail;
  if (*index != 0) entry += Utf8ToCp1252(*text) + "\r\n";
  if (!AppendToLog(entry)) Message("Data file: bun4.dat, not present.", "Fatal error");
}

void Purgetakingscommand() {
  if (TenderOpen()) return;
  if (Message("Are you sure?", "Purge entire takings history", Buttons::OkCancel) != Answer::Ok)
    return;
  Purgetakings(G().settings);
  if (!Savesettings()) Message("Unable to save settings", "Problem");
}

TakingsChart BuildTakingsChart(const SettingsRecord& s, int W, int H, int today_month,
                               int day_of_month) {
  TakingsChart c;
  c.width = W;
  c.height = H;
  const int step = W / 14;
  c.axis[0][0] = W - 10;
  c.axis[0][1] = H - 50;
  c.axis[1][0] = step;
  c.axis[1][1] = H - 50;
  c.axis[2][0] = step;
  c.axis[2][1] = 2;
  c.grid_bottom = H - 52;
  // The months run from the one after the present to the present one itself.
  for (int k = 1; k <= 12; ++k) {
    const int x = step * k + step;
    c.labels.push_back({x, H - 50, kMonths[(today_month + k - 1) % 12], TextAlign::Centre});
    c.grid_x.push_back(x);
  }

  std::vector<double> averages;
  for (int i = 0; i <= 365; i += 7) {
    double sum = 0;
    for (int k = i + 1; k <= i + 7; ++k) sum += s.takings_history[k];
    averages.push_back(sum / 7);
    // A week with nothing taken stays out of the scale.
    if (sum == 0) continue;
    const double average = sum / 7;
    if (!c.any_week) {
      c.smallest = c.largest = average;
      c.any_week = true;
    }
    if (average < c.smallest) c.smallest = average;
    if (average > c.largest) c.largest = average;
  }
  c.first_week = averages[0];
  if (!c.any_week) return c;

  // The present week stands at today's place in the present month's column, and
  // each week before it one scale step to the left; bars rise from zero.
  const double scale = double(W - 2 * step) / 54;
  const double first = step * 13 + day_of_month * scale / 7;
  const double per_unit = c.largest > 0 ? (H - 120) / c.largest : 0;
  const int half = scale > 3 ? int(scale * 0.35) : 1;
  const int floor_y = H - 50;
  auto height_of = [&](double value) { return floor_y - int(value * per_unit + 0.5); };
  for (size_t w = 0; w < averages.size(); ++w) {
    if (averages[w] == 0) continue;
    const int x = int(first - double(w) * scale + 0.5);
    c.bars.push_back({x - half, height_of(averages[w]), x + half, floor_y});
  }
  c.labels.push_back(
      {step - 2, height_of(c.smallest), Format("%0.0f", c.smallest), TextAlign::Right});
  c.labels.push_back(
      {step - 2, height_of(c.largest), Format("%0.0f", c.largest), TextAlign::Right});
  return c;
}

void DrawTakingsChart(PrintTarget& target, const TakingsChart& c, int left, int top) {
  target.line(left + c.axis[0][0], top + c.axis[0][1], left + c.axis[1][0], top + c.axis[1][1]);
  target.line(left + c.axis[1][0], top + c.axis[1][1], left + c.axis[2][0], top + c.axis[2][1]);
  // A dotted grid: short dashes with gaps, as the screen's pale dotted pen.
  const int dash = c.height / 200 > 1 ? c.height / 200 : 1;
  for (int x : c.grid_x)
    for (int y = c.grid_bottom; y > c.grid_top; y -= 3 * dash)
      target.line(left + x, top + y, left + x,
                  top + (y - dash > c.grid_top ? y - dash : c.grid_top));
  target.select_brush(Brush::LightGrey);
  for (const ChartBar& b : c.bars)
    target.rectangle(left + b.left, top + b.top, left + b.right, top + b.bottom);
  target.select_brush(Brush::White);
  for (const ChartText& t : c.labels) {
    target.set_text_align(t.align);
    target.text_out(left + t.x, top + t.y, t.text);
  }
  target.set_text_align(TextAlign::Left);
}

void Printtakingschart() {
  const State& g = G();
  const bool released = Runsinglepagejob(Choosetarget(true), [&g](PrintTarget& target) {
    ListingPage page = Startlistingpage(target, "Weekly takings average");
    const int width = target.page_width() - page.margin;
    const TakingsChart chart =
        BuildTakingsChart(g.settings, width, width * 2 / 3, g.today_month, g.today_day);
    DrawTakingsChart(target, chart, page.margin, page.line_height * 3);
  });
  if (!released) Message("Unable to release printer", "Problem");
}

}  // namespace tilo
