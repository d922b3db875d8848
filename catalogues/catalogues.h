#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "catalogues/records.h"

namespace rws {

/** All that the program knows of the game. `main` owns it and hands it on; a test starts from a new
    one. The map table is part of the document, since reading a mission needs it. */
struct Catalogues {
  std::vector<rws::Aircraft> Aircraft;
  std::vector<Country> Countries;
  std::vector<Squadron> Squadrons;
  std::vector<DogFightPlane> DogFightAircraft;

  std::vector<SkinFolder> Skins;
  /** Highest index of `Skins`; -1 when there is none. */
  std::ptrdiff_t HighestSkin = -1;
  /** Bare names of the "*.bmp" files with pilots and nose art, sorted without regard to case. */
  std::vector<std::string> PilotSkins, NoseArts;
};

}  // namespace rws
