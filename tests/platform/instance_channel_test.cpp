#include "platform/instance_channel.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QLocalSocket>
#include <QTemporaryDir>
#include <QTest>
#include <atomic>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws::test {
namespace {

class InstanceChannel : public testing::Test {
 protected:
  InstanceChannel() {
    // Short, as the address of a socket has to be.
    channel = kPosixFiles ? folder.filePath("s") : InstanceChannelName(folder.filePath("lock"));
    Listen();
  }

  void Listen() {
    listener = std::make_unique<InstanceListener>(
        channel, [this](const std::string& path) { heard.push_back(path); });
    EXPECT_TRUE(listener->IsListening());
  }
  /** Runs what another program would, which on some systems needs the listener meanwhile. */
  bool Elsewhere(const std::function<bool()>& act) {
    std::atomic<bool> done = false;
    bool result = false;
    std::thread other([&] {
      result = act();
      done = true;
    });
    EXPECT_TRUE(QTest::qWaitFor([&] { return done.load(); }, 20'000));
    other.join();
    return result;
  }
  bool Tell(const std::string& path) {
    return Elsewhere([&] { return TellListener(channel, path); });
  }
  void Send(const QByteArray& bytes) {
    EXPECT_TRUE(Elsewhere([&] {
      QLocalSocket socket;
      socket.connectToServer(channel);
      if (!socket.waitForConnected()) return false;
      socket.write(bytes);
      while (socket.bytesToWrite() > 0)
        if (!socket.waitForBytesWritten() && socket.bytesToWrite() > 0) return false;
      socket.disconnectFromServer();
      return true;
    }));
    QTest::qWait(0);
  }
  bool Hears(std::size_t count) {
    return QTest::qWaitFor([&] { return heard.size() >= count; });
  }

  QTemporaryDir folder;
  QString channel;
  std::unique_ptr<InstanceListener> listener;
  std::vector<std::string> heard;
};

TEST_F(InstanceChannel, HandsOverAPathOfAnyBytesAndLength) {
  const std::string odd = "/games/IL 2 \xFF \xC3\xA9,\"x\".mis", far(32 * 1024, 'x');
  EXPECT_TRUE(Tell(odd));
  EXPECT_TRUE(Hears(1));
  EXPECT_TRUE(Tell(far));
  EXPECT_TRUE(Hears(2));
  EXPECT_TRUE(heard == std::vector<std::string>({odd, far}));
}

TEST_F(InstanceChannel, GarbageIsIgnored) {
  for (const QByteArray& bytes :
       {QByteArray(), QByteArray("\n"), QByteArray("rws-edit open 1\n"),
        QByteArray("rws-edit open 1\n\n"), QByteArray("rws-edit open 1\n/x"),
        QByteArray("rws-edit open 1\n/x\n/y\n"), QByteArray("rws-edit open 1\n/\x01x\n"),
        QByteArray("GET / HTTP/1.1\r\n\r\n"), QByteArray("rws-edit open 1\n\0x\n", 19)})
    Send(bytes);
  EXPECT_TRUE(Tell("/last"));
  EXPECT_TRUE(Hears(1));
  EXPECT_EQ(Joined(heard), "/last");
  EXPECT_FALSE(Tell(std::string(200 * 1024, 'x'))) << "longer than any path";
}

TEST_F(InstanceChannel, AConnectionThatIsOpenAtTheEndIsNotHeard) {
  QLocalSocket socket;
  socket.connectToServer(channel);
  ASSERT_TRUE(socket.waitForConnected());
  socket.write("rws-edit open 1\n/x");
  ASSERT_TRUE(QTest::qWaitFor([&] { return socket.bytesToWrite() == 0; }));
  listener.reset();
  EXPECT_EQ(Joined(heard), "");
}

TEST_F(InstanceChannel, NobodyListensOrACrashedRunDid) {
  listener.reset();
  EXPECT_FALSE(Tell("/x"));
  if (kPosixFiles) {
    QFile left(channel);
    ASSERT_TRUE(left.open(QIODevice::WriteOnly));
    left.close();
    EXPECT_FALSE(Tell("/x"));
  }
  Listen();
  EXPECT_TRUE(Tell("/y"));
  EXPECT_TRUE(Hears(1));
}

TEST_F(InstanceChannel, EachLockFileHasItsOwn) {
  EXPECT_EQ(InstanceChannelName("/a/lock"), InstanceChannelName("/a/../a/lock"));
  EXPECT_NE(InstanceChannelName("/a/lock"), InstanceChannelName("/b/lock"));
}

}  // namespace
}  // namespace rws::test
