// SPDX-License-Identifier: MIT
// A standard invoice of a full basket, 400 different lines, drawn and written
// to a PDF by the built-in PDF printer: the whole job a shop waits for after
// pressing "Invoice".
#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

#include "bench_shop.h"
#include "core/state.h"
#include "core/text.h"
#include "documents/invoice.h"
#include "documents/print_job.h"
#include "documents/ui/qt_print_target.h"
#include "documents/wording.h"
#include "sale/basket.h"
#include "tender/printdocument.h"

namespace tilo {
namespace {

void FullBasket() {
  Basket& b = G().basket;
  b.transaction_number = 123456;
  b.clerk = 1;
  for (int i = 0; i < kBasketLines; ++i) {
    b.number[i] = 1000 + i;
    SetField(b.description[i], "ITEM NUMBER " + std::to_string(i));
    b.taxable[i] = 1.25f + float(i % 7);
    b.line_total[i] = b.taxable[i] * 1.2f;
    b.subtotal += b.taxable[i];
  }
  b.line_count = kBasketLines;
}

void BM_StandardInvoiceOf400LinesToPdf(benchmark::State& state) {
  const std::string folder = std::filesystem::temp_directory_path() / "tilo_invoice_bench";
  std::filesystem::create_directories(folder);
  bench::EnterFolder(folder);
  ResetState();
  Defaultwording(0, G().language);
  FullBasket();
  for (auto _ : state) {
    auto target = QtPrintTarget::Pdf();
    target->begin_document(kDocumentName);
    target->begin_page();
    Printinvoice(*target, kStandardInvoice);
    target->end_page();
    target->end_document();
    state.PauseTiming();
    std::filesystem::remove(target->last_file());
    state.ResumeTiming();
  }
}
BENCHMARK(BM_StandardInvoiceOf400LinesToPdf)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tilo
