// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "core/state.h"
#include "core/text.h"
#include "devices/ports.h"
#include "devices/pty_pair.h"
#include "documents/recording_target.h"
#include "support/shop_fixture.h"
#include "tender/cash.h"
#include "tender/printdocument.h"

namespace tilo {
namespace {

using ::testing::ElementsAre;

TEST(CashAmounts, TocentsIsNotUpsetByFloatNoise) {
  EXPECT_EQ(Tocents(0.0f), 0);
  EXPECT_EQ(Tocents(-3.5f), 0);
  EXPECT_EQ(Tocents(10.00f), 1000);
  EXPECT_EQ(Tocents(0.29f), 29);  // 0.28999999 as a float
  EXPECT_EQ(Tocents(19.99f), 1999);
  EXPECT_EQ(Tocents(1234.56f), 123456);
  EXPECT_EQ(Tocents(0.1f + 0.2f), 30);
}

TEST(CashAmounts, NoteButtonsRoundUpToFivesTensAndFifties) {
  EXPECT_THAT(Notebuttons(3.00f), ElementsAre(5, 10, 20));
  EXPECT_THAT(Notebuttons(7.50f), ElementsAre(10, 20, 50));
  // A total that is a note moves all three up.
  EXPECT_THAT(Notebuttons(10.00f), ElementsAre(15, 20, 100));
  EXPECT_THAT(Notebuttons(95.00f), ElementsAre(100, 110, 150));
  EXPECT_THAT(Notebuttons(45.00f), ElementsAre(50, 60, 100));
  // Only the second and first are kept apart, so the third can fall below the second.
  EXPECT_THAT(Notebuttons(48.20f), ElementsAre(50, 60, 50));
  // Five exactly keeps the starting buttons: the first is the exact money.
  EXPECT_THAT(Notebuttons(5.00f), ElementsAre(5, 10, 20));
  EXPECT_THAT(Notebuttons(5.01f), ElementsAre(10, 20, 50));
}

TEST(CashAmounts, TheChangeShownWhileTyping) {
  struct Case {
    const char* typed;
    float total;
    bool short_of_total;
    const char* change;
  } cases[] = {
      {"1000", 10.00f, false, "0.00"},  // exact money: the literal 0.00
      {"1234", 10.00f, false, "2.34"}, {"2000", 9.99f, false, "10.01"}, {"999", 10.00f, true, ""},
      {"5", 0.40f, true, ""},  // one digit is hundredths here: 0.05
      {"5", 0.05f, false, "0.00"},     {"05", 0.04f, false, "0.01"},    {"", 0.00f, false, "0.00"},
      {"", 0.01f, true, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.typed) + " against " + std::to_string(c.total));
    ChangeShown shown = Livechange(c.typed, c.total);
    EXPECT_EQ(shown.short_of_total, c.short_of_total);
    EXPECT_EQ(shown.text, c.change);
  }
  EXPECT_EQ(Amounttext("7", false), ".07");
  EXPECT_EQ(Amounttext("7", true), ".7");
  EXPECT_EQ(Amounttext("1000", true), "10.00");
  EXPECT_EQ(Amounttext("12345678901234567890", false), "12345678901234567.89");  // 19 read
}

TEST(CashAmounts, OkTakesTheChangeAsShownAndTheButtonsTheirAmount) {
  auto ok = Cashok("1000", Livechange("1000", 10.00f).text, 10.00f);
  ASSERT_TRUE(ok);
  EXPECT_EQ(ok->change_due, 0.0);
  EXPECT_FLOAT_EQ(float(ok->amount_tendered), 10.00f);

  ok = Cashok("2000", Livechange("2000", 12.50f).text, 12.50f);
  ASSERT_TRUE(ok);
  EXPECT_DOUBLE_EQ(ok->change_due, 7.50);
  EXPECT_DOUBLE_EQ(ok->amount_tendered, 20.00);

  // One digit on OK is tenths: 0.50 covers 0.40, but the form showed no change.
  ok = Cashok("5", Livechange("5", 0.40f).text, 0.40f);
  ASSERT_TRUE(ok);
  EXPECT_EQ(ok->change_due, 0.0);
  EXPECT_FLOAT_EQ(float(ok->amount_tendered), 0.40f);

  EXPECT_FALSE(Cashok("", "0.00", 0.00f));  // nothing typed is short, even of nothing
  EXPECT_FALSE(Cashok("999", "", 10.00f));
  EXPECT_TRUE(Cashok("029", "0.00", 0.29f));  // the total's two decimals, not its float

  // The note and exact buttons.
  auto paid = Cashnote(5.00, 5.00f);
  ASSERT_TRUE(paid);
  EXPECT_EQ(paid->change_due, 0.0);
  EXPECT_EQ(paid->amount_tendered, 5.00);
  paid = Cashnote(10.00, 7.49f);
  ASSERT_TRUE(paid);
  EXPECT_DOUBLE_EQ(paid->change_due, 10.00 - 7.49);
  EXPECT_FALSE(Cashnote(5.00, 7.50f));
  EXPECT_EQ(Cashexact(7.50f).change_due, 0.0);
  EXPECT_EQ(Cashexact(7.50f).amount_tendered, 7.50);
}

class TillDocumentTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    install_print_service(&printers_);
  }
  void TearDown() override {
    install_print_service(nullptr);
    ShopTest::TearDown();
  }
  static void Page(PrintTarget& t) { t.text_out(0, 0, "page"); }
  RecordingPrintService printers_;
};

TEST_F(TillDocumentTest, ReceiptsGoToTheNamedPrinterAndTheRestThroughTheRequest) {
  SettingsRecord& s = G().settings;
  s.print_confirm = 0;
  Printdocument(kTillReceipt, Page);
  Printdocument(kStandardInvoice, Page);
  s.print_confirm = 1;
  Printdocument(kDeliveryNote, Page);
  EXPECT_EQ(printers_.count("default_printer"), 2);
  EXPECT_EQ(printers_.count("printer_dialog"), 1);

  printers_.calls.clear();
  s.receipt_printer_index = 2;
  SetField(s.printer_name, "Star TSP100");
  Printdocument(kTillReceipt, Page);
  Printdocument(kCustomReceipt, Page);
  Printdocument(kCustomInvoice, Page);
  EXPECT_EQ(printers_.count("named_printer Star TSP100"), 2);
  EXPECT_EQ(printers_.count("printer_dialog"), 1);  // the invoice asks
  EXPECT_EQ(printers_.count("begin_document TILO"), 3);
  EXPECT_EQ(printers_.count("text_out 0 0 page"), 3);
}

TEST_F(TillDocumentTest, CopiesCancelAndReleaseFailure) {
  SettingsRecord& s = G().settings;
  s.print_confirm = 1;
  printers_.dialog_copies = 2;
  Printdocument(kStandardInvoice, Page);
  EXPECT_EQ(printers_.count("begin_page"), 2);

  printers_.calls.clear();
  printers_.dialog_cancels = true;
  Printdocument(kStandardInvoice, Page);
  EXPECT_EQ(printers_.count("begin_document"), 0);
  EXPECT_TRUE(platform_.messages.empty());

  printers_.dialog_cancels = false;
  printers_.device.release_result = false;
  Printdocument(kStandardInvoice, Page);
  EXPECT_THAT(platform_.shown(), ElementsAre("Problem: Unable to release printer"));

  // A kind that nothing draws prints nothing at all.
  printers_.calls.clear();
  Printdocument(2400);
  EXPECT_TRUE(printers_.calls.empty());
}

TEST_F(TillDocumentTest, TheSummaryBoxPrintsTheAutoReceiptUpToThreeTimes) {
  SettingsRecord& s = G().settings;
  EXPECT_TRUE(Summaryprints().empty());
  s.auto_receipt = 1;
  EXPECT_THAT(Summaryprints(), ElementsAre(kTillReceipt));
  s.auto_receipt = 4;
  s.receipt_copies = 2;
  EXPECT_THAT(Summaryprints(), ElementsAre(kCustomReceipt, kCustomReceipt, kCustomReceipt));
  s.auto_receipt = 3;
  s.receipt_copies = 5;  // beyond the radio buttons: twice
  EXPECT_THAT(Summaryprints(), ElementsAre(kCustomInvoice, kCustomInvoice));
  s.auto_receipt = 2;
  s.receipt_copies = 1;
  EXPECT_THAT(Summaryprints(), ElementsAre(kStandardInvoice, kStandardInvoice));
  s.auto_receipt = 9;
  EXPECT_TRUE(Summaryprints().empty());
}

TEST_F(TillDocumentTest, ACustomReceiptIsFollowedByTheCutterOnEachCopy) {
  PtyPair line(folder_);
  ASSERT_TRUE(line.ok());
  line.Reset();
  WriteBytes(kPortsFile, "COM2=" + line.port() + "\n");
  SettingsRecord& s = G().settings;
  s.cutter_port = 1;
  SetField(s.cutter_sequence, "27,105");
  s.print_confirm = 1;
  printers_.dialog_copies = 2;
  Printdocument(kCustomReceipt, Page);
  EXPECT_EQ(line.Received(), (std::vector<uint8_t>{27, 105, 27, 105}));
  Printdocument(kTillReceipt, Page);
  EXPECT_TRUE(line.Received(100).empty());

  s.cutter_port = 5;  // COM6: no such device here
  Printdocument(kCustomReceipt, Page);
  EXPECT_THAT(platform_.shown(),
              ElementsAre("Problem: Unable to open port", "Problem: Unable to open port"));
}

}  // namespace
}  // namespace tilo
