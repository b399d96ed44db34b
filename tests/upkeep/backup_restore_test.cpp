// SPDX-License-Identifier: MIT
#include "upkeep/backup.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <map>

#include "core/settings.h"
#include "core/startup.h"
#include "core/state.h"
#include "platform/files.h"
#include "support/shop_fixture.h"
#include "upkeep/upkeep_view.h"

namespace tilo {
namespace {

namespace fs = std::filesystem;
using Files = std::map<std::string, std::string>;

// Fails the n-th copy or rename of a run.
class FaultyFiles : public UpkeepFiles {
 public:
  int fail_copy_at = 0, fail_rename_at = 0, copies = 0, renames = 0;
  bool copy_verified(const std::string& from, const std::string& to,
                     const std::function<bool()>& tick) override {
    return ++copies != fail_copy_at && UpkeepFiles::copy_verified(from, to, tick);
  }
  bool rename(const std::string& from, const std::string& to) override {
    return ++renames != fail_rename_at && UpkeepFiles::rename(from, to);
  }
};

class AgreeingView : public UpkeepView {
  bool confirm_restore() override { return true; }
};

// Every plain file directly in a folder: a stray temporary shows up too.
Files FolderFiles(const std::string& folder) {
  Files all;
  for (const auto& e : fs::directory_iterator(folder))
    if (e.is_regular_file()) all[e.path().filename().string()] = ShopTest::Bytes(e.path().string());
  return all;
}

struct Fault {
  int copy = 0, rename = 0, cancel = -1;
};

std::vector<Fault> EveryFault() {
  std::vector<Fault> faults;
  for (int k = 1; k <= 6; ++k) faults.push_back({k, 0, -1});
  for (int k = 1; k <= 12; ++k) faults.push_back({0, k, -1});
  for (int k = 1; k <= 6; ++k) faults.push_back({0, 0, k});
  return faults;
}

class BackupTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    platform_.set_now(2026, 11, 23, 10, 5);
    MakeFreshShop();
    ASSERT_TRUE(OpenStore());
    install_upkeep_view(&view_);
  }
  void TearDown() override {
    install_upkeep_view(nullptr);
    ShopTest::TearDown();
  }
  void Arm(FaultyFiles& files, const Fault& f) {
    files.fail_copy_at = f.copy;
    files.fail_rename_at = f.rename;
    platform_.cancel_progress_at = f.cancel;
    platform_.progress_steps = 0;
    platform_.clear_record();
  }
  bool Completed(const std::string& what) {
    for (const auto& line : platform_.shown())
      if (line == what) return true;
    return false;
  }
  AgreeingView view_;
};

// A backup that fails or is cancelled at any file or rename leaves the old set
// in the folder and the old stamp in the settings; one that runs leaves the new.
TEST_F(BackupTest, BackupLeavesTheWholeOldSetOrTheWholeNewOne) {
  const std::string dest = folder_ + "/backup";
  fs::create_directory(dest);
  Files old_set;
  for (const char* name : kBackupFiles) old_set[name] = std::string("old ") + name;
  for (const Fault& f : EveryFault()) {
    for (const auto& [name, bytes] : old_set) WriteBytes(dest + "/" + name, bytes);
    FaultyFiles files;
    Arm(files, f);
    platform_.queue_prompt(dest);
    Backup(files);
    SCOPED_TRACE(testing::Message() << f.copy << " " << f.rename << " " << f.cancel);
    EXPECT_EQ(FolderFiles(dest), old_set);
    EXPECT_FALSE(Completed("File backup: Complete"));
    SettingsRecord saved{};
    std::memcpy(&saved, Bytes("wr.cfg").data(), sizeof saved);
    EXPECT_EQ(saved.last_backup_year, 0);
    EXPECT_EQ(G().settings.last_backup_year, 0);
  }
  FaultyFiles files;
  Arm(files, {});
  platform_.queue_prompt(dest);
  Backup(files);
  EXPECT_TRUE(Completed("File backup: Complete"));
  Files shop = FolderFiles(".");
  Files expected;
  for (const char* name : kBackupFiles) expected[name] = shop[name];
  EXPECT_EQ(FolderFiles(dest), expected);
  EXPECT_EQ(G().settings.last_backup_year, 2026);
  EXPECT_NE(shop["bun4.dat"].find("\r\n10:5 23/11/2026  File backup\r\n"), std::string::npos);
}

// A restore that fails or is cancelled anywhere leaves the shop as it was; one
// that runs brings in the backup, numbering from 1, deletes the history and
// keeps the close-down off the restored files.
TEST_F(BackupTest, RestoreLeavesTheWholeOldSetOrTheWholeNewOne) {
  const std::string source = folder_ + "/backup";
  platform_.queue_prompt(source);
  Backup();
  ASSERT_TRUE(Completed("File backup: Complete"));
  const Files backup = FolderFiles(source);
  WriteBytes("film.dat", Bytes("film.dat") + Bytes("film.dat"));
  AppendToFile("bun4.dat", "after the backup");
  const Files shop = FolderFiles(".");

  for (const Fault& f : EveryFault()) {
    FaultyFiles files;
    Arm(files, f);
    platform_.queue_file(source + "/wr.cfg");
    Restore(files);
    SCOPED_TRACE(testing::Message() << f.copy << " " << f.rename << " " << f.cancel);
    EXPECT_EQ(FolderFiles("."), shop);
    EXPECT_FALSE(fs::exists(kRestoreStaging));
    EXPECT_FALSE(G().no_save_at_close);
  }

  FaultyFiles files;
  Arm(files, {});
  platform_.queue_file(source + "/wr.cfg");
  Restore(files);
  EXPECT_EQ(platform_.shown(),
            std::vector<std::string>{"Restore complete: TILO will now close down"});
  Files restored = FolderFiles(".");
  for (const char* name : {"film.dat", "member.dat", "mans.dat", "resn.dat", "bun4.dat"})
    EXPECT_EQ(restored[name], backup.at(name)) << name;
  SettingsRecord s{};
  std::memcpy(&s, restored["wr.cfg"].data(), sizeof s);
  EXPECT_EQ(s.transaction_number, 1);
  EXPECT_EQ(s.last_backup_year, 2026);
  EXPECT_FALSE(fs::exists("2026"));
  Closedown();
  EXPECT_EQ(Bytes("wr.cfg"), restored["wr.cfg"]);
  EXPECT_FALSE(fs::exists("2026/11/23/thedaily.dat"));
}

// The checks that come before any copy, and the shop's own folder on either side.
TEST_F(BackupTest, RefusedSourcesAndTheShopsOwnFolderDestroyNothing) {
  const Files shop = FolderFiles(".");
  const std::string bad = folder_ + "/bad";
  fs::create_directory(bad);
  for (const char* name : kBackupFiles) WriteBytes(bad + "/" + name, shop.at(name));
  WriteBytes(bad + "/film.dat", "");
  platform_.queue_file(bad + "/notes.txt");
  Restore();
  platform_.queue_file(bad + "/wr.cfg");
  Restore();
  WriteBytes(bad + "/film.dat", "x");
  platform_.queue_file(bad + "/wr.cfg");
  Restore();
  EXPECT_EQ(platform_.shown(),
            (std::vector<std::string>{"Fatal error: File not present.",
                                      "File has no content: " + bad + "/film.dat",
                                      "Fatal error: Data file film.dat corrupt in Opendata."}));
  EXPECT_EQ(FolderFiles("."), shop);

  platform_.clear_record();
  platform_.queue_prompt(folder_);
  Backup();
  EXPECT_EQ(platform_.shown(), std::vector<std::string>{"File backup: Complete"});
  Files after = FolderFiles(".");
  for (const char* name : {"film.dat", "member.dat", "mans.dat", "resn.dat"})
    EXPECT_EQ(after[name], shop.at(name));
  EXPECT_EQ(after.size(), shop.size());
  platform_.queue_file(folder_ + "/Wr.Cfg");  // only the name's test folds case
  Restore();
  Files restored = FolderFiles(".");
  for (const char* name : {"film.dat", "member.dat", "mans.dat", "resn.dat", "bun4.dat"})
    EXPECT_EQ(restored[name], after[name]);
  EXPECT_EQ(restored.size(), shop.size());
}

}  // namespace
}  // namespace tilo
