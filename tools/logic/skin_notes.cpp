#include "tools/logic/skin_notes.h"

#include <algorithm>

#include "catalogues/aircraft.h"
#include "services/ini_file.h"
#include "services/paths.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr std::array<const char*, 3> kKeys = {"Skinner", "Country", "Comments"};
/** What a missing key reads as; no line can hold it. */
constexpr const char* kMissing = "\n";

bool IsControl(char c) { return static_cast<unsigned char>(c) < ' '; }

/** The scheme's name as the file spells it. A name that the code page lacks stays in the system's
    spelling, so that no two schemes share their notes. */
std::string SectionOf(const Services& services, std::string_view scheme) {
  std::string section = services.Page.FromUtf8(scheme).value_or(std::string(scheme));
  std::replace_if(section.begin(), section.end(), IsControl, '_');
  return section;
}

std::string NoteIn(std::string_view bytes, std::string_view section, const char* key,
                   const char* fallback) {
  std::string note = IniValue(bytes, section, key, fallback);
  if (note == "Empty") note.clear();
  return note.substr(0, kLongestNote);
}

std::string BytesOf(const Services& services, const std::string& file) {
  return services.Files.FileExists(file) ? services.Files.ReadFile(file) : "";
}

}  // namespace

SchemeList ListSchemes(const Catalogues& catalogues, std::string_view className) {
  SchemeList list;
  const std::string folder = GetPlaneFolder(catalogues, className);
  const auto row = std::find_if(catalogues.Skins.begin(), catalogues.Skins.end(),
                                [&](const auto& r) { return EqualNoCase(r.Folder, folder); });
  if (folder.empty() || row == catalogues.Skins.end()) return list;
  list.Folder = row->Path;
  for (const auto& file : row->Files) {
    std::string name = GetBaseName(file);
    const bool isFile = name != file;
    if (isFile && name != "Void") list.Names.push_back(std::move(name));
  }
  return list;
}

std::string SideFile(const Services& services, std::string_view imagesPath,
                     std::string_view planeName) {
  std::string name = services.Page.ToUtf8(planeName);
  std::replace_if(name.begin(), name.end(), IsRefusedInName, '_');
  return BuildPath(imagesPath, name + ".ini");
}

SkinNotes ReadSkinNotes(const Services& services, const std::string& file,
                        std::string_view scheme) {
  const std::string bytes = BytesOf(services, file), section = SectionOf(services, scheme);
  SkinNotes notes;
  for (std::size_t i = 0; i < notes.size(); ++i) notes[i] = NoteIn(bytes, section, kKeys[i], "");
  return notes;
}

void SaveSkinNotes(const Services& services, const std::string& file, std::string_view scheme,
                   const SkinNotes& notes) {
  const std::string section = SectionOf(services, scheme);
  const std::string old = BytesOf(services, file);
  std::string bytes = old;
  for (std::size_t i = 0; i < notes.size(); ++i) {
    // A value that somebody wrote by hand may be longer than its box shows.
    if (NoteIn(bytes, section, kKeys[i], kMissing) != notes[i])
      bytes = WithIniValue(bytes, section, kKeys[i], notes[i]);
  }
  if (bytes != old) services.Files.ReplaceFile(file, bytes);
}

}  // namespace rws
