// SPDX-License-Identifier: MIT
#include "app/ui/home_shop.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "platform/files.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

using HomeShopTest = ShopTest;

std::string CurrentFolder() {
  return std::filesystem::current_path().string();
}

// The first launch: the answer picks the demo shop, an empty one or none; the
// folder is made (parents too) and closed to others whatever the answer.
TEST_F(HomeShopTest, FirstLaunchMakesTheShopTheAnswerAsksFor) {
  struct Case {
    Answer answer;
    bool opened;
    int64_t film_bytes;  // -1: no film.dat; the empty shop's holds one blank record
  };
  const Case cases[] = {
      {Answer::Yes, true, 48 * 1874}, {Answer::No, true, 1874}, {Answer::Cancel, false, -1}};
  for (const Case& c : cases) {
    const std::string home = folder_ + "/home" + std::to_string(int(c.answer)) + "/deep/TILO";
    platform_.messages.clear();
    platform_.queue_answer(c.answer);
    ASSERT_EQ(EnterHomeShop(home, TILO_NEWSHOP), c.opened);
    ASSERT_EQ(platform_.messages.size(), 1u);
    EXPECT_EQ(platform_.messages[0].title, "Shop folder");
    struct stat st {};
    ASSERT_EQ(::stat(home.c_str(), &st), 0);
    EXPECT_EQ(st.st_mode & 0777, 0700u);
    EXPECT_EQ(FileSize(home + "/film.dat").value_or(-1), c.film_bytes);
    EXPECT_EQ(CurrentFolder() == home, c.opened);
    ASSERT_EQ(chdir(folder_.c_str()), 0);
  }
}

// A later launch opens the shop without a question, and closes a folder an
// older run left open to others.
TEST_F(HomeShopTest, LaterLaunchOpensTheShopAsItStands) {
  const std::string home = folder_ + "/TILO";
  ASSERT_TRUE(MakeFolder(home));
  ASSERT_EQ(chdir(home.c_str()), 0);
  MakeFreshShop();
  ASSERT_EQ(chdir(folder_.c_str()), 0);
  ASSERT_EQ(::chmod(home.c_str(), 0755), 0);
  const auto settings = Bytes(home + "/wr.cfg");

  ASSERT_TRUE(EnterHomeShop(home, "/no/such/installer"));
  EXPECT_TRUE(platform_.messages.empty());
  EXPECT_EQ(CurrentFolder(), home);
  EXPECT_EQ(Bytes(home + "/wr.cfg"), settings);
  struct stat st {};
  ASSERT_EQ(::stat(home.c_str(), &st), 0);
  EXPECT_EQ(st.st_mode & 0777, 0700u);
}

TEST_F(HomeShopTest, InstallerThatFailsIsReportedAndNothingOpens) {
  const std::string home = folder_ + "/TILO";
  platform_.queue_answer(Answer::Yes);
  ASSERT_FALSE(EnterHomeShop(home, "/no/such/installer"));
  ASSERT_EQ(platform_.messages.size(), 2u);
  EXPECT_EQ(platform_.messages[1].text.rfind("The shop could not be made in " + home + ".", 0), 0u);
  EXPECT_EQ(CurrentFolder(), folder_);
}

}  // namespace
}  // namespace tilo
