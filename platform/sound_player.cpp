#include "platform/sound_player.h"

#include <QDesktopServices>
#include <QFile>
#include <QUrl>

#ifdef _WIN32
#include <windows.h>
// The next header needs the one above.
#include <mmsystem.h>
#else
#include <QSoundEffect>
#endif

namespace rws {

namespace {
void OpenByDesktop(const QString& path) { QDesktopServices::openUrl(QUrl::fromLocalFile(path)); }
}  // namespace

SoundPlayer::SoundPlayer() = default;
SoundPlayer::~SoundPlayer() = default;

#ifdef _WIN32

namespace {
/** The call below says that all is well before it has looked at the file. */
bool IsWave(const QString& path) {
  QFile file(path);
  const QByteArray head = file.open(QIODevice::ReadOnly) ? file.read(12) : QByteArray();
  return head.startsWith("RIFF") && head.endsWith("WAVE");
}
}  // namespace

void SoundPlayer::Start(const QString& path) {
  if (!IsWave(path)) return OpenByDesktop(path);
  const auto* name = reinterpret_cast<const wchar_t*>(path.utf16());
  if (!::PlaySoundW(name, nullptr, SND_FILENAME | SND_ASYNC | SND_NODEFAULT)) OpenByDesktop(path);
}

void SoundPlayer::Stop() { ::PlaySoundW(nullptr, nullptr, 0); }

#else

void SoundPlayer::Start(const QString& path) {
  effect_ = std::make_unique<QSoundEffect>();
  connect(effect_.get(), &QSoundEffect::statusChanged, this, [this, path] {
    if (effect_->status() == QSoundEffect::Error) OpenByDesktop(path);
  });
  effect_->setSource(QUrl::fromLocalFile(path));
  effect_->play();
}

void SoundPlayer::Stop() {
  if (effect_) effect_->stop();
}

#endif

}  // namespace rws
