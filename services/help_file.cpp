#include "services/help_file.h"

#include <cctype>

#include "services/faults.h"
#include "services/paths.h"
#include "services/text.h"

namespace rws {

namespace {

std::string FileAddress(const std::string& path) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string address = path.starts_with('/') ? "file://" : "file:///";
  for (const char c : Replace(path, "\\", "/")) {
    const auto byte = static_cast<unsigned char>(c);
    const bool isPlain = byte < 0x80 && (std::isalnum(byte) || std::string_view("/:._-").find(c) !=
                                                                   std::string_view::npos);
    if (isPlain)
      address += c;
    else
      address.append({'%', kDigits[byte >> 4], kDigits[byte & 15]});
  }
  return address;
}

/** A page that leads to one section of the help; the help itself when it cannot be written.
   Desktops open files, and drop or refuse the section behind a file's address. */
std::string PageFor(const Services& services, const std::string& help, const std::string& section) {
  const std::string address = FileAddress(help) + "#" + section;
  const std::string page = BuildPath(services.AppPath, "RWS.HLP.at.html");
  const bool written = ResumeNext([&] {
    services.Files.ReplaceFile(page,
                               "<!DOCTYPE html>\n<meta charset=\"utf-8\">\n<title>RWS Edit - "
                               "Help</title>\n<meta http-equiv=\"refresh\" content=\"0; url=" +
                                   address + "\">\n<a href=\"" + address +
                                   "\">RWS Edit - Help</a>\n");
  });
  return written ? page : help;
}

}  // namespace

std::string HelpFile(const Services& services) { return DataFile(services, kHelpFile); }

void OpenHelp(const Services& services, const std::string& section) {
  constexpr int kHighestShellFailure = 32;
  const std::string path = HelpFile(services);
  const auto tell = [&](const std::string& reason) {
    services.Ask.MsgBox("The help \"" + path + "\" cannot be shown: " + reason, Buttons::Ok,
                        Icon::Exclamation, kProgramTitle);
  };
  if (!services.Files.FileExists(path)) return tell("the file does not exist.");
  const std::string shown = section.empty() ? path : PageFor(services, path, section);
  if (services.System.Execute("open", shown) <= kHighestShellFailure)
    tell("no program could be started for it.");
}

}  // namespace rws
