// SPDX-License-Identifier: MIT
#include "documents/ui/document_commands.h"

#include <QApplication>

#include "documents/ui/font_size_form.h"
#include "documents/ui/language_form.h"
#include "sale/commands.h"

namespace tilo {
namespace {

QWidget* Window() {
  for (QWidget* w : QApplication::topLevelWidgets())
    if (w->objectName() == "mainWindow") return w;
  return nullptr;
}

}  // namespace

void InstallDocumentHandlers() {
  SetHandler(Command::CustomizeLanguage, [](int) { Customizelanguage(Window()); });
  SetHandler(Command::ListingFontSize, [](int) { Listingfontsize(Window()); });
}

}  // namespace tilo
