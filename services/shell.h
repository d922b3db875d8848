#pragma once

#include <functional>
#include <optional>
#include <string>

#include "services/clock.h"

namespace rws {

/** Facts of the operating system, as the classic version call gives them. */
struct OsVersion {
  int Platform = 0, Major = 0, Minor = 0;
  /** The platform's own name of itself, such as "Debian GNU/Linux 12". */
  std::string ProductName;
};

/** What the program asks of the desktop and the system around it. */
struct Shell {
  /** Runs a verb ("open", "Play") on a path or on the address of a web page; a result from 0 to 32
   * means failure. */
  std::function<int(const std::string& verb, const std::string& path)> Execute;
  /** Shows a file in the system's text editor and does not wait for it; results as above. */
  std::function<int(const std::string& path)> OpenText;
  /** Plays a sound file and returns at once. */
  std::function<void(const std::string& path)> StartSound;
  std::function<void()> StopSound;
  /** Puts a UTF-8 text on the clipboard in place of what is there. */
  std::function<void(const std::string& text)> SetClipboard;
  /** The text of the clipboard in UTF-8; "" when it holds none. */
  std::function<std::string()> ClipboardText;
  std::function<void()> NotifyAssocChanged;
  /** The bytes of a small document at a web address, or nothing when it cannot be had. Events run
      while it waits; one fetch at a time. */
  std::function<std::optional<std::string>(const std::string& url)> Fetch;
  /** Ends a fetch that is under way. */
  std::function<void()> CancelFetch;
  /** Makes the program the desktop's one for mission files, or takes that back; gives the reason
      when it failed. Empty where the class keys of the settings are all that it takes. */
  std::function<std::string(bool on)> Associate;
  /** True if the desktop opens mission files with the program; empty as above. */
  std::function<bool()> IsAssociated;
  /** Takes the place of the one running instance for the life of the program; false when another
      holds it. A run that crashed does not. */
  std::function<bool()> TakeInstance;
  /** Tells the instance that holds the place what this start was to open. What cannot be told
      within half a second is dropped. */
  std::function<void(const std::string& path)> TellInstance;
  /** From now on calls `heard` from the event loop with what later starts were to open; for the
      instance that holds the place. */
  std::function<void(std::function<void(const std::string& path)> heard)> HearOtherStarts;
  /** Lets waiting user interface events run. */
  std::function<void()> PumpEvents;
  std::function<DateTime()> Now;
  std::function<OsVersion()> Version;
  /** Text of the system's default locale for a locale information code. */
  std::function<std::string(int code)> LocaleText;
  std::function<std::string()> HomeFolder;
};

}  // namespace rws
