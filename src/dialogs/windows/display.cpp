#include "dialogs/windows/display.h"

#include <errno.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <QApplication>
#include <QFileInfo>
#include <QPainter>
#include <QPixmap>
#include <QPluginLoader>
#include <QRegularExpression>
#include <QThread>
#include <QTimer>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "platform/interruption.h"

namespace korvex {

namespace {

QString variable(const char* name) { return qEnvironmentVariable(name); }

// A connection that shows that the display can be reached. It stays open until Qt has its own:
// some servers start again when their last client leaves, and refuse everybody meanwhile.
class Connection {
 public:
  bool open_x11(QString& reason) {
    x11_.reset(::xcb_connect(nullptr, nullptr));
    if (::xcb_connection_has_error(x11_.get()) == 0) return true;
    const QString name = variable("DISPLAY");
    reason =
        name.isEmpty() ? "no display is set (DISPLAY)" : "display " + name + " cannot be reached";
    return false;
  }

 private:
  struct Disconnect {
    void operator()(xcb_connection_t* connection) const { ::xcb_disconnect(connection); }
  };
  std::unique_ptr<xcb_connection_t, Disconnect> x11_;
};

bool can_reach_wayland(QString& reason) {
  QString name = variable("WAYLAND_DISPLAY");
  if (name.isEmpty()) name = "wayland-0";
  const QString path = name.startsWith('/') ? name : variable("XDG_RUNTIME_DIR") + '/' + name;
  const QByteArray bytes = path.toLocal8Bit();
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  reason = "display " + name + " cannot be reached";
  if (static_cast<std::size_t>(bytes.size()) >= sizeof address.sun_path) return false;
  std::memcpy(address.sun_path, bytes.constData(), static_cast<std::size_t>(bytes.size()));
  const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (socket < 0) return false;
  const bool is_reached =
      ::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  ::close(socket);
  return is_reached;
}

// Where Qt will look for its plug-ins.
QStringList plugin_folders() {
  QStringList folders = QCoreApplication::libraryPaths();
  folders.replaceInStrings(QRegularExpression("$"), "/platforms");
  const QString chosen = variable("QT_QPA_PLATFORM_PLUGIN_PATH");
  if (!chosen.isEmpty()) folders.prepend(chosen);
  return folders;
}

bool has_plugin(const QString& name, QString& reason) {
  reason = "Qt has no plug-in for the platform " + name;
  for (const QString& folder : plugin_folders()) {
    const QString file = folder + "/libq" + name + ".so";
    if (!QFileInfo::exists(file)) continue;
    QPluginLoader plugin(file);
    if (plugin.load()) return true;
    reason = plugin.errorString();
  }
  return false;
}

// Whether Qt can show windows through a platform, named as QT_QPA_PLATFORM names it: a plug-in,
// perhaps with arguments after a colon.
bool can_use_platform(const QString& platform, Connection& connection, QString& reason) {
  QString plugin = platform.section(':', 0, 0);
  bool is_reached = true;
  if (plugin == "xcb") is_reached = connection.open_x11(reason);
  if (plugin.startsWith("wayland")) {
    is_reached = can_reach_wayland(reason);
    if (plugin == "wayland") plugin = "wayland-generic";
  }
  return is_reached && has_plugin(plugin, reason);
}

QStringList wanted_platforms() {
  const QString chosen = variable("QT_QPA_PLATFORM");
  if (!chosen.isEmpty()) return chosen.split(';', Qt::SkipEmptyParts);
  QStringList platforms{"xcb"};
  if (!variable("WAYLAND_DISPLAY").isEmpty()) platforms.append("wayland");
  return platforms;
}

QString usable_platform(Connection& connection, QString& reason) {
  for (const QString& platform : wanted_platforms()) {
    if (can_use_platform(platform, connection, reason)) return platform;
  }
  return {};
}

// A window waits for nothing but its events: whether the program is to end is looked at in between.
// All dialogs are left as if they had been cancelled.
void end_windows_when_interrupted() {
  constexpr int look_interval_ms = 50;
  auto* const look = new QTimer(qApp);
  QObject::connect(look, &QTimer::timeout, qApp, [] {
    if (platform::is_interrupted()) QCoreApplication::exit();
  });
  look->start(look_interval_ms);
}

// The application lives as long as the process: windows of a host may outlive any call.
void make_application(const QString& platform) {
  static QByteArray program = program_invocation_short_name;
  static QByteArray option = "-platform";
  static QByteArray value = platform.toLocal8Bit();
  static char* arguments[] = {program.data(), option.data(), value.data(), nullptr};
  static int count = 3;
  // The process's locale is its own affair, and Qt takes it from the environment.
  const std::string locale = std::setlocale(LC_ALL, nullptr);
  new QApplication(count, arguments);
  std::setlocale(LC_ALL, locale.c_str());
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setWindowIcon(window_icon());
  if (platform::has_interruptions()) end_windows_when_interrupted();
}

}  // namespace

bool has_display() {
  const auto* application = qobject_cast<const QApplication*>(QCoreApplication::instance());
  return application != nullptr && application->thread() == QThread::currentThread();
}

bool open_display(std::string& reason) {
  if (has_display()) return true;
  if (const QCoreApplication* existing = QCoreApplication::instance(); existing != nullptr) {
    const bool has_windows = qobject_cast<const QApplication*>(existing) != nullptr;
    reason = has_windows ? "windows belong to another thread of this program"
                         : "this program's QCoreApplication shows no windows";
    return false;
  }
  QString failure;
  Connection connection;
  const QString platform = usable_platform(connection, failure);
  if (platform.isEmpty()) {
    reason = failure.toStdString();
    return false;
  }
  make_application(platform);
  return true;
}

namespace {

constexpr int sizes[] = {16, 24, 32, 48, 64, 128};

// Between light and dark, so that it is seen on the title bars of both.
const QColor sheet(250, 250, 250);
const QColor head(32, 112, 176);
const QColor line(96, 128, 160);

constexpr int columns = 3;
constexpr int rows = 4;  // the first is the head

QPixmap drawn(int size) {
  QPixmap pixmap(size, size);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  const int unit = size / 16;
  const QRect table = pixmap.rect().adjusted(unit, unit, -unit, -unit);
  const QRect top(table.left(), table.top(), table.width(), table.height() / rows);
  painter.fillRect(table, sheet);
  painter.fillRect(top, head);
  painter.setPen(QPen(line, unit, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
  painter.drawRect(table.adjusted(0, 0, -1, -1));
  for (int row = 1; row < rows; ++row) {
    const int y = table.top() + row * table.height() / rows;
    painter.drawLine(table.left(), y, table.right(), y);
  }
  for (int column = 1; column < columns; ++column) {
    const int x = table.left() + column * table.width() / columns;
    painter.drawLine(x, top.bottom(), x, table.bottom());
  }
  return pixmap;
}

}  // namespace

QIcon window_icon() {
  QIcon icon;
  for (const int size : sizes) icon.addPixmap(drawn(size));
  return icon;
}

}  // namespace korvex
