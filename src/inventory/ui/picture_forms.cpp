// SPDX-License-Identifier: MIT
#include "inventory/ui/picture_forms.h"

#include <QApplication>
#include <QBuffer>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QImageReader>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>
#include <QVBoxLayout>
#include <unordered_map>

#include "core/state.h"
#include "inventory/pictures.h"
#include "inventory/stock_pictures.h"
#include "inventory/ui/item_forms.h"
#include "platform/files.h"
#include "sale/screen.h"

namespace tilo {
namespace {

constexpr int kShown = 48;

struct Scaled {
  qint64 modified = -1;  // ms since the epoch; of the folder for a picture not found
  qint64 size = -1;
  bool hires = false;
  QPixmap pixmap;
  std::string path;  // the file found; empty when none was
};

std::unordered_map<std::string, Scaled>& cache() {
  static std::unordered_map<std::string, Scaled> c;
  return c;
}

bool Hires() {
  return G().settings.hires_picture == 2;
}

QPixmap Load(const QString& path, bool hires) {
  QImageReader reader(path);
  reader.setAutoTransform(false);
  qreal ratio = 1;
  if (hires && QGuiApplication::primaryScreen())
    ratio = QGuiApplication::primaryScreen()->devicePixelRatio();
  const int side = int(kShown * ratio);
  QImage image = reader.read();
  if (image.isNull()) return {};
  // A photograph of 2,000 by 1,500 is first sampled down to four times the
  // size shown (cheap), and only that is scaled with care.
  if (image.width() > 4 * side || image.height() > 4 * side)
    image = image.scaled(std::min(image.width(), 4 * side), std::min(image.height(), 4 * side),
                         Qt::IgnoreAspectRatio, Qt::FastTransformation);
  image = image.scaled(side, side, Qt::IgnoreAspectRatio,
                       hires ? Qt::SmoothTransformation : Qt::FastTransformation);
  // Rounded corners on the left, as the quick-select buttons frame their pictures.
  QImage rounded(image.size(), QImage::Format_ARGB32_Premultiplied);
  rounded.fill(Qt::transparent);
  {
    QPainter p(&rounded);
    p.setRenderHint(QPainter::Antialiasing);
    QPainterPath edge;
    const qreal radius = 6 * ratio;
    edge.addRoundedRect(QRectF(0, 0, side + 2 * radius, side), radius, radius);
    p.setClipPath(edge);
    p.drawImage(0, 0, image);
  }
  QPixmap pixmap = QPixmap::fromImage(rounded);
  pixmap.setDevicePixelRatio(ratio);
  return pixmap;
}

class QtPictureView : public PictureView {
 public:
  std::optional<int> choose_stock_picture() override {
    StockPictureForm form(QApplication::activeWindow());
    if (form.exec() != QDialog::Accepted || form.chosen() < 0) return std::nullopt;
    return form.chosen();
  }
  void pictures_changed() override {
    Forgetpictures();
    screen_view().quick_select_changed();
  }
};

QtPictureView qt_view;

}  // namespace

QPixmap Scaledpicture(const std::string& name) {
  const bool hires = Hires();
  Scaled& e = cache()[name];
  // The exact name first, then the spelling found last time, then a fresh look
  // through the folder, which is only needed again once the folder has changed.
  QFileInfo info(QString::fromStdString(name));
  if (!info.exists() && !e.path.empty()) info = QFileInfo(QString::fromStdString(e.path));
  if (!info.exists()) {
    const qint64 folder = QFileInfo(".").lastModified().toMSecsSinceEpoch();
    if (e.path.empty() && e.modified == folder && e.size == -1) return {};
    const auto found = Resolvepicture(name);
    if (!found) {
      e = {folder, -1, hires, {}, {}};
      return {};
    }
    info = QFileInfo(QString::fromStdString(*found));
  }
  const std::string path = info.filePath().toStdString();
  const qint64 modified = info.lastModified().toMSecsSinceEpoch();
  if (e.path == path && e.modified == modified && e.size == info.size() && e.hires == hires)
    return e.pixmap;
  e = {modified, info.size(), hires, Load(info.filePath(), hires), path};
  return e.pixmap;
}

void Forgetpictures() {
  cache().clear();
}

StockPictureForm::StockPictureForm(QWidget* parent) : QDialog(parent) {
  setObjectName("DOPICS");
  setWindowTitle("Update inbuilt stock picture");
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new QLabel("Please specify the picture to replace", this));
  list_ = new QListWidget(this);
  list_->setIconSize(QSize(kShown, kShown));
  for (int n = 1; n <= kStockPictures; ++n)
    list_->addItem(new QListWidgetItem(QIcon(Scaledpicture(Stockpicturename(n))),
                                       QString("Inbuilt %1").arg(n)));
  list_->setCurrentRow(0);
  layout->addWidget(list_);
  auto* note = new QLabel(
      "The replacement must be a bmp. It will automatically be displayed resized to 48x48 pixels.",
      this);
  note->setWordWrap(true);
  layout->addWidget(note);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(list_, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
  layout->addWidget(buttons);
  resize(360, 520);
}

int StockPictureForm::chosen() const {
  return list_->currentRow();
}

bool Copyasbmp(const std::string& from, const std::string& target) {
  auto bytes = ReadWholeFile(from);
  if (!bytes) return false;
  if (bytes->size() >= 2 && bytes->compare(0, 2, "BM") == 0) return ReplaceFile(target, *bytes);
  QImage image;
  if (!image.loadFromData(reinterpret_cast<const uchar*>(bytes->data()), int(bytes->size())))
    return false;
  QByteArray bmp;
  QBuffer buffer(&bmp);
  buffer.open(QIODevice::WriteOnly);
  // BMP holds no transparency: a see-through picture stands on white.
  QImage opaque(image.size(), QImage::Format_RGB888);
  opaque.fill(Qt::white);
  {
    QPainter p(&opaque);
    p.drawImage(0, 0, image);
  }
  if (!opaque.save(&buffer, "BMP")) return false;
  return ReplaceFile(target, std::string_view(bmp.constData(), size_t(bmp.size())));
}

void InstallPictureForms() {
  install_picture_view(&qt_view);
  SetPictureCopier(Copyasbmp);
  SetItemPictureDrawer(
      [](QLabel* box, const FilmRecord& r) { box->setPixmap(Scaledpicture(Picturename(r))); });
}

}  // namespace tilo
