// SPDX-License-Identifier: MIT
#include "core/write_batch.h"

#include <cerrno>
#include <cstring>
#include <map>
#include <optional>

#include "platform/file_faults.h"
#include "platform/files.h"
#include "platform/platform.h"

namespace tilo {
namespace {

// The journal: "TILOJNL1", the direction byte (0 forward, 1 back), the length of
// the body and its FNV-1a checksum, then the body: the count of pieces and each
// piece with its kind, path, offset, size before, image after and image before.
constexpr char kMagic[8] = {'T', 'I', 'L', 'O', 'J', 'N', 'L', '1'};
constexpr size_t kDirectionAt = 8;
constexpr size_t kHeaderSize = 8 + 1 + 8 + 8;
constexpr char kForward = 0, kBack = 1;

uint64_t Checksum(std::string_view bytes) {
  uint64_t h = 14695981039346656037ull;
  for (unsigned char c : bytes) {
    h ^= c;
    h *= 1099511628211ull;
  }
  return h;
}

template <class T>
void Put(std::string& out, T value) {
  out.append(reinterpret_cast<const char*>(&value), sizeof value);
}
void PutBytes(std::string& out, std::string_view bytes) {
  Put(out, uint64_t(bytes.size()));
  out.append(bytes);
}

std::string Encode(const std::vector<WriteBatch::Piece>& pieces) {
  std::string body;
  Put(body, uint32_t(pieces.size()));
  for (const auto& p : pieces) {
    Put(body, uint8_t(p.kind));
    PutBytes(body, p.path);
    Put(body, p.offset);
    Put(body, p.pre_size);
    PutBytes(body, p.after);
    PutBytes(body, p.before);
  }
  std::string out(kMagic, sizeof kMagic);
  out += kForward;
  Put(out, uint64_t(body.size()));
  Put(out, Checksum(body));
  return out + body;
}

class Reader {
 public:
  explicit Reader(std::string_view bytes) : bytes_(bytes) {}
  template <class T>
  bool Get(T& value) {
    if (bytes_.size() - at_ < sizeof value) return false;
    std::memcpy(&value, bytes_.data() + at_, sizeof value);
    at_ += sizeof value;
    return true;
  }
  bool GetBytes(std::string& out) {
    uint64_t n = 0;
    if (!Get(n) || bytes_.size() - at_ < n) return false;
    out.assign(bytes_.substr(at_, size_t(n)));
    at_ += size_t(n);
    return true;
  }
  bool done() const { return at_ == bytes_.size(); }

 private:
  std::string_view bytes_;
  size_t at_ = 0;
};

// The pieces of a whole journal and its direction; nullopt when it is torn.
std::optional<std::vector<WriteBatch::Piece>> Decode(std::string_view bytes, char* direction) {
  if (bytes.size() < kHeaderSize || std::memcmp(bytes.data(), kMagic, sizeof kMagic) != 0)
    return std::nullopt;
  uint64_t length = 0, sum = 0;
  std::memcpy(&length, bytes.data() + 9, sizeof length);
  std::memcpy(&sum, bytes.data() + 17, sizeof sum);
  const std::string_view body = bytes.substr(kHeaderSize);
  if (body.size() != length || Checksum(body) != sum) return std::nullopt;
  *direction = bytes[kDirectionAt];
  Reader r(body);
  uint32_t count = 0;
  if (!r.Get(count)) return std::nullopt;
  std::vector<WriteBatch::Piece> pieces;
  for (uint32_t i = 0; i < count; ++i) {
    WriteBatch::Piece p{};
    uint8_t kind = 0;
    if (!r.Get(kind) || kind < 1 || kind > 3 || !r.GetBytes(p.path) || !r.Get(p.offset) ||
        !r.Get(p.pre_size) || !r.GetBytes(p.after) || !r.GetBytes(p.before))
      return std::nullopt;
    p.kind = WriteBatch::Kind(kind);
    pieces.push_back(std::move(p));
  }
  if (!r.done()) return std::nullopt;
  return pieces;
}

// The files being written, each opened once and flushed once at the end.
class OpenFiles {
 public:
  File* Get(const std::string& path, bool create) {
    auto it = files_.find(path);
    if (it != files_.end()) return &it->second;
    File f(path, create ? File::Mode::ReadWrite : File::Mode::Write);
    if (!f) return nullptr;
    return &files_.emplace(path, std::move(f)).first->second;
  }
  // The file that could not be flushed; empty when all were.
  std::string SyncAll() {
    for (auto& [path, f] : files_)
      if (!f.sync()) return path;
    return {};
  }
  void Close() { files_.clear(); }

 private:
  std::map<std::string, File> files_;
};

bool Apply(const WriteBatch::Piece& p, OpenFiles& files) {
  using Kind = WriteBatch::Kind;
  if (p.kind == Kind::Replace) return ReplacePrivateFile(p.path, p.after);
  File* f = files.Get(p.path, p.kind == Kind::Append);
  if (!f) return false;
  // Appending at the size before rather than at the end makes a second run of
  // the same journal write the same bytes once.
  const int64_t at = p.kind == Kind::Append ? (p.pre_size < 0 ? 0 : p.pre_size) : p.offset;
  if (p.kind == Kind::Append && f->size() != at && !f->truncate(at)) return false;
  return f->seek(at) && f->write(p.after);
}

// A file that was not there before is removed; what stands in its way and was
// never a file (a folder) is left alone.
bool Gone(const std::string& path) {
  return !FileExists(path) || RemoveFile(path);
}

bool Undo(const WriteBatch::Piece& p) {
  using Kind = WriteBatch::Kind;
  if (p.pre_size < 0) return Gone(p.path);
  if (p.kind == Kind::Replace) return ReplacePrivateFile(p.path, p.before);
  File f(p.path, File::Mode::Write);
  if (!f) return false;
  if (p.kind == Kind::Put && !(f.seek(p.offset) && f.write(p.before))) return false;
  const int64_t end = p.kind == Kind::Put ? p.offset + int64_t(p.after.size()) : f.size();
  if (end > p.pre_size && !f.truncate(p.pre_size)) return false;
  return f.sync();
}

bool UndoAll(const std::vector<WriteBatch::Piece>& pieces, size_t count) {
  bool ok = true;
  for (size_t i = count; i-- > 0;) ok = Undo(pieces[i]) && ok;
  return ok;
}

std::string FolderOf(const std::string& path) {
  auto slash = path.rfind('/');
  return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

// A new file's name reaches the disk only with its folder, and a new folder's
// with the folders above it.
void SyncNewNames(const std::vector<WriteBatch::Piece>& pieces) {
  std::map<std::string, bool> folders;
  for (const auto& p : pieces) {
    if (p.pre_size >= 0 || p.kind == WriteBatch::Kind::Replace) continue;
    for (std::string f = FolderOf(p.path); !f.empty(); f = FolderOf(f)) folders[f] = true;
    folders["."] = true;
  }
  for (auto it = folders.rbegin(); it != folders.rend(); ++it) SyncFolder(it->first);
}

bool Redo(const std::vector<WriteBatch::Piece>& pieces) {
  OpenFiles files;
  for (const auto& p : pieces)
    if (!Apply(p, files)) return false;
  if (!files.SyncAll().empty()) return false;
  files.Close();
  SyncNewNames(pieces);
  return true;
}

// The journal stays in place between commits, empty when nothing is pending:
// a commit then costs one write and one flush, and no change of the folder.
// It is made (private: it holds the settings' images) the first time only.
bool WriteJournal(const std::string& bytes) {
  if (!FileExists(kJournalFile) && !ReplacePrivateFile(kJournalFile, {})) return false;
  File f(kJournalFile, File::Mode::Write);
  return f && f.write(bytes) && f.truncate(int64_t(bytes.size())) && f.sync();
}

// Done with: emptied. A power cut before the emptying reaches the disk only
// has the next start write the same images again.
bool ClearJournal() {
  File f(kJournalFile, File::Mode::Write);
  return f && f.truncate(0);
}

}  // namespace

bool JournalPending() {
  return FileSize(kJournalFile).value_or(0) > 0;
}

void WriteBatch::Append(std::string path, std::string_view bytes, std::string message,
                        std::string title) {
  pieces_.push_back(Piece{Kind::Append,
                          std::move(path),
                          0,
                          0,
                          std::string(bytes),
                          {},
                          std::move(message),
                          std::move(title)});
}

void WriteBatch::Put(std::string path, int64_t offset, std::string_view bytes, std::string message,
                     std::string title) {
  pieces_.push_back(Piece{Kind::Put,
                          std::move(path),
                          offset,
                          0,
                          std::string(bytes),
                          {},
                          std::move(message),
                          std::move(title)});
}

void WriteBatch::Replace(std::string path, std::string_view bytes, std::string message,
                         std::string title) {
  pieces_.push_back(Piece{Kind::Replace,
                          std::move(path),
                          0,
                          0,
                          std::string(bytes),
                          {},
                          std::move(message),
                          std::move(title)});
}

void WriteBatch::Fail(size_t piece) {
  const Piece* p = piece < pieces_.size() ? &pieces_[piece] : nullptr;
  std::string text = p && !p->message.empty() ? p->message : message_;
  std::string title = p && !p->message.empty() ? p->title : title_;
  if (text.empty() && !pieces_.empty()) {
    text = pieces_.front().message;
    title = pieces_.front().title;
  }
  if (!text.empty()) Message(text, title.empty() ? "Problem" : title);
}

bool WriteBatch::Commit() {
  if (pieces_.empty()) return true;
  // A journal left by a failed commit of this run is taken back before anything
  // new is written: nothing in memory ever took its new state.
  if (JournalPending() && RepairJournal(true) == JournalRepair::Failed)
    return Fail(pieces_.size()), false;

  // What every file holds before, to take it back by.
  std::map<std::string, int64_t> appended;
  for (size_t i = 0; i < pieces_.size(); ++i) {
    Piece& p = pieces_[i];
    if (p.kind == Kind::Append) {
      auto it = appended.find(p.path);
      p.pre_size = it != appended.end() ? it->second : FileSize(p.path).value_or(-1);
      appended[p.path] = (p.pre_size < 0 ? 0 : p.pre_size) + int64_t(p.after.size());
      continue;
    }
    const auto size = FileSize(p.path);
    p.pre_size = size.value_or(-1);
    if (p.kind == Kind::Replace) {
      if (!size) continue;
      auto old = ReadWholeFile(p.path);
      if (!old) return Fail(i), false;
      p.before = std::move(*old);
      continue;
    }
    if (!size) return Fail(i), false;
    File f(p.path, File::Mode::Read);
    p.before.resize(p.after.size());
    const int64_t n =
        f && f.seek(p.offset) ? f.read(p.before.data(), int64_t(p.before.size())) : -1;
    if (n < 0) return Fail(i), false;
    p.before.resize(size_t(n));
  }

  if (!WriteJournal(Encode(pieces_))) {
    ClearJournal();
    return Fail(pieces_.size()), false;
  }

  OpenFiles files;
  size_t failed = pieces_.size();
  for (size_t i = 0; i < pieces_.size() && failed == pieces_.size(); ++i)
    if (!Apply(pieces_[i], files)) failed = i;
  bool unflushed = false;
  if (failed == pieces_.size()) {
    const std::string path = files.SyncAll();
    for (size_t i = 0; i < pieces_.size() && !path.empty() && !unflushed; ++i)
      if (pieces_[i].path == path) failed = i, unflushed = true;
  }
  files.Close();
  if (failed != pieces_.size()) {
    // A replacement that failed left its file as it was (the rename is the step
    // that changes it); any other piece may have written part of its bytes.
    size_t written = failed + 1;
    if (unflushed)
      written = pieces_.size();
    else if (pieces_[failed].kind == Kind::Replace)
      written = failed;
    if (UndoAll(pieces_, written)) {
      ClearJournal();
    } else {
      // The next start takes it back rather than finishing it: the writer has
      // told the clerk it did not happen.
      File journal(kJournalFile, File::Mode::Write);
      if (journal && journal.seek(kDirectionAt) && journal.write(&kBack, 1)) journal.sync();
    }
    Fail(failed);
    return false;
  }
  SyncNewNames(pieces_);
  ClearJournal();
  return true;
}

JournalRepair RepairJournal(bool take_back) {
  RemoveFile(std::string(kJournalFile) + ".new");
  if (!JournalPending()) return JournalRepair::None;
  auto bytes = ReadWholeFile(kJournalFile);
  if (!bytes) return JournalRepair::Failed;
  char direction = kForward;
  auto pieces = Decode(*bytes, &direction);
  if (!pieces) return ClearJournal() ? JournalRepair::Discarded : JournalRepair::Failed;
  const bool back = take_back || direction == kBack;
  if (!(back ? UndoAll(*pieces, pieces->size()) : Redo(*pieces))) return JournalRepair::Failed;
  if (!ClearJournal()) return JournalRepair::Failed;
  return back ? JournalRepair::TakenBack : JournalRepair::Finished;
}

bool BeginSwap(const std::vector<std::pair<std::string, std::string>>& moves,
               const std::string& aside_suffix) {
  std::string text = aside_suffix + "\n";
  for (const auto& [staged, target] : moves) text += staged + "\t" + target + "\n";
  return ReplaceFile(kSwapJournalFile, text);
}

void EndSwap() {
  RemoveFile(kSwapJournalFile);
}

bool FinishSwap() {
  RemoveFile(std::string(kSwapJournalFile) + ".new");
  auto text = ReadWholeFile(kSwapJournalFile);
  if (!text) return false;
  std::vector<std::string> lines;
  for (size_t at = 0, end; (end = text->find('\n', at)) != std::string::npos; at = end + 1)
    lines.push_back(text->substr(at, end - at));
  // Every staged file was whole and checked before the note was written.
  for (size_t i = 1; i < lines.size(); ++i) {
    const size_t tab = lines[i].find('\t');
    if (tab == std::string::npos) continue;
    const std::string staged = lines[i].substr(0, tab), target = lines[i].substr(tab + 1);
    if (FileExists(staged)) RenameFile(staged, target);
    if (!lines.empty()) RemoveFile(target + lines[0]);
  }
  SyncFolder(".");
  EndSwap();
  return true;
}

}  // namespace tilo
