// SPDX-License-Identifier: MIT
// The drawer and the pole display against a real serial line: a socat pty pair
// stands for the port, and each test reads the exact bytes that came through.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "core/state.h"
#include "core/text.h"
#include "devices/drawer.h"
#include "devices/pole.h"
#include "devices/ports.h"
#include "pty_pair.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

using Sent = std::vector<uint8_t>;

Sent B(const std::string& text) {
  return Sent(text.begin(), text.end());
}
Sent operator+(Sent a, const Sent& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

class DeviceTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    line_ = std::make_unique<PtyPair>(folder_);
    ASSERT_TRUE(line_->ok()) << "socat could not make a pty pair";
    line_->Reset();
    // The shop's drawer and display both hang on COM3, which ports.cfg maps.
    WriteBytes(kPortsFile, "# till ports\nCOM3 = " + line_->port() + "\n");
    SettingsRecord& s = G().settings;
    s.drawer_port = 2;
    s.pole_port = 2;
  }
  void TearDown() override {
    line_.reset();
    ShopTest::TearDown();
  }
  std::unique_ptr<PtyPair> line_;
};

TEST_F(DeviceTest, PortNamesFollowTheSettingsNumberingAndPortsCfg) {
  EXPECT_EQ(PortName(0), "COM1");
  EXPECT_EQ(PortName(7), "COM8");
  EXPECT_EQ(PortName(8), "LPT1");
  EXPECT_EQ(PortName(9), "LPT2");
  EXPECT_EQ(PortName(10), "");
  EXPECT_EQ(PortPath("COM1"), "/dev/ttyS0");
  EXPECT_EQ(PortPath("LPT2"), "/dev/lp1");
  EXPECT_EQ(PortPath("com3"), line_->port());
  EXPECT_EQ(PortPath(""), "");
}

TEST_F(DeviceTest, DirectDrawerSendsTheOpenCharacterRepeatedInRawMode) {
  SettingsRecord& s = G().settings;
  s.drawer_mode = 0;
  s.drawer_open_char = 0x107;  // only the low byte goes out
  s.drawer_repeat = 3;
  Opendrawer();
  EXPECT_EQ(line_->Received(), (Sent{7, 7, 7}));
  EXPECT_TRUE(platform_.messages.empty());
  // The speed stays what the system had; the terminal's translation is off.
  PtyPair::Line line = line_->Settings();
  EXPECT_EQ(line.baud, 9600u);
  EXPECT_TRUE(line.raw);

  s.drawer_open_char = 10;  // a line feed must not grow a carriage return
  s.drawer_repeat = 1;
  Opendrawer();
  EXPECT_EQ(line_->Received(), (Sent{10}));

  s.drawer_repeat = 0;  // zero bytes is a successful write
  Opendrawer();
  EXPECT_TRUE(line_->Received(100).empty());
  EXPECT_TRUE(platform_.messages.empty());
}

TEST_F(DeviceTest, DirectDrawerThatCannotOpenItsPortSaysSoUnderTillDrawer) {
  SettingsRecord& s = G().settings;
  s.drawer_mode = 0;
  s.drawer_repeat = 1;
  s.drawer_port = 4;  // COM5: no such device here
  WriteBytes(kPortsFile, "COM5=" + folder_ + "/nothing\n");
  Opendrawer();
  s.drawer_port = 2;  // held by another program
  ASSERT_TRUE(line_->LockPort());
  Opendrawer();
  EXPECT_EQ(platform_.shown(), (std::vector<std::string>{"Till drawer: Unable to open port",
                                                         "Till drawer: Unable to open port"}));
  EXPECT_TRUE(line_->Received(100).empty());
}

TEST_F(DeviceTest, PrinterRouteIsSilentWithoutCodeAndComplainsWithoutPrinter) {
  setenv("CUPS_SERVER", "127.0.0.1:9", 1);  // a spooler that is not there
  SettingsRecord& s = G().settings;
  s.drawer_mode = 2;
  Opendrawer();
  EXPECT_TRUE(platform_.messages.empty());
  SetField(s.drawer_code, "27,112,0,25,250");
  SetField(s.printer_name, "RECEIPT");
  Opendrawer();
  EXPECT_EQ(platform_.shown(),
            (std::vector<std::string>{"Problem: Unable to open printer for till drawer"}));
  unsetenv("CUPS_SERVER");
}

TEST_F(DeviceTest, PoleFramesEachMessageInPrinterOffAndOnWithTheLineSettings) {
  SettingsRecord& s = G().settings;
  SetField(s.pole_printer_off, "27,61,2");
  SetField(s.pole_printer_on, "27,61,1");
  SetField(s.pole_clear, "27,64");
  SetField(s.pole_cursor1, "11");
  SetField(s.pole_cursor2, "11,10");
  SetField(s.pole_passive_text, "WELCOME");
  s.pole_baud = 6;       // 14400: a rate termios has no constant for
  s.pole_data_bits = 4;  // 7
  s.pole_parity = 2;     // odd
  s.pole_stop_bits = 2;  // two

  Polegreeting();
  const Sent off{27, 61, 2}, on{27, 61, 1}, clear{27, 64, 11};
  EXPECT_EQ(line_->Received(), off + clear + B("WELCOME") + on);
  // A pty keeps the speed and stop bits it is given but forces 8 bits and no
  // parity, so those two are checked as the settings translate them.
  PtyPair::Line line = line_->Settings();
  EXPECT_EQ(line.baud, 14400u);
  EXPECT_EQ(line.stop_bits, 2);
  EXPECT_TRUE(line.raw);
  LineSettings wanted = PoleLineSettings();
  EXPECT_EQ(wanted.data_bits, 7);
  EXPECT_EQ(wanted.parity, 2);

  Poleitem("COLA 330ML", 0.996f);
  EXPECT_EQ(line_->Received(), off + clear + B("COLA 330ML 1.00") + on);
  Poletotal(12.5f);
  EXPECT_EQ(line_->Received(), off + clear + B("Total: 12.50") + on);
  Poletender(20.0f, 7.5f);
  EXPECT_EQ(line_->Received(),
            (off + clear + B("Tender: 20.00") + Sent{11, 10} + B("Change: 7.50") + on));
  EXPECT_TRUE(platform_.messages.empty());
}

TEST_F(DeviceTest, EmptySequencesAreLeftOutButTheClearAlwaysGivesAByte) {
  SettingsRecord& s = G().settings;
  s.pole_baud = 10;
  Poletotal(3.0f);
  // No printer sequences: one open-write-close; the empty clear parses to a 0.
  EXPECT_EQ(line_->Received(), Sent{0} + B("Total: 3.00"));
  EXPECT_EQ(line_->Settings().baud, 115200u);
  Poletender(5.0f, 2.0f);  // no second cursor: the change follows straight on
  EXPECT_EQ(line_->Received(), Sent{0} + B("Tender: 5.00") + B("Change: 2.00"));
  Polegreeting();  // an empty greeting still clears the display
  EXPECT_EQ(line_->Received(), Sent{0});
}

TEST_F(DeviceTest, PoleItemCutsLongDescriptionsAtTwelve) {
  EXPECT_EQ(PoleitemText("TWELVE CHARS", 1.5f), "TWELVE CHARS 1.50");
  EXPECT_EQ(PoleitemText("THIRTEEN CHAR", 1.5f), "THIRTEEN CHA  1.50");
  EXPECT_EQ(PoleitemText("A VERY LONG DESCRIPTION INDEED", 99999.99f), "A VERY LONG   99999.99");
  EXPECT_EQ(PoleitemText("A VERY LONG DESCRIPTION INDEED", 123456.5f), "A VERY LONG   123456.5");
}

TEST_F(DeviceTest, PoleFailuresAreReportedWithTheirTitles) {
  SettingsRecord& s = G().settings;
  s.pole_port = 5;  // COM6 is /dev/ttyS5 by default; point it at nothing
  WriteBytes(kPortsFile, "COM6=" + folder_ + "/nothing\n");
  Polegreeting();
  Poleitem("TEA", 1.0f);
  EXPECT_EQ(platform_.shown(), (std::vector<std::string>{"Pole display: Unable to open port",
                                                         "Problem: Unable to open port"}));
  platform_.clear_record();
  // The printer sequences open the port too, and each failure says so.
  SetField(s.pole_printer_off, "1");
  SetField(s.pole_printer_on, "2");
  Poletotal(1.0f);
  EXPECT_EQ(platform_.shown(), (std::vector<std::string>{"Problem: Unable to open port",
                                                         "Problem: Unable to open port",
                                                         "Problem: Unable to open port"}));
}

}  // namespace
}  // namespace tilo
