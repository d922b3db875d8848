#pragma once

#include <string>
#include <string_view>

namespace rws::test {

/** A folder of its own for one test, removed at the end. Its path holds a blank and a byte that is
   no ASCII. */
class Sandbox {
 public:
  Sandbox();
  ~Sandbox();
  Sandbox(const Sandbox&) = delete;
  Sandbox& operator=(const Sandbox&) = delete;

  /** Full path of a name in the sandbox. */
  std::string Path(std::string_view name = "") const;
  /** Makes a file with this content, and the folders it lies in. */
  std::string Write(std::string_view name, std::string_view bytes) const;
  /** Content of a file; "<none>" when it is not there. */
  std::string Read(std::string_view name) const;
  bool Exists(std::string_view name) const;
  void MakeFolder(std::string_view name) const;
  /** Names in a folder of the sandbox, sorted, joined by ",". */
  std::string Names(std::string_view folder = "") const;

 private:
  std::string root_;
};

}  // namespace rws::test
