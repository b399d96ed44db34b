// SPDX-License-Identifier: MIT
#include "tender/cash.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "core/clock.h"
#include "core/state.h"
#include "core/text.h"
#include "devices/drawer.h"
#include "devices/pole.h"
#include "sale/commit.h"
#include "tender/printdocument.h"
#include "tender/tender_view.h"

namespace tilo {
namespace {

TenderView default_view;
TenderView* current_view = &default_view;

}  // namespace

void TenderView::summary_box() {
  for (int kind : Summaryprints()) Printdocument(kind);
}

TenderView& tender_view() {
  return *current_view;
}
void install_tender_view(TenderView* view) {
  current_view = view ? view : &default_view;
}

bool Starttender() {
  State& g = G();
  if (g.basket.line_count <= 0) {
    Message("Please select items", "Problem");
    tender_view().focus_item_box();
    return false;
  }
  if (g.tender_form_open != 0) return false;
  if (g.settings.pole_enabled) Poletotal(g.basket.total);
  g.tender_form_open = 2;
  const std::array<double, 3> notes = Notebuttons(g.basket.total);
  g.note_button1 = notes[0];
  g.note_button2 = notes[1];
  g.note_button3 = notes[2];
  SetField(g.amount_text, "");
  return true;
}

void Canceltender() {
  G().tender_form_open = 0;
  tender_view().focus_item_box();
}

void Stampbasket() {
  State& g = G();
  Timestamp();
  const LocalTime& now = g.now;
  char text[64];
  std::snprintf(text, sizeof text, "%02d:%02d", now.hour, now.minute);
  SetField(g.basket.sale_time, text);
  std::snprintf(g.pretty_date, sizeof g.pretty_date, "00:00%2d/%2d/%d", now.day, now.month,
                now.year);
  // A short date too long for the sale's 20-byte field is not cut: the plain one is kept.
  if (Shortdate() && std::strlen(g.pretty_date) < sizeof g.basket.sale_date) {
    SetField(g.basket.sale_date, g.pretty_date);
  } else {
    std::snprintf(text, sizeof text, "D:%2d M:%2d Y:%d", now.day, now.month, now.year);
    SetField(g.basket.sale_date, text);
  }
}

void Finishcash(const CashSettled& settled) {
  State& g = G();
  g.change_due = settled.change_due;
  g.amount_tendered = settled.amount_tendered;
  Stampbasket();
  g.tender_form_open = 0;
  g.basket.transaction_number = g.settings.transaction_number;
  // The cash part is what was sold, not the money handed over.
  g.basket.tender_cash = g.basket.total;
  SetField(g.basket.payment_type, "Cash");
  g.basket.clerk = int32_t(g.settings.clerk_number);
  Closetender();
  Finishsale();
  if (g.settings.sound_off == 0) platform().play_sound(8004);
  tender_view().focus_item_box();
}

void Closetender() {
  State& g = G();
  const SettingsRecord& s = g.settings;
  if (s.drawer_enabled > 0) Opendrawer();
  if (s.pole_enabled) Poletender(float(g.amount_tendered), float(g.change_due));
  if (s.summary_box_off == 0) {
    tender_view().summary_box();
  } else if (const int kind = Autoreceiptkind(s.auto_receipt); kind != 0) {
    for (int32_t copy = 0; copy < 1 + s.receipt_copies; ++copy) Printdocument(kind);
  }
  if (s.auto_kitchen_receipt) Printkitchenreceipt();
}

}  // namespace tilo
