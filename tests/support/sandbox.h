#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace rws::test {

/** Whether file names are any bytes, their letter case counts, and everybody may make links. */
extern const bool kPosixFiles;
inline constexpr char kNeedsPosixFiles[] = "needs names whose letter case counts, or links";

/** A path text for the standard library, to which a narrow text is UTF-8 on some systems only. */
std::filesystem::path ToFsPath(const std::string& path);

/** Content of a file; "" when it cannot be read. */
std::string FileBytes(const std::filesystem::path& path);

/** From now on sandboxes are where a thousand of them are written and flushed in no time, if there
   is such a place. */
void UseQuickFolder();

/** A folder of its own for one test, removed at the end. Its path holds a blank and a byte that is
   no ASCII. */
class Sandbox {
 public:
  Sandbox();
  ~Sandbox();
  Sandbox(const Sandbox&) = delete;
  /** While it is not "", each sandbox has this name, and there must be no two at once. */
  static std::string OneName;
  Sandbox& operator=(const Sandbox&) = delete;

  /** Full path of a name in the sandbox; "/" in the name stands for the system's separator. */
  std::string Path(std::string_view name = "") const;
  /** Makes a file with this content, and the folders it lies in. */
  std::string Write(std::string_view name, std::string_view bytes) const;
  /** Content of a file; "<none>" when it is not there. */
  std::string Read(std::string_view name) const;
  bool Exists(std::string_view name) const;
  void MakeFolder(std::string_view name) const;
  /** Removes a file. */
  void Remove(std::string_view name) const;
  /** Makes a relative link of this name to a file or folder of the sandbox, which need not be
   * there. */
  void Link(std::string_view name, std::string_view target) const;
  /** Names in a folder of the sandbox, sorted, joined by ",". */
  std::string Names(std::string_view folder = "") const;

 private:
  std::string root_;
};

}  // namespace rws::test
