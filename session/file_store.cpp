#include "session/file_store.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

#include "services/faults.h"
#include "services/paths.h"

namespace rws {

namespace {

constexpr char kStore[] = "Files";

/** In this form names sort by their time. */
std::string SortedStamp(const DateTime& time) {
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d-%02d-%02d", time.Year, time.Month, time.Day,
                time.Hour, time.Minute, time.Second);
  return text;
}

int DayNumber(int year, int month, int day) {
  using namespace std::chrono;
  const year_month_day date{std::chrono::year(year), std::chrono::month(unsigned(month)),
                            std::chrono::day(unsigned(day))};
  return static_cast<int>(sys_days(date).time_since_epoch().count());
}

/** The day a file was kept, by its name; nothing for a file that is none of the store's. */
std::optional<int> KeptOn(const std::string& name) {
  int year = 0, month = 0, day = 0;
  if (std::sscanf(name.c_str(), "%4d-%2d-%2d ", &year, &month, &day) != 3) return {};
  return DayNumber(year, month, day);
}

std::vector<std::string> StoredNames(const Services& services) {
  std::vector<std::string> names;
  ResumeNext([&] {
    names = services.Files.ListFileNames(
        StoreFolder(services), [](const std::string& name) { return KeptOn(name).has_value(); });
  });
  return names;
}

}  // namespace

std::string RecoveryFolder(const Services& services) {
  // Runs with settings of their own may be under way together.
  const std::string mark = services.Instance.empty() ? "" : "-" + services.Instance;
  return BuildPath(services.AppPath, kRecoveryFolder + mark);
}

std::string StoreFolder(const Services& services) {
  return BuildPath(RecoveryFolder(services), kStore);
}

void MakeFolder(const Services& services, const std::string& path) {
  if (!services.Files.FolderExists(path)) services.Files.CreateFolder(path);
}

std::string ShortName(const std::string& name) {
  constexpr std::size_t kMost = 120;
  std::size_t end = std::min(name.size(), kMost);
  while (end < name.size() && end > 0 && (name[end] & 0xC0) == 0x80) --end;
  return name.substr(0, end);
}

std::string KeepInStore(const Services& services, const std::string& path) {
  MakeFolder(services, RecoveryFolder(services));
  MakeFolder(services, StoreFolder(services));
  const std::string start = BuildPath(StoreFolder(services), SortedStamp(services.System.Now()));
  for (int i = 1;; ++i) {
    char number[16];
    std::snprintf(number, sizeof number, " %03d ", i);
    const std::string name = start + number + ShortName(GetFileName(path));
    if (services.Files.FileExists(name)) continue;
    services.Files.LinkOrCopy(path, name);
    return name;
  }
}

StoreLimits LimitsOf(const Preferences& prefs) {
  return {prefs.StoreDays, std::uint64_t(prefs.StoreMegabytes) << 20};
}

void LimitStore(const Services& services, const StoreLimits& limits) {
  const DateTime now = services.System.Now();
  const int today = DayNumber(now.Year, now.Month, now.Day);
  const auto names = StoredNames(services);
  std::uint64_t bytes = 0;
  for (auto name = names.rbegin(); name != names.rend(); ++name) {
    const std::string path = BuildPath(StoreFolder(services), *name);
    ResumeNext([&] { bytes += services.Files.Stamp(path).Size; });
    const bool isOld = today - *KeptOn(*name) > limits.Days;
    if (isOld || bytes > limits.Bytes)
      ResumeNext([&] { services.Files.DeleteFile(path, IfReadOnly::AllTheSame); });
  }
}

std::uint64_t StoreBytes(const Services& services) {
  std::uint64_t bytes = 0;
  for (const auto& name : StoredNames(services))
    ResumeNext([&] { bytes += services.Files.Stamp(BuildPath(StoreFolder(services), name)).Size; });
  return bytes;
}

}  // namespace rws
