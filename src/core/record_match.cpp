// SPDX-License-Identifier: MIT
#include "core/record_match.h"

#include <algorithm>
#include <cstring>

namespace tilo {
namespace {

// Fields of one width that lie back to back (the four SKUs) are searched as one
// stretch of bytes: one scan for the text's first character, each place found
// checked against the field it falls in.
struct Stretch {
  size_t offset;
  size_t width;        // of the whole stretch
  size_t field_width;  // of each field in it
};

std::vector<Stretch> Stretches(std::vector<TextField> fields) {
  std::sort(fields.begin(), fields.end(),
            [](const TextField& a, const TextField& b) { return a.offset < b.offset; });
  std::vector<Stretch> out;
  for (const TextField& f : fields) {
    if (!out.empty() && out.back().field_width == f.width &&
        out.back().offset + out.back().width == f.offset)
      out.back().width += f.width;
    else
      out.push_back({f.offset, f.width, f.width});
  }
  return out;
}

// True when `text` (not empty) stands within the text of one of the stretch's
// fields, before that field's terminator.
bool InStretch(const char* record, const Stretch& s, std::string_view text) {
  const char* start = record + s.offset;
  const char* end = start + s.width;
  for (const char* p = start; p < end; ++p) {
    p = static_cast<const char*>(std::memchr(p, text[0], size_t(end - p)));
    if (!p) return false;
    const char* field = start + size_t(p - start) / s.field_width * s.field_width;
    if (p + text.size() <= field + s.field_width && std::memcmp(p, text.data(), text.size()) == 0 &&
        !std::memchr(field, '\0', size_t(p - field)))
      return true;
  }
  return false;
}

struct Term {
  std::string text;
  std::vector<Stretch> stretches;
};

bool Occurs(const char* record, const Term& term) {
  if (term.text.empty()) return true;
  for (const Stretch& s : term.stretches)
    if (InStretch(record, s, term.text)) return true;
  return false;
}

}  // namespace

bool KeysAgree(std::string_view pattern, NameKey key) {
  if (key[0] == 0 || pattern.size() < 2) return false;
  return (pattern[0] == '?' || pattern[0] == key[0]) && (pattern[1] == '?' || pattern[1] == key[1]);
}

bool PatternAgrees(std::string_view pattern, const char* field, size_t width) {
  bool ended = false;
  for (size_t i = 2; i < pattern.size(); ++i) {
    const char c = ended || i >= width ? '\0' : field[i];
    ended = ended || c == '\0';
    if (pattern[i] != '?' && pattern[i] != c) return false;
  }
  return true;
}

bool FieldContains(const char* field, size_t width, std::string_view text) {
  return text.empty() || InStretch(field, {0, width, width}, text);
}

WalkOptions PatternWalk(std::string pattern, TextField field) {
  WalkOptions o;
  o.keys = [pattern](NameKey key) { return KeysAgree(pattern, key); };
  o.test = [pattern, field](const void* record) {
    // The keys hold a copy of the field's first two bytes: check them too, in
    // case the record changed since they were taken.
    const char* text = static_cast<const char*>(record) + field.offset;
    return KeysAgree(pattern, NameKey{text[0], text[1]}) &&
           PatternAgrees(pattern, text, field.width);
  };
  return o;
}

WalkOptions FragmentWalk(std::vector<FragmentTerm> terms, bool all) {
  WalkOptions o;
  o.keys = LiveKey;
  std::vector<Term> prepared;
  for (FragmentTerm& t : terms) prepared.push_back({std::move(t.text), Stretches(t.fields)});
  o.test = [prepared = std::move(prepared), all](const void* data) {
    const char* record = static_cast<const char*>(data);
    for (const Term& term : prepared) {
      if (all && !Occurs(record, term)) return false;
      if (!all && !term.text.empty() && Occurs(record, term)) return true;
    }
    return all;
  };
  return o;
}

}  // namespace tilo
