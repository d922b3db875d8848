#include "services/system_facts.h"

#include "services/faults.h"

namespace rws {

std::string GetOSName(const OsVersion& version) {
  struct Row {
    int Platform, Major, Minor;
    const char* Name;
  };
  constexpr int kAny = -1;
  static constexpr Row kRows[] = {
      {1, kAny, 0, "Windows 95"},          {1, kAny, 10, "Windows 98"},
      {1, kAny, 90, "Windows Millennium"}, {2, 3, kAny, "Windows NT 3.51"},
      {2, 4, kAny, "Windows NT 4.0"},      {2, 5, 0, "Windows 2000"},
      {2, 5, kAny, "Windows XP"}};
  if (version.Platform != 1 && version.Platform != 2) return "Failed";
  for (const auto& row : kRows) {
    if (row.Platform == version.Platform && (row.Major == kAny || row.Major == version.Major) &&
        (row.Minor == kAny || row.Minor == version.Minor))
      return row.Name;
  }
  return "";
}

std::string SystemVersionText(const Services& services) {
  const OsVersion version = services.System.Version();
  const std::string name = GetOSName(version);
  return name.empty() || name == "Failed" ? version.ProductName : name;
}

std::string GetLocaleText(const Services& services, int code) {
  return services.System.LocaleText(code);
}

void OpenFile(const Services& services, const std::string& path) {
  const int code = services.System.Execute("open", path);
  if (code >= 0 && code <= 32)
    services.Ask.MsgBox("No program assocationed in Windows!", Buttons::Ok, Icon::None,
                        kProgramTitle);
}

void NotifyAssocChanged(const Services& services) { services.System.NotifyAssocChanged(); }

std::string FileRename(const Services& services, const std::string& from, const std::string& to) {
  std::string reason;
  Trap([&] { services.Files.MoveFile(from, to); },
       [&](const Fault& caught) { reason = caught.Text; });
  return reason;
}

}  // namespace rws
