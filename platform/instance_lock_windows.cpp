#include <windows.h>

#include "platform/instance_channel.h"
#include "platform/instance_lock.h"

namespace rws {

// Not a file: one that a crash leaves tells of its owner by a number, which may be another's by
// then.
struct InstanceLock::Held {
  std::wstring Name;
  HANDLE Mutex = nullptr;
};

InstanceLock::InstanceLock(const QString& file)
    : held_(new Held{L"Local\\" + InstanceChannelName(file).toStdWString()}) {}

InstanceLock::~InstanceLock() {
  if (held_->Mutex) ::CloseHandle(held_->Mutex);
}

bool InstanceLock::Take() {
  const HANDLE mutex = ::CreateMutexW(nullptr, FALSE, held_->Name.c_str());
  const bool isOthers =
      mutex ? ::GetLastError() == ERROR_ALREADY_EXISTS : ::GetLastError() == ERROR_ACCESS_DENIED;
  if (!isOthers) {
    held_->Mutex = mutex;
    return true;
  }
  if (mutex) ::CloseHandle(mutex);
  return false;
}

}  // namespace rws
