#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "catalogues/catalogues.h"
#include "mission/document.h"
#include "services/services.h"

namespace rws {

/** How old the game is that the tables describe, by the aircraft that they have. */
enum class GameAge : std::uint8_t { Before410, V410, Since411 };

/** What the tables know, to be asked many times and by several threads. A table that is empty knows
    nothing: nothing is missing in it. */
class CheckTables {
 public:
  struct Plane {
    std::string Name;
    bool Flyable = false;
    std::string SkinFolder;
    std::unordered_set<std::string> Loadouts;  // keys in lower case
  };

  CheckTables(const Catalogues& tables, const std::vector<MapRow>& maps, const Services& services);

  /** An aircraft by its class without "air."; null for one that the tables lack. */
  const Plane* FindPlane(std::string_view planeClass) const;
  bool HasPlanes() const { return !planes_.empty(); }
  bool HasParked(std::string_view planeClass) const;
  bool HasSquadron(std::string_view code) const;
  bool HasMap(std::string_view path) const;
  /** An aircraft by the word that home bases have for it. */
  bool HasBasePlane(std::string_view word) const;

  GameAge Age() const { return age_; }
  const CodePage& Page() const { return services_.Page; }
  /** Services that tell nobody anything, and the maps, for the rules that need a document. */
  const Services& Quiet() const { return services_; }
  const Document& Maps() const { return maps_; }

 private:
  std::string Lower(std::string_view text) const { return services_.Page.LCase(text); }

  Services services_;
  Document maps_;
  std::unordered_map<std::string, Plane> planes_;
  std::unordered_set<std::string> parked_, squadrons_, mapPaths_, basePlanes_;
  GameAge age_ = GameAge::Since411;
};

/** Reads the tables from their files, a missing one is told, and puts the lists of `inUse`, if it
    has any, in their place. What was learnt from missions since is not in it. */
std::shared_ptr<const CheckTables> ReadCheckTables(const Services& services,
                                                   const Catalogues& inUse = {});

}  // namespace rws
