// SPDX-License-Identifier: MIT
// Enter in the item box to the basket row painted: the whole road of a scanned
// item on the sale screen, in a shop of a million items.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>

#include "app/ui/main_window.h"
#include "bench_shop.h"
#include "core/state.h"
#include "sale/basket.h"

namespace tilo {
namespace {

void BM_EnterToBasketRowPainted(benchmark::State& state) {
  bench::EnterFolder(bench::ShopWithItems(state.range(0)));
  ResetState();
  G().films.Load();
  MainWindow window({1280, 1024}, false);
  window.show();
  QApplication::processEvents();
  QLineEdit* box = window.itemBox();
  auto* list = window.findChild<QListWidget*>("basketList");
  int64_t number = 1;
  for (auto _ : state) {
    box->setText(QString::number(number));
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r");
    QCoreApplication::sendEvent(box, &press);
    list->viewport()->repaint();
    state.PauseTiming();
    number = number * 7919 % state.range(0) + 1;  // items all over the file
    if (G().basket.line_count >= 300) Clearbasket();
    state.ResumeTiming();
  }
  state.counters["rows"] = double(list->count());
}
BENCHMARK(BM_EnterToBasketRowPainted)->Arg(1000000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tilo

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
