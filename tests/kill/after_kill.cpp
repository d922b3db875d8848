#include "tests/kill/after_kill.h"

#include <filesystem>
#include <map>

#include "mission/interrupted.h"
#include "mission/line_array.h"
#include "services/checksum.h"
#include "services/faults.h"
#include "services/paths.h"
#include "services/text.h"
#include "session/half_renamed.h"
#include "session/recovery.h"
#include "tests/kill/diary.h"

namespace rws::test {

namespace {

namespace fs = std::filesystem;

/** Checksums of the files whose names end so, by their marks; briefings by their own. */
std::multimap<std::string, std::string> SumsOf(const Services& services, const std::string& folder,
                                               const std::string& ending) {
  std::multimap<std::string, std::string> sums;
  for (const auto& entry : services.Files.ListFolder(BuildPath(folder, "missions"))) {
    if (!entry.Name.ends_with(ending)) continue;
    const std::string bytes =
        services.Files.ReadFile(BuildPath(BuildPath(folder, "missions"), entry.Name));
    const bool isMission = ending == ".mis";
    sums.emplace(isMission ? MarkIn(bytes) : Sha1(bytes), Sha1(bytes));
  }
  return sums;
}

std::string DiaryPath(const std::string& folder) { return BuildPath(folder, "diary"); }

class Look {
 public:
  Look(const Services& services, const std::string& folder)
      : services_(services), folder_(folder), diary_(DiaryPath(folder)) {}

  AfterKill Run() {
    result_.Promised = diary_.Promises();
    GiveAllBack();
    Rename();
    Recover();
    LookAtMissions();
    LookAtBriefings();
    return result_;
  }

 private:
  void Wrong(const std::string& text) { result_.Wrong += text + "\n"; }

  void GiveAllBack() {
    for (const auto& found : FindInterrupted(services_)) {
      ++result_.GivenBack;
      Trap([&] { GiveBack(services_, found); }, [&](const Fault& caught) { Wrong(caught.Text); });
    }
  }
  void Rename() {
    const auto found = FindHalfRenamed(services_, BuildPath(folder_, "missions"));
    result_.HalfRenamed += static_cast<int>(found.size());
    if (const auto reason = FinishRenames(services_, found); !reason.empty()) Wrong(reason);
  }
  void Recover() {
    for (const auto& found : FindRecovered(services_)) {
      ++result_.Offered;
      if (!found.Fault.empty()) Wrong(found.File + ": " + found.Fault);
      const std::string text = found.Fault.empty() ? TextOf(services_, found) : "";
      offered_[MarkIn(text)].insert(Sha1(text));
    }
  }
  void LookAtMissions() {
    const auto sums = SumsOf(services_, folder_, ".mis");
    for (const auto& [mark, sum] : sums)
      if (!diary_.MayStand(mark, sum)) Wrong("mission \"" + mark + "\" stands as never written");
    for (const auto& mark : diary_.Marks()) {
      if (mark.starts_with("briefing-")) continue;
      if (sums.count(mark) != 1)
        Wrong("mission \"" + mark + "\" stands " + std::to_string(sums.count(mark)) + " times");
      const auto stands = sums.find(mark);
      if (!diary_.AreKept(mark, offered_[mark], stands == sums.end() ? "" : stands->second))
        Wrong("unsaved edits of \"" + mark + "\" were kept and are not offered");
    }
  }
  void LookAtBriefings() {
    const auto sums = SumsOf(services_, folder_, ".properties");
    for (const auto& mark : diary_.Marks())
      if (mark.starts_with("briefing-") && sums.count(mark.substr(9)) != 1)
        Wrong(mark + " stands " + std::to_string(sums.count(mark.substr(9))) + " times");
  }

  const Services& services_;
  const std::string& folder_;
  const DiaryReader diary_;
  std::map<std::string, std::set<std::string>> offered_;
  AfterKill result_;
};

}  // namespace

void BeginDiary(const Services& services, const std::string& folder) {
  fs::remove(DiaryPath(folder));
  Diary diary(DiaryPath(folder));
  for (const auto& [mark, sum] : SumsOf(services, folder, ".mis")) diary.Rests(mark, sum);
  for (const auto& [sum, same] : SumsOf(services, folder, ".properties"))
    diary.Rests("briefing-" + sum, same);
  // They are not lost either by a second kill, before the program has taken them back.
  for (const auto& found : FindRecovered(services))
    if (const std::string text = TextOf(services, found); found.Fault.empty())
      diary.Kept(MarkIn(text), Sha1(text));
}

AfterKill LookAfterKill(const Services& services, const std::string& folder) {
  AfterKill result = Look(services, folder).Run();
  if (result.Wrong.empty()) BeginDiary(services, folder);
  return result;
}

}  // namespace rws::test
