// SPDX-License-Identifier: MIT
// The one matcher of the finds, over any record file and any of its text fields:
// the name pattern (anchored, `?` for any one character, its first two
// characters tested on NameKeys before any read) and the fragments (plain,
// case-sensitive substrings, any or all of several). Each gives the tests of a
// RecordWalk.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/indexed_file.h"

namespace tilo {

// A text field of a record, by place and width.
struct TextField {
  size_t offset;
  size_t width;
};
#define TILO_FIELD(Record, field)                  \
  ::tilo::TextField {                              \
    offsetof(Record, field), sizeof(Record::field) \
  }

// The pattern's first two characters against a record's NameKeys: each equal,
// or the pattern's `?`. A deleted record (first key byte 0) never agrees.
bool KeysAgree(std::string_view pattern, NameKey key);
// The pattern from its third character on against the field: each character
// equal, or the pattern's `?`. Past the field's end every byte counts as NUL, so a
// pattern longer than the text fails there unless it has `?` there.
bool PatternAgrees(std::string_view pattern, const char* field, size_t width);
// Plain byte substring search within the field's text.
bool FieldContains(const char* field, size_t width, std::string_view text);

// A name find's tests: `pattern` (two characters at least) on `field`.
WalkOptions PatternWalk(std::string pattern, TextField field);

// One box of a fragment find: its text, and the fields it is looked for in (it
// occurs when any of them contains it).
struct FragmentTerm {
  std::string text;
  std::vector<TextField> fields;
};
// Any: a record qualifies when some non-empty term occurs (empty terms are
// ignored, so all-empty terms match nothing). All: every term must occur, and an
// empty one occurs everywhere. Deleted records are passed over on their keys.
WalkOptions FragmentWalk(std::vector<FragmentTerm> terms, bool all);

}  // namespace tilo
