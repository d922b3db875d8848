#include <QLockFile>

#include "platform/instance_lock.h"

namespace rws {

struct InstanceLock::Held {
  QLockFile File;
};

InstanceLock::InstanceLock(const QString& file) : held_(new Held{QLockFile(file)}) {
  // Never stale by age: a run may last for days. One whose process is gone is stale at once.
  held_->File.setStaleLockTime(0);
}

InstanceLock::~InstanceLock() = default;

bool InstanceLock::Take() {
  return held_->File.tryLock() || held_->File.error() != QLockFile::LockFailedError;
}

}  // namespace rws
