// SPDX-License-Identifier: MIT
#include "upkeep/backup.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>

#include "core/activity_log.h"
#include "core/settings.h"
#include "core/startup.h"
#include "core/state.h"
#include "core/text.h"
#include "core/write_batch.h"
#include "platform/file_faults.h"
#include "platform/files.h"
#include "platform/platform.h"
#include "sale/screen.h"
#include "upkeep/purge.h"
#include "upkeep/upkeep_view.h"

namespace tilo {
namespace {

constexpr const char* kProblem = "Problem";
constexpr const char* kAside = ".tilo-old";
constexpr int64_t kBlock = 4 << 20;

class Fd {
 public:
  explicit Fd(int fd) : fd_(fd) {}
  ~Fd() {
    if (fd_ >= 0) ::close(fd_);
  }
  int get() const { return fd_; }
  bool close() {
    const int fd = fd_;
    fd_ = -1;
    return fd < 0 || ::close(fd) == 0;
  }

 private:
  int fd_;
};

int64_t ReadFull(int fd, char* buffer, int64_t count) {
  int64_t got = 0;
  while (got < count) {
    const ssize_t n = ::read(fd, buffer + got, size_t(count - got));
    if (n < 0) return -1;
    if (n == 0) break;
    got += n;
  }
  return got;
}

bool WriteFull(int fd, const char* buffer, int64_t count) {
  while (count > 0) {
    const ssize_t n = ::write(fd, buffer, size_t(count));
    if (n <= 0) return false;
    buffer += n;
    count -= n;
  }
  return true;
}

// The copy read back from disk, block by block, against its source.
bool SameContent(int source, const std::string& copy, std::vector<char>& a, std::vector<char>& b) {
  const int64_t block = int64_t(a.size());
  Fd back(::open(copy.c_str(), O_RDONLY | O_CLOEXEC));
  if (back.get() < 0 || ::lseek(source, 0, SEEK_SET) != 0) return false;
  for (;;) {
    const int64_t n = ReadFull(source, a.data(), block);
    const int64_t m = ReadFull(back.get(), b.data(), block);
    if (n < 0 || n != m) return false;
    if (n == 0) return true;
    if (std::memcmp(a.data(), b.data(), size_t(n)) != 0) return false;
  }
}

// A backup is stamped as the copy carrying the stamp is taken; a backup that
// does not complete puts the previous stamp back.
struct BackupStamp {
  int32_t minute, hour, day, month, year;
};

BackupStamp StampOf(const SettingsRecord& s) {
  return {s.last_backup_minute, s.last_backup_hour, s.last_backup_day, s.last_backup_month,
          s.last_backup_year};
}

void PutStamp(SettingsRecord& s, const BackupStamp& t) {
  s.last_backup_minute = t.minute;
  s.last_backup_hour = t.hour;
  s.last_backup_day = t.day;
  s.last_backup_month = t.month;
  s.last_backup_year = t.year;
}

void RemoveAll(const std::vector<std::pair<std::string, std::string>>& moves) {
  for (const auto& move : moves) RemoveFile(move.first);
}

std::string Upper(std::string text) {
  for (char& c : text) c = char(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

void EmptyStaging() {
  for (const char* name : kBackupFiles) {
    RemoveFile(std::string(kRestoreStaging) + "/" + name);
    RemoveFile(std::string(kRestoreStaging) + "/" + name + ".new");
  }
  ::rmdir(kRestoreStaging);
}

// The incoming set must start: the first four files present and not empty.
bool BackupSetIsThere(const std::string& folder) {
  for (size_t i = 0; i < 4; ++i) {
    const std::string path = folder + kBackupFiles[i];
    File probe(path, File::Mode::Read);
    if (!probe) return Message(path, "File not present."), false;
    if (probe.size() < 1) return Message(path, "File has no content", Buttons::OkCancel), false;
  }
  return true;
}

// The restored settings start the numbering again, as the history they counted
// is deleted with the restore.
bool RestartNumbering(const std::string& settings_path) {
  auto bytes = ReadWholeFile(settings_path);
  if (!bytes) return false;
  constexpr size_t at = offsetof(SettingsRecord, transaction_number);
  if (bytes->size() < at + sizeof(int32_t)) return true;
  const int32_t one = 1;
  bytes->replace(at, sizeof one, reinterpret_cast<const char*>(&one), sizeof one);
  return ReplaceFile(settings_path, *bytes);
}

// The moves of a swap under way, written whole beside the files it replaces
// before the first rename: a swap cut short (the till killed, the power gone) is
// finished from it, so that neither side is left with a file missing or a set
// part old, part new. A restore's list also says the history is still to go.
constexpr const char* kSwapList = ".tilo-swap";
constexpr const char* kPurgePending = "purge";

bool WriteSwapList(const std::string& folder,
                   const std::vector<std::pair<std::string, std::string>>& moves, bool purge) {
  std::string text;
  for (const auto& [staged, target] : moves) text += staged + "\t" + target + "\n";
  if (purge) text += std::string(kPurgePending) + "\n";
  return ReplaceFile(folder + kSwapList, text);
}

// Puts in every staged file of a list still waiting, then drops the old files
// and the list. nullopt when there is no list; else whether it asked for a purge.
std::optional<bool> FinishSwap(const std::string& folder) {
  const auto text = ReadWholeFile(folder + kSwapList);
  if (!text) return std::nullopt;
  bool purge = false;
  std::vector<std::string> targets;
  size_t at = 0;
  for (size_t end; (end = text->find('\n', at)) != std::string::npos; at = end + 1) {
    const std::string line = text->substr(at, end - at);
    const size_t tab = line.find('\t');
    if (tab == std::string::npos) {
      purge = purge || line == kPurgePending;
      continue;
    }
    const std::string staged = line.substr(0, tab), target = line.substr(tab + 1);
    if (FileExists(staged)) {
      if (FileExists(target) && !FileExists(target + kAside))
        ::rename(target.c_str(), (target + kAside).c_str());
      ::rename(staged.c_str(), target.c_str());
    }
    targets.push_back(target);
  }
  for (const auto& target : targets) RemoveFile(target + kAside);
  SyncFolder(folder.empty() ? "." : folder);
  return purge;
}

void DropSwapList(const std::string& folder) {
  RemoveFile(folder + kSwapList);
  SyncFolder(folder.empty() ? "." : folder);
}

// SwapIn under a list; the list goes once the swap is in or undone.
bool ListedSwapIn(UpkeepFiles& files, const std::string& folder,
                  const std::vector<std::pair<std::string, std::string>>& moves) {
  if (!WriteSwapList(folder, moves, false)) return false;
  const bool in = SwapIn(files, moves);
  DropSwapList(folder);
  return in;
}

}  // namespace

bool FinishBackupSet(const std::string& folder) {
  if (!FinishSwap(folder)) return false;
  DropSwapList(folder);
  return true;
}

bool FinishRestore() {
  const auto purge = FinishSwap("");
  if (!purge) return false;
  if (*purge) PurgeHistoryTree(PurgeStartYear());
  EmptyStaging();
  DropSwapList("");
  return true;
}

bool UpkeepFiles::copy_verified(const std::string& from, const std::string& to,
                                const std::function<bool()>& tick) {
  Fd in(::open(from.c_str(), O_RDONLY | O_CLOEXEC));
  if (in.get() < 0) return false;
  Fd out(::open(to.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
  if (out.get() < 0) return false;
  // The blocks need be no bigger than the file: a small shop's files are copied
  // without clearing megabytes of buffer for each.
  struct stat info {};
  const int64_t size = ::fstat(in.get(), &info) == 0 ? int64_t(info.st_size) : kBlock;
  const int64_t block = std::clamp<int64_t>(size + 1, 4096, kBlock);
  std::vector<char> a(static_cast<size_t>(block)), b(static_cast<size_t>(block));
  for (int64_t written = 0;;) {
    const int64_t n = ReadFull(in.get(), a.data(), block);
    if (n < 0 || !WriteFull(out.get(), a.data(), n) || !tick()) return false;
    // The disk starts on each block at once, so the flush at the end finds
    // little left to write.
    ::sync_file_range(out.get(), written, n, SYNC_FILE_RANGE_WRITE);
    written += n;
    if (n < block) break;
  }
  if (::fdatasync(out.get()) != 0) return false;
  // Dropped from the cache, the read back comes from the disk itself.
  ::posix_fadvise(out.get(), 0, 0, POSIX_FADV_DONTNEED);
  if (!out.close()) return false;
  return SameContent(in.get(), to, a, b);
}

bool UpkeepFiles::rename(const std::string& from, const std::string& to) {
  return RenameFile(from, to);
}

bool SwapIn(UpkeepFiles& files, const std::vector<std::pair<std::string, std::string>>& moves) {
  std::vector<std::string> aside, placed;
  auto undo = [&] {
    for (const auto& target : placed) RemoveFile(target);
    for (const auto& target : aside) ::rename((target + kAside).c_str(), target.c_str());
    EndSwap();
    return false;
  };
  // A kill from here on is finished by the next start.
  if (!BeginSwap(moves, kAside)) return false;
  for (const auto& [staged, target] : moves) {
    if (!FileExists(target)) continue;
    if (!files.rename(target, target + kAside)) return undo();
    aside.push_back(target);
  }
  for (const auto& [staged, target] : moves) {
    if (!files.rename(staged, target)) return undo();
    placed.push_back(target);
  }
  for (const auto& target : aside) RemoveFile(target + kAside);
  EndSwap();
  return true;
}

std::string BackupFolderPath(const std::string& text) {
  std::string path = text.empty() ? "~/W2" : text;
  std::replace(path.begin(), path.end(), '\\', '/');
  if (path[0] == '~') {
    const char* home = std::getenv("HOME");
    path = std::string(home ? home : "") + path.substr(1);
  }
  return path;
}

void Backup(UpkeepFiles& files) {
  State& g = G();
  SettingsRecord& s = g.settings;
  const BackupStamp before = StampOf(s);
  const LocalTime now = platform().now();
  PutStamp(s, {now.minute, now.hour, now.day, now.month, now.year});
  auto give_up = [&] {
    PutStamp(s, before);
    Savesettings();
  };
  if (!Savesettings()) {
    Message("WR.CFG", kProblem);
    return give_up();
  }

  const std::string stored = FieldText(s.backup_folder);
  auto reply = platform().prompt("Backup: enter the directory", "File backup",
                                 Cp1252ToUtf8(stored.empty() ? "~/W2" : stored));
  if (!reply) return give_up();
  const std::string text = Utf8ToCp1252(*reply);
  if (text.size() < 100) SetField(s.backup_folder, text);
  const std::string folder = BackupFolderPath(text) + "/";

  char line[96];
  std::snprintf(line, sizeof line, "\r\n%d:%d %d/%d/%d  File backup\r\n", now.hour, now.minute,
                now.day, now.month, now.year);
  if (!AppendToLog(line)) Message("Data file: bun4.dat.", kProblem);

  FinishBackupSet(folder);
  const std::string probe = folder + kActivityLog;
  const bool probe_was_there = FileExists(probe);
  if (!File(probe, File::Mode::ReadWrite)) {
    if (!MakeFolder(folder)) return Message("Unable to create folder.", kProblem), give_up();
    if (!File(probe, File::Mode::ReadWrite))
      return Message("Unable to open file.", kProblem), give_up();
  }
  if (!probe_was_there) RemoveFile(probe);

  std::vector<std::pair<std::string, std::string>> moves;
  for (const char* name : kBackupFiles)
    moves.emplace_back(folder + "." + name + ".tilo-new", folder + name);
  auto progress = platform().begin_progress("Copying the store's files", "Backup", true);
  bool cancelled = false;
  int64_t step = 0;
  auto tick = [&] { return !(cancelled = !progress->step(++step, 0)); };
  for (size_t i = 0; i < moves.size(); ++i) {
    if (!files.copy_verified(kBackupFiles[i], moves[i].first, tick)) {
      RemoveAll(moves);
      if (!cancelled) Message("Unable to open file", kProblem);
      return give_up();
    }
  }
  progress.reset();
  if (!ListedSwapIn(files, folder, moves)) {
    RemoveAll(moves);
    Message("Unable to open file", kProblem);
    return give_up();
  }
  SyncFolder(folder);
  Message("Complete", "File backup");
}

void Backup() {
  UpkeepFiles files;
  Backup(files);
}

void Restore(UpkeepFiles& files) {
  if (!upkeep_view().confirm_restore()) return;
  auto chosen = platform().choose_file("Restore data from backup", false, "TILO files (*.*)");
  if (!chosen) return;
  const size_t at = Upper(*chosen).rfind("WR.CFG");
  if (at == std::string::npos) return void(Message("File not present.", "Fatal error"));
  const std::string folder = chosen->substr(0, at);
  FinishBackupSet(folder);
  if (!BackupSetIsThere(folder)) return;

  EmptyStaging();
  if (!MakeFolder(kRestoreStaging)) return void(Message("Unable to create folder.", kProblem));
  std::vector<std::pair<std::string, std::string>> moves;
  auto progress = platform().begin_progress("Restoring the store's files", "Restore", true);
  bool cancelled = false;
  int64_t step = 0;
  auto tick = [&] { return !(cancelled = !progress->step(++step, 0)); };
  for (size_t i = 0; i < kBackupFiles.size(); ++i) {
    const std::string source = folder + kBackupFiles[i];
    // resn.dat and bun4.dat come when the backup has them; else the shop's stay.
    if (i >= 4 && !FileExists(source)) continue;
    const std::string staged = std::string(kRestoreStaging) + "/" + kBackupFiles[i];
    if (!files.copy_verified(source, staged, tick)) {
      EmptyStaging();
      if (!cancelled) Message("Unable to open file", kProblem);
      return;
    }
    moves.emplace_back(staged, kBackupFiles[i]);
  }
  progress.reset();
  if (!CheckDataFiles(std::string(kRestoreStaging) + "/") ||
      !RestartNumbering(moves.front().first)) {
    EmptyStaging();
    return;
  }
  // The list stays until the history is gone too: a restore cut short after
  // its first rename is finished by the next start.
  if (!WriteSwapList("", moves, true)) {
    EmptyStaging();
    Message("Unable to open file", kProblem);
    return;
  }
  if (!SwapIn(files, moves)) {
    DropSwapList("");
    EmptyStaging();
    Message("Unable to open file", kProblem);
    return;
  }
  EmptyStaging();
  SyncFolder(".");
  // From here the settings in memory are the old store's: the close-down must
  // not write them over the restored wr.cfg.
  G().no_save_at_close = true;
  for (const auto& move : moves) {
    struct stat info {};
    if (::stat(move.second.c_str(), &info) == 0)
      ::chmod(move.second.c_str(), info.st_mode | S_IWUSR);
  }
  PurgeHistoryTree(PurgeStartYear());
  DropSwapList("");
  Message("TILO will now close down", "Restore complete");
  screen_view().quit();
}

void Restore() {
  UpkeepFiles files;
  Restore(files);
}

}  // namespace tilo
