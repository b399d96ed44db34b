// SPDX-License-Identifier: MIT
// The program's global state in one place: the settings record, the heading
// lines, the wording, the record buffers and indexes, the clock readings of the
// run. Every subsystem reads and writes it directly; tests reset it whole.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/customer_file.h"
#include "core/film_record.h"
#include "core/indexed_file.h"
#include "core/settings.h"
#include "core/supplier_file.h"
#include "documents/print_target.h"
#include "documents/wording.h"
#include "platform/platform.h"
#include "reports/report_selection.h"
#include "sale/basket.h"
#include "sale/screen.h"

namespace tilo {

struct State {
  State();

  SettingsRecord settings{};
  HeadingLines heading{};
  LanguageTable language{};

  // The record last fetched; every lookup overwrites it.
  FilmRecord film{};
  // A second buffer for the bundle form, so picking a component keeps the bundle.
  FilmRecord film_bundle{};
  // The customer last fetched, and the record as it stood before an amend (for
  // the audit text in the activity log).
  MemberRecord member{};
  MemberRecord member_before{};
  // The supplier last fetched.
  MansRecord supplier{};
  IndexedFile films;
  IndexedFile members;
  IndexedFile suppliers;

  // The clock as last read by Timestamp or Datestamp.
  LocalTime now{};
  // stamp_text and date_text share one buffer: the last of the two calls wins.
  char stamp_text[32]{};
  char* date_text = stamp_text;
  char pretty_date[64]{};

  int start_weekday = 0, start_hour = 0, start_minute = 0;
  int today_day = 0, today_month = 0, today_year = 0;
  bool open_failed = false;
  // Set by a restore: the close-down leaves wr.cfg and the day's summary alone.
  bool no_save_at_close = false;
  int previous_run_minute = 0, previous_run_hour = 0, previous_run_day = 0, previous_run_month = 0,
      previous_run_year = 0;

  // The reminder diary's work page, held for the whole run.
  std::vector<uint8_t> reminder_page;

  // 2 while the modeless cash form is up.
  int tender_form_open = 0;
  // The sale screen: the clerk's class, the quick-select panel and its keys.
  ScreenState screen;

  // The sale in progress, the rows of the basket list that shows it, the text
  // last taken from the item box (Windows-1252), and 2 while a repeat keeps the
  // add sound and the pole quiet.
  Basket basket{};
  BasketList basket_list;
  // The one parked basket: in memory only, empty at each start.
  Basket saved_basket{};
  std::string item_text;
  int suppress_sound = 0;
  // The cash form's figures: the digits typed (then with the point put in), the
  // change and the money tendered of the sale, the three quick note values.
  char amount_text[20]{};
  double change_due = 0;
  double amount_tendered = 0;
  double note_button1 = 0, note_button2 = 0, note_button3 = 0;

  // The one print job, and the listing font (absent: the printer's own font).
  PrintJob print_job;
  std::optional<FontDescription> list_font;

  // The mailmerge letters' text, Windows-1252 with CR LF, kept for the run.
  std::string merge_text;

  // The period and filters of the report dialogs, kept between reports.
  ReportSelection report_selection;
};

State& G();
// Throws the state away and starts a fresh one (tests, and the start of a run).
void ResetState();

}  // namespace tilo
