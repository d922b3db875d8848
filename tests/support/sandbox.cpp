#include "tests/support/sandbox.h"

#include <algorithm>
#include <atomic>
#include <fstream>
#include <random>
#include <set>
#include <sstream>

#include "services/file_system.h"
#include "services/paths.h"
#include "tests/support/run_cli.h"

namespace rws::test {

namespace fs = std::filesystem;

namespace {
std::string FromFsPath(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

std::string NewFolder() {
  static std::atomic<int> count{0};
  const auto number = std::to_string(std::random_device{}()) + "-" + std::to_string(count++);
  const auto name = "rws t\xC3\xA9st " + (Sandbox::OneName.empty() ? number : Sandbox::OneName);
  const fs::path path = fs::temp_directory_path() / ToFsPath(name);
  fs::create_directories(path);
  return FromFsPath(path);
}
}  // namespace

fs::path ToFsPath(const std::string& path) { return std::u8string(path.begin(), path.end()); }

std::string FileBytes(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return bytes.str();
}

void UseQuickFolder() {
  constexpr char kInMemory[] = "/dev/shm";
  if (FileSystem().CanWriteInto(kInMemory)) SetVariable("TMPDIR", kInMemory);
}

std::string Sandbox::OneName;

Sandbox::Sandbox() : root_(NewFolder()) {}

Sandbox::~Sandbox() {
  std::error_code ignored;
  fs::remove_all(ToFsPath(root_), ignored);
}

std::string Sandbox::Path(std::string_view name) const {
  std::string path(name);
  std::replace(path.begin(), path.end(), '/', kSeparator);
  return path.empty() ? root_ : root_ + kSeparator + path;
}

std::string Sandbox::Write(std::string_view name, std::string_view bytes) const {
  const fs::path path = ToFsPath(Path(name));
  fs::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << bytes;
  return Path(name);
}

std::string Sandbox::Read(std::string_view name) const {
  const fs::path path = ToFsPath(Path(name));
  return std::ifstream(path) ? FileBytes(path) : "<none>";
}

bool Sandbox::Exists(std::string_view name) const { return fs::exists(ToFsPath(Path(name))); }

void Sandbox::MakeFolder(std::string_view name) const {
  fs::create_directories(ToFsPath(Path(name)));
}

void Sandbox::Remove(std::string_view name) const { fs::remove(ToFsPath(Path(name))); }

void Sandbox::Link(std::string_view name, std::string_view target) const {
  const fs::path link = ToFsPath(Path(name));
  fs::create_symlink(ToFsPath(Path(target)).lexically_relative(link.parent_path()), link);
}

std::string Sandbox::Names(std::string_view folder) const {
  std::set<std::string> names;
  if (Exists(folder))
    for (const auto& entry : fs::directory_iterator(ToFsPath(Path(folder))))
      names.insert(FromFsPath(entry.path().filename()));
  std::string joined;
  for (const auto& name : names) joined += (joined.empty() ? "" : ",") + name;
  return joined;
}

}  // namespace rws::test
