#include "services/update_check.h"

#include "services/faults.h"
#include "services/system_facts.h"
#include "services/version.h"

namespace rws {

namespace {

constexpr char kNoConnection[] = "Unable to make connection.";
constexpr char kNoSite[] = "\n\nThis build knows no place to ask for updates.";

std::string WithoutEnd(const std::string& text) {
  return text.substr(0, text.find_last_not_of(" \r\n") + 1);
}

void Inform(const Services& services, const std::string& text) {
  services.Ask.MsgBox(text, Buttons::Ok, Icon::Information, kProgramTitle);
}

/** Address of the page that a newer version is offered at. */
std::string PageAddress(const Services& services) { return services.UpdateSite + "/rws/"; }

}  // namespace

std::string BuiltInUpdateSite() { return RWS_UPDATE_SITE; }

std::string GetVersionText(const Services& services) {
  if (services.UpdateSite.empty()) return std::string(kNoConnection) + kNoSite;
  std::optional<std::string> body;
  ResumeNext([&] { body = services.System.Fetch(PageAddress(services) + "version.txt"); });
  return body ? services.Page.ToUtf8(WithoutEnd(*body)) : kNoConnection;
}

void TellVersion(const Services& services, const std::string& fetched) {
  const std::string own = VersionText();
  if (fetched.starts_with("Unable")) return Inform(services, fetched);
  // As text and not as numbers, so that 1.10.0 sorts before 1.9.0; settled long ago.
  if (fetched < own) return;
  if (fetched == own)
    return Inform(services, "Your version: " + own + "\n\nCurrent version: " + fetched);
  const std::string site = PageAddress(services);
  const Answer answer = services.Ask.MsgBox(
      "Version " + fetched + " is available at " + site + ".\nWould you like to go there now?",
      Buttons::YesNo, Icon::Question, kProgramTitle);
  if (answer == Answer::Yes) OpenFile(services, site);
}

}  // namespace rws
