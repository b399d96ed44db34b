// SPDX-License-Identifier: MIT
// film.dat, the inventory: fetch by number into the global record buffer, add,
// delete, rewrite. The index and counts live in G().films.
#pragma once

#include <cstdint>

#include "core/film_record.h"
#include "core/indexed_file.h"

namespace tilo {

extern const IndexedFileLayout kFilmLayout;

// Fetches item `number` into G().film; returns the number, or 0 when not found.
int64_t Fetchfilm(int64_t number);
// Adds `record` under its number (Insertnumber of the inventory).
bool Insertnumber(const FilmRecord& record);
// Deletes the item in G().film, found by the last lookup.
bool Removenumber();
// Stores G().film over the record with its number.
bool Rewritefilm();
// True when `number` is a valid item or customer number.
inline bool NumberInRange(int64_t number) {
  return number >= 1 && number <= kHighestNumber;
}

}  // namespace tilo
