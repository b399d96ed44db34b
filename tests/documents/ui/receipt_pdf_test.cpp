// SPDX-License-Identifier: MIT
// A till receipt printed into a PDF file, read back the way a customer would:
// its text, and its barcode through a barcode reader.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "documents/print_job.h"
#include "documents/receipt.h"
#include "documents/ui/qt_print_target.h"
#include "documents/wording.h"
#include "sale/basket.h"
#include "support/shop_fixture.h"
#include "tender/printdocument.h"

namespace tilo {
namespace {

std::string Shell(const std::string& command) {
  std::string out;
  FILE* p = popen(command.c_str(), "r");
  if (!p) return out;
  char buf[4096];
  size_t n;
  while ((n = fread(buf, 1, sizeof buf, p)) > 0) out.append(buf, n);
  pclose(p);
  return out;
}

class ReceiptPdfTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    MakeFreshShop();
    ASSERT_TRUE(Opensettings());
    Defaultwording(0, G().language);
    DefaultHeadingLines(G().heading);
    SettingsRecord& s = G().settings;
    SetField(s.currency_symbol, "\xA3");  // the pound sign of Windows-1252
    s.clerk_number = 3;
    Basket& b = G().basket;
    b.transaction_number = 1234;
    SetField(b.sale_time, "10:15");
    SetField(b.sale_date, "Fri 1 Mar 24");
    SetField(b.payment_type, "Cash");
    const float prices[] = {1.20f, 1.20f, 1.20f, 4.99f};
    const char* names[] = {"MILK 1L", "MILK 1L", "MILK 1L", "COFFEE BEANS"};
    const int64_t numbers[] = {101, 101, 101, 205};
    for (int i = 0; i < 4; ++i) {
      b.number[i] = numbers[i];
      SetField(b.description[i], names[i]);
      b.line_total[i] = prices[i];
      b.taxable[i] = prices[i] / 1.2f;
      b.total += prices[i];
    }
    b.line_count = 4;
    b.total_tax1 = 1.43f;
    b.tender_cash = b.total;
    G().amount_tendered = 10;
    G().change_due = 10 - b.total;
  }

  // Prints the receipt into printouts/ and answers the file.
  std::string Print(int kind) {
    auto target = QtPrintTarget::Pdf();
    QtPrintTarget* pdf = target.get();
    G().print_job.copies = 1;
    std::string file;
    Runsinglepagejob(
        std::move(target), [kind](PrintTarget& t) { Printreceipt(t, kind); },
        [&] { file = pdf->last_file(); });
    return file;
  }
};

TEST_F(ReceiptPdfTest, PrintsTheSaleAndABarcodeThatReadsAsTheTransaction) {
  G().settings.receipt_barcode = 2;
  const std::string pdf = Print(kTillReceipt);
  ASSERT_FALSE(pdf.empty());
  ASSERT_TRUE(std::filesystem::exists(pdf));

  const std::string text = Shell("pdftotext -layout " + pdf + " -");
  for (const char* expected :
       {"THE CORNER SHOP", "Receipt: 1234", "3, Clerk 3", "MILK 1L", "3 @ 1.20", "3.60",
        "COFFEE BEANS", "4.99", "Total: \u00a38.59", "Payment: Cash", "Cash change: 1.41",
        "TAX 1: 1.43 (20.00%)", "Always happy to help!"})
    EXPECT_NE(text.find(expected), std::string::npos) << expected << "\n" << text;

  Shell("pdftoppm -r 200 -png -singlefile " + pdf + " receipt");
  ASSERT_TRUE(std::filesystem::exists("receipt.png"));
  EXPECT_EQ(Shell("zbarimg --quiet --raw receipt.png"), "1234\n");
  if (const char* keep = std::getenv("TILO_KEEP_RECEIPT"))
    std::filesystem::copy_file("receipt.png", keep,
                               std::filesystem::copy_options::overwrite_existing);
}

TEST_F(ReceiptPdfTest, ShortNumbersArePaddedToFourDigitsOnTheCustomReceipt) {
  G().basket.transaction_number = 7;
  G().settings.custom_barcode = 2;
  const std::string pdf = Print(kCustomReceipt);
  ASSERT_FALSE(pdf.empty());
  Shell("pdftoppm -r 200 -png -singlefile " + pdf + " custom");
  EXPECT_EQ(Shell("zbarimg --quiet --raw custom.png"), "0007\n");
  EXPECT_NE(Shell("pdftotext " + pdf + " -").find("3.60"), std::string::npos);
}

}  // namespace
}  // namespace tilo
