// SPDX-License-Identifier: MIT
#include "core/film_record.h"

namespace tilo {

char* BundleItem(FilmRecord& r, int slot) {
  switch (slot) {
    case 1:
      return r.format;
    case 2:
      return r.bundle_item_2;
    case 3:
      return r.bundle_item_3;
    case 4:
      return r.bundle_item_4;
    case 5:
      return r.bundle_item_5;
    case 6:
      return r.bundle_item_6;
  }
  return nullptr;
}

const char* BundleItem(const FilmRecord& r, int slot) {
  return BundleItem(const_cast<FilmRecord&>(r), slot);
}

}  // namespace tilo
