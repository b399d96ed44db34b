// SPDX-License-Identifier: MIT
// A change of category on the sale screen whose fourteen quick-select items
// each have their own picture of 2,000 by 1,500 pixels: the first view (every
// file read and scaled), a revisit (the scaled pictures kept), and the same
// change to fourteen items without pictures.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>
#include <filesystem>

#include "app/ui/main_window.h"
#include "bench_shop.h"
#include "core/inventory.h"
#include "core/state.h"
#include "inventory/pictures.h"
#include "inventory/ui/picture_forms.h"
#include "sale/screen.h"

namespace tilo {
namespace {

constexpr int kWithPictures = 0;  // items 1 to 14, each with m<n>.bmp
constexpr int kWithout = 1;       // items 15 to 28, whose pictures are missing
constexpr int kEmpty = 2;

// A shop of 1,000 items (all of category 0) with the 28 items above rearranged.
const std::string& PictureShop() {
  static const std::string folder = [] {
    const std::string f = std::filesystem::temp_directory_path().string() + "/tilo-bench-pictures";
    std::filesystem::create_directories(f);
    std::filesystem::copy_file(bench::ShopWithItems(1000) + "/film.dat", f + "/film.dat",
                               std::filesystem::copy_options::overwrite_existing);
    bench::EnterFolder(f);
    ResetState();
    G().films.Load();
    QImage photo(2000, 1500, QImage::Format_RGB888);
    for (int y = 0; y < photo.height(); ++y)
      for (int x = 0; x < photo.width(); ++x)
        photo.setPixel(x, y, qRgb(x % 256, y % 256, (x + y) % 256));
    for (int n = 1; n <= 28; ++n) {
      Fetchfilm(n);
      G().film.display_category = n <= 14 ? kWithPictures : kWithout;
      G().film.own_picture = n <= 14 ? 1 : 0;
      G().film.stock_picture = 1;  // no STOCK1.bmp in this folder
      Rewritefilm();
      if (n <= 14) photo.save(QString::fromStdString(Ownpicturename(n)), "BMP");
    }
    return f;
  }();
  return folder;
}

void ShowCategory(MainWindow& window, int category) {
  G().settings.current_category = category;
  Fillquickselect();
  screen_view().quick_select_changed();
  window.repaint();
}

void BM_CategoryChange(benchmark::State& state) {
  const int category = int(state.range(0));
  const bool first_view = state.range(1) != 0;
  bench::EnterFolder(PictureShop());
  ResetState();
  G().films.Load();
  MainWindow window({1280, 1024}, false);
  window.show();
  QApplication::processEvents();
  ShowCategory(window, category);  // seen once already: a revisit
  for (auto _ : state) {
    state.PauseTiming();
    ShowCategory(window, kEmpty);
    if (first_view) Forgetpictures();
    state.ResumeTiming();
    ShowCategory(window, category);
  }
  state.counters["shown"] = G().screen.quick_number[13] != 0 ? 14 : 0;
}
BENCHMARK(BM_CategoryChange)
    ->ArgNames({"category", "first_view"})
    ->Args({kWithout, 0})
    ->Args({kWithPictures, 0})
    ->Args({kWithPictures, 1})
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tilo
