// SPDX-License-Identifier: MIT
#include "platform/files.h"

#include "platform/file_faults.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace tilo {

FileFaults file_faults;

void WatchFileOps() {
  file_faults = FileFaults{};
  file_faults.watching = true;
}

void ArmFileFault(FileOp op, int64_t nth, int error) {
  WatchFileOps();
  file_faults.fail_at[int(op)] = nth;
  file_faults.error = error;
}

void StopFileFaults() {
  file_faults = FileFaults{};
}

bool FileFaultHits(FileOp op) {
  FileFaults& f = file_faults;
  const int64_t n = ++f.count[int(op)];
  if (n != f.fail_at[int(op)]) return false;
  if (f.error == kFaultKill) ::_exit(137);
  errno = f.error;
  return true;
}

bool RenameFile(const std::string& from, const std::string& to) {
  if (FileFault(FileOp::Rename)) return false;
  return ::rename(from.c_str(), to.c_str()) == 0;
}

File& File::operator=(File&& other) noexcept {
  if (this != &other) {
    close();
    fd_ = other.fd_;
    other.fd_ = -1;
  }
  return *this;
}

bool File::open(const std::string& path, Mode mode) {
  close();
  int flags = O_CLOEXEC;
  switch (mode) {
    case Mode::Read:
      flags |= O_RDONLY;
      break;
    case Mode::Write:
      flags |= O_RDWR;
      break;
    case Mode::Create:
      flags |= O_WRONLY | O_CREAT | O_TRUNC;
      break;
    case Mode::ReadWrite:
      flags |= O_RDWR | O_CREAT;
      break;
    case Mode::Append:
      flags |= O_WRONLY | O_CREAT | O_APPEND;
      break;
  }
  if (FileFault(FileOp::Open)) return false;
  fd_ = ::open(path.c_str(), flags, 0600);
  if (fd_ >= 0) {
    struct stat st {};
    if (::fstat(fd_, &st) != 0 || S_ISDIR(st.st_mode)) close();
  }
  return fd_ >= 0;
}

void File::close() {
  if (fd_ >= 0) ::close(fd_);
  fd_ = -1;
}

int64_t File::read(void* buffer, int64_t count) {
  if (fd_ < 0) return -1;
  auto* p = static_cast<char*>(buffer);
  int64_t done = 0;
  while (done < count) {
    ssize_t n = ::read(fd_, p + done, size_t(count - done));
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) return done > 0 ? done : -1;
    if (n == 0) break;
    done += n;
  }
  return done;
}

bool File::write(const void* buffer, int64_t count) {
  if (fd_ < 0 || FileFault(FileOp::Write)) return false;
  const auto* p = static_cast<const char*>(buffer);
  int64_t done = 0;
  while (done < count) {
    ssize_t n = ::write(fd_, p + done, size_t(count - done));
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) return false;
    done += n;
  }
  return true;
}

bool File::seek(int64_t offset) {
  return fd_ >= 0 && ::lseek(fd_, offset, SEEK_SET) == offset;
}

int64_t File::size() const {
  struct stat st {};
  if (fd_ < 0 || ::fstat(fd_, &st) != 0) return -1;
  return st.st_size;
}

bool File::truncate(int64_t length) {
  return fd_ >= 0 && !FileFault(FileOp::Write) && ::ftruncate(fd_, length) == 0;
}

bool File::sync() {
  return fd_ >= 0 && !FileFault(FileOp::Sync) && ::fdatasync(fd_) == 0;
}

std::optional<int64_t> FileSize(const std::string& path) {
  struct stat st {};
  if (::stat(path.c_str(), &st) != 0 || S_ISDIR(st.st_mode)) return std::nullopt;
  return st.st_size;
}

bool FileExists(const std::string& path) {
  struct stat st {};
  return ::stat(path.c_str(), &st) == 0 && !S_ISDIR(st.st_mode);
}

bool IsDirectory(const std::string& path) {
  struct stat st {};
  return ::stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

std::optional<std::string> ReadWholeFile(const std::string& path) {
  File f(path, File::Mode::Read);
  if (!f) return std::nullopt;
  std::string out(size_t(f.size() > 0 ? f.size() : 0), '\0');
  int64_t n = f.read(out.data(), int64_t(out.size()));
  if (n < 0) return std::nullopt;
  out.resize(size_t(n));
  return out;
}

static std::string FolderOf(const std::string& path) {
  auto slash = path.rfind('/');
  return slash == std::string::npos ? "." : (slash == 0 ? "/" : path.substr(0, slash));
}

void SyncFolder(const std::string& path) {
  int fd = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd >= 0) {
    ::fsync(fd);
    ::close(fd);
  }
}

bool ReplaceFile(const std::string& path, const void* data, int64_t size) {
  if (IsDirectory(path)) return false;
  std::string temp = path + ".new";
  {
    File f(temp, File::Mode::Create);
    if (!f || !f.write(data, size) || !f.sync()) {
      f.close();
      ::unlink(temp.c_str());
      return false;
    }
  }
  if (!RenameFile(temp, path)) {
    ::unlink(temp.c_str());
    return false;
  }
  SyncFolder(FolderOf(path));
  return true;
}

bool ReplacePrivateFile(const std::string& path, std::string_view bytes) {
  if (IsDirectory(path)) return false;
  std::string temp = path + ".new";
  if (FileFault(FileOp::Open)) return false;
  int fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  if (fd < 0) return false;
  // A temporary left by an earlier run may have wider rights than it is created with.
  bool ok = ::fchmod(fd, 0600) == 0 && !FileFault(FileOp::Write) &&
            ::write(fd, bytes.data(), bytes.size()) == ssize_t(bytes.size()) &&
            !FileFault(FileOp::Sync) && ::fsync(fd) == 0;
  ok = ::close(fd) == 0 && ok;
  if (!ok || !RenameFile(temp, path)) {
    ::unlink(temp.c_str());
    return false;
  }
  SyncFolder(FolderOf(path));
  return true;
}

bool AppendToFile(const std::string& path, std::string_view bytes) {
  File f(path, File::Mode::Append);
  return f && f.write(bytes) && f.sync();
}

bool MakeFolder(const std::string& path) {
  if (::mkdir(path.c_str(), 0700) == 0) return true;
  return errno == EEXIST && IsDirectory(path);
}

bool RemoveFile(const std::string& path) {
  return ::unlink(path.c_str()) == 0;
}

}  // namespace tilo
