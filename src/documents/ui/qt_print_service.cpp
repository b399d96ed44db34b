// SPDX-License-Identifier: MIT
#include "documents/ui/qt_print_service.h"

#include <cups/cups.h>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFontDialog>
#include <QFormLayout>
#include <QLabel>
#include <QPrinterInfo>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include "core/state.h"
#include "documents/ui/qt_print_target.h"

namespace tilo {
namespace {

QWidget* MainWindow() {
  for (QWidget* w : QApplication::topLevelWidgets())
    if (w->objectName() == "mainWindow") return w;
  return nullptr;
}

void EnableMainWindow(bool enabled) {
  if (QWidget* w = MainWindow()) w->setEnabled(enabled);
}

}  // namespace

PrinterDialog::PrinterDialog(const QStringList& printers, const QString& preselected,
                             QWidget* parent)
    : QDialog(parent) {
  setObjectName("printerDialog");
  setWindowTitle("Print");
  auto* form = new QFormLayout;
  printers_ = new QComboBox(this);
  printers_->setObjectName("printer");
  printers_->addItems(printers);
  printers_->setCurrentIndex(std::max<qsizetype>(0, printers.indexOf(preselected)));
  copies_ = new QSpinBox(this);
  copies_->setObjectName("copies");
  copies_->setRange(1, 99);
  form->addRow("Printer", printers_);
  form->addRow("Copies", copies_);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addWidget(buttons);
}

QString PrinterDialog::printer() const {
  return printers_->currentText();
}
int PrinterDialog::copies() const {
  return copies_->value();
}

QStringList QtPrintService::Printers() {
  QStringList names = QPrinterInfo::availablePrinterNames();
  names.removeAll(kPdfPrinterName);
  names.append(kPdfPrinterName);
  return names;
}

QString QtPrintService::DefaultPrinter() {
  const QString name = QPrinterInfo::defaultPrinterName();
  return name.isEmpty() ? QString(kPdfPrinterName) : name;
}

bool QtPrintService::list_printers(std::vector<PrinterInfo>& printers) {
  printers.clear();
  for (const QString& name : Printers()) {
    PrinterInfo printer{name.toStdString(), ""};
    if (name == kPdfPrinterName) {
      printer.port = kPrintoutFolder;
    } else if (cups_dest_t* dest =
                   cupsGetNamedDest(CUPS_HTTP_DEFAULT, printer.name.c_str(), nullptr)) {
      // The queue's device address ("usb://...", "socket://..."): where it prints.
      if (const char* uri = cupsGetOption("device-uri", dest->num_options, dest->options))
        printer.port = uri;
      cupsFreeDests(1, dest);
    }
    printers.push_back(printer);
  }
  return true;
}

std::optional<ChosenFont> QtPrintService::choose_font() {
  bool ok = false;
  const QFont font =
      QFontDialog::getFont(&ok, QFont("Arial", 12), QApplication::activeWindow(), "Header font");
  if (!ok) return std::nullopt;
  ChosenFont chosen;
  chosen.font.face = font.family().toStdString();
  chosen.font.weight = font.weight();  // the same 100 to 900 scale as the record's
  chosen.font.italic = font.italic();
  chosen.font.underline = font.underline();
  chosen.font.strikeout = font.strikeOut();
  chosen.points = font.pointSize() > 0 ? font.pointSize() : 12;
  return chosen;
}

std::unique_ptr<PrintTarget> QtPrintService::default_printer() {
  return named_printer(DefaultPrinter().toStdString());
}

std::unique_ptr<PrintTarget> QtPrintService::printer_dialog(int32_t& copies) {
  PrinterDialog dialog(Printers(), DefaultPrinter(), QApplication::activeWindow());
  if (dialog.exec() != QDialog::Accepted) return nullptr;
  copies = dialog.copies();
  return named_printer(dialog.printer().toStdString());
}

std::unique_ptr<PrintTarget> QtPrintService::named_printer(const std::string& device_name) {
  const QString name = QString::fromStdString(device_name);
  if (name == kPdfPrinterName) return QtPrintTarget::Pdf();
  if (QPrinterInfo::printerInfo(name).isNull()) return nullptr;
  return QtPrintTarget::Printer(name);
}

void QtPrintService::open_abort_box() {
  EnableMainWindow(false);
  auto* box = new QDialog(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
  box->setObjectName("abortBox");
  box->setWindowTitle("TILO");
  auto* layout = new QVBoxLayout(box);
  layout->addWidget(new QLabel("Cancel printing", box));
  auto* cancel = new QPushButton("Cancel", box);
  cancel->setObjectName("cancel");
  layout->addWidget(cancel);
  QObject::connect(cancel, &QPushButton::clicked, box, [box] {
    G().print_job.aborted = true;
    EnableMainWindow(true);
    box->hide();
    box->deleteLater();
  });
  // Escape would close it behind the job's back: only "Cancel" ends it.
  QObject::connect(box, &QDialog::rejected, box, [box] { box->show(); });
  abort_box_ = box;
  box->show();
}

void QtPrintService::close_abort_box() {
  EnableMainWindow(true);
  if (abort_box_) abort_box_->deleteLater();
  abort_box_ = nullptr;
}

void QtPrintService::pump_messages() {
  QCoreApplication::processEvents();
}

void QtPrintService::show_wait_box(bool shown) {
  if (!shown) {
    if (wait_box_) wait_box_->deleteLater();
    wait_box_ = nullptr;
    return;
  }
  if (wait_box_) return;
  auto* box = new QDialog(QApplication::activeWindow(),
                          Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
  box->setObjectName("waitBox");
  auto* layout = new QVBoxLayout(box);
  layout->addWidget(new QLabel("Please wait..", box));
  wait_box_ = box;
  box->show();
  QCoreApplication::processEvents();
}

}  // namespace tilo
