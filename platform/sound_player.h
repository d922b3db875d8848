#pragma once

#include <QObject>
#include <QString>
#include <memory>

class QSoundEffect;

namespace rws {

/** Plays one sound file at a time. */
class SoundPlayer : public QObject {
  Q_OBJECT

 public:
  SoundPlayer();
  ~SoundPlayer() override;

  /** Starts a file and returns at once. A format that cannot be played here is opened with the
      desktop's player. */
  void Start(const QString& path);
  void Stop();

 private:
#ifndef _WIN32
  std::unique_ptr<QSoundEffect> effect_;
#endif
};

}  // namespace rws
