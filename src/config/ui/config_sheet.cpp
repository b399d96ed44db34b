// SPDX-License-Identifier: MIT
#include "config/ui/config_sheet.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "core/settings.h"
#include "core/state.h"
#include "sale/commands.h"
#include "tender/ui/cash_form.h"

namespace tilo {
namespace {

QString Q(const std::string& utf8) {
  return QString::fromStdString(utf8);
}

QComboBox* ListBox(QWidget* parent, const std::vector<std::string>& items, int choice) {
  auto* box = new QComboBox(parent);
  for (const std::string& item : items) box->addItem(Q(item));
  box->setCurrentIndex(choice >= 0 && choice < box->count() ? choice : -1);
  return box;
}

// A tick's text broken between words, so the longest fits the page's width.
QString Wrapped(const std::string& label) {
  QStringList lines{""};
  for (const QString& word : Q(label).split(' ')) {
    if (!lines.last().isEmpty() && lines.last().size() + word.size() >= 96) lines.append("");
    lines.last() += (lines.last().isEmpty() ? "" : " ") + word;
  }
  return lines.join('\n');
}

// Category boxes are short and many: six to a row.
bool Compact(const FieldRule& rule) {
  return rule.control == Control::Caps && rule.key.rfind("category", 0) == 0;
}

}  // namespace

ConfigSheet::ConfigSheet(QWidget* parent) : QDialog(parent) {
  std::vector<const PageTable*> tables;
  for (const PageTable& page : ConfigurationPages()) tables.push_back(&page);
  Make(tables, "Configuration", "REPORT0BOX");
}

ConfigSheet::ConfigSheet(QWidget* parent, const PageTable& form) : QDialog(parent) {
  Make({&form}, form.tab, form.form);
  tabs_->tabBar()->hide();
  apply_->hide();
}

void ConfigSheet::Make(const std::vector<const PageTable*>& tables, const std::string& title,
                       const std::string& name) {
  setObjectName(Q(name));
  setWindowTitle(Q(title));
  auto* layout = new QVBoxLayout(this);
  tabs_ = new QTabWidget(this);
  tabs_->setObjectName("tabs");
  for (const PageTable* table : tables) {
    pages_.push_back(Page{table, false, {}});
    auto* holder = new QWidget(tabs_);
    holder->setObjectName(Q(table->form));
    new QVBoxLayout(holder);
    tabs_->addTab(holder, Q(table->tab));
  }
  layout->addWidget(tabs_);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  ok_ = new QPushButton("OK", this);
  ok_->setObjectName("ok");
  ok_->setDefault(true);
  cancel_ = new QPushButton("Cancel", this);
  cancel_->setObjectName("cancel");
  apply_ = new QPushButton("Apply", this);
  apply_->setObjectName("apply");
  apply_->setEnabled(false);
  for (QPushButton* b : {ok_, cancel_, apply_}) {
    b->setAutoDefault(false);
    buttons->addWidget(b);
  }
  layout->addLayout(buttons);
  connect(ok_, &QPushButton::clicked, this, [this] {
    Store();
    accept();
  });
  connect(cancel_, &QPushButton::clicked, this, &QDialog::reject);
  connect(apply_, &QPushButton::clicked, this, [this] {
    Store();
    apply_->setEnabled(false);
  });
  // The sheet opens on the first page; the others wait until they are shown.
  Build(0);
  connect(tabs_, &QTabWidget::currentChanged, this, [this](int page) {
    if (page >= 0) Build(page);
  });
  // Within 800 x 600: long pages scroll inside their tab.
  int rows = 0;
  for (const PageTable* table : tables) rows = std::max(rows, int(table->rules.size()));
  resize(780, std::min(560, 140 + 34 * rows));
}

void ConfigSheet::Changed() {
  apply_->setEnabled(true);
}

QWidget* ConfigSheet::MakeControl(int page, const FieldRule& rule, const PageValue& value,
                                  Row& row) {
  QWidget* holder = tabs_->widget(page);
  row.control = rule.control;
  switch (rule.control) {
    case Control::Edit:
    case Control::Caps: {
      row.edit = new QLineEdit(Q(value.text), holder);
      row.edit->setMaxLength(rule.box_chars);
      if (rule.control == Control::Caps)
        connect(row.edit, &QLineEdit::textEdited, row.edit, [edit = row.edit](const QString& t) {
          const int at = edit->cursorPosition();
          edit->setText(t.toUpper());
          edit->setCursorPosition(at);
        });
      connect(row.edit, &QLineEdit::textEdited, this, &ConfigSheet::Changed);
      return row.edit;
    }
    case Control::Multiline: {
      row.lines = new QPlainTextEdit(Q(value.text), holder);
      row.lines->setMaximumHeight(80);
      const int most = rule.box_chars;
      connect(row.lines, &QPlainTextEdit::textChanged, this, [this, lines = row.lines, most] {
        const QString text = lines->toPlainText();
        if (text.size() > most) lines->setPlainText(text.left(most));
        Changed();
      });
      return row.lines;
    }
    case Control::Tick:
      row.tick = new QCheckBox(Wrapped(rule.label), holder);
      row.tick->setChecked(value.choice == 1);
      return row.tick;
    case Control::List:
    case Control::TypedList:
      row.list =
          ListBox(holder, value.options.empty() ? rule.options : value.options, value.choice);
      row.list->setEditable(rule.control == Control::TypedList);
      return row.list;
    case Control::Radio: {
      auto* box = new QWidget(holder);
      auto* line = new QHBoxLayout(box);
      line->setContentsMargins(0, 0, 0, 0);
      row.radio = new QButtonGroup(box);
      for (size_t i = 0; i < rule.options.size(); ++i) {
        auto* button = new QRadioButton(Q(rule.options[i]), box);
        button->setObjectName(Q(rule.key + std::to_string(i)));
        button->setChecked(int(i) == value.choice);
        row.radio->addButton(button, int(i));
        line->addWidget(button);
      }
      line->addStretch();
      return box;
    }
    case Control::Date: {
      auto* box = new QWidget(holder);
      auto* line = new QHBoxLayout(box);
      line->setContentsMargins(0, 0, 0, 0);
      std::vector<std::string> days, months;
      for (int d = 1; d <= 31; ++d) days.push_back(std::to_string(d));
      for (int m = 1; m <= 12; ++m) months.push_back(std::to_string(m));
      const std::vector<std::string>* items[3] = {&days, &months, &value.options};
      for (int i = 0; i < 3; ++i) {
        row.date[i] = ListBox(box, *items[i], value.date[i]);
        row.date[i]->setObjectName(Q(rule.key + std::to_string(i)));
        line->addWidget(row.date[i]);
      }
      line->addStretch();
      return box;
    }
    case Control::Button: {
      auto* button = new QPushButton(Q(rule.label), holder);
      button->setAutoDefault(false);
      connect(button, &QPushButton::clicked, this, [this, page, &rule] {
        rule.press(G().settings, Collect(page));
        // A port may stand for another device now.
        for (const FieldRule& r : pages_[size_t(page)].table->rules) {
          if (!r.port_list) continue;
          QComboBox* list = pages_[size_t(page)].rows.at(r.key).list;
          const PageValue fresh = r.fill(G().settings);
          for (int i = 0; i < list->count() && i < int(fresh.options.size()); ++i)
            list->setItemText(i, Q(fresh.options[size_t(i)]));
        }
      });
      return button;
    }
    case Control::Reading: {
      auto* list = new QListWidget(holder);
      for (const std::string& item : rule.options) list->addItem(Q(item));
      list->setMaximumHeight(90);
      return list;
    }
    case Control::Heading:
    case Control::Note: {
      auto* label = new QLabel(Q(rule.label), holder);
      label->setWordWrap(true);
      if (rule.control == Control::Heading) label->setStyleSheet("font-weight: bold");
      return label;
    }
  }
  return nullptr;
}

void ConfigSheet::Build(int page) {
  if (pages_[size_t(page)].built) return;
  Page& built = pages_[size_t(page)];
  built.built = true;
  const PageTable& table = *built.table;
  const PageValues values = FillPage(table, G().settings);

  auto* scroll = new QScrollArea(tabs_->widget(page));
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  auto* body = new QWidget(scroll);
  auto* grid = new QGridLayout(body);
  QGridLayout* compact = nullptr;
  int row = 0, compact_count = 0;
  for (const FieldRule& rule : table.rules) {
    Row widgets;
    const PageValue value = values.count(rule.key) ? values.at(rule.key) : PageValue{};
    QWidget* control = MakeControl(page, rule, value, widgets);
    control->setParent(body);
    if (!rule.key.empty()) control->setObjectName(Q(rule.key));
    if (Compact(rule)) {
      if (!compact) {
        compact = new QGridLayout;
        grid->addLayout(compact, row++, 0, 1, 3);
      }
      const int at = compact_count++;
      compact->addWidget(new QLabel(Q(rule.label), body), at / 6, (at % 6) * 2);
      compact->addWidget(control, at / 6, (at % 6) * 2 + 1);
    } else if (rule.control == Control::List && rule.label.empty()) {
      grid->addWidget(control, row - 1, 2);  // beside the row before it
    } else if (rule.control == Control::Tick || rule.control == Control::Heading ||
               rule.control == Control::Note || rule.control == Control::Reading) {
      grid->addWidget(control, row++, 0, 1, 3);
    } else if (rule.control == Control::Button) {
      grid->addWidget(control, row++, 1);
    } else {
      grid->addWidget(new QLabel(Q(rule.label), body), row, 0);
      grid->addWidget(control, row++, 1);
    }
    if (!rule.key.empty()) built.rows[rule.key] = widgets;
  }
  grid->setRowStretch(row, 1);
  grid->setColumnStretch(1, 1);
  scroll->setWidget(body);
  tabs_->widget(page)->layout()->addWidget(scroll);
  // Typing starts in the page's first box.
  if (QLineEdit* first = body->findChild<QLineEdit*>()) first->setFocus();
}

PageValues ConfigSheet::Collect(int page) const {
  PageValues values;
  for (const auto& [key, row] : pages_[size_t(page)].rows) {
    PageValue v;
    if (row.edit) v.text = row.edit->text().toStdString();
    if (row.lines) v.text = row.lines->toPlainText().toStdString();
    if (row.tick) v.choice = row.tick->isChecked() ? 1 : 0;
    if (row.list)
      v.choice = row.list->isEditable()
                     ? row.list->findText(row.list->currentText(), Qt::MatchExactly)
                     : row.list->currentIndex();
    if (row.radio) v.choice = row.radio->checkedId();
    for (int i = 0; i < 3; ++i)
      if (row.date[i]) v.date[i] = row.date[i]->currentIndex();
    values[key] = v;
  }
  return values;
}

void ConfigSheet::Store() {
  for (size_t page = 0; page < pages_.size(); ++page)
    if (pages_[page].built) StorePage(*pages_[page].table, Collect(int(page)), G().settings);
  // Kept at once, so a power cut after "OK" loses nothing typed here. The pages
  // of one sheet share one file.
  pages_[0].table->save();
}

void InstallConfigHandlers() {
  SetHandler(Command::Configuration, [](int) {
    ConfigSheet sheet(TillWindow());
    sheet.exec();
  });
  const std::pair<Command, const PageTable& (*)()> forms[] = {
      {Command::TaxSetup, TaxForm},
      {Command::CustomReceipt, CustomReceiptForm},
      {Command::Invoices, InvoiceForm},
      {Command::StorePrintHeading, HeadingForm},
  };
  for (const auto& [command, form] : forms)
    SetHandler(command, [form = form](int) {
      ConfigSheet sheet(TillWindow(), form());
      sheet.exec();
    });
}

}  // namespace tilo
