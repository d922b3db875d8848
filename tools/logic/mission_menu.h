#pragma once

#include <string>
#include <vector>

#include "mission/document.h"
#include "services/services.h"

/** The entries of the mission menu that attach a sound, show the text and open the briefing. */
namespace rws {

/** Asks for a sound and for its place, and attaches that place to the current mission. No file is
    copied, for all that the questions say: the sound must stand there already or be put there by
    the user. A path with a blank is attached too, after a box that tells that the game cannot use
    it. True if something was attached. */
bool AddSoundFile(Document& doc, const Services& services);

/** Shows the file of the current mission in the system's text editor and does not wait for it. A
    failure is told in the status bar. */
void ViewMissionText(const Document& doc, const Services& services);

/** What the briefing editor is opened with. */
struct BriefFields {
  /** Full path of the ".properties" file, its name in lower case unless a system that minds
      it has one of the mission's own spelling, or that name is another mission's. */
  std::string BriefName;
  /** Folder of the mission. */
  std::string MissionPath;
  /** Caption of the weather; "" for one that is not in the list. */
  std::string Weather;
  std::string Map;
  /** "h:mm"; "" for a time that is no number. */
  std::string MisTime;
  /** Cloud height in metres. */
  std::string Clouds;
};

/** The fields for the current mission. `weatherCaptions` are the rows of the weather list. */
BriefFields MakeBriefFields(const Document& doc, const Services& services,
                            const std::vector<std::string>& weatherCaptions);

}  // namespace rws
