#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "catalogues/aircraft_table.h"
#include "catalogues/records.h"
#include "catalogues/squadron_table.h"

namespace rws {

struct ListedNames;

/** All that the program knows of the game. `main` owns it and hands it on; a test starts from a new
    one. The map table is part of the document, since reading a mission needs it. */
struct Catalogues {
  AircraftTable Aircraft;
  std::vector<Country> Countries;
  SquadronTable Squadrons;
  std::vector<DogFightPlane> DogFightAircraft;
  /** Those of the player's own game, which stand in place of the table's; empty without its lists.
   */
  std::vector<DogFightPlane> ListedDogFight;
  /** Those that the user has added by hand. */
  std::vector<DogFightPlane> OwnDogFight;
  /** The lists that stand in place of the tables; null without any. */
  std::shared_ptr<const ListedNames> Listed;
  bool UnlistedFlyable = true;

  std::vector<SkinFolder> Skins;
  /** Highest index of `Skins`; -1 when there is none. */
  std::ptrdiff_t HighestSkin = -1;
  /** Bare names of the "*.bmp" files with pilots and nose art, sorted without regard to case. */
  std::vector<std::string> PilotSkins, NoseArts;
};

}  // namespace rws
