#pragma once

#include <string>
#include <vector>

#include "mission/document.h"
#include "services/services.h"
#include "services/system_code_page.h"

/** What all commands of the tool share. */
namespace rws {

inline constexpr int kDone = 0, kFailed = 1, kBadUsage = 2;

/** The options of all commands. */
struct CliOptions {
  std::string Tables, Game;
  bool NoLists = false;
  int CodePage = SystemCodePage();
};

/** Tells the user what went wrong. */
void Complain(const std::string& text);

/** Services that find the tables; `called` is the name that the program was called by. */
Services NewServices(const CliOptions& options, const std::string& called);

/** The same with the program's own folder for backups and copies, which is made. A fault when that
    cannot be. Its log is silent: who uses it tells what failed. */
Services WritingServices(const Services& services);

/** The files that the user named. Where the shell leaves that to the program, a pattern of "*" and
    "?" as the last part of a path gives the files that it stands for, sorted without regard to
    case; one that stands for none is given as it is. */
std::vector<std::string> NamedFiles(const Services& services,
                                    const std::vector<std::string>& given);

/** How a mission is read. */
enum class ReadAs {
  Anew,  // by the rules of the window, for a file that is made anew
  Kept   // with every line kept
};

/** What the reading of a mission leans on: the maps, the game's folder, the way of reading. */
Document BaseFor(const Services& services, const CliOptions& options, const std::string& path,
                 ReadAs as);

/** Reads one mission without touching the disk; a repair of its line ends stays in memory. A file
    that is no mission is a fault. */
Document ReadMission(const Services& services, const CliOptions& options, const std::string& path,
                     std::string bytes, ReadAs as);

}  // namespace rws
