// SPDX-License-Identifier: MIT
#include "core/indexed_file.h"

#include <cstring>

#include "platform/files.h"
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
}

bool IndexedFile::Load() {
  Clear();
  File f(layout_.path, File::Mode::Read);
  if (!f) return false;
  if (on_record) on_record(-1, nullptr);
  const int64_t size = layout_.record_size;
  slot_count = f.size() / size;
  index.reserve(size_t(slot_count) + 200);
  if (layout_.name_offset >= 0) name_keys.assign(size_t(slot_count) + 200, NameKey{0, 0});

  // One sequential pass in large blocks; only the number and the name bytes of
  // each record are kept. A short read ends the walk, as a failed read does.
  constexpr int64_t kBlockRecords = 64;  // small enough to stay in the cache
  std::vector<char> block(size_t(size * kBlockRecords));
  int64_t pos = 0;
  for (;;) {
    int64_t got = f.read(block.data(), int64_t(block.size()));
    if (got <= 0) break;
    int64_t whole = got / size;
    for (int64_t i = 0; i < whole; ++i, ++pos) {
      const char* rec = block.data() + i * size;
      int64_t number = NumberOf(rec);
      if (number <= 0 && number != -1 && layout_.repair_numbers) number = -1;
      index.push_back({number, pos});
      if (on_record) on_record(pos, rec);
      if (layout_.name_offset >= 0)
        std::memcpy(name_keys[size_t(pos)].data(), rec + layout_.name_offset, 2);
      if (number < 0)
        ++deleted;
      else
        ++live;
    }
    if (whole * size != got) break;
  }
  Sortindex(index, index.size());
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

bool IndexedFile::WriteRecord(int64_t pos, const void* buffer, bool sync) {
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

  File f(layout_.path, File::Mode::Write);
  if (!f) {
    Message(layout_.messages.open_failed, kFatal);
    return false;
  }
  if (!f.seek(pos * layout_.record_size) || !f.write(buffer, layout_.record_size) || !f.sync()) {
    Message(layout_.messages.add_write_failed, kProblem);
    return false;
  }
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
  File f(layout_.path, File::Mode::Write);
  if (!f) {
    Message(layout_.messages.open_failed, kFatal);
    return false;
  }
  const int64_t pos = index[slot].position;
  if (!f.seek(pos * layout_.record_size) || !f.write(buffer, layout_.record_size) || !f.sync()) {
    Message(layout_.messages.rewrite_write_failed, kProblem);
    return false;
  }
  if (on_record) on_record(pos, buffer);
  position = pos;
  return true;
}

void IndexedFile::UpdateNameKey(const void* buffer) {
  if (position >= 0) SetKey(position, KeyOf(buffer));
}

}  // namespace tilo
