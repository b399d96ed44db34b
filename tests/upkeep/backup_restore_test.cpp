// SPDX-License-Identifier: MIT
#include "upkeep/backup.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstddef>
#include <cstring>
#include <filesystem>
#include <functional>
#include <map>

#include "core/history.h"
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

// Each of the six copies, each of the twelve renames (six old files aside, six
// new ones in), Cancel at each of the six steps.
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
  AgreeingView view_;
};

// Either side holds a whole set whatever fails or is cancelled: a failed backup
// leaves the previous backup and stamp, a failed restore the shop's files. One
// that runs leaves the new set; a restore numbers from 1, deletes the history
// and keeps the close-down off the restored files.
TEST_F(BackupTest, AFailureOrCancelAtAnyStepLeavesTheWholeOldSet) {
  const std::string dest = folder_ + "/backup";
  fs::create_directory(dest);
  for (const char* name : kBackupFiles) WriteBytes(dest + "/" + name, name);
  auto run = [&](bool restore, const Fault& f) {
    FaultyFiles files;
    files.fail_copy_at = f.copy;
    files.fail_rename_at = f.rename;
    platform_.cancel_progress_at = f.cancel;
    platform_.progress_steps = 0;
    platform_.clear_record();
    platform_.queue_prompt(dest);
    platform_.queue_file(dest + "/wr.cfg");
    restore ? Restore(files) : Backup(files);
    platform_.prompts.clear();
    platform_.files.clear();
  };
  for (bool restore : {false, true}) {
    const std::string side = restore ? "." : dest;
    const Files before = FolderFiles(side);
    for (const Fault& f : EveryFault()) {
      run(restore, f);
      SCOPED_TRACE(testing::Message() << restore << " " << f.copy << f.rename << f.cancel);
      EXPECT_EQ(FolderFiles(side), before);
      EXPECT_EQ(platform_.shown(), f.cancel > 0
                                       ? std::vector<std::string>{}
                                       : std::vector<std::string>{"Problem: Unable to open file"});
      EXPECT_FALSE(fs::exists(kRestoreStaging) || G().no_save_at_close);
      int32_t stamp;
      std::memcpy(&stamp, Bytes("wr.cfg").data() + offsetof(SettingsRecord, last_backup_year), 4);
      EXPECT_EQ(stamp, restore ? 2026 : 0);
      EXPECT_EQ(G().settings.last_backup_year, stamp);
    }
    run(restore, {});
    if (!restore) {
      EXPECT_EQ(platform_.shown(), std::vector<std::string>{"File backup: Complete"});
      for (const char* name : kBackupFiles) EXPECT_EQ(Bytes(dest + "/" + name), Bytes(name));
      WriteBytes("film.dat", Bytes("film.dat") + Bytes("film.dat"));  // a change to undo
    }
  }
  EXPECT_EQ(platform_.shown(),
            std::vector<std::string>{"Restore complete: TILO will now close down"});
  for (const char* name : {"film.dat", "member.dat", "mans.dat", "resn.dat", "bun4.dat"})
    EXPECT_EQ(Bytes(name), Bytes(dest + "/" + name)) << name;
  SettingsRecord s{};
  const std::string restored = Bytes("wr.cfg");
  std::memcpy(&s, restored.data(), sizeof s);
  EXPECT_EQ(s.transaction_number, 1);
  EXPECT_EQ(s.last_backup_year, 2026);
  EXPECT_FALSE(fs::exists("2026"));
  Closedown();
  EXPECT_EQ(Bytes("wr.cfg"), restored);
  EXPECT_FALSE(fs::exists("2026/11/23/thedaily.dat"));
}

// Stops the program dead at the n-th rename, as a kill or a power cut would.
class DyingFiles : public UpkeepFiles {
 public:
  explicit DyingFiles(int die_at) : die_at_(die_at) {}
  bool rename(const std::string& from, const std::string& to) override {
    if (++renames_ == die_at_) _exit(0);
    return UpkeepFiles::rename(from, to);
  }

 private:
  int die_at_, renames_ = 0;
};

// Runs `work` in a child that dies at the n-th rename of its swap.
void DieAtRename(int n, const std::function<void(UpkeepFiles&)>& work) {
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    DyingFiles files(n);
    work(files);
    _exit(1);
  }
  int status = 0;
  waitpid(child, &status, 0);
  ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "no rename " << n;
}

// Stopped at any rename, a restore is finished by the next start and a backup
// by the next restore from its folder: no file missing, no set part old.
TEST_F(BackupTest, ASwapStoppedAtAnyRenameIsFinishedAfterwards) {
  const std::string dest = folder_ + "/backup";
  platform_.queue_prompt(dest);
  Backup();
  const Files old_set = FolderFiles(dest);
  WriteBytes("film.dat", Bytes("film.dat") + Bytes("film.dat"));
  ASSERT_TRUE(Savesettings());
  for (int n = 1; n <= 12; ++n) {
    SCOPED_TRACE(n);
    platform_.queue_prompt(dest);
    DieAtRename(n, [](UpkeepFiles& files) { Backup(files); });
    platform_.prompts.clear();
    const Files shop = FolderFiles(".");

    // A backup that stopped leaves its list: the restore from it finishes it first.
    platform_.clear_record();
    platform_.queue_file(dest + "/wr.cfg");
    Restore();
    ASSERT_EQ(platform_.shown(),
              std::vector<std::string>{"Restore complete: TILO will now close down"});
    for (const char* name : {"film.dat", "member.dat", "mans.dat", "resn.dat"})
      EXPECT_EQ(Bytes(dest + "/" + name), shop.at(name)) << name;

    // A restore that stopped: the next start puts the whole set in.
    Makelogdirs();
    platform_.queue_file(dest + "/wr.cfg");
    DieAtRename(n, [](UpkeepFiles& files) { Restore(files); });
    platform_.files.clear();
    platform_.clear_record();
    ResetState();
    ASSERT_TRUE(OpenStore());
    EXPECT_EQ(platform_.shown(), std::vector<std::string>{});
    for (const char* name : {"film.dat", "member.dat", "mans.dat", "resn.dat"})
      EXPECT_EQ(Bytes(name), Bytes(dest + "/" + name)) << name;
    EXPECT_EQ(G().settings.transaction_number, 1);
    EXPECT_FALSE(fs::exists(kRestoreStaging));
    EXPECT_EQ(FolderFiles(dest).size(), old_set.size());
  }
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
