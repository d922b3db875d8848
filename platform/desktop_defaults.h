#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "services/file_system.h"

/** Which program the desktop opens a file with, by the rules that the desktops share. */
namespace rws {

/** The folders that the desktop reads, the user's own first. */
struct DesktopFolders {
  std::vector<std::string> Config, Data;
};

DesktopFolders FindDesktopFolders();

/** Type of the files whose name ends so, "*.mis" say; "" when the desktop has none for them. */
std::string TypeOfGlob(const FileSystem& files, const DesktopFolders& folders,
                       const std::string& glob);

/** Entry of the program that opens files of exactly this type, such as "editor.desktop"; "" when
    there is none. */
std::string DefaultProgram(const FileSystem& files, const DesktopFolders& folders,
                           const std::string& type);

/** The programs named for a type in one group of a list of defaults, first choice first. */
std::vector<std::string> ProgramsOf(std::string_view list, std::string_view group,
                                    std::string_view type);

/** The list with those programs put in the place of the ones that it names; without any the line
    goes. All other bytes stay. */
std::string WithPrograms(const std::string& list, const std::string& group, const std::string& type,
                         const std::vector<std::string>& programs);

}  // namespace rws
