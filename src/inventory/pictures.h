// SPDX-License-Identifier: MIT
// Item pictures: every item shows its own bitmap "m<number>.bmp" or one of the
// 24 built-in stock pictures "STOCK<n>.bmp", from the shop folder. Names are
// found exact first, then without regard to case, so "stock3.bmp" written by a
// replacement and "STOCK3.bmp" placed by the installer are one picture.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "core/film_record.h"

namespace tilo {

// The picture file an item asks for: "m%I64d.bmp" or "STOCK%d.bmp".
std::string Picturename(const FilmRecord& r);
std::string Ownpicturename(int64_t number);
std::string Stockpicturename(int n);

// The file in `folder` (default: the working folder) that stands for `name`:
// the exact name, else the first whose name differs only in case; none when
// neither is there. The path returned is "folder/found" ("found" for the
// working folder).
std::optional<std::string> Resolvepicture(const std::string& name, const std::string& folder = "");
// Where a new picture called `name` goes: over the spelling already there, or
// under `name` itself.
std::string Picturetarget(const std::string& name, const std::string& folder = "");

// The picture row of form 800: Back and Forward step through the item's own
// picture and the 24 built-ins.
struct PictureChoice {
  int32_t own_picture = 0;    // 1: the item's own file
  int32_t stock_picture = 1;  // 1 to 24
  bool had_own = false;       // the item had its own picture when the form stepped off it
};
void Pictureback(PictureChoice& c);
void Pictureforward(PictureChoice& c);

// Writes any of STOCK1.bmp ... STOCK24.bmp that no spelling of stands in the
// working folder; false when one could not be written. Only a new shop calls it.
bool Placestockpictures();

// Copies a chosen picture to `target` as a BMP file. The default copies BMP
// files byte for byte and refuses others; the screen installs one that also
// turns PNG and JPEG pictures into BMP.
using PictureCopier = std::function<bool(const std::string& from, const std::string& target)>;
void SetPictureCopier(PictureCopier copier);
bool Copypicture(const std::string& from, const std::string& target);

// The filter of the picture choosers.
inline constexpr const char* kPictureFilter =
    "Bitmap files (*.bmp);;Pictures (*.bmp *.png *.jpg *.jpeg)";

// Form DOPICS as the logic sees it: the row chosen (0 to 23), none on Cancel.
class PictureView {
 public:
  virtual ~PictureView() = default;
  virtual std::optional<int> choose_stock_picture() { return std::nullopt; }
  // The pictures on the screen may have changed.
  virtual void pictures_changed() {}
};
PictureView& picture_view();
void install_picture_view(PictureView* view);

// "Add custom image to item" and "Change inbuilt stock picture".
void Addcustomimage();
void Changestockpicture();
void InstallPictureHandlers();

}  // namespace tilo
