// SPDX-License-Identifier: MIT
#include "sale/ui/item_box.h"

#include <QKeyEvent>

#include "core/state.h"
#include "sale/basket.h"
#include "sale/commands.h"

namespace tilo {

ItemBox::ItemBox(QWidget* parent) : QLineEdit(parent) {
  setMaxLength(39);
  setFrame(true);
}

QString ItemBox::KeyName(const QKeyEvent* e) {
  const int key = e->key();
  if (key >= Qt::Key_F1 && key <= Qt::Key_F12) return QString("F%1").arg(key - Qt::Key_F1 + 1);
  if (e->modifiers() & Qt::ControlModifier) {
    if (key >= Qt::Key_A && key <= Qt::Key_Z) return QString("Ctrl+") + QChar(key);
    return {};
  }
  switch (key) {
    case Qt::Key_Left:
      return "Left";
    case Qt::Key_Up:
      return "Up";
    case Qt::Key_Right:
      return "Right";
    case Qt::Key_Down:
      return "Down";
    default:
      return {};
  }
}

bool ItemBox::event(QEvent* e) {
  // Ctrl+A, Ctrl+C, Ctrl+V, Ctrl+X are the till's commands here, not the
  // clipboard's: take them before any shortcut does.
  if (e->type() == QEvent::ShortcutOverride) {
    auto* k = static_cast<QKeyEvent*>(e);
    if ((k->modifiers() & Qt::ControlModifier) && k->key() >= Qt::Key_A && k->key() <= Qt::Key_Z) {
      e->accept();
      return true;
    }
  }
  return QLineEdit::event(e);
}

void ItemBox::keyPressEvent(QKeyEvent* e) {
  if (G().tender_form_open == 2) {
    QLineEdit::keyPressEvent(e);
    return;
  }
  const QString name = KeyName(e);
  const Command command = name.isEmpty() ? Command::None : KeyCommand(name.toStdString());
  if (command != Command::None) Dispatch(command);
  if (e->modifiers() & Qt::ControlModifier) {
    if (e->key() >= Qt::Key_A && e->key() <= Qt::Key_Z) {
      clear();  // a letter typed as a shortcut never stays in the box
      return;
    }
  }
  if (e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter) {
    const std::string typed = (text() + "\r\n").toStdString();
    switch (Itemboxaction(typed, false)) {
      case ItemBoxAction::OpenFind:
        clear();
        Dispatch(Command::ItemFind);
        break;
      case ItemBoxAction::EnterItem:
        clear();
        Enteritem(typed);
        break;
      default:
        break;
    }
    return;
  }
  if (e->key() >= Qt::Key_F1 && e->key() <= Qt::Key_F35) return;
  QLineEdit::keyPressEvent(e);
}

}  // namespace tilo
