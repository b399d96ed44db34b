// SPDX-License-Identifier: MIT
#include "inventory/pictures.h"

#include <unistd.h>

#include <cstdio>
#include <filesystem>

#include "core/inventory.h"
#include "core/state.h"
#include "inventory/item_find.h"
#include "inventory/stock_pictures.h"
#include "platform/files.h"
#include "platform/platform.h"
#include "sale/commands.h"
#include "sale/screen.h"

namespace tilo {
namespace {

PictureView*& installed_view() {
  static PictureView* view = nullptr;
  return view;
}

PictureCopier& copier() {
  static PictureCopier c;
  return c;
}

bool Sameletters(const std::string& a, const std::string& b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i)
    if (std::tolower(static_cast<unsigned char>(a[i])) !=
        std::tolower(static_cast<unsigned char>(b[i])))
      return false;
  return true;
}

std::string Joined(const std::string& folder, const std::string& name) {
  return folder.empty() ? name : folder + "/" + name;
}

// The working folder, kept across a file chooser that may move it.
class KeptFolder {
 public:
  KeptFolder() {
    char buffer[4096];
    if (getcwd(buffer, sizeof buffer)) folder_ = buffer;
  }
  ~KeptFolder() {
    if (!folder_.empty() && chdir(folder_.c_str()) != 0) {
    }
  }
  bool ok() const { return !folder_.empty(); }

 private:
  std::string folder_;
};

bool Plaincopy(const std::string& from, const std::string& target) {
  auto bytes = ReadWholeFile(from);
  if (!bytes || bytes->size() < 2 || bytes->compare(0, 2, "BM") != 0) return false;
  return ReplaceFile(target, *bytes);
}

// The item named by the operator's reply: a number from 1 up, or a description search.
int64_t Itemforpicture(const std::string& reply) {
  return Finditem(FindText(reply, 29), false, false);
}

}  // namespace

std::string Ownpicturename(int64_t number) {
  char name[40];
  std::snprintf(name, sizeof name, "m%lld.bmp", static_cast<long long>(number));
  return name;
}

std::string Stockpicturename(int n) {
  return "STOCK" + std::to_string(n) + ".bmp";
}

std::string Picturename(const FilmRecord& r) {
  return r.own_picture == 1 ? Ownpicturename(r.number) : Stockpicturename(r.stock_picture);
}

std::optional<std::string> Resolvepicture(const std::string& name, const std::string& folder) {
  const std::string exact = Joined(folder, name);
  if (FileExists(exact)) return exact;
  std::error_code ec;
  for (const auto& entry : std::filesystem::directory_iterator(folder.empty() ? "." : folder, ec)) {
    const std::string found = entry.path().filename().string();
    if (Sameletters(found, name) && entry.is_regular_file(ec)) return Joined(folder, found);
  }
  return std::nullopt;
}

std::string Picturetarget(const std::string& name, const std::string& folder) {
  return Resolvepicture(name, folder).value_or(Joined(folder, name));
}

void Pictureback(PictureChoice& c) {
  if (c.own_picture == 1) {
    c.had_own = true;
    c.own_picture = 0;
    c.stock_picture = 1;
    return;
  }
  c.stock_picture =
      c.stock_picture >= kStockPictures || c.stock_picture < 1 ? 1 : c.stock_picture + 1;
  if (c.stock_picture == 1 && c.had_own) c.own_picture = 1;
}

void Pictureforward(PictureChoice& c) {
  if (c.own_picture == 1) {
    c.had_own = true;
    c.own_picture = 0;
    c.stock_picture = kStockPictures;
    return;
  }
  c.stock_picture = c.stock_picture <= 1 || c.stock_picture > kStockPictures ? kStockPictures
                                                                             : c.stock_picture - 1;
  if (c.stock_picture == kStockPictures && c.had_own) c.own_picture = 1;
}

bool Placestockpictures() {
  bool ok = true;
  for (int n = 1; n <= kStockPictures; ++n) {
    const std::string name = Stockpicturename(n);
    if (Resolvepicture(name)) continue;
    const StockPictureFile& f = kStockPictureFiles[n - 1];
    ok = ReplaceFile(name, f.bytes, int64_t(f.size)) && ok;
  }
  return ok;
}

void SetPictureCopier(PictureCopier c) {
  copier() = std::move(c);
}

bool Copypicture(const std::string& from, const std::string& target) {
  return copier() ? copier()(from, target) : Plaincopy(from, target);
}

PictureView& picture_view() {
  static PictureView headless;
  return installed_view() ? *installed_view() : headless;
}

void install_picture_view(PictureView* view) {
  installed_view() = view;
}

void Addcustomimage() {
  KeptFolder kept;
  if (!kept.ok()) {
    Message("Unable to locate directory.", "Problem");
    return;
  }
  auto chosen = platform().choose_file("Add custom image to item", false, kPictureFilter);
  if (!chosen) return;
  auto reply = platform().prompt("Add image to inventory number:", "Picture", "1");
  if (!reply) return;
  const int64_t number = Itemforpicture(*reply);
  if (number <= 0 || Fetchfilm(number) == 0) return;
  // A failed copy goes unreported; the item still takes its own picture.
  Copypicture(*chosen, Picturetarget(Ownpicturename(number)));
  G().film.own_picture = 1;
  Rewritefilm();
  Fillquickselect();
  picture_view().pictures_changed();
  Message("Updated.", "Picture");
}

void Changestockpicture() {
  KeptFolder kept;
  if (!kept.ok()) {
    Message("Unable to locate directory.", "Problem");
    return;
  }
  auto row = picture_view().choose_stock_picture();
  if (!row) return;
  auto chosen = platform().choose_file("Update inbuilt stock picture", false, kPictureFilter);
  if (!chosen) return;
  Copypicture(*chosen, Picturetarget("stock" + std::to_string(*row + 1) + ".bmp"));
  Fillquickselect();
  picture_view().pictures_changed();
  Message("Updated.", "Inbuilt picture");
}

void InstallPictureHandlers() {
  SetHandler(Command::AddCustomImage, [](int) { Addcustomimage(); });
  SetHandler(Command::ChangeStockPicture, [](int) { Changestockpicture(); });
}

}  // namespace tilo
