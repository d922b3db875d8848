#include "tests/support/sandbox.h"

#include <atomic>
#include <filesystem>
#include <fstream>
#include <random>
#include <set>
#include <sstream>

namespace rws::test {

namespace fs = std::filesystem;

namespace {
std::string NewFolder() {
  static std::atomic<int> count{0};
  const auto name =
      "rws t\xC3\xA9st " + std::to_string(std::random_device{}()) + "-" + std::to_string(count++);
  const fs::path path = fs::temp_directory_path() / name;
  fs::create_directories(path);
  return path.string();
}
}  // namespace

Sandbox::Sandbox() : root_(NewFolder()) {}

Sandbox::~Sandbox() {
  std::error_code ignored;
  fs::remove_all(root_, ignored);
}

std::string Sandbox::Path(std::string_view name) const {
  return name.empty() ? root_ : root_ + "/" + std::string(name);
}

std::string Sandbox::Write(std::string_view name, std::string_view bytes) const {
  const fs::path path = Path(name);
  fs::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << bytes;
  return path.string();
}

std::string Sandbox::Read(std::string_view name) const {
  std::ifstream file(Path(name), std::ios::binary);
  if (!file) return "<none>";
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return bytes.str();
}

bool Sandbox::Exists(std::string_view name) const { return fs::exists(fs::path(Path(name))); }

void Sandbox::MakeFolder(std::string_view name) const { fs::create_directories(Path(name)); }

std::string Sandbox::Names(std::string_view folder) const {
  std::set<std::string> names;
  if (Exists(folder))
    for (const auto& entry : fs::directory_iterator(Path(folder)))
      names.insert(entry.path().filename().string());
  std::string joined;
  for (const auto& name : names) joined += (joined.empty() ? "" : ",") + name;
  return joined;
}

}  // namespace rws::test
