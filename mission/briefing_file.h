#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "services/services.h"

/** The `.properties` file beside a mission: its name, short description and briefing. */
namespace rws {

/** The texts of a briefing, in the encoding of mission text. Lines are parted by carriage return
    and line feed. */
struct Briefing {
  std::string Name, Short, Description;

  bool operator==(const Briefing&) const = default;
};

/** Reads the bytes of a file. A line that begins with none of the three keys goes on with the text
    before it, joined directly; lines before the first key are dropped. Any line end will do. */
Briefing ParseBriefing(std::string_view bytes);

/** The bytes of a file. A line break behind the short description and the briefing is added by
    each writing. */
std::string BriefingText(const Briefing& briefing);

/** The briefing of a file; nothing if there is no such file. One that cannot be read is a fault. */
std::optional<Briefing> ReadBriefing(const Services& services, const std::string& path);

/** Writes a file, which is whole or as it was. A file that could not be written is a fault. */
void SaveBriefing(const Services& services, const std::string& path, const Briefing& briefing);

}  // namespace rws
