// SPDX-License-Identifier: MIT
// The desktop's printers: those of the print system, and the built-in "PDF"
// printer, which is the default when the print system has none. The printer
// dialog, the abort box and the "Please wait.." box of the print shell.
#pragma once

#include <QDialog>
#include <QPointer>
#include <QStringList>

#include "documents/print_service.h"

class QComboBox;
class QSpinBox;

namespace tilo {

// The printer dialog: a printer and a number of copies, no page range, no file.
class PrinterDialog : public QDialog {
  Q_OBJECT
 public:
  PrinterDialog(const QStringList& printers, const QString& preselected, QWidget* parent);
  QString printer() const;
  int copies() const;

 private:
  QComboBox* printers_;
  QSpinBox* copies_;
};

class QtPrintService : public PrintService {
 public:
  std::unique_ptr<PrintTarget> default_printer() override;
  std::unique_ptr<PrintTarget> printer_dialog(int32_t& copies) override;
  std::unique_ptr<PrintTarget> named_printer(const std::string& device_name) override;
  void open_abort_box() override;
  void close_abort_box() override;
  void pump_messages() override;
  void show_wait_box(bool shown) override;
  bool list_printers(std::vector<PrinterInfo>& printers) override;
  std::optional<ChosenFont> choose_font() override;

  // The print system's printers, then "PDF".
  static QStringList Printers();
  // The print system's default, or "PDF" when it has none.
  static QString DefaultPrinter();

 private:
  QPointer<QDialog> abort_box_;
  QPointer<QDialog> wait_box_;
};

}  // namespace tilo
