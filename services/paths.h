#pragma once

#include <string>
#include <string_view>

/** Path texts. A path is UTF-8 on Windows and the system's own bytes elsewhere; both "\" and "/"
    separate. Nothing here touches the disk. */
namespace rws {

/** The system's own separator. */
extern const char kSeparator;
/** Where there are drives, the one that is there always: "C:\"; "" elsewhere. */
extern const char kFirstDrive[];
/** True for a drive alone; where there are no drives, for the root. */
bool IsDrive(std::string_view path);

bool IsSeparator(char c);
/** A character that no file name can hold on one of the systems. */
bool IsRefusedInName(char c);
/** Why this system cannot give a file or folder the name that `path` ends with; "" where it can. */
std::string NameRefusal(std::string_view path);

/** `folder` and `name` joined by one separator; an empty folder gives the name. */
std::string BuildPath(std::string_view folder, std::string_view name);

/** The last part of a path. */
std::string GetFileName(std::string_view path);
/** The last part without its extension. */
std::string GetBaseName(std::string_view path);
/** The path without its last part and the separator before it; "" when nothing is left. */
std::string GetParentFolderName(std::string_view path);
/** The path with the file name removed; keeps the trailing separator. */
std::string StripFileName(std::string_view path);

/** True if `name`, taken within a folder, leads out of it again by "..". */
bool ClimbsOut(std::string_view name);

}  // namespace rws
