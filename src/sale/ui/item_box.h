// SPDX-License-Identifier: MIT
// The item box: all typing on the sale screen goes here, and a barcode scanner
// types into it and presses Enter. The keys of the key table give their command
// first; a Ctrl key combination never leaves its letter in the box.
#pragma once

#include <QLineEdit>

namespace tilo {

class ItemBox : public QLineEdit {
  Q_OBJECT
 public:
  explicit ItemBox(QWidget* parent = nullptr);
  // The name of a key as the key table spells it ("F2", "Ctrl+A", "Left"), or
  // empty for a key that is not in its form.
  static QString KeyName(const QKeyEvent* event);

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace tilo
