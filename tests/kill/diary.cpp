#include "tests/kill/diary.h"

#include <string_view>

namespace rws::test {

std::string MarkIn(const std::string& bytes) {
  constexpr std::string_view kSection = "[KillTest]";
  const auto section = bytes.find(kSection);
  if (section == bytes.npos) return "none";
  const auto start = bytes.find_first_not_of("\r\n ", section + kSection.size());
  if (start == bytes.npos) return "none";
  const auto end = bytes.find_first_of("\r\n", start);
  return end == bytes.npos ? "none" : bytes.substr(start, end - start);
}

DiaryReader::DiaryReader(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string what, mark, sum;
  while (file >> what >> mark >> sum) {
    if (mark != "*") marks_.insert(mark);
    if (what == "rests") {
      stand_[mark] = {sum};
    } else if (what == "writes") {
      stand_[mark].insert(sum);
      if (promises_.contains(mark)) promises_[mark].Written.insert(sum);
    } else if (what == "clean") {
      promises_.erase(mark);
    } else if (what == "keeps") {
      if (promises_.contains(mark)) promises_[mark].Texts.insert(sum);
    } else if (what == "kept") {
      promises_[mark] = {{sum}, false, {}};
    } else if (what == "may-save") {
      for (auto& [each, promise] : promises_) promise.MaySave = true;
    } else if (what == "may-drop") {
      promises_.clear();
    }
  }
}

bool DiaryReader::MayStand(const std::string& mark, const std::string& sum) const {
  const auto found = stand_.find(mark);
  return found != stand_.end() && found->second.contains(sum);
}

bool DiaryReader::AreKept(const std::string& mark, const std::set<std::string>& offered,
                          const std::string& stands) const {
  const auto found = promises_.find(mark);
  if (found == promises_.end()) return true;
  for (const auto& text : found->second.Texts)
    if (offered.contains(text) || stands == text) return true;
  return found->second.MaySave && found->second.Written.contains(stands);
}

int DiaryReader::Promises() const { return static_cast<int>(promises_.size()); }

}  // namespace rws::test
