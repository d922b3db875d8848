#pragma once

#include <cstdint>
#include <string_view>

namespace rws {

struct MissionFacts;

/** How a mission is played. The game decides by the folder; a mission that lies elsewhere can only
    be guessed at. */
enum class MissionKind : std::uint8_t { Unknown, Single, Campaign, Coop, Dogfight };

/** "single", "campaign", "coop", "dogfight"; "" for one that is not known. */
std::string_view KindWord(MissionKind kind);

/** By the folder, given from the root on: below "Missions/Single", "Missions/Campaign",
    "Missions/Net/Coop" or "Missions/Net/Dogfight" in any letter case, the lowest of several.
    `Unknown` elsewhere. */
MissionKind KindOfFolder(std::string_view folder);

/** By what a mission holds: home bases make a dogfight, the player's flight a single mission, other
    flights that people may fly a coop. */
MissionKind GuessedKind(const MissionFacts& facts);

}  // namespace rws
