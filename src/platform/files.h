// SPDX-License-Identifier: MIT
// Plain file access for the record files: open, work, close. Paths are relative
// to the working folder (the process's current directory). No handle is kept
// between operations.
#pragma once

#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

namespace tilo {

class File {
 public:
  enum class Mode {
    Read,       // must exist
    Write,      // must exist; read and write, no truncation
    Create,     // created or truncated, write only
    ReadWrite,  // read and write, created if missing
    Append,     // appended to, created if missing
  };

  File() = default;
  File(const std::string& path, Mode mode) { open(path, mode); }
  ~File() { close(); }
  File(File&& other) noexcept : fd_(other.fd_) { other.fd_ = -1; }
  File& operator=(File&& other) noexcept;
  File(const File&) = delete;
  File& operator=(const File&) = delete;

  bool open(const std::string& path, Mode mode);
  bool is_open() const { return fd_ >= 0; }
  explicit operator bool() const { return is_open(); }
  void close();

  // Bytes read (possibly short at the end of the file), or -1 on error.
  int64_t read(void* buffer, int64_t count);
  // True when every byte was written.
  bool write(const void* buffer, int64_t count);
  bool write(std::string_view text) { return write(text.data(), int64_t(text.size())); }
  bool seek(int64_t offset);
  int64_t size() const;
  bool truncate(int64_t length);
  // Pushes what was written to stable storage.
  bool sync();

 private:
  int fd_ = -1;
};

// Size in bytes; nullopt when the file can't be reached.
std::optional<int64_t> FileSize(const std::string& path);
bool FileExists(const std::string& path);
bool IsDirectory(const std::string& path);
// Reads the whole file; nullopt when it can't be opened.
std::optional<std::string> ReadWholeFile(const std::string& path);
// Writes the file whole: a temporary beside it, flushed to disk, renamed over the
// old one, so a power cut leaves either the old file or the new one, never a short one.
bool ReplaceFile(const std::string& path, const void* data, int64_t size);
inline bool ReplaceFile(const std::string& path, std::string_view bytes) {
  return ReplaceFile(path, bytes.data(), int64_t(bytes.size()));
}
// As ReplaceFile, for a file only its owner may read or write (it holds a password).
bool ReplacePrivateFile(const std::string& path, std::string_view bytes);
// A settings file that is one packed record: a short file leaves the rest of the
// record zero, a longer one is cut; nullopt when it can't be opened.
template <class Record>
std::optional<Record> ReadRecordFile(const std::string& path) {
  auto bytes = ReadWholeFile(path);
  if (!bytes) return std::nullopt;
  Record r{};
  std::memcpy(&r, bytes->data(), bytes->size() < sizeof r ? bytes->size() : sizeof r);
  return r;
}
// The record written whole as a file only its owner may read or write.
template <class Record>
bool ReplacePrivateRecord(const std::string& path, const Record& r) {
  return ReplacePrivateFile(path, std::string_view(reinterpret_cast<const char*>(&r), sizeof r));
}
// Appends and flushes; creates the file if missing.
bool AppendToFile(const std::string& path, std::string_view bytes);
bool MakeFolder(const std::string& path);  // one level; true if it exists afterwards
bool RemoveFile(const std::string& path);
// Flushes a folder's entries, so a new or renamed file in it survives a power cut.
void SyncFolder(const std::string& path);

}  // namespace tilo
