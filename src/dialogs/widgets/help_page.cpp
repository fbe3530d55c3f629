#include "dialogs/widgets/help_page.h"

#include <dlfcn.h>

#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

#include "platform/user_interface.h"

namespace korvex {

namespace {

constexpr const char* page = "share/doc/korvex/docs/desktop.md";

// From the library's folder up to the prefix that it was installed to: lib, or lib/ARCHITECTURE.
constexpr int most_folders_up = 2;

// Of the file that this code is in, wherever a link to it may lie.
QDir own_folder() {
  Dl_info place = {};
  if (::dladdr(reinterpret_cast<const void*>(&help_page), &place) == 0) return {};
  return QFileInfo(QFileInfo(QFile::decodeName(place.dli_fname)).canonicalFilePath()).dir();
}

}  // namespace

QString help_page() {
  QDir folder = own_folder();
  for (int up = 0; up < most_folders_up && folder.cdUp(); ++up) {
    if (QFileInfo(folder.filePath(page)).isFile()) return folder.filePath(page);
  }
  return {};
}

void open_help_page() {
  const QString path = help_page();
  if (path.isEmpty() || QDesktopServices::openUrl(QUrl::fromLocalFile(path))) return;
  platform::user_interface().show_message(platform::MessageKind::warning,
                                          "No program could be started to show the help:\n" +
                                              platform::MessageText::path(path.toStdString()));
}

}  // namespace korvex
