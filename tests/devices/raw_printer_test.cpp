// SPDX-License-Identifier: MIT
// The drawer behind the receipt printer, against a CUPS daemon of the test's own:
// its own configuration folder, a loopback port, and a printer whose backend
// keeps each job's bytes and title in files.
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

#include "core/state.h"
#include "core/text.h"
#include "devices/drawer.h"
#include "support/private_cups.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

class RawPrinterTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    if (!PrivateCups::Installed()) GTEST_SKIP() << "no CUPS daemon here (cups-daemon)";
    cups_ = std::make_unique<PrivateCups>();
    ASSERT_TRUE(cups_->Start(std::filesystem::path(folder_) / "cups", "RECEIPT"))
        << "the test's CUPS daemon did not start";
  }
  void TearDown() override {
    cups_.reset();
    ShopTest::TearDown();
  }
  std::pair<std::string, std::string> NextJob() { return cups_->NextJob(); }

  std::unique_ptr<PrivateCups> cups_;
};

TEST_F(RawPrinterTest, TheDrawerCodeGoesThroughThePrinterAsARawJobNamedTilo) {
  SettingsRecord& s = G().settings;
  s.drawer_mode = 2;
  SetField(s.printer_name, "RECEIPT");
  SetField(s.drawer_code, "27,112,48,55,121");
  Opendrawer();
  EXPECT_EQ(NextJob(), std::make_pair(std::string("\x1b\x70\x30\x37\x79"), std::string("TILO")));

  // A code at its limit of 31 characters, to the default printer.
  SetField(s.printer_name, "");
  SetField(s.drawer_code, "27,112,0,25,250,27,112,0,25,250");
  Opendrawer();
  EXPECT_EQ(NextJob().first, std::string("\x1b\x70\x00\x19\xfa\x1b\x70\x00\x19\xfa", 10));
  EXPECT_TRUE(platform_.messages.empty());

  SetField(s.printer_name, "KITCHEN");
  Opendrawer();
  EXPECT_EQ(platform_.shown(),
            std::vector<std::string>{"Problem: Unable to open printer for till drawer"});
}

}  // namespace
}  // namespace tilo
