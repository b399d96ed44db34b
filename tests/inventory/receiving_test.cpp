// SPDX-License-Identifier: MIT
// Booking goods in: the stock, the on-order count, ininvent.dat, and the
// receipts report over a period.
#include <filesystem>

#include "core/history.h"
#include "documents/recording_target.h"
#include "inventory/inventory_fixture.h"
#include "inventory/receiving.h"

namespace tilo {
namespace {

class ReceivingTest : public InventoryTest {
 protected:
  static std::function<ReceiveButton(ReceiveForm&)> Receive(const std::string& quantity,
                                                            ReceiveButton button) {
    return [=](ReceiveForm& form) {
      form.quantity = quantity;
      form.record.sell_by_year = 3;
      return button;
    };
  }
  static std::string StockIn(int64_t number, int64_t received) {
    const StockInRecord r{number, received};
    return std::string(reinterpret_cast<const char*>(&r), sizeof r);
  }
};

TEST_F(ReceivingTest, ReceiptsRaiseStockLowerOnOrderAndAppendToTheDay) {
  FilmRecord r = Stock(12, 1.0f, 0, 4, "BOLTS");
  r.on_order = 3;
  Store(r);
  Stock(13, 1.0f, 0, 0, "NUTS");
  // "Next" asks again; past midnight the day's folder does not exist yet.
  platform_.queue_prompt("12");
  platform_.queue_prompt("13");
  view_.receipts = {Receive("5", ReceiveButton::Next), Receive("2", ReceiveButton::Ok)};
  Inventoryreceived();
  EXPECT_EQ(Item(12).quantity, 9);
  EXPECT_EQ(Item(12).on_order, 0);
  EXPECT_EQ(Item(12).sell_by_year, 3);
  EXPECT_EQ(Item(13).quantity, 2);
  EXPECT_EQ(Bytes(StockInPath(2026, 3, 14)), StockIn(12, 5) + StockIn(13, 2));
  EXPECT_EQ(Shown(), (std::vector<std::string>{"Updated quantity: 9", "Updated quantity: 2"}));

  // Refused quantities change nothing, an overflow of the stock included.
  for (const char* typed : {"0", "-3", "", "2147483647"}) {
    platform_.queue_prompt("12");
    view_.receipts = {Receive(typed, ReceiveButton::Ok)};
    Inventoryreceived();
    EXPECT_EQ(Shown(), std::vector<std::string>{"Problem: Invalid quantity"}) << typed;
  }
  EXPECT_EQ(Item(12).quantity, 9);
  EXPECT_EQ(Item(12).sell_by_year, 3);

  // An unwritable log stops the receipt whole: the stock and the log go together.
  std::filesystem::remove(StockInPath(2026, 3, 14));
  std::filesystem::create_directory(StockInPath(2026, 3, 14));
  platform_.queue_prompt("12");
  view_.receipts = {Receive("1", ReceiveButton::Ok)};
  Inventoryreceived();
  EXPECT_EQ(Item(12).quantity, 9);
  EXPECT_EQ(Shown(), (std::vector<std::string>{"Problem: Unable to open incoming log."}));
}

TEST_F(ReceivingTest, BySkuAsksAtEachHitAndEndsWithNoMatch) {
  FilmRecord a = Stock(1, 1.0f, 0, 1, "RED PAINT");
  SetField(a.sku1, "PAINT-R");
  Store(a);
  FilmRecord b = Stock(2, 1.0f, 0, 1, "BLUE PAINT");
  SetField(b.sku1, "PAINT-B");
  Store(b);
  platform_.queue_prompt("paint");
  platform_.queue_answer(Answer::No);
  platform_.queue_answer(Answer::Yes);
  view_.receipts = {Receive("4", ReceiveButton::Next)};
  platform_.queue_prompt("zzz");
  Inventoryreceivedbysku();
  EXPECT_EQ(Item(2).quantity, 5);
  EXPECT_EQ(Shown(), (std::vector<std::string>{"Search: No to continue: 1, RED PAINT",
                                               "Search: No to continue: 2, BLUE PAINT",
                                               "Updated quantity: 5", "Finished: No match found"}));
}

TEST_F(ReceivingTest, ReportListsAPeriodWithADeletedItemAndPrintsPages) {
  Stock(12, 1.0f, 0, 4, "BOLTS");
  std::filesystem::create_directories("2024/2/29");
  std::filesystem::create_directories("2024/3/1");
  std::filesystem::create_directories("2024/3/5");
  WriteBytes(StockInPath(2024, 2, 29), StockIn(12, 5) + StockIn(99, 7));
  WriteBytes(StockInPath(2024, 3, 1), StockIn(12, 1));
  WriteBytes(StockInPath(2024, 3, 5), StockIn(12, 9));  // after the period
  const ReportPeriod period{28, 2, 2024, 2, 3, 2024};
  const std::vector<std::string> lines = Receivedlines(period);
  EXPECT_EQ(lines, (std::vector<std::string>{
                       "Thu 29 Feb 24         12 BOLTS        Quantity: 5",
                       "Thu 29 Feb 24         99         Quantity: 7",
                       "Fri 1 Mar 24         12 BOLTS        Quantity: 1",
                   }));
  EXPECT_EQ(Receivedtitle(period), "Inventory received: Wed 28 Feb 24 to Sat 2 Mar 24");
  EXPECT_EQ(Receivedtitle({1, 1, 1975, 2, 3, 2024}),
            " Inventory received:  1/ 1/1975 to  2/ 3/2024");

  // A line of 42 units, plus 2 in the test: rows up to 75 fit, the header's two and 74 lines.
  std::vector<std::string> many(100, "line");
  SetField(G().heading.site_name, "CORNER SHOP");
  RecordingTarget target;
  size_t next = 0;
  G().print_job.page_number = 1;
  Printreceivedpage(target, many, next);
  EXPECT_EQ(next, 74u);
  EXPECT_EQ(G().print_job.page_number, 2);
  EXPECT_EQ(target.texts().front(), "CORNER SHOP Inventory received, page: 1");
  Printreceivedpage(target, many, next);
  EXPECT_EQ(next, 100u);
  EXPECT_EQ(G().print_job.page_number, 2);  // the last page
}

}  // namespace
}  // namespace tilo
