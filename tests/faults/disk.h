#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "services/file_system.h"

namespace rws::test {

/** All that stands in a folder, to be looked at or put there again. */
struct DiskState {
  struct File {
    std::string Bytes;
    /** The first of the names that lead to this file; its own for most. */
    std::string Same;
    bool operator==(const File& other) const { return Bytes == other.Bytes; }
  };
  /** By the path within the folder, with "/". */
  std::map<std::string, File> Files;
  std::set<std::string> Folders;

  static DiskState Of(const std::string& folder);
  /** Makes the folder hold this and nothing else. */
  void PutInto(const std::string& folder) const;
  /** Bytes of a file; null when there is none. */
  const std::string* Find(const std::string& path) const;
  bool HoldsSomewhere(const std::string& bytes) const;
};

enum class FaultKind { Error, ShortWrite, FullDisk, Refused };
inline constexpr FaultKind kFaultKinds[] = {FaultKind::Error, FaultKind::ShortWrite,
                                            FaultKind::FullDisk, FaultKind::Refused};

/** A step of an operation, as it was met. */
struct MetStep {
  std::string Action, Path;
};

/** What the disk does from some step on. */
class FaultyDisk {
 public:
  /** From the step of this number on, counted from 0. */
  FaultyDisk(FaultKind kind, std::size_t from) : kind_(kind), from_(from) {}

  /** Whether that kind of fault befalls that kind of step at all. */
  static bool Befalls(FaultKind kind, std::string_view action);
  static const char* Reason(FaultKind kind);

  /** A fault where this step is to fail. */
  void Before(const FileStep& step);
  /** The steps that have failed. */
  std::vector<MetStep> Failed;

 private:
  bool Fails(const FileStep& step, std::size_t number) const;

  FaultKind kind_;
  std::size_t from_, met_ = 0;
};

/** The first half of what a step is about to write lands. */
void WriteHalf(const FileStep& step);

}  // namespace rws::test
