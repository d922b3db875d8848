#include "services/update_check.h"

#include "services/faults.h"
#include "services/setting_values.h"
#include "services/system_facts.h"
#include "services/version.h"

namespace rws {

namespace {

constexpr char kNoConnection[] = "Unable to make connection.";

std::string WithoutEnd(const std::string& text) {
  return text.substr(0, text.find_last_not_of(" \r\n") + 1);
}

void Inform(const Services& services, const std::string& text) {
  services.Ask.MsgBox(text, Buttons::Ok, Icon::Information, kProgramTitle);
}

}  // namespace

std::string SiteAddress(const Services& services) {
  return "http://" + ReadSetting(services.Settings, setting::UpdateHost) + "/rws/";
}

std::string VersionAddress(const Services& services) {
  return SiteAddress(services) + "version.txt";
}

std::string GetVersionText(const Services& services) {
  std::optional<std::string> body;
  ResumeNext([&] { body = services.System.Fetch(VersionAddress(services)); });
  return body ? services.Page.ToUtf8(WithoutEnd(*body)) : kNoConnection;
}

void TellVersion(const Services& services, const std::string& fetched) {
  const std::string own = VersionText();
  if (fetched.starts_with("Unable")) return Inform(services, fetched);
  // As text and not as numbers, so that 1.10.0 sorts before 1.9.0; settled long ago.
  if (fetched < own) return;
  if (fetched == own)
    return Inform(services, "Your version: " + own + "\n\nCurrent version: " + fetched);
  const std::string site = SiteAddress(services);
  const Answer answer = services.Ask.MsgBox(
      "Version " + fetched + " is available at " + site + ".\nWould you like to go there now?",
      Buttons::YesNo, Icon::Question, kProgramTitle);
  if (answer == Answer::Yes) OpenFile(services, site);
}

}  // namespace rws
