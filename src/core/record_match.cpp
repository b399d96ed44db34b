// SPDX-License-Identifier: MIT
#include "core/record_match.h"

#include <cstring>

namespace tilo {
namespace {

std::string_view FieldView(const void* record, TextField field) {
  const char* text = static_cast<const char*>(record) + field.offset;
  const void* end = std::memchr(text, '\0', field.width);
  return {text, end ? size_t(static_cast<const char*>(end) - text) : field.width};
}

bool Occurs(const void* record, const FragmentTerm& term) {
  for (const TextField& f : term.fields)
    if (FieldView(record, f).find(term.text) != std::string_view::npos) return true;
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
  return FieldView(field, {0, width}).find(text) != std::string_view::npos;
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
  o.test = [terms = std::move(terms), all](const void* record) {
    for (const FragmentTerm& term : terms) {
      if (all && !Occurs(record, term)) return false;
      if (!all && !term.text.empty() && Occurs(record, term)) return true;
    }
    return all;
  };
  return o;
}

}  // namespace tilo
