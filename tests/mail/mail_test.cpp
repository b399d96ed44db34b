// SPDX-License-Identifier: MIT
// The mails against real servers on 127.0.0.1: the plain dialogue to a recording
// server, servers that refuse, hang up or say nothing, and secure submission with
// STARTTLS and a log-in under a certificate of the test's own.
#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstring>
#include <filesystem>
#include <map>
#include <sstream>
#include <thread>

#include "core/state.h"
#include "mail/mail_commands.h"
#include "mail/mail_sender.h"
#include "platform/jobs.h"
#include "sale/commands.h"
#include "support/local_ports.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

namespace fs = std::filesystem;

// tests/mail/smtp_servers.py, run once for the whole suite.
class MailServers {
 public:
  bool start() {
    folder_ = fs::temp_directory_path() / ("tilo-mail-" + std::to_string(getpid()));
    fs::create_directories(folder_);
    int in[2], out[2];
    if (pipe2(in, O_CLOEXEC) != 0 || pipe2(out, O_CLOEXEC) != 0) return false;
    const std::string script = (fs::path(TILO_TESTS_DIR) / "mail" / "smtp_servers.py").string();
    pid_ = fork();
    if (pid_ == 0) {
      dup2(in[0], 0);
      dup2(out[1], 1);
      execl("/usr/bin/python3", "python3", script.c_str(), folder_.c_str(), nullptr);
      _exit(127);
    }
    close(in[0]);
    close(out[1]);
    stdin_ = in[1];
    std::string line;
    char c;
    while (read(out[0], &c, 1) == 1 && c != '\n') line += c;
    close(out[0]);
    std::istringstream words(line);
    std::string word;
    while (words >> word) {
      auto eq = word.find('=');
      if (eq != std::string::npos) ports_[word.substr(0, eq)] = std::stoi(word.substr(eq + 1));
    }
    return ports_.size() == 7;
  }
  void stop() {
    if (stdin_ >= 0) close(stdin_);
    if (pid_ > 0) waitpid(pid_, nullptr, 0);
    std::error_code ec;
    fs::remove_all(folder_, ec);
  }
  int port(const std::string& name) const { return ports_.at(name); }
  std::string ca() const { return (folder_ / "ca.pem").string(); }
  std::string other_ca() const { return (folder_ / "other_ca.pem").string(); }
  // The events recorded so far, by name "NNNN-server-event", and their bytes.
  std::map<std::string, std::string> events() const {
    std::map<std::string, std::string> found;
    for (const auto& e : fs::directory_iterator(folder_ / "events")) {
      const std::string name = e.path().filename().string();
      if (name.ends_with(".part")) continue;
      found[name.substr(5)] = ShopTest::Bytes(e.path().string());
    }
    return found;
  }
  void clear_events() {
    for (const auto& e : fs::directory_iterator(folder_ / "events")) fs::remove(e.path());
  }

 private:
  fs::path folder_;
  pid_t pid_ = -1;
  int stdin_ = -1;
  std::map<std::string, int> ports_;
};

MailServers servers;

class MailTest : public ShopTest {
 protected:
  static void SetUpTestSuite() { ASSERT_TRUE(servers.start()); }
  static void TearDownTestSuite() { servers.stop(); }

  void SetUp() override {
    ShopTest::SetUp();
    servers.clear_events();
    platform_.set_now(2026, 11, 23, 9, 5);
    std::strcpy(G().heading.site_name, ".Corner shop");
    std::strcpy(G().heading.site_road, "1 High St");
    SettingsRecord& s = G().settings;
    s.till_takings = 123.456;
    s.today_transactions = 12;
    s.today_items = 34;
    s.cash_sales = 100;
    s.ch_sales = 3.5;
    s.eft_sales = 19.95;
    s.credit_sales = 0.005;
    SetCustomerFind([](const std::string& text) -> int64_t {
      MemberRecord& m = G().member;
      m = MemberRecord{};
      if (text != "42" && text != "43") return 0;
      m.number = text == "42" ? 42 : 43;
      m.balance = 57.25f;
      if (m.number == 42) std::strcpy(m.email, "debtor@example.com");
      return m.number;
    });
    SetDailyItemsCsvWriter([] {
      ShopTest::WriteBytes("ES.CSV", items_file);
      return true;
    });
    SetMailCaFileForTests({});
  }
  void TearDown() override {
    EXPECT_EQ(StopJobs(), 0);
    SetCustomerFind({});
    SetMailSetupForm({});
    SetMailCaFileForTests({});
    ShopTest::TearDown();
  }

  static MailSetup Setup(const std::string& server, bool secure = false) {
    MailSetup m;
    m.smtp_server = "127.0.0.1";
    m.target_email = "owner@example.com";
    m.your_email = "till@shop.example";
    if (server == "unresolvable") {
      m.smtp_server = "no-such-host.invalid";
      m.port = 25;
    } else if (server == "down") {
      m.port = FreeLocalPort();
    } else {
      m.port = servers.port(server);
    }
    m.secure = secure;
    m.user = "shop";
    m.password = "secret";
    return m;
  }

  // Runs the command and waits for the mail's one notice.
  std::string Run(Command command, const MailSetup& setup) {
    EXPECT_TRUE(WriteMailSettings(setup));
    platform_.queue_prompt("42");
    Dispatch(command);
    EXPECT_TRUE(platform_.wait_notices(1));
    EXPECT_TRUE(WaitForJobs(std::chrono::seconds(10)));
    auto notices = platform_.notices();
    return notices.empty() ? "" : notices.back();
  }

  // A long line (split at 253), a tab and a control byte (dropped), an accented
  // byte (kept), a blank line, and a last line with no CR (left out).
  static inline const std::string items_file = "1001,Apples,3,1.50\r\n" + std::string(300, 'x') +
                                               "\r\n\t2002,Pe\x01"
                                               "ars\xe9,1,0.99\r\n\r\nlast,no,cr";
};

TEST_F(MailTest, ThreeMailsArriveExactlyAsComposed) {
  InstallMailCommands();
  const std::string totals =
      "Today's takings: 123.46\r\n"
      "Today Transactions: 12 Items: 34\r\n"
      "Cash: 100.00, CH: 3.50\r\n"
      "EFT: 19.95, Credit sales: 0.01\r\n";
  // The server takes the heading's leading dot away: the dialogue doesn't double it.
  const std::string headings = "Corner shop\r\n1 High St\r\n\r\n";
  struct Case {
    Command command;
    std::string message;
  } cases[] = {
      {Command::EmailReport,
       "HELO: 127.0.0.1\nFROM: till@shop.example\nTO: owner@example.com\n\n"
       "FROM: till@shop.example\r\nTO: owner@example.com\r\nSUBJECT: TILO report\r\n\r\n"
       "TILO report: 9:05 Mon Nov 23 26\r\n\r\n" +
           headings + totals + "End report\r\n"},
      {Command::EmailDailyItems,
       "HELO: 127.0.0.1\nFROM: till@shop.example\nTO: owner@example.com\n\n"
       "FROM: till@shop.example\r\nTO: owner@example.com\r\nSUBJECT: TILO Daily items\r\n\r\n"
       "TILO Daily items: 9:05 Mon Nov 23 26\r\n\r\n" +
           headings + totals + "1001,Apples,3,1.50\r\n" + std::string(253, 'x') + "\r\n" +
           std::string(47, 'x') + "\r\n2002,Pears\xe9,1,0.99\r\n\r\nEnd report\r\n"},
      {Command::DebtorEmail,
       "HELO: 127.0.0.1\nFROM: till@shop.example\nTO: debtor@example.com\n\n"
       "FROM: till@shop.example\r\nTO: debtor@example.com\r\nSUBJECT: Overdue balance\r\n\r\n" +
           headings +
           "Overdue reminder: 9:05 Mon Nov 23 26\r\n\r\n"
           "Dear Sir / Madam,  Customer reference: 42\r\n"
           "According to our records the following balance is overdue:\r\n\r\n"
           "57.25\r\n"
           "\r\nPlease remit at your earliest convenience. Thank you.\r\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(int(c.command));
    servers.clear_events();
    platform_.clear_record();
    EXPECT_EQ(Run(c.command, Setup("plain")), "Finished: Report");
    auto events = servers.events();
    ASSERT_EQ(events.size(), 1u);
    EXPECT_EQ(events.begin()->first, "plain-message");
    EXPECT_EQ(events.begin()->second, c.message);
  }
  // The debtor's address stood in for the target in memory only.
  MailSetup saved;
  ASSERT_TRUE(ReadMailSettings(saved));
  EXPECT_EQ(saved.target_email, "owner@example.com");
}

TEST_F(MailTest, DialogueGoesOutByteForByte) {
  InstallMailCommands();
  // The bodies are checked as the server takes them in the test above.
  struct Case {
    Command command;
    std::string starts;
    std::string ends;
  } cases[] = {
      {Command::DebtorEmail,
       "HELO 127.0.0.1\r\nMAIL FROM: till@shop.example\r\nRCPT TO: debtor@example.com\r\n"
       "DATA\r\nFROM: till@shop.example\r\n",
       "\r\nPlease remit at your earliest convenience. Thank you.\r\n.\r\nQUIT\r\n"},
      {Command::EmailReport,
       "HELO 127.0.0.1\r\nMAIL FROM:<till@shop.example>\r\nRCPT TO:<owner@example.com>\r\n"
       "DATA\r\nFROM: till@shop.example\r\n",
       "\r\nEnd report\r\n.\r\nQUIT\r\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(int(c.command));
    servers.clear_events();
    platform_.clear_record();
    EXPECT_EQ(Run(c.command, Setup("raw")), "Finished: Report");
    auto events = servers.events();
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (events.empty() && std::chrono::steady_clock::now() < deadline) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
      events = servers.events();
    }
    ASSERT_EQ(events.count("raw-session"), 1u);
    EXPECT_TRUE(events["raw-session"].starts_with(c.starts)) << events["raw-session"];
    EXPECT_TRUE(events["raw-session"].ends_with(c.ends));
  }
}

TEST_F(MailTest, EveryOutcomeReachesTheOperator) {
  InstallMailCommands();
  struct Case {
    const char* name;
    std::string server;
    bool secure;
    std::string ca;  // "good", "other" or "" (the system's)
    std::string notice;
    std::string events;  // the kinds of event the servers saw, in order
    Command command = Command::EmailReport;
  } cases[] = {
      {"refusing server", "reject", false, "", "Finished: Report", "reject-rejected"},
      {"nobody listening", "down", false, "", "Problem: Error connecting to the server socket", ""},
      {"unknown name", "unresolvable", false, "", "Problem: Cannot find SMTP mail server", ""},
      {"hang-up", "hangup", false, "", "Finished: Report", "hangup-connect"},
      {"no items file", "plain", false, "", "Problem: Unable to open file.", "",
       Command::EmailDailyItems},
      {"secure", "secure", true, "good", "Finished: Report", "secure-auth secure-message"},
      {"no STARTTLS", "notls", true, "good", "Problem: Mail not sent: STARTTLS not supported.", ""},
      {"untrusted certificate", "secure", true, "other", "Problem: Mail not sent: ", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    servers.clear_events();
    platform_.clear_record();
    SetMailCaFileForTests(c.ca == "good"    ? servers.ca()
                          : c.ca == "other" ? servers.other_ca()
                                            : "");
    if (c.command == Command::EmailDailyItems) SetDailyItemsCsvWriter([] { return true; });
    const std::string notice = Run(c.command, Setup(c.server, c.secure));
    if (c.notice.ends_with(": "))
      EXPECT_TRUE(notice.starts_with(c.notice)) << notice;
    else
      EXPECT_EQ(notice, c.notice);
    std::string kinds;
    for (const auto& [name, bytes] : servers.events()) kinds += (kinds.empty() ? "" : " ") + name;
    EXPECT_EQ(kinds, c.events);
    ::unlink("ES.CSV");
  }
}

TEST_F(MailTest, SecureSubmissionLogsInAndStuffsDots) {
  InstallMailCommands();
  SetMailCaFileForTests(servers.ca());
  MailSetup setup = Setup("secure", true);
  EXPECT_EQ(Run(Command::EmailReport, setup), "Finished: Report");
  auto events = servers.events();
  ASSERT_EQ(events.count("secure-message"), 1u);
  const std::string& message = events["secure-message"];
  EXPECT_NE(message.find("\n\nDate: "), std::string::npos);
  EXPECT_NE(message.find("\r\nMessage-ID: <"), std::string::npos);
  EXPECT_NE(message.find("@shop.example>\r\nFROM: till@shop.example\r\n"), std::string::npos);
  // libcurl doubled the dot; the server took one away again.
  EXPECT_NE(message.find("\r\n.Corner shop\r\n1 High St\r\n"), std::string::npos);
  EXPECT_EQ(events["secure-auth"], "shop:secret");

  servers.clear_events();
  platform_.clear_record();
  setup.password = "wrong";
  const std::string notice = Run(Command::EmailReport, setup);
  EXPECT_TRUE(notice.starts_with("Problem: Mail not sent: ")) << notice;
  EXPECT_EQ(servers.events().count("secure-message"), 0u);
}

TEST_F(MailTest, CloseDownBreaksOffASilentServerAtOnce) {
  InstallMailCommands();
  for (bool secure : {false, true}) {
    servers.clear_events();
    ASSERT_TRUE(WriteMailSettings(Setup("silent", secure)));
    Dispatch(Command::EmailReport);
  }
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (servers.events().size() < 1 && std::chrono::steady_clock::now() < deadline)
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  EXPECT_EQ(LiveJobs(), 2);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(StopJobs(), 0);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
  // A mail broken off at close-down says nothing.
  EXPECT_TRUE(platform_.notices().empty());
}

TEST_F(MailTest, CommandsWithoutSettingsOrAddressSendNothing) {
  InstallMailCommands();
  int forms = 0;
  SetMailSetupForm([&](MailSetup& setup) {
    ++forms;
    EXPECT_EQ(setup.smtp_server, "");
    return false;
  });
  Dispatch(Command::EmailReport);
  Dispatch(Command::DebtorEmail);
  EXPECT_EQ(forms, 2);
  EXPECT_FALSE(fs::exists(kMailSettingsFile));

  ASSERT_TRUE(WriteMailSettings(Setup("plain")));
  platform_.queue_prompt("43");  // a customer with no address
  platform_.queue_prompt("99");  // nobody
  platform_.queue_prompt(std::nullopt);
  Dispatch(Command::DebtorEmail);
  Dispatch(Command::DebtorEmail);
  Dispatch(Command::DebtorEmail);
  EXPECT_EQ(platform_.shown(), std::vector<std::string>{"Problem: No email address"});
  EXPECT_EQ(LiveJobs(), 0);
  EXPECT_TRUE(servers.events().empty());
}

TEST_F(MailTest, SettingsFileIsExactAndPrivate) {
  MailSetup setup = Setup("plain", true);
  setup.port = 587;
  ASSERT_TRUE(WriteMailSettings(setup));
  // The plain file, its size and its mode are read back byte for byte by the mail
  // run of the real program; here the secure flag and the log-in.
  const std::string bytes = Bytes(kMailSettingsFile);
  ASSERT_EQ(bytes.size(), 560u);
  auto text = [&](size_t at) { return std::string(bytes.c_str() + at); };
  EXPECT_EQ(bytes.substr(80, 4), "TSM1");
  EXPECT_EQ(bytes.substr(84, 4), std::string("\x4b\x02\0\0", 4));
  EXPECT_EQ(bytes.substr(88, 4), std::string("\2\0\0\0", 4));
  EXPECT_EQ(text(92), "shop");
  EXPECT_EQ(text(172), "secret");

  struct Case {
    const char* name;
    std::string file;
    MailSetup expected;
  } cases[] = {
      // An older file without the marker: plain mail, whatever stands in the reserve.
      {"no marker",
       std::string(320, '\x7f') + std::string("srv") + std::string(237, '\0'),
       {"srv", "", "", false, 0, "", ""}},
      {"short file",
       bytes.substr(0, 410),
       {"127.0.0.1", "owner@exam", "", true, 587, "shop", "secret"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    WriteBytes(kMailSettingsFile, c.file);
    MailSetup read;
    ASSERT_TRUE(ReadMailSettings(read));
    EXPECT_EQ(read.smtp_server, c.expected.smtp_server);
    EXPECT_EQ(read.target_email, c.expected.target_email);
    EXPECT_EQ(read.your_email, c.expected.your_email);
    EXPECT_EQ(read.secure, c.expected.secure);
    EXPECT_EQ(read.port, c.expected.port);
    EXPECT_EQ(read.user, c.expected.user);
    EXPECT_EQ(read.password, c.expected.password);
  }
  EXPECT_EQ(MailServicePort(), 25);
}

}  // namespace
}  // namespace tilo
