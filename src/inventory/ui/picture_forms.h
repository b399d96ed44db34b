// SPDX-License-Identifier: MIT
// Pictures on the screen: each file scaled to 48 by 48 once and kept until it
// changes on disk, the DOPICS form, and the copier that turns PNG and JPEG
// pictures into BMP files.
#pragma once

#include <QDialog>
#include <QPixmap>
#include <string>

class QListWidget;

namespace tilo {

// The picture `name` from the working folder, 48 by 48 (smoothly and at the
// screen's density when "Hi res picture" is ticked); a null pixmap when there is
// no such file or it is no picture.
QPixmap Scaledpicture(const std::string& name);
// Forgets every scaled picture.
void Forgetpictures();

// Form DOPICS: the 24 built-in pictures as they stand, one to replace.
class StockPictureForm : public QDialog {
  Q_OBJECT
 public:
  explicit StockPictureForm(QWidget* parent);
  int chosen() const;

 private:
  QListWidget* list_;
};

// Writes `from` to `target` as a BMP file: a BMP byte for byte, any other
// picture Qt reads converted.
bool Copyasbmp(const std::string& from, const std::string& target);

// The picture forms, the copier and the drawer of form 800.
void InstallPictureForms();

}  // namespace tilo
