// SPDX-License-Identifier: MIT
// The records are packed, so a field may sit at any address. A field reached
// through a member pointer is copied as bytes, never loaded or stored as its
// own type at an address that type may not allow.
#pragma once

#include <cstring>

namespace tilo {

template <typename T, typename Record>
T FieldOf(const Record& r, T Record::*field) {
  T value;
  std::memcpy(&value, &(r.*field), sizeof value);
  return value;
}

template <typename T, typename Record>
void SetField(Record& r, T Record::*field, T value) {
  std::memcpy(&(r.*field), &value, sizeof value);
}

}  // namespace tilo
