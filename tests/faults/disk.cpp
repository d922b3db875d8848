#include "tests/faults/disk.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <utility>

#include "services/faults.h"
#include "tests/support/sandbox.h"

namespace rws::test {

namespace fs = std::filesystem;

namespace {

bool IsOneOf(std::string_view action, std::initializer_list<std::string_view> actions) {
  return std::find(actions.begin(), actions.end(), action) != actions.end();
}

}  // namespace

DiskState DiskState::Of(const std::string& folder) {
  DiskState disk;
  const fs::path root = ToFsPath(folder);
  std::vector<std::pair<fs::path, std::string>> linked;
  for (const auto& entry : fs::recursive_directory_iterator(root)) {
    const std::u8string text = entry.path().lexically_relative(root).generic_u8string();
    const std::string name(text.begin(), text.end());
    if (entry.is_directory()) {
      disk.Folders.insert(name);
      continue;
    }
    File file{FileBytes(entry.path()), name};
    if (entry.hard_link_count() > 1) {
      for (const auto& [path, first] : linked)
        if (fs::equivalent(path, entry.path())) file.Same = first;
      linked.emplace_back(entry.path(), file.Same);
    }
    disk.Files[name] = std::move(file);
  }
  return disk;
}

void DiskState::PutInto(const std::string& folder) const {
  const fs::path root = ToFsPath(folder);
  for (const auto& entry : fs::directory_iterator(root)) fs::remove_all(entry.path());
  for (const auto& name : Folders) fs::create_directories(root / ToFsPath(name));
  for (const auto& [name, file] : Files)
    if (file.Same == name) std::ofstream(root / ToFsPath(name), std::ios::binary) << file.Bytes;
  for (const auto& [name, file] : Files)
    if (file.Same != name) fs::create_hard_link(root / ToFsPath(file.Same), root / ToFsPath(name));
}

const std::string* DiskState::Find(const std::string& path) const {
  const auto found = Files.find(path);
  return found == Files.end() ? nullptr : &found->second.Bytes;
}

bool DiskState::HoldsSomewhere(const std::string& bytes) const {
  return std::any_of(Files.begin(), Files.end(),
                     [&](const auto& file) { return file.second.Bytes == bytes; });
}

bool FaultyDisk::Befalls(FaultKind kind, std::string_view action) {
  switch (kind) {
    case FaultKind::Error:
      return true;
    case FaultKind::ShortWrite:
      return IsOneOf(action, {"write", "append"});
    case FaultKind::FullDisk:
      return IsOneOf(action, {"create", "write", "flush", "append", "link", "create folder"});
    case FaultKind::Refused:
      return IsOneOf(action, {"create", "append", "link", "create folder", "take name", "move",
                              "delete", "read", "list", "lock"});
  }
  return false;
}

const char* FaultyDisk::Reason(FaultKind kind) {
  if (kind == FaultKind::FullDisk) return "No space left on device";
  return kind == FaultKind::Refused ? "Permission denied" : "Input/output error";
}

bool FaultyDisk::Fails(const FileStep& step, std::size_t number) const {
  if (number < from_ || !Befalls(kind_, step.Action)) return false;
  if (number == from_) return true;
  // A full disk stays full, and what is refused once is refused again; an error may have gone.
  if (kind_ == FaultKind::FullDisk) return true;
  return kind_ == FaultKind::Refused &&
         std::any_of(Failed.begin(), Failed.end(), [&](const MetStep& met) {
           return met.Action == step.Action && met.Path == step.Path;
         });
}

void FaultyDisk::Before(const FileStep& step) {
  if (!Fails(step, met_++)) return;
  Failed.push_back({std::string(step.Action), step.Path});
  if (kind_ == FaultKind::ShortWrite) WriteHalf(step);
  throw FileFault(kind_ == FaultKind::Refused ? fault::Permission : fault::FileIo, step.Action,
                  step.Path, Reason(kind_));
}

void WriteHalf(const FileStep& step) {
  std::ofstream file(ToFsPath(std::string(step.Into)), std::ios::binary | std::ios::app);
  file << step.Bytes.substr(0, step.Bytes.size() / 2);
}

}  // namespace rws::test
