// SPDX-License-Identifier: MIT
#include "tender/printdocument.h"

#include "core/state.h"
#include "core/text.h"
#include "devices/bytes.h"
#include "devices/ports.h"
#include "documents/invoice.h"
#include "documents/receipt.h"
#include "platform/platform.h"

namespace tilo {
namespace {

bool IsReceipt(int kind) {
  return kind == kTillReceipt || kind == kCustomReceipt;
}

void Print(int kind, std::unique_ptr<PrintTarget> target, const PageRoutine& page) {
  if (!target) return;  // a cancelled dialog skips this print, silently
  std::function<void()> after_copy;
  if (kind == kCustomReceipt && G().settings.cutter_sequence[0] != '\0') after_copy = Sendcutter;
  if (!Runsinglepagejob(std::move(target), page, after_copy))
    Message("Unable to release printer", "Problem");
}

}  // namespace

PageRoutine Documentpage(int kind) {
  // Each document's page joins here as it is written.
  switch (kind) {
    case kTillReceipt:
    case kCustomReceipt:
      return [kind](PrintTarget& target) { Printreceipt(target, kind); };
    case kStandardInvoice:
    case kCustomInvoice:
    case kDeliveryNote:
      return [kind](PrintTarget& target) { Printinvoice(target, kind); };
    default:
      return {};
  }
}

std::unique_ptr<PrintTarget> Documenttarget(int kind) {
  const SettingsRecord& s = G().settings;
  if (s.receipt_printer_index != 0 && IsReceipt(kind))
    return Namedtarget(FieldText(s.printer_name));
  return Choosetarget(s.print_confirm != 0);
}

void Printdocument(int kind) {
  if (const PageRoutine page = Documentpage(kind)) Printdocument(kind, page);
}

void Printdocument(int kind, const PageRoutine& page) {
  Print(kind, Documenttarget(kind), page);
}

void Printkitchenreceipt() {
  const PageRoutine page = Documentpage(kTillReceipt);
  if (!page) return;
  Print(kTillReceipt, Choosetarget(false), page);
}

int Autoreceiptkind(int32_t auto_receipt) {
  switch (auto_receipt) {
    case 1:
      return kTillReceipt;
    case 2:
      return kStandardInvoice;
    case 3:
      return kCustomInvoice;
    case 4:
      return kCustomReceipt;
    default:
      return 0;
  }
}

std::vector<int> Summaryprints() {
  const SettingsRecord& s = G().settings;
  const int kind = s.auto_receipt > 0 ? Autoreceiptkind(s.auto_receipt) : 0;
  if (kind == 0) return {};
  std::vector<int> kinds{kind};
  if (s.receipt_copies >= 1) kinds.push_back(kind);
  if (s.receipt_copies == 2) kinds.push_back(kind);
  return kinds;
}

void Sendcutter() {
  const SettingsRecord& s = G().settings;
  if (s.cutter_sequence[0] == '\0') return;
  DevicePort port;
  if (!port.Open(PortPath(PortName(s.cutter_port)))) {
    Message("Unable to open port", "Problem");
    return;
  }
  port.MakeRaw();
  const std::vector<uint8_t> bytes = Parsebytes(s.cutter_sequence);
  const bool written = port.Write(bytes.data(), bytes.size());
  port.Close();
  if (!written) Message("Unable write to port", "Problem");
}

}  // namespace tilo
