// SPDX-License-Identifier: MIT
// Form 800 in its three layouts and its ready reckoner, and the receipts
// report printed to the PDF printer.
#include "inventory/ui/item_forms.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <filesystem>

#include "core/history.h"
#include "core/inventory.h"
#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "documents/print_job.h"
#include "documents/ui/qt_print_service.h"
#include "documents/ui/qt_print_target.h"
#include "inventory/receiving.h"
#include "reports/ui/report_dialogs.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

class ItemFormsTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    MakeFreshShop();
    ASSERT_TRUE(Opensettings());
    ASSERT_TRUE(G().films.Load());
    platform_.set_now(2026, 3, 14, 10, 5);
  }
};

TEST_F(ItemFormsTest, NewReopenedAndCopyLayouts) {
  ItemForm form = Newitemform();
  {
    ItemDialog d(nullptr, form);
    EXPECT_EQ(d.windowTitle(), "New inventory");
    EXPECT_FALSE(d.button("&Copy")->isHidden());
    EXPECT_FALSE(d.button("&Next")->isHidden());
    EXPECT_FALSE(d.edit("Number")->isReadOnly());
    EXPECT_EQ(d.edit("Number")->text(), "1");
    EXPECT_EQ(d.edit("Retail price")->text(), "0.00");
    EXPECT_EQ(d.edit("On order")->text(), "");
    EXPECT_EQ(d.list("Display category")->currentIndex(), 14);
    EXPECT_EQ(d.dateAdded()->date(), QDate(2026, 3, 14));
    // Typing folds to upper case; what is collected is coded as the record keeps it.
    QTest::keyClicks(d.edit("Description"), "blue mug");
    EXPECT_EQ(d.edit("Description")->text(), "BLUE MUG");
    d.tick("Age warning")->setChecked(true);
    d.list("Age")->setCurrentIndex(16);
    d.list("Sell by year")->setCurrentIndex(15);
    d.tick("Omit from quick select buttons")->setChecked(true);
    d.edit("Retail price")->setText("2.5");
    const FilmRecord r = d.collected();
    EXPECT_EQ(FieldText(r.description), "BLUE MUG");
    EXPECT_EQ(r.age_warning, 18);
    EXPECT_EQ(r.sell_by_year, 15);  // 2026
    EXPECT_EQ(r.omit_quick_select, 2);
    EXPECT_EQ(r.retail_price, 2.5f);
    EXPECT_EQ(FieldText(r.date_added), "14/03/2026");
    form.record = r;
  }
  form.mode = ItemFormMode::Refused;
  {
    ItemDialog d(nullptr, form);
    EXPECT_EQ(d.windowTitle(), "Amend inventory");
    EXPECT_TRUE(d.button("&Copy")->isHidden());
    EXPECT_TRUE(d.button("&Next")->isHidden());
    EXPECT_TRUE(d.edit("Number")->isReadOnly());
    EXPECT_EQ(d.edit("Description")->text(), "BLUE MUG");
    EXPECT_TRUE(d.tick("Age warning")->isChecked());
    EXPECT_EQ(d.list("Age")->currentText(), "18");
  }
  form.mode = ItemFormMode::Copy;
  form.record.number = 2;
  form.record.quantity = 6;
  {
    ItemDialog d(nullptr, form);
    EXPECT_EQ(d.windowTitle(), "New inventory");
    EXPECT_FALSE(d.button("&Copy")->isHidden());
    EXPECT_EQ(d.edit("Number")->text(), "2");
    EXPECT_EQ(d.edit("Quantity in stock")->text(), "6");
    EXPECT_EQ(d.edit("Description")->text(), "BLUE MUG");
  }
  // A clerk who may not see costs amends without the stored cost shown or lost.
  form.mode = ItemFormMode::Amend;
  form.cost_hidden = true;
  form.record.cost_price = 3.25f;
  ItemDialog d(nullptr, form);
  EXPECT_EQ(d.edit("Cost price")->text(), "");
  EXPECT_EQ(d.collected().cost_price, 3.25f);
}

TEST_F(ItemFormsTest, ReadyReckonerFillsBothPrices) {
  G().settings.tax1_rate = 2000;
  G().settings.tax2_rate = 500;
  ItemForm form = Newitemform();
  form.record.tax = 2;  // "Tax 1": the first tick only
  ItemDialog d(nullptr, form);
  EXPECT_TRUE(d.reckonerTax1()->isChecked());
  EXPECT_FALSE(d.reckonerTax2()->isChecked());
  QTest::keyClicks(d.grossPrice(), "12.00");
  EXPECT_EQ(d.netPrice()->text(), "10.00");
  EXPECT_EQ(d.edit("Retail price")->text(), "10.00");
  d.reckonerTax2()->setChecked(true);
  d.grossPrice()->clear();
  QTest::keyClicks(d.grossPrice(), "12.50");
  EXPECT_EQ(d.edit("Retail price")->text(), "10.00");
}

// The PDF printer without the printer dialog.
class PdfService : public QtPrintService {
 public:
  std::unique_ptr<PrintTarget> printer_dialog(int32_t& copies) override {
    copies = 1;
    auto target = QtPrintTarget::Pdf();
    last = target.get();
    return target;
  }
  QtPrintTarget* last = nullptr;
};

TEST_F(ItemFormsTest, ReceiptsReportPrintsHeadingAndPages) {
  SetField(G().heading.site_name, "CORNER SHOP");
  FilmRecord r{};
  r.number = 12;
  SetField(r.description, "BOLTS");
  ASSERT_TRUE(Insertnumber(r));
  std::filesystem::create_directories("2026/3/2");
  std::string bytes;
  for (int i = 0; i < 90; ++i) {
    const StockInRecord rec{i == 0 ? 77 : 12, i + 1};
    bytes.append(reinterpret_cast<const char*>(&rec), sizeof rec);
  }
  WriteBytes(StockInPath(2026, 3, 2), bytes);
  const std::vector<std::string> lines = Receivedlines({1, 3, 2026, 14, 3, 2026});
  ASSERT_EQ(lines.size(), 90u);

  PdfService service;
  install_print_service(&service);
  std::string file;
  {
    ReportListDialog d(nullptr, "t", {}, [&] {
      size_t next = 0;
      Runpagedjob([&](PrintTarget& t) { Printreceivedpage(t, lines, next); }, false);
    });
    d.print()->click();
  }
  install_print_service(nullptr);
  std::string pdf;
  for (const auto& e : std::filesystem::directory_iterator("printouts")) pdf = e.path().string();
  const std::string text = Shell("pdftotext -layout " + pdf + " -");
  EXPECT_NE(text.find("CORNER SHOP Inventory received, page: 1"), std::string::npos) << text;
  EXPECT_NE(text.find("CORNER SHOP Inventory received, page: 2"), std::string::npos);
  EXPECT_NE(text.find("Mon 2 Mar 26"), std::string::npos) << text.substr(0, 400);
  EXPECT_NE(text.find("77         Quantity: 1\n"), std::string::npos);
  EXPECT_NE(text.find("12 BOLTS        Quantity: 90"), std::string::npos);
  EXPECT_NE(Shell("pdfinfo " + pdf).find("Pages:           2"), std::string::npos);
  // The second page starts where the first left off: each line printed once.
  EXPECT_EQ(text.find("Quantity: 90"), text.rfind("Quantity: 90"));
}

}  // namespace
}  // namespace tilo
