#include "platform/instance_channel.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QTimer>
#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>

namespace rws {

namespace {

constexpr std::string_view kHead = "rws-edit open 1\n";
/** Of a whole message: the head and the path. */
constexpr int kLines = 2;
/** The longest path of any system, in UTF-8, and the words around it. */
constexpr qint64 kMostBytes = 100 * 1024;
constexpr int kTellMilliseconds = 500, kHearMilliseconds = 5000;

/** The path of a whole message; "" for anything else. */
std::string PathOf(std::string_view message) {
  if (!message.starts_with(kHead) || !message.ends_with('\n')) return "";
  message.remove_prefix(kHead.size());
  if (message.empty()) return "";
  message.remove_suffix(1);
  const bool odd = std::any_of(message.begin(), message.end(), [](char c) {
    return static_cast<unsigned char>(c) < ' ' || c == '\x7F';
  });
  return odd ? "" : std::string(message);
}

}  // namespace

QString InstanceChannelName(const QString& lockFile) {
  const QString key = QFileInfo(lockFile).absoluteFilePath() + u'\n' + QDir::homePath();
  const QByteArray hash = QCryptographicHash::hash(key.toUtf8(), QCryptographicHash::Sha1).toHex();
  const QString name = QStringLiteral("rws-edit-") + QString::fromLatin1(hash.left(16));
#ifdef _WIN32
  return name;
#else
  // A folder of the user's own: anybody could stand in for the program in a shared one.
  return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) + u'/' + name;
#endif
}

InstanceListener::InstanceListener(const QString& channel,
                                   std::function<void(const std::string& path)> heard)
    : heard_(std::move(heard)) {
  server_.setSocketOptions(QLocalServer::UserAccessOption);
  connect(&server_, &QLocalServer::newConnection, this, &InstanceListener::TakeConnection);
  QLocalServer::removeServer(channel);
  server_.listen(channel);
}

InstanceListener::~InstanceListener() {
  // A connection that ends with the listener is not heard any more.
  for (auto* socket : server_.findChildren<QLocalSocket*>()) socket->disconnect(this);
}

void InstanceListener::TakeConnection() {
  while (QLocalSocket* socket = server_.nextPendingConnection()) {
    const auto message = std::make_shared<QByteArray>();
    connect(socket, &QLocalSocket::readyRead, this, [socket, message] {
      *message += socket->readAll();
      // The end of the connection tells the sender that it was heard.
      if (message->count('\n') >= kLines || message->size() > kMostBytes)
        socket->disconnectFromServer();
    });
    connect(socket, &QLocalSocket::disconnected, this, [this, socket, message] {
      socket->deleteLater();
      *message += socket->readAll();
      const std::string path =
          message->size() > kMostBytes ? std::string() : PathOf(message->toStdString());
      if (!path.empty()) heard_(path);
    });
    QTimer::singleShot(kHearMilliseconds, socket, [socket] { socket->abort(); });
  }
}

bool TellListener(const QString& channel, const std::string& path) {
  const QByteArray message = QByteArray::fromStdString(std::string(kHead) + path + "\n");
  const QDeadlineTimer deadline(kTellMilliseconds);
  const auto left = [&] { return static_cast<int>(deadline.remainingTime()); };
  if (message.size() > kMostBytes) return false;
  QLocalSocket socket;
  // For reading too: without it the end of the connection is not noticed on Windows.
  socket.connectToServer(channel, QIODevice::ReadWrite);
  if (!socket.waitForConnected(left())) return false;
  socket.write(message);
  // Where another thread writes, it may have done so before there is something to wait for.
  while (socket.bytesToWrite() > 0)
    if (!socket.waitForBytesWritten(left()) && socket.bytesToWrite() > 0) return false;
  // Not closed here: what the listener has not read yet could be lost with it.
  return socket.state() == QLocalSocket::UnconnectedState || socket.waitForDisconnected(left());
}

}  // namespace rws
