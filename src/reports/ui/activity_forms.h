// SPDX-License-Identifier: MIT
// The status screen (F12), the log viewer and the commands of the Activity
// menu that show or print the day's figures and the activity log.
#pragma once

#include <QDialog>

#include "reports/activity_summary.h"
#include "reports/log_view.h"

class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace tilo {

// Dialog 814: every figure filled when it opens; "OK" only.
class StatusDialog : public QDialog {
  Q_OBJECT
 public:
  StatusDialog(QWidget* parent, const StatusScreen& screen);
  // The value shown beside a label of the figures ("Cash sales"), the first one
  // when a label stands twice.
  QString figure(const QString& label) const;
  // Every text the form shows, top to bottom.
  QStringList texts() const;
};

// Dialog LOGEDIT: one block of a log, read-only, with "Next", "Previous" and
// "OK"; without a walk (an earlier day's summary) the two are hidden.
class LogDialog : public QDialog {
  Q_OBJECT
 public:
  LogDialog(QWidget* parent, const QString& title, LogViewer viewer);
  LogDialog(QWidget* parent, const QString& title, const std::string& text);

  QPlainTextEdit* text() const { return text_; }
  QPushButton* next() const { return next_; }
  QPushButton* previous() const { return previous_; }
  const LogViewer& viewer() const { return viewer_; }

 private:
  void Build(const QString& title);
  void Refresh();

  LogViewer viewer_;
  QPlainTextEdit* text_ = nullptr;
  QPushButton* next_ = nullptr;
  QPushButton* previous_ = nullptr;
};

// F12, the activity summary printed (also on the way out), an earlier day's
// summary, the log viewers, the log prints and the log's capacity.
void InstallActivityHandlers();

}  // namespace tilo
