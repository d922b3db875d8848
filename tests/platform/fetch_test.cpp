#include "platform/fetch.h"

#include <gtest/gtest.h>

#include <QNetworkProxy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

namespace rws::test {
namespace {

QByteArray Reply(const char* status, const QByteArray& body, const QByteArray& headers = {}) {
  return QByteArray("HTTP/1.1 ") + status + "\r\n" + headers +
         "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
}

/** Answers the requests on the loopback with its texts in order: the first half at once, the rest
    after twenty turns of the event loop. */
struct Server : QTcpServer {
  explicit Server(QList<QByteArray> answers) : Answers(std::move(answers)) {
    QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
    EXPECT_TRUE(listen(QHostAddress::LocalHost));
    connect(this, &QTcpServer::newConnection, this, [this] { Serve(nextPendingConnection()); });
  }
  void Serve(QTcpSocket* socket) {
    connect(socket, &QTcpSocket::bytesWritten, this, [this](qint64 count) { Sent += count; });
    connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
      if (!socket->readAll().contains("\r\n\r\n") || Answers.isEmpty()) return;
      const QByteArray answer = Answers.takeFirst();
      socket->write(answer.left(answer.size() / 2));
      auto* turns = new QTimer(socket);
      connect(turns, &QTimer::timeout, socket, [socket, turns, answer, count = 0]() mutable {
        if (++count < 20) return;
        turns->stop();
        socket->write(answer.mid(answer.size() / 2));
      });
      turns->start(0);
    });
  }
  std::string Address() const {
    return "http://127.0.0.1:" + std::to_string(serverPort()) + "/rws/version.txt";
  }

  QList<QByteArray> Answers;
  qint64 Sent = 0;
};

TEST(Fetch, GivesTheBodyOfASmallAnswerOnly) {
  const QByteArray whole(4096, 'x'), endless(10'000'000, 'x');
  struct Row {
    const char* What;
    QList<QByteArray> Answers;
    std::optional<std::string> Body;
  };
  const Row rows[] = {
      {"version", {Reply("200 OK", "2.0.0 \r\n")}, "2.0.0 \r\n"},
      {"empty", {Reply("200 OK", "")}, ""},
      {"4 KB", {Reply("200 OK", whole)}, whole.toStdString()},
      {"more", {Reply("200 OK", whole + "x")}, std::nullopt},
      {"10 MB", {Reply("200 OK", endless)}, std::nullopt},
      {"missing", {Reply("404 Not Found", "2.0.1")}, std::nullopt},
      {"moved", {Reply("302 Found", "", "Location: /b\r\n")}, std::nullopt},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.What);
    Server server(row.Answers);
    EXPECT_EQ(Fetcher().Fetch(server.Address()), row.Body);
    EXPECT_LT(server.Sent, 9'000'000) << "the transfer went on";
  }
  Server gone({});
  const std::string address = gone.Address();
  gone.close();
  EXPECT_EQ(Fetcher().Fetch(address), std::nullopt);
  EXPECT_EQ(Fetcher().Fetch("http:///rws/version.txt"), std::nullopt);
}

}  // namespace
}  // namespace rws::test
