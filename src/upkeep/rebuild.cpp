// SPDX-License-Identifier: MIT
#include "upkeep/rebuild.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>

#include "core/customer_file.h"
#include "core/film_record.h"
#include "core/state.h"
#include "platform/file_faults.h"
#include "platform/files.h"
#include "sale/screen.h"

namespace tilo {
namespace {

constexpr int kFirstField = 8;  // every record's first text follows its number

uint64_t Mix(int64_t number) {
  uint64_t x = uint64_t(number) * 0x9E3779B97F4A7C15ull;
  return x ^ (x >> 29);
}

void MarkDeleted(char* record) {
  const int64_t deleted = -1;
  std::memcpy(record, &deleted, sizeof deleted);
  record[kFirstField] = record[kFirstField + 1] = '\0';
}

void ClearLoans(RebuildKind kind, char* record) {
  if (kind == RebuildKind::Inventory) {
    FilmRecord film;
    std::memcpy(&film, record, sizeof film);
    film.loan_number = 0;
    std::memset(film.due_back, 0, sizeof film.due_back);
    std::memcpy(record, &film, sizeof film);
  } else if (kind == RebuildKind::Customers) {
    MemberRecord member;
    std::memcpy(&member, record, sizeof member);
    member.tax = 0;
    std::memset(member.loan_item, 0, sizeof member.loan_item);
    std::memset(member.loan_out, 0, sizeof member.loan_out);
    std::memset(member.loan_due, 0, sizeof member.loan_due);
    std::memcpy(record, &member, sizeof member);
  }
}

int64_t SpareSlots(RebuildKind kind) {
  return kind == RebuildKind::Inventory ? 200 : 100;
}

bool SizeIsSound(const std::string& path, int64_t record_size) {
  const std::string name = "Data file: " + path;
  auto size = FileSize(path);
  if (!size) return Message(name + ", not present.", "Fatal error"), false;
  if (*size == 0) return Message(name + ", no data.", "Fatal error"), false;
  if (*size % record_size != 0) return Message(name + ", corrupt.", "Fatal error"), false;
  return true;
}

void IndexRecord(IndexedFile& file, int64_t pos, const char* record) {
  int64_t number;
  std::memcpy(&number, record, sizeof number);
  file.index.push_back({number, pos});
  if (file.on_record) file.on_record(pos, record);
  const int key_at = file.layout().name_offset;
  if (key_at >= 0) std::memcpy(file.name_keys[size_t(pos)].data(), record + key_at, 2);
  if (number < 0)
    ++file.deleted;
  else
    ++file.live;
}

}  // namespace

NumberSet::NumberSet(int64_t expected) {
  size_t capacity = 1024;
  while (capacity < size_t(expected) * 2) capacity *= 2;
  slots_.assign(capacity, 0);
}

void NumberSet::Grow() {
  std::vector<int64_t> old(slots_.size() * 2, 0);
  old.swap(slots_);
  used_ = 0;
  for (int64_t n : old)
    if (n != 0) Seen(n);
}

bool NumberSet::Seen(int64_t number) {
  if (size_t(used_ + 1) * 2 > slots_.size()) Grow();
  const size_t mask = slots_.size() - 1;
  for (size_t i = Mix(number) & mask;; i = (i + 1) & mask) {
    if (slots_[i] == number) return true;
    if (slots_[i] == 0) {
      slots_[i] = number;
      ++used_;
      return false;
    }
  }
}

void RepairRecord(RebuildKind kind, char* record, NumberSet& seen) {
  int64_t number;
  std::memcpy(&number, record, sizeof number);
  if (number <= 0 && number != -1)
    MarkDeleted(record);
  else if (number != -1 && seen.Seen(number))
    MarkDeleted(record);
  ClearLoans(kind, record);
}

bool RebuildFile(IndexedFile& file, RebuildKind kind, Progress& progress) {
  const std::string path = file.layout().path;
  const int64_t size = file.layout().record_size;
  if (!SizeIsSound(path, size)) return false;
  File in(path, File::Mode::Read);
  const std::string aside = path + ".rebuild";
  File out(aside, File::Mode::Create);
  if (!in || !out) return Message("Data file: " + path + ", not present.", "Fatal error"), false;

  const int64_t slots = in.size() / size;
  file.Clear();
  if (file.on_record) file.on_record(-1, nullptr);
  file.index.reserve(size_t(slots + SpareSlots(kind)));
  if (file.layout().name_offset >= 0)
    file.name_keys.assign(size_t(slots + SpareSlots(kind)), NameKey{0, 0});
  NumberSet seen(slots);

  constexpr int64_t kBlockRecords = 512;
  std::vector<char> block(size_t(size * kBlockRecords));
  int64_t pos = 0;
  bool written = true;
  while (pos < slots && written) {
    const int64_t want = std::min(kBlockRecords, slots - pos);
    if (in.read(block.data(), want * size) != want * size) break;
    for (int64_t i = 0; i < want; ++i, ++pos) {
      char* record = block.data() + i * size;
      RepairRecord(kind, record, seen);
      IndexRecord(file, pos, record);
    }
    written = out.write(block.data(), want * size);
    progress.step(pos, slots);
  }
  in.close();
  const bool whole = pos == slots && written && out.sync();
  out.close();
  if (!whole || !RenameFile(aside, path)) {
    RemoveFile(aside);
    Message("Data file: " + path + ", corrupt.", "Fatal error");
    file.Load();
    return false;
  }
  SyncFolder(".");
  file.slot_count = slots;
  Sortindex(file.index, file.index.size());
  return true;
}

bool Rebuildfiles() {
  State& g = G();
  auto progress = platform().begin_progress("Rebuilding the record files", "File rebuild", false);
  bool all = RebuildFile(g.films, RebuildKind::Inventory, *progress);
  all = RebuildFile(g.members, RebuildKind::Customers, *progress) && all;
  all = RebuildFile(g.suppliers, RebuildKind::Suppliers, *progress) && all;
  progress.reset();
  Fillquickselect();
  if (all) Message("Complete.", "File rebuild");
  return all;
}

}  // namespace tilo
