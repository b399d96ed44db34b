// SPDX-License-Identifier: MIT
#include "core/inventory.h"

#include <cstddef>

#include "core/state.h"

namespace tilo {

const IndexedFileLayout kFilmLayout{
    kFilmFile,
    sizeof(FilmRecord),
    int(offsetof(FilmRecord, description)),
    true,
    {"Data file: film.dat, not present.", "Not able to read film.dat", "Film.dat",
     "Not able to write to film.dat", "Not able to write film.dat", "Film.dat"}};

int64_t Fetchfilm(int64_t number) {
  return G().films.Fetch(number, &G().film);
}

bool Insertnumber(const FilmRecord& record) {
  return G().films.Insert(&record);
}

bool Removenumber() {
  return G().films.Remove(&G().film);
}

bool Rewritefilm() {
  return G().films.Rewrite(&G().film);
}

}  // namespace tilo
