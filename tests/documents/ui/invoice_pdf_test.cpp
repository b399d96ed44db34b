// SPDX-License-Identifier: MIT
// The three invoices on the built-in PDF printer, read back by poppler: the
// words a customer reads, and a barcode a scanner reads as the transaction
// number. And one invoice through a print system's queue.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "core/customer_file.h"
#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "documents/invoice.h"
#include "documents/print_job.h"
#include "documents/ui/qt_print_target.h"
#include "documents/wording.h"
#include "support/private_cups.h"
#include "support/shop_fixture.h"
#include "tender/printdocument.h"

namespace tilo {
namespace {

class InvoicePdfTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    MakeFreshShop();
    ASSERT_TRUE(Opensettings());
    ASSERT_TRUE(LoadCustomerIndex());
    Defaultwording(0, G().language);
    SetField(G().heading.site_name, "CORNER STORE");
    SetField(G().heading.site_road, "1 HIGH ST");
    SetField(G().settings.currency_symbol, "$");
    MemberRecord m{};
    m.number = 7;
    m.terms = 4;  // 10% disc, 30 days
    CompleteNewMember(m);
    ASSERT_TRUE(Insertmember(m));
    Basket& b = G().basket;
    b.transaction_number = 1234;
    b.customer_number = 7;
    b.clerk = 1;
    SetField(b.customer_name, "ANN SMITH");
    SetField(b.sale_time, "10:15");
    SetField(b.sale_date, "Fri 1 Mar 24");
    SetField(b.note, "LEAVE AT DOOR");
    const char* names[] = {"WIDGET", "WIDGET", "BOLT"};
    const float net[] = {2.5f, 2.5f, 4.0f};
    for (int i = 0; i < 3; ++i) {
      b.number[i] = 100 + (i == 2);
      SetField(b.description[i], names[i]);
      b.taxable[i] = net[i];
      b.line_total[i] = net[i] * 1.2f;
    }
    b.line_count = 3;
    b.subtotal = b.total_taxable = 9.0f;
    b.total_tax1 = 1.8f;
    b.total = 10.8f;
    b.credit_before = 5.0f;
    b.credit_after = 15.8f;
  }
  // Prints `kind` to a PDF and answers the file.
  static std::string Print(int kind) {
    auto target = QtPrintTarget::Pdf();
    EXPECT_GT(target->begin_document(kDocumentName), 0);
    EXPECT_GT(target->begin_page(), 0);
    Printinvoice(*target, kind);
    target->end_page();
    target->end_document();
    return target->last_file();
  }
};

TEST_F(InvoicePdfTest, EachKindReadsBackWithItsBarcode) {
  SettingsRecord& s = G().settings;
  s.invoice_line_store_name = 5;
  s.invoice_line_invoice = 8;
  s.invoice_line_items = 10;
  s.invoice_line_total = 14;
  s.invoice_line_note = 15;
  s.invoice_line_customer_terms = 17;
  s.invoice_line_balance = 18;
  s.invoice_box = 1;
  // Where each word stands is the invoice logic's to check; here the real
  // target draws them where a reader finds them.
  const struct {
    int kind;
    std::vector<std::string> parts;
  } kinds[] = {
      {kStandardInvoice, {"INVOICE", "Invoice Number: 1234", "2 @ 2.50", "TOTAL: $10.80"}},
      {kCustomInvoice, {"Invoice Number: 1234", "LEAVE AT DOOR", "Balance: 15.80"}},
      {kDeliveryNote, {"Delivery Note", "Transaction reference: 1234", "TAX 1: 1.80"}},
  };
  for (const auto& k : kinds) {
    const std::string pdf = Print(k.kind);
    const std::string text = Shell("pdftotext -layout " + pdf + " -");
    for (const std::string& part : k.parts)
      EXPECT_NE(text.find(part), std::string::npos) << k.kind << ": " << part << "\n" << text;
    // The custom invoice's barcode is off; the others always have one.
    Shell("pdftoppm -r 300 -png -singlefile " + pdf + " page");
    EXPECT_EQ(Shell("zbarimg -q --raw page.png"), k.kind == kCustomInvoice ? "" : "1234\n");
  }
}

TEST_F(InvoicePdfTest, AnInvoiceGoesThroughAPrintQueueAsOneJobNamedTilo) {
  if (!PrivateCups::Installed()) GTEST_SKIP() << "no CUPS daemon here (cups-daemon)";
  PrivateCups cups;
  ASSERT_TRUE(cups.Start(std::filesystem::path(folder_) / "cups", "INVOICES"));
  ASSERT_TRUE(Runsinglepagejob(QtPrintTarget::Printer("INVOICES"), Documentpage(kStandardInvoice)));
  const auto [bytes, title] = cups.NextJob();
  EXPECT_EQ(title, "TILO");
  std::ofstream("job.pdf", std::ios::binary) << bytes;
  const std::string text = Shell("pdftotext -layout job.pdf -");
  EXPECT_NE(text.find("Invoice Number: 1234"), std::string::npos) << text;
  EXPECT_NE(text.find("TOTAL: $10.80"), std::string::npos) << text;
}

}  // namespace
}  // namespace tilo
