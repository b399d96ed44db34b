// SPDX-License-Identifier: MIT
#include "core/indexed_file.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "core/record_batch.h"
#include "platform/files.h"
#include "platform/memory.h"
#include "platform/platform.h"

namespace tilo {
namespace {

constexpr const char* kFatal = "Fatal error";
constexpr const char* kProblem = "Problem";

}  // namespace

int64_t IndexedFile::NumberOf(const void* buffer) {
  int64_t n;
  std::memcpy(&n, buffer, sizeof n);
  return n;
}

NameKey IndexedFile::KeyOf(const void* buffer) const {
  NameKey key{0, 0};
  if (layout_.name_offset >= 0)
    std::memcpy(key.data(), static_cast<const char*>(buffer) + layout_.name_offset, 2);
  return key;
}

void IndexedFile::SetKey(int64_t pos, NameKey key) {
  if (layout_.name_offset < 0) return;
  if (size_t(pos) >= name_keys.size()) name_keys.resize(size_t(pos) + 1 + 200, NameKey{0, 0});
  name_keys[size_t(pos)] = key;
}

void IndexedFile::Clear() {
  index.clear();
  name_keys.clear();
  slot_count = live = deleted = 0;
  position = -1;
  ++writes;
}

int64_t IndexedFile::LoadSpan(File& f, int64_t first, int64_t count, IndexEntry* out, bool tell) {
  const int64_t size = layout_.record_size;
  // Large reads into a block small enough to stay in the cache; only the number
  // and the name bytes of each record are kept. A short read ends the span, as a
  // failed read does.
  constexpr int64_t kBlockRecords = 64;
  std::vector<char> block(size_t(size * kBlockRecords));
  const bool keys = layout_.name_offset >= 0;
  int64_t done = 0;
  while (done < count) {
    const int64_t want = std::min(kBlockRecords, count - done);
    const int64_t got = f.read(block.data(), want * size);
    if (got <= 0) break;
    const int64_t whole = got / size;
    for (int64_t i = 0; i < whole; ++i, ++done) {
      const char* rec = block.data() + i * size;
      const int64_t pos = first + done;
      int64_t number = NumberOf(rec);
      if (number <= 0 && number != -1 && layout_.repair_numbers) number = -1;
      out[done] = IndexEntry{number, pos};
      if (keys) std::memcpy(name_keys[size_t(pos)].data(), rec + layout_.name_offset, 2);
      if (tell) on_record(pos, rec);
    }
    if (whole != want) break;
  }
  return done;
}

bool IndexedFile::Load() {
  Clear();
  File f(layout_.path, File::Mode::Read);
  if (!f) return false;
  if (on_record) on_record(-1, nullptr);
  slot_count = f.size() / layout_.record_size;
  const int64_t slots = slot_count;
  ReserveLarge(index, size_t(slots) + 200);
  index.resize(size_t(slots));
  if (layout_.name_offset >= 0) {
    ReserveLarge(name_keys, size_t(slots) + 200);
    name_keys.assign(size_t(slots) + 200, NameKey{0, 0});
  }
  std::vector<IndexEntry> scratch;
  ReserveLarge(scratch, size_t(slots) + 200);
  scratch.resize(size_t(slots));

  // A big file is read and sorted in two halves at once, the second by a helper
  // on the other core, and the halves merged: the same index as one pass in file
  // order followed by a stable sort. A cache told of every record hears of them
  // in file order, so it gets the one pass.
  constexpr int64_t kSplitRecords = 4096;
  const int64_t half = (on_record || slots < kSplitRecords) ? slots : slots / 2;
  int64_t second = -1;  // records of the second half read, or -1 if the helper didn't start
  std::thread helper;
  if (half < slots) {
    try {
      helper = std::thread([&] {
        File g(layout_.path, File::Mode::Read);
        const int64_t got = g && g.seek(half * layout_.record_size)
                                ? LoadSpan(g, half, slots - half, &index[size_t(half)], false)
                                : 0;
        SortEntries(&index[size_t(half)], size_t(got), &scratch[size_t(half)]);
        second = got;
      });
    } catch (const std::system_error&) {
      // No thread to be had: the second half is read below, after the first.
    }
  }
  int64_t total = LoadSpan(f, 0, half, index.data(), on_record != nullptr);
  SortEntries(index.data(), size_t(total), scratch.data());
  if (helper.joinable()) helper.join();
  if (total == half && half < slots) {
    if (second < slots - half) {
      // Read on here what the helper could not, so that only a failed read of
      // this handle ends the load early, as in one pass.
      const int64_t from = half + std::max<int64_t>(second, 0);
      int64_t more = f.seek(from * layout_.record_size)
                         ? LoadSpan(f, from, slots - from, &index[size_t(from)], false)
                         : 0;
      SortEntries(&index[size_t(half)], size_t(from - half + more), &scratch[size_t(half)]);
      second = from - half + more;
    }
    // Equal numbers: the first half's entry goes first, as it lies earlier in the file.
    std::merge(index.begin(), index.begin() + half, index.begin() + half,
               index.begin() + half + second, scratch.begin(),
               [](const IndexEntry& a, const IndexEntry& b) { return a.number < b.number; });
    total = half + second;
    index.swap(scratch);
  }
  index.resize(size_t(total));
  // Past a failed read nothing was read, whatever the helper found there.
  if (layout_.name_offset >= 0 && total < slots)
    std::fill(name_keys.begin() + total, name_keys.begin() + slots, NameKey{0, 0});
  deleted = int64_t(Findnumber(index, 0));
  live = total - deleted;
  return true;
}

bool IndexedFile::Contains(int64_t number) const {
  size_t slot = Findnumber(index, number);
  return slot < index.size() && index[slot].number == number;
}

int64_t IndexedFile::Fetch(int64_t number, void* buffer) {
  size_t slot = Findnumber(index, number);
  if (slot >= index.size() || index[slot].number != number) return 0;
  File f(layout_.path, File::Mode::Read);
  if (!f) {
    Message(layout_.messages.open_failed, kFatal);
    return 0;
  }
  int64_t pos = index[slot].position;
  if (!f.seek(pos * layout_.record_size) || f.read(buffer, layout_.record_size) < 0) {
    Message(layout_.messages.read_failed, kProblem);
    return 0;
  }
  position = pos;
  return number;
}

bool IndexedFile::ReadAt(int64_t pos, void* buffer, bool report) {
  File f(layout_.path, File::Mode::Read);
  bool ok = f && f.seek(pos * layout_.record_size) &&
            f.read(buffer, layout_.record_size) == layout_.record_size;
  if (!ok && report && f && pos < f.size() / layout_.record_size)
    Message(layout_.messages.scan_failed, kProblem);
  return ok;
}

namespace {

// The file whose record writes WriteTogether holds back, where to, and the
// records held (by position). Set only for the length of one change.
struct Holding {
  const IndexedFile* file = nullptr;
  WriteBatch* batch = nullptr;
  std::vector<std::pair<int64_t, std::string>> records;
} holding;

// Holds a record write back in the batch of WriteTogether: 0 when this file's
// writes are not being held, 1 when held, -1 when the file can't be opened for
// writing (after `unopened`, when given, under "Fatal error"), as a direct write
// would have found.
int Hold(const IndexedFile& file, int64_t pos, const void* buffer, const char* unopened,
         const char* failed) {
  if (holding.file != &file) return 0;
  const IndexedFileLayout& layout = file.layout();
  if (!File(layout.path, File::Mode::Write)) {
    if (unopened) Message(unopened, kFatal);
    return -1;
  }
  holding.batch->Put(layout.path, pos * layout.record_size, buffer, layout.record_size, failed,
                     kProblem);
  holding.records.emplace_back(
      pos, std::string(static_cast<const char*>(buffer), size_t(layout.record_size)));
  return 1;
}

// Writes the record of an add or an amend, or holds it in the batch being
// gathered; false after the message its failure calls for.
bool StoreRecord(const IndexedFile& file, int64_t pos, const void* buffer, const char* failed) {
  const IndexedFileLayout& layout = file.layout();
  if (const int held = Hold(file, pos, buffer, layout.messages.open_failed, failed))
    return held > 0;
  File f(layout.path, File::Mode::Write);
  if (!f) {
    Message(layout.messages.open_failed, kFatal);
    return false;
  }
  if (!f.seek(pos * layout.record_size) || !f.write(buffer, layout.record_size) || !f.sync()) {
    Message(failed, kProblem);
    return false;
  }
  return true;
}

}  // namespace

bool WriteTogether(IndexedFile& file, const std::function<bool()>& change,
                   const std::function<void(WriteBatch&)>& more) {
  // What the change does to the index is undone from these if the batch fails;
  // whoever caches records hears of them only once they are on disk.
  const auto index = file.index;
  const auto name_keys = file.name_keys;
  const int64_t slot_count = file.slot_count, live = file.live, deleted = file.deleted;
  const int64_t position = file.position;
  const auto on_record = file.on_record;
  file.on_record = nullptr;
  WriteBatch batch;
  holding = {&file, &batch, {}};
  const bool changed = change();
  const auto records = std::move(holding.records);
  holding = {};
  file.on_record = on_record;
  if (changed && more) more(batch);
  if (changed && batch.Commit()) {
    if (on_record)
      for (const auto& [pos, bytes] : records) on_record(pos, bytes.data());
    return true;
  }
  file.index = index;
  file.name_keys = name_keys;
  file.slot_count = slot_count;
  file.live = live;
  file.deleted = deleted;
  file.position = position;
  return false;
}

int64_t PositionOf(const IndexedFile& file, int64_t number) {
  const size_t slot = Findnumber(file.index, number);
  return slot < file.index.size() && file.index[slot].number == number ? file.index[slot].position
                                                                       : -1;
}

bool IndexedFile::WriteRecord(int64_t pos, const void* buffer, bool sync) {
  ++writes;
  if (const int held = Hold(*this, pos, buffer, nullptr, layout_.messages.delete_write_failed))
    return held > 0;
  File f(layout_.path, File::Mode::Write);
  if (!f) return false;
  return f.seek(pos * layout_.record_size) && f.write(buffer, layout_.record_size) &&
         (!sync || f.sync());
}

bool IndexedFile::Insert(const void* buffer) {
  const int64_t number = NumberOf(buffer);
  size_t slot = Findnumber(index, number);
  if (slot < index.size() && index[slot].number == number) {
    Message("Number in use.", kProblem);
    return false;
  }
  // The deleted slot at the front of the index is the one deleted longest ago.
  const bool reuse = deleted != 0 && !index.empty() && index.front().number == -1;
  const int64_t pos = reuse ? index.front().position : slot_count;
  index.insert(index.begin() + ptrdiff_t(slot), IndexEntry{number, pos});
  if (reuse) index.erase(index.begin());
  SetKey(pos, KeyOf(buffer));
  ++writes;

  if (!StoreRecord(*this, pos, buffer, layout_.messages.add_write_failed)) return false;
  if (on_record) on_record(pos, buffer);
  ++live;
  if (deleted < 1)
    ++slot_count;
  else
    --deleted;
  position = pos;
  return true;
}

bool IndexedFile::Remove(void* buffer) {
  const int64_t number = NumberOf(buffer);
  const int64_t minus_one = -1;
  std::memcpy(buffer, &minus_one, sizeof minus_one);
  if (layout_.name_offset >= 0) std::memset(static_cast<char*>(buffer) + layout_.name_offset, 0, 2);
  if (!WriteRecord(position, buffer, true)) {
    Message(layout_.messages.delete_write_failed, kProblem);
    return false;
  }
  SetKey(position, NameKey{0, 0});
  if (on_record) on_record(position, buffer);
  // The new deleted entry goes to the end of the deleted block, so the block stays
  // in the order the records were deleted in.
  size_t k = (index.empty() || index.front().number != -1) ? 0 : Findnumber(index, 0);
  size_t q = Findnumber(index, number);
  while (q < index.size() && index[q].number == number && index[q].position != position) ++q;
  if (q < index.size() && index[q].number == number) {
    for (size_t i = q; i > k; --i) index[i] = index[i - 1];
    index[k] = IndexEntry{-1, position};
  }
  ++deleted;
  --live;
  return true;
}

bool IndexedFile::Rewrite(const void* buffer) {
  const int64_t number = NumberOf(buffer);
  size_t slot = number < 1 ? index.size() : Findnumber(index, number);
  if (slot >= index.size() || index[slot].number != number) {
    Message("Invalid number.", kProblem);
    return false;
  }
  const int64_t pos = index[slot].position;
  ++writes;
  if (!StoreRecord(*this, pos, buffer, layout_.messages.rewrite_write_failed)) return false;
  if (on_record) on_record(pos, buffer);
  position = pos;
  return true;
}

void IndexedFile::UpdateNameKey(const void* buffer) {
  if (position >= 0) SetKey(position, KeyOf(buffer));
}

}  // namespace tilo

namespace tilo {
namespace {

// Records read in one go when a run of them passes the keys; about 128 KB.
constexpr int64_t kWalkBlockBytes = 1024 * 1024;
// Positions passed over on the keys alone between two looks at the busy box.
constexpr int64_t kKeysPerStep = 4096;

}  // namespace

RecordWalk::RecordWalk(IndexedFile& file, WalkOptions options)
    : file_(&file), options_(std::move(options)) {}

RecordWalk::~RecordWalk() = default;

bool RecordWalk::Open() {
  if (handle_) return true;
  if (!handle_.open(file_->layout().path, File::Mode::Read)) {
    Message(file_->layout().messages.open_failed, kFatal);
    end_ = End::Failed;
    return false;
  }
  progress_ = platform().begin_progress(options_.busy_text, options_.busy_title);
  // What was read ahead stays good unless the file was written while it was closed.
  if (block_writes_ != file_->writes) block_count_ = 0;
  return true;
}

void RecordWalk::Close() {
  progress_.reset();
  handle_.close();
}

bool RecordWalk::Step(int64_t done, int64_t total) {
  ++steps_;
  if (progress_ && !progress_->step(done, total)) {
    end_ = End::Cancelled;
    Close();
    return false;
  }
  return true;
}

bool RecordWalk::Fail() {
  Message(options_.read_failed, kProblem);
  end_ = End::Failed;
  Close();
  return false;
}

bool RecordWalk::KeysPass(int64_t pos) const {
  if (!options_.keys) return true;
  const auto& keys = file_->name_keys;
  // A file without NameKeys can't rule anything out.
  if (file_->layout().name_offset < 0 || size_t(pos) >= keys.size()) return true;
  return options_.keys(keys[size_t(pos)]);
}

bool RecordWalk::Next(void* buffer) {
  if (end_ != End::Walking || !Open()) return false;
  return options_.by_number ? NextByNumber(buffer) : NextByPosition(buffer);
}

bool RecordWalk::NextByPosition(void* buffer) {
  const int64_t size = file_->layout().record_size;
  const int64_t block_records = std::max<int64_t>(1, kWalkBlockBytes / size);
  if (block_.empty()) block_.resize(size_t(block_records * size));
  for (;;) {
    const int64_t slots = file_->slot_count;
    // Records already in the block.
    while (next_position_ >= block_first_ && next_position_ < block_first_ + block_count_) {
      const int64_t pos = next_position_++;
      const char* record = block_.data() + (pos - block_first_) * size;
      if (!options_.test || options_.test(record)) {
        std::memcpy(buffer, record, size_t(size));
        file_->position = pos;
        Close();
        return true;
      }
    }
    // Pass over what the keys rule out, then read the run that follows in one go.
    int64_t passed = 0;
    while (next_position_ < slots && !KeysPass(next_position_)) {
      ++next_position_;
      if (++passed % kKeysPerStep == 0 && !Step(next_position_, slots)) return false;
    }
    if (next_position_ >= slots) break;
    int64_t run = 1;
    while (run < block_records && next_position_ + run < slots && KeysPass(next_position_ + run))
      ++run;
    if (!handle_.seek(next_position_ * size)) return Fail();
    const int64_t got = handle_.read(block_.data(), run * size);
    const int64_t whole = got < 0 ? 0 : got / size;
    if (whole == 0) return Fail();
    block_first_ = next_position_;
    block_count_ = whole;
    block_writes_ = file_->writes;
    records_read_ += whole;
    if (!Step(next_position_, slots)) return false;
  }
  end_ = End::Finished;
  Close();
  return false;
}

bool RecordWalk::NextByNumber(void* buffer) {
  const NumberIndex& index = file_->index;
  const int64_t size = file_->layout().record_size;
  if (block_.size() < size_t(size)) block_.resize(size_t(size));
  if (resume_) {
    next_slot_ = Findnumber(index, resume_number_);
    resume_ = false;
  }
  for (; next_slot_ < index.size(); ++next_slot_) {
    if (next_slot_ % kKeysPerStep == 0 && !Step(int64_t(next_slot_), int64_t(index.size())))
      return false;
    const IndexEntry entry = index[next_slot_];
    if (entry.number < 1 || !KeysPass(entry.position)) continue;
    if (!handle_.seek(entry.position * size) || handle_.read(block_.data(), size) != size)
      return Fail();
    ++records_read_;
    if (options_.test && !options_.test(block_.data())) continue;
    std::memcpy(buffer, block_.data(), size_t(size));
    file_->position = entry.position;
    // Deleting or adding while the caller holds the record moves index entries:
    // the walk looks for the next number afresh.
    resume_number_ = entry.number + 1;
    resume_ = true;
    Close();
    return true;
  }
  end_ = End::Finished;
  Close();
  return false;
}

}  // namespace tilo
