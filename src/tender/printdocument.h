// SPDX-License-Identifier: MIT
// One print job for a document of the till, by the number of the command that
// asks for it; shared by the sale tenders, the reprint and the balance payment.
#pragma once

#include <cstdint>
#include <vector>

#include "documents/print_job.h"

namespace tilo {

enum DocumentKind : int {
  kTillReceipt = 2405,
  kStandardInvoice = 2406,
  kCustomInvoice = 2409,  // "Invoice 2"
  kCustomReceipt = 2413,
  kDeliveryNote = 2419,
};

// The page that draws a kind; empty for a kind that nothing draws (yet).
PageRoutine Documentpage(int kind);

// One job, one page a copy: receipts to the named receipt printer when one is
// chosen, everything else through the printer dialog (or the default printer
// without it when print_confirm is 0). A cancelled dialog only skips the print;
// a custom receipt is followed by the cutter sequence.
void Printdocument(int kind);
// The same with the page given.
void Printdocument(int kind, const PageRoutine& page);
// The device a kind goes to, as Printdocument chooses it; nullptr when the
// dialog was cancelled or the printer is not there.
std::unique_ptr<PrintTarget> Documenttarget(int kind);
// The kitchen copy: one till receipt on the default printer, no dialog.
void Printkitchenreceipt();
// The document of an auto_receipt setting (1 to 4), 0 for none.
int Autoreceiptkind(int32_t auto_receipt);
// What the summary box prints by itself on opening, in order.
std::vector<int> Summaryprints();
// Sends cutter_sequence to cutter_port, when it is not empty.
void Sendcutter();

}  // namespace tilo
