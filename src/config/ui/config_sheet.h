// SPDX-License-Identifier: MIT
// "Configuration": the property sheet of five pages. Each page is built from its
// table the first time it is shown; "OK" and "Apply" store the pages built so
// far, in order, and write wr.cfg. "Cancel" stores nothing. The small set-up
// forms are the same thing with one page, no tabs and no "Apply".
#pragma once

#include <QDialog>
#include <map>
#include <string>
#include <vector>

#include "config/config_pages.h"

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QTabWidget;

namespace tilo {

class ConfigSheet : public QDialog {
  Q_OBJECT
 public:
  // The property sheet "Configuration".
  explicit ConfigSheet(QWidget* parent);
  // A modal form of one page.
  ConfigSheet(QWidget* parent, const PageTable& form);

  QTabWidget* tabs() const { return tabs_; }
  QPushButton* ok() const { return ok_; }
  QPushButton* cancel() const { return cancel_; }
  QPushButton* apply() const { return apply_; }
  bool built(int page) const { return pages_[size_t(page)].built; }

 private:
  // The widgets of one row, by kind.
  struct Row {
    Control control;
    QLineEdit* edit = nullptr;
    QPlainTextEdit* lines = nullptr;
    QCheckBox* tick = nullptr;
    QComboBox* list = nullptr;
    QButtonGroup* radio = nullptr;
    QComboBox* date[3] = {nullptr, nullptr, nullptr};
  };
  struct Page {
    const PageTable* table = nullptr;
    bool built = false;
    std::map<std::string, Row> rows;
  };

  void Make(const std::vector<const PageTable*>& tables, const std::string& title,
            const std::string& name);
  void Build(int page);
  QWidget* MakeControl(int page, const FieldRule& rule, const PageValue& value, Row& row);
  PageValues Collect(int page) const;
  void Store();
  void Changed();

  QTabWidget* tabs_;
  QPushButton* ok_;
  QPushButton* cancel_;
  QPushButton* apply_;
  std::vector<Page> pages_;
};

// Installs "&Configuration ^C".
void InstallConfigHandlers();

}  // namespace tilo
