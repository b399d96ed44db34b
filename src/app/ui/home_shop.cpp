// SPDX-License-Identifier: MIT
#include "app/ui/home_shop.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QProcess>

#include <cstdlib>

#include "core/film_record.h"
#include "core/settings.h"
#include "platform/files.h"
#include "platform/platform.h"

namespace tilo {
namespace {

constexpr char kTitle[] = "Shop folder";

bool HoldsShop(const std::string& folder) {
  return FileExists(folder + "/" + kFilmFile) || FileExists(folder + "/" + kSettingsFile);
}

// The shop's files hold clerk passwords and customers' addresses: a folder
// closed to everyone else keeps even the files an older run made with wider
// rights out of reach.
bool MakePrivateFolder(const std::string& folder) {
  if (!QDir().mkpath(QString::fromStdString(folder))) return false;
  struct stat st {};
  if (::stat(folder.c_str(), &st) != 0 || !S_ISDIR(st.st_mode)) return false;
  if (st.st_uid == ::getuid() && (st.st_mode & 077) != 0) ::chmod(folder.c_str(), 0700);
  return true;
}

bool MakeShop(const std::string& folder, const std::string& newshop, bool demo) {
  QStringList args{QString::fromStdString(folder)};
  if (demo) args << "--demo";
  QProcess installer;
  installer.setProcessChannelMode(QProcess::MergedChannels);
  installer.start(QString::fromStdString(newshop), args);
  const bool made = installer.waitForFinished(-1) &&
                    installer.exitStatus() == QProcess::NormalExit && installer.exitCode() == 0;
  if (!made) {
    std::string said = installer.readAll().trimmed().toStdString();
    if (said.empty()) said = installer.errorString().toStdString();
    platform().message("The shop could not be made in " + folder + ".\n\n" + said, kTitle);
  }
  return made;
}

}  // namespace

std::string HomeShopFolder() {
  if (const char* shop = std::getenv("TILO_SHOP"); shop && *shop) return shop;
  return QDir::homePath().toStdString() + "/TILO";
}

bool EnterHomeShop(const std::string& folder, const std::string& newshop) {
  if (!MakePrivateFolder(folder)) {
    platform().message("The shop's folder " + folder + " could not be made.", kTitle);
    return false;
  }
  if (!HoldsShop(folder)) {
    const Answer answer = platform().message(
        "There is no shop in " + folder +
            " yet.\n\nStart with the demo shop, stocked with items to try the till on?\n"
            "Yes: the demo shop.  No: an empty shop, ready for your own items.",
        kTitle, Buttons::YesNoCancel);
    if (answer == Answer::Cancel) return false;
    if (!MakeShop(folder, newshop, answer == Answer::Yes)) return false;
  }
  if (::chdir(folder.c_str()) != 0) {
    platform().message("The shop's folder " + folder + " could not be opened.", kTitle);
    return false;
  }
  return true;
}

}  // namespace tilo
