#pragma once

#include <QLocalServer>
#include <QString>
#include <functional>
#include <string>

namespace rws {

/** Name of the channel between the instances that share this lock file; of this user alone. */
QString InstanceChannelName(const QString& lockFile);

/** Hears what later starts of the program were to open. */
class InstanceListener : public QObject {
  Q_OBJECT

 public:
  /** Listens from now on, also where a run that crashed has left its channel behind; nothing is
      heard when the system refuses it. For the holder of the lock. */
  InstanceListener(const QString& channel, std::function<void(const std::string& path)> heard);

  ~InstanceListener() override;

  bool IsListening() const { return server_.isListening(); }

 private:
  void TakeConnection();

  QLocalServer server_;
  std::function<void(const std::string& path)> heard_;
};

/** Tells the listener a path and does not wait for an answer; gives up after half a second. False
    if it could not be handed over. */
bool TellListener(const QString& channel, const std::string& path);

}  // namespace rws
