// SPDX-License-Identifier: MIT
// The head office upload: upload.cfg byte for byte, the three files as written,
// and the command against a real FTP server on 127.0.0.1.
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <mutex>

#include "core/history.h"
#include "mail/upload_commands.h"
#include "mail/upload_transfer.h"
#include "platform/files.h"
#include "platform/jobs.h"
#include "sale/commands.h"
#include "sale/sale_fixture.h"
#include "support/local_ports.h"
#include "support/report_history.h"

namespace tilo {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

// tests/mail/ftp_server.py, run once for the whole suite; it ends when its input closes.
struct FtpServer {
  bool start() {
    root = fs::temp_directory_path() / ("tilo-ftp-" + std::to_string(getpid()));
    port = FreeLocalPort();
    const std::string script = (fs::path(TILO_TESTS_DIR) / "mail" / "ftp_server.py").string();
    process = popen(
        ("/usr/bin/python3 " + script + " " + root.string() + " " + std::to_string(port)).c_str(),
        "w");
    for (int i = 0; process && i < 200 && !LocalPortListening(port); ++i) usleep(50000);
    return LocalPortListening(port);
  }
  void stop() {
    if (process) pclose(process);
    fs::remove_all(root);
  }
  void clear_root() {
    fs::remove_all(root);
    fs::create_directories(root);
  }

  fs::path root;
  int port = 0;
  FILE* process = nullptr;
};

FtpServer servers;

class UploadTest : public SaleTest {
 protected:
  void SetUp() override {
    SaleTest::SetUp();
    platform_.set_now(2026, 11, 23, 9, 5);
    std::strcpy(G().heading.site_name, "CORNER SHOP");
    SettingsRecord& s = S();
    s.clerk_number = 3;
    std::strcpy(s.clerk_name[2], "ANN");
    SetUploadTitleView([this](const std::string& title) {
      std::lock_guard lock(titles_mutex_);
      titles_.push_back(title);
    });
  }
  void TearDown() override {
    EXPECT_EQ(StopJobs(), 0);
    SetUploadTitleView({});
    SetUploadSetupForm({});
    SaleTest::TearDown();
  }
  std::vector<std::string> Titles() {
    std::lock_guard lock(titles_mutex_);
    return titles_;
  }
  void Tick(bool report, bool items, bool reorder) {
    S().upload_report = report ? 2 : 0;
    S().upload_items = items ? 2 : 0;
    S().upload_reorder = reorder ? 2 : 0;
  }

  std::mutex titles_mutex_;
  std::vector<std::string> titles_;
};

TEST_F(UploadTest, SettingsFileHoldsEachFieldAtItsPlaceForItsOwnerOnly) {
  UploadSetup setup;
  setup.server = "ftp.example.com";
  setup.username = "shop";
  setup.password =
      "s\xe9"
      "cret";
  setup.filename[0] = "day.txt";
  setup.filename[2] = std::string(250, 'r');  // cut to 199
  ASSERT_TRUE(WriteUploadSettings(setup));
  const std::string bytes = Bytes("upload.cfg");
  ASSERT_EQ(bytes.size(), 5040u);
  struct stat st {};
  ASSERT_EQ(stat("upload.cfg", &st), 0);
  EXPECT_EQ(st.st_mode & 0777, 0600u);
  std::string expected(5040, '\0');
  expected.replace(1440, 15, "ftp.example.com");
  expected.replace(1640, 4, "shop");
  expected.replace(1840, 6,
                   "s\xe9"
                   "cret");
  expected.replace(2640, 7, "day.txt");
  expected.replace(3040, 199, std::string(199, 'r'));
  EXPECT_EQ(bytes, expected);

  UploadSetup read;
  ASSERT_TRUE(ReadUploadSettings(read));
  EXPECT_EQ(read.password, setup.password);
  EXPECT_EQ(UploadName(read, UploadFile::Report), "day.txt");
  EXPECT_EQ(UploadName(read, UploadFile::Items), "Dlyitems.txt");  // empty: the name shown
  EXPECT_EQ(read.name(UploadFile::Reorder), std::string(199, 'r'));
  RemoveFile("upload.cfg");
  EXPECT_FALSE(ReadUploadSettings(read));
}

TEST_F(UploadTest, FilesCarryTheDaysFiguresItemsAndReorderRows) {
  SettingsRecord& s = S();
  G().start_hour = 8, G().start_minute = 2;
  s.transaction_number = 57;
  s.till_takings = 123.456;
  s.takings_history[7] = 100;
  s.today_transactions = 12, s.today_items = 34, s.yesterday_transactions = 5;
  s.new_customers_today = 2;
  s.cash_sales = 100, s.count_cash_sales = 9, s.credit_sales = 10, s.count_credit_sales = 1;
  s.cash_refunds = 4.5, s.count_cash_refunds = 1;
  s.sales_non_taxable = 60, s.sales_taxable = 50, s.sales_subtotal = 110, s.sales_tax1 = 10;
  s.sales_total = 120, s.balance_ch = 7.25, s.count_balance_ch = 1, s.petty_cash_today = 3;
  s.cost_of_sales = 55.5;
  const std::string counts = std::to_string(G().films.live) +
                             ", Customers on the system: " + std::to_string(G().members.live);
  EXPECT_EQ(UploadOverviewText(platform().now()),
            "CORNER SHOP  09:05 Monday November 23 2026\r\n"
            "Today's till takings: 123.46\r\n"
            "Ontime: 08:02  Transaction number: 57\r\n"
            "Inventory on the system: " +
                counts +
                "\r\n"
                "Today transactions: 12 Items: 34\r\n"
                "Yesterday transactions: 5 Items: 0\r\n"
                "Today vs. last Monday: 123.46%\r\n"
                "New customers: 2\r\n\r\n"
                "Cash sales (9): 100.00\r\nCH sales (0): 0.00\r\nEFT sales (0): 0.00\r\n"
                "Credit sales (1): 10.00\r\nTotal: 110.00\r\n\r\n"
                "Cash refunds (1): 4.50\r\nCH refunds (0): 0.00\r\nEFT refunds (0): 0.00\r\n"
                "Credit refunds (0): 0.00\r\nTotal: (4.50)\r\n\r\n"
                "Nontaxable sales: 60.00\r\nTaxable sales: 50.00\r\nSub total: 110.00\r\n"
                "Tax 1: 10.00\r\nTax 2: 0.00\r\nTotal: 120.00\r\n\r\n"
                "Balance payments cash (0): 0.00\r\nBalance payments CH (1): 7.25\r\n"
                "Balance payments EFT (0): 0.00\r\nTotal: 7.25\r\n"
                "(Excludes petty cash payments: 3.00)\r\n(Excludes cash back: 0.00)\r\n\r\n"
                "Net sales: 110.00\r\nCost of sales: 55.50\r\nGross profit: 54.50");

  // Reorder rows in file order: at the level, above it (left out), a bundle (left out).
  FilmRecord low = Stock(900, 1.0f, 0, 5, "MILK");
  low.reorder_quantity = 5, low.on_order = 6, low.order_quantity = 12;
  SetField(low.order_code, "DAIRY7");
  Store(low);
  FilmRecord enough = Stock(800, 1.0f, 0, 6, "BREAD");
  enough.reorder_quantity = 5;
  Store(enough);
  FilmRecord bundle = Stock(700, 1.0f, 0, 0, "HAMPER");
  bundle.is_bundle = 2;
  Store(bundle);
  Stock(600, 1.0f, 0, 0, "EGGS");
  const auto reorder = UploadReorderText();
  ASSERT_TRUE(reorder);
  EXPECT_THAT(*reorder, HasSubstr("Reorder list: CORNER SHOP\r\n"
                                  "Item, Restock level, In stock, On order, Order quantity, "
                                  "Order code\r\n"));
  EXPECT_THAT(*reorder, HasSubstr("\r\n900, MILK, 5,5,6,12, DAIRY7\r\n600, EGGS, 0,0,0,0, \r\n"));
  EXPECT_EQ(reorder->find("BREAD"), std::string::npos);
  EXPECT_EQ(reorder->find("HAMPER"), std::string::npos);

  // The day's items: heading, then the rows the mail's items file has, CR LF each.
  WriteHistory(3, {2026, 11, 23}, 1, {.sales_min = 5, .missing_day = 0, .cut = 0});
  std::string items;
  ASSERT_EQ(UploadItemsText({2026, 11, 23}, items), ExportDay::Done);
  ASSERT_TRUE(Writemailitems({2026, 11, 23}));
  EXPECT_EQ(items,
            "Daily item list: CORNER SHOP\r\n"
            "Item, Description, Ntx, Tx, T1, T2, Cost, Total, ID, Assoc, Payment\r\n" +
                Bytes("ES.CSV"));
}

class UploadServerTest : public UploadTest {
 protected:
  static void SetUpTestSuite() { ASSERT_TRUE(servers.start()); }
  static void TearDownTestSuite() { servers.stop(); }
};

TEST_F(UploadServerTest, CommandSendsTheTickedFilesAndSaysHowItWent) {
  InstallUploadCommands();
  WriteHistory(5, {2026, 11, 23}, 1, {.sales_min = 4, .missing_day = 0, .cut = 0});
  Stock(900, 1.0f, 0, 0, "MILK");
  const std::string restored = "TILO Retail    Assoc: 3, ANN";
  const std::vector<std::string> sent_titles = {"Upload in progress", restored};
  const std::string ftp = "127.0.0.1:" + std::to_string(servers.port);
  struct Case {
    const char* what;
    std::string server, password = "secret";
    bool report = true, items = true, reorder = true;
    std::function<void()> arrange = [] {};
    std::string notice;
    std::vector<std::string> arrived = {};  // in the server's folder
    bool titled = true;
    std::string folder = "";
  } cases[] = {
      {.what = "all three",
       .server = ftp,
       .notice = "Transmission: Transfer complete",
       .arrived = {"Activity.txt", "Dlyitems.txt", "Reorder.txt"}},
      {.what = "into a folder, by ftp://",
       .server = "ftp://" + ftp + "/shop 1",
       .items = false,
       .notice = "Transmission: Transfer complete",
       .arrived = {"Activity.txt", "Reorder.txt"},
       .folder = "shop 1"},
      {.what = "first refused, the next sent",
       .server = ftp,
       .arrange = [] { fs::create_directories(servers.root / "Activity.txt"); },
       .notice = "Transmission: Transfer failed",
       .arrived = {"Dlyitems.txt", "Reorder.txt"}},
      {.what = "wrong password",
       .server = ftp,
       .password = "wrong",
       .notice = "Problem: Internet ftp connect error",
       .titled = false},
      {.what = "server down",
       .server = "127.0.0.1:" + std::to_string(FreeLocalPort()),
       .notice = "Problem: Internet ftp connect error",
       .titled = false},
      {.what = "no server",
       .server = " ",
       .notice = "Problem: Please specify the FTP server in the configuration",
       .titled = false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    servers.clear_root();
    c.arrange();
    platform_.clear_record();
    titles_.clear();
    UploadSetup setup;
    setup.server = c.server;
    setup.username = "shop";
    setup.password = c.password;
    ASSERT_TRUE(WriteUploadSettings(setup));
    Tick(c.report, c.items, c.reorder);
    Dispatch(Command::HeadOfficeUpload);
    ASSERT_TRUE(platform_.wait_notices(1));
    ASSERT_TRUE(WaitForJobs(std::chrono::seconds(10)));
    EXPECT_THAT(platform_.notices(), ElementsAre(c.notice));
    const std::string details = platform_.notice_details().at(0);
    SCOPED_TRACE(details);
    EXPECT_EQ(details.empty(), c.notice.ends_with("complete") || c.server == " ");
    EXPECT_EQ(Titles(), c.titled ? sent_titles : std::vector<std::string>{});
    for (const std::string& name : c.arrived)
      EXPECT_EQ(Bytes((servers.root / c.folder / name).string()), Bytes(name)) << name;
    size_t files = 0;
    for (const auto& e : fs::recursive_directory_iterator(servers.root))
      files += e.is_regular_file() ? 1 : 0;
    EXPECT_EQ(files, c.arrived.size());
  }

  // Nothing ticked, or a day with no sales: no upload starts.
  RemoveFile(SalesLogPath(2026, 11, 23));
  for (bool items : {false, true}) {
    platform_.clear_record();
    Tick(false, items, false);
    Dispatch(Command::HeadOfficeUpload);
    EXPECT_EQ(Shown(), std::vector<std::string>{items ? "Problem: No items for that day."
                                                      : "Problem: No reports selected."});
    EXPECT_EQ(LiveJobs(), 0);
  }
}

TEST_F(UploadTest, SetupShowsTheDefaultNamesAndSavesTicksAndFile) {
  InstallUploadCommands();
  std::vector<UploadForm> shown;
  SetUploadSetupForm([&](UploadForm& form) {
    shown.push_back(form);
    if (shown.size() == 1) return false;  // Cancel
    form.setup.server = "ftp.example.com";
    form.flags.send[2] = true;
    return true;
  });
  Dispatch(Command::HeadOfficeSetup);
  EXPECT_FALSE(FileExists("upload.cfg"));
  Dispatch(Command::HeadOfficeUpload);  // no file yet: the form first; cancelled, nothing more
  EXPECT_TRUE(Shown().empty());
  Dispatch(Command::HeadOfficeSetup);
  ASSERT_EQ(shown.size(), 3u);
  EXPECT_EQ(shown[2].setup.filename[0], "Activity.txt");
  EXPECT_EQ(shown[2].setup.filename[1], "Dlyitems.txt");
  EXPECT_EQ(shown[2].setup.filename[2], "Reorder.txt");
  EXPECT_EQ(S().upload_reorder, 2);
  EXPECT_EQ(S().upload_report, 0);
  UploadSetup saved;
  ASSERT_TRUE(ReadUploadSettings(saved));
  EXPECT_EQ(saved.server, "ftp.example.com");
  EXPECT_EQ(saved.filename[0], "Activity.txt");
}

}  // namespace
}  // namespace tilo
