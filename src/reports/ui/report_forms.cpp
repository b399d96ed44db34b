// SPDX-License-Identifier: MIT
#include "reports/ui/report_forms.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QEventLoop>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <atomic>
#include <thread>

#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"

namespace tilo {
namespace {

QString Q(const std::string& cp1252) {
  return QString::fromStdString(Cp1252ToUtf8(cp1252));
}

QWidget* Window() {
  for (QWidget* w : QApplication::topLevelWidgets())
    if (w->objectName() == "mainWindow") return w;
  return QApplication::activeWindow();
}

QComboBox* NumberList(QWidget* parent, const QString& name, int from, int to, int selected) {
  auto* list = new QComboBox(parent);
  list->setObjectName(name);
  for (int n = from; n <= to; ++n) list->addItem(QString::number(n));
  list->setCurrentIndex(selected);
  return list;
}

QComboBox* YearList(QWidget* parent, const QString& name, const std::vector<int>& years,
                    int selected) {
  auto* list = new QComboBox(parent);
  list->setObjectName(name);
  for (int y : years) list->addItem(QString::number(y));
  list->setCurrentIndex(selected);
  return list;
}

// Day, Month and Year side by side; `day` may be left out.
QGroupBox* DateGroup(QWidget* parent, const QString& title, const QString& prefix, QComboBox* day,
                     QComboBox* month, QComboBox* year) {
  auto* group = new QGroupBox(title, parent);
  group->setObjectName(prefix);
  auto* grid = new QGridLayout(group);
  int column = 0;
  for (auto [label, list] :
       {std::pair<const char*, QComboBox*>{"Day", day}, {"Month", month}, {"Year", year}}) {
    if (!list) continue;
    grid->addWidget(new QLabel(label, group), 0, column);
    grid->addWidget(list, 1, column++);
  }
  return group;
}

QDialogButtonBox* OkCancel(QDialog* dialog) {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, dialog);
  QObject::connect(buttons, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
  return buttons;
}

QLabel* Note(QWidget* parent, const char* text) {
  auto* note = new QLabel(text, parent);
  note->setWordWrap(true);
  return note;
}

// "Please specify the period".
bool PeriodForm(PeriodDialog& d) {
  QDialog form(Window());
  form.setObjectName("INVEST");
  form.setWindowTitle("Please specify the period");
  auto* layout = new QVBoxLayout(&form);
  QComboBox* lists[6];
  for (int end = 0; end < 2; ++end) {
    const QString prefix = end ? "end" : "start";
    lists[3 * end] = NumberList(&form, prefix + "Day", 1, 31, d.day_index);
    lists[3 * end + 1] = NumberList(&form, prefix + "Month", 1, 12, d.month_index);
    lists[3 * end + 2] = YearList(&form, prefix + "Year", d.years, d.year_index);
    layout->addWidget(DateGroup(&form, end ? "End" : "Start", prefix, lists[3 * end],
                                lists[3 * end + 1], lists[3 * end + 2]));
  }
  layout->addWidget(Note(&form,
                         "Please note that this routine may take a few minutes while "
                         "transactions are parsed."));
  layout->addWidget(OkCancel(&form));
  if (form.exec() != QDialog::Accepted) return false;
  for (int i = 0; i < 6; ++i) d.chosen[i] = lists[i]->currentIndex();
  return true;
}

// The sales report: five columns of Day, Month and Year lists.
void SalesReportForm(const SalesScreen& screen) {
  QDialog form(Window());
  form.setObjectName("INVES4");
  form.setWindowTitle(Q(screen.title));
  auto* layout = new QVBoxLayout(&form);
  auto* grid = new QGridLayout;
  const std::pair<const char*, SalesColumn> columns[] = {{"Non taxable", kSumNonTaxable},
                                                         {"Taxable", kSumTaxable},
                                                         {"Total", kSumTotal},
                                                         {"Tax 1", kSumTax1},
                                                         {"Tax 2", kSumTax2}};
  const char* levels[] = {"Day", "Month", "Year"};
  for (int level = 0; level < 3; ++level)
    grid->addWidget(new QLabel(levels[level], &form), level + 1, 0);
  for (int c = 0; c < 5; ++c) {
    grid->addWidget(new QLabel(columns[c].first, &form), 0, c + 1);
    for (int level = 0; level < 3; ++level) {
      auto* list = new QComboBox(&form);
      list->setObjectName(QString("%1%2").arg(levels[level]).arg(c));
      for (const std::string& text : screen.lists[level][columns[c].second]) list->addItem(Q(text));
      list->setMinimumContentsLength(22);
      grid->addWidget(list, level + 1, c + 1);
    }
  }
  layout->addLayout(grid);
  layout->addWidget(Note(&form,
                         "The totals include cash, Ch, EFT and credit sales less refunds. Note "
                         "that sales to customers with a tax code of 0 do not attract tax."));
  auto* buttons = new QHBoxLayout;
  auto* print = new QPushButton("&Print", &form);
  auto* ok = new QPushButton("OK", &form);
  ok->setDefault(true);
  QObject::connect(print, &QPushButton::clicked, &form,
                   [&] { Printsalesreport(screen.report, screen.title); });
  QObject::connect(ok, &QPushButton::clicked, &form, &QDialog::accept);
  buttons->addStretch();
  buttons->addWidget(print);
  buttons->addWidget(ok);
  layout->addLayout(buttons);
  form.exec();
}

// "Item summary": the date or dates, the six exclusions and the category.
bool SummaryForm(SummaryDialog& d) {
  QDialog form(Window());
  const bool period = d.period == SummaryPeriod::Period;
  const bool monthly = d.period == SummaryPeriod::Monthly;
  form.setObjectName(period ? "REPOR8" : monthly ? "REPOR2" : "REPORT");
  form.setWindowTitle("Item summary");
  auto* layout = new QVBoxLayout(&form);
  const int year_index = int(d.years.size()) - 1;
  QComboBox* day = monthly ? nullptr : NumberList(&form, "startDay", 1, 31, d.day - 1);
  QComboBox* month = NumberList(&form, "startMonth", 1, 12, d.month - 1);
  QComboBox* year = YearList(&form, "startYear", d.years, year_index);
  QComboBox *end_day = nullptr, *end_month = nullptr, *end_year = nullptr;
  layout->addWidget(DateGroup(&form, period ? "Start" : "", "start", day, month, year));
  if (period) {
    end_day = NumberList(&form, "endDay", 1, 31, d.end_day - 1);
    end_month = NumberList(&form, "endMonth", 1, 12, d.end_month - 1);
    end_year = YearList(&form, "endYear", d.years, year_index);
    layout->addWidget(DateGroup(&form, "End", "end", end_day, end_month, end_year));
  }
  const std::pair<const char*, bool*> checks[] = {
      {"Exclude refunds", &d.filters.exclude_refunds},
      {"Exclude CH sales", &d.filters.exclude_cheque},
      {"Exclude cash sales", &d.filters.exclude_cash},
      {"Exclude EFT sales", &d.filters.exclude_eft},
      {"Exclude credit sales", &d.filters.exclude_credit},
      {"Exclude split sales", &d.filters.exclude_split}};
  std::vector<QCheckBox*> boxes;
  for (const auto& [text, flag] : checks) {
    auto* box = new QCheckBox(text, &form);
    box->setChecked(*flag);
    layout->addWidget(box);
    boxes.push_back(box);
  }
  auto* category = new QComboBox(&form);
  category->setObjectName("category");
  category->addItem("All");
  for (int n = 1; n <= 18; ++n) category->addItem(Q(CategoryCode(G().settings, n)));
  category->addItem("Non Inventory");
  auto* row = new QHBoxLayout;
  row->addWidget(new QLabel("Category", &form));
  row->addWidget(category, 1);
  layout->addLayout(row);
  layout->addWidget(OkCancel(&form));
  if (form.exec() != QDialog::Accepted) return false;
  auto value = [&](QComboBox* list, int fallback) {
    return list && list->currentIndex() >= 0 ? list->currentText().toInt() : fallback;
  };
  d.day = value(day, 1);
  d.month = value(month, 0);
  d.year = value(year, 0);
  d.end_day = value(end_day, 0);
  d.end_month = value(end_month, 0);
  d.end_year = value(end_year, 0);
  for (size_t i = 0; i < boxes.size(); ++i) *checks[i].second = boxes[i]->isChecked();
  d.filters.category_filter = category->currentIndex();
  return true;
}

// The item summary window.
void SummaryWindow(const SummaryScreen& screen) {
  QDialog form(Window());
  form.setObjectName("BANDS");
  form.setWindowTitle(Q(screen.title));
  form.resize(900, 600);
  auto* layout = new QVBoxLayout(&form);
  const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  auto* heading = new QLabel(
      "Item            Description        Category    Cost      Nett      Tax      Total     "
      "Quantity",
      &form);
  heading->setFont(fixed);
  layout->addWidget(heading);
  auto* list = new QListWidget(&form);
  list->setObjectName("items");
  list->setFont(fixed);
  for (const std::string& row : screen.rows) list->addItem(Q(row));
  layout->addWidget(list, 1);
  auto* fields = new QHBoxLayout;
  const ItemSummary& s = screen.summary;
  for (const auto& [label, value] :
       {std::pair<const char*, QString>{"Items", QString::number(s.items_counted)},
        {"Cost", QString::asprintf("%.2f", s.cost_total)},
        {"Retail (nett)", QString::asprintf("%.2f", s.retail_nett)}}) {
    fields->addWidget(new QLabel(label, &form));
    auto* field = new QLabel(value, &form);
    field->setObjectName(label);
    field->setFrameShape(QFrame::Panel);
    field->setFrameShadow(QFrame::Sunken);
    field->setTextInteractionFlags(Qt::TextSelectableByMouse);
    fields->addWidget(field, 1);
  }
  layout->addLayout(fields);
  layout->addWidget(
      Note(&form,
           "Item values do not include transaction discounts which are transaction values and "
           "are not allocatable to individual items. Discounts (nett) are utilized in the sales "
           "reports."));
  auto* buttons = new QHBoxLayout;
  auto* ok = new QPushButton("OK", &form);
  auto* print = new QPushButton("Print", &form);
  auto* save = new QPushButton("Save as CSV text file", &form);
  ok->setDefault(true);
  QObject::connect(ok, &QPushButton::clicked, &form, &QDialog::accept);
  QObject::connect(print, &QPushButton::clicked, &form, [&] { Printitemsummary(screen); });
  QObject::connect(save, &QPushButton::clicked, &form, [&] { Saveitemsummary(screen); });
  buttons->addStretch();
  for (QPushButton* b : {ok, print, save}) buttons->addWidget(b);
  layout->addLayout(buttons);
  form.exec();
}

// The walk runs on a thread of its own while this thread keeps the screen
// painted under a progress box; Cancel stops it at the next day.
bool RunWalkOffThread(const std::string& title,
                      const std::function<bool(const WalkProgress&)>& walk) {
  std::atomic<int64_t> done{0}, total{0};
  std::atomic<bool> cancel{false}, finished{false};
  bool result = false;
  std::thread worker([&] {
    result = walk([&](int64_t d, int64_t t) {
      done = d;
      total = t;
      return !cancel.load();
    });
    finished = true;
  });
  // A box of its own, not the window's child: the window is disabled meanwhile.
  QProgressDialog box("Reading the transactions of the period", "Cancel", 0, 1000, nullptr);
  box.setObjectName("walkProgress");
  box.setWindowTitle(QString::fromStdString(title));
  box.setWindowModality(Qt::ApplicationModal);
  box.setMinimumDuration(300);
  box.setAutoClose(false);
  box.setAutoReset(false);
  QEventLoop loop;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
    if (finished) {
      loop.quit();
      return;
    }
    if (box.wasCanceled()) {
      cancel = true;
      box.hide();  // gone at once; the walk ends at its next day
      return;
    }
    const int64_t t = total;
    box.setValue(t > 0 ? int(std::min<int64_t>(done * 1000 / t, 999)) : 0);
  });
  timer.start(30);
  box.setValue(0);
  // Cancel hides the box at once; until the walk has really stopped no other
  // command may start, but the window still paints.
  QWidget* main = Window();
  if (main) main->setEnabled(false);
  loop.exec();
  worker.join();
  if (main) main->setEnabled(true);
  return result && !cancel;
}

class QtReportView : public ReportView {
 public:
  bool choose_period(PeriodDialog& d) override { return PeriodForm(d); }
  bool choose_summary(SummaryDialog& d) override { return SummaryForm(d); }
  void show_sales_report(const SalesScreen& s) override { SalesReportForm(s); }
  void show_item_summary(const SummaryScreen& s) override { SummaryWindow(s); }
  bool run_walk(const std::string& title,
                const std::function<bool(const WalkProgress&)>& walk) override {
    return RunWalkOffThread(title, walk);
  }
};

}  // namespace

void InstallReportHandlers() {
  static QtReportView view;
  install_report_view(&view);
  InstallReportCommands();
}

}  // namespace tilo
