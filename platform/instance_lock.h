#pragma once

#include <QString>
#include <memory>

namespace rws {

/** Lets one program of a name run at a time; the system lets go of it when that ends, however that
    comes. */
class InstanceLock {
 public:
  /** `file`: the lock itself where the system has locks that are files, else only its name. */
  explicit InstanceLock(const QString& file);
  ~InstanceLock();
  InstanceLock(const InstanceLock&) = delete;
  InstanceLock& operator=(const InstanceLock&) = delete;

  /** False if another program holds it. */
  bool Take();

 private:
  struct Held;
  std::unique_ptr<Held> held_;
};

}  // namespace rws
