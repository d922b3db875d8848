#include "library/seen_aircraft.h"

#include <gtest/gtest.h>

#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws {
namespace {

TEST(SeenAircraft, HasTheLoadoutsOfAllItsFlights) {
  test::Sandbox box;
  test::World world(box.Path());
  const auto write = [&](const char* name, const char* flights) {
    box.Write(name, test::CrlfText("[MAIN]|[Wing]| r0100| r0101|" + std::string(flights)));
  };
  write("a.mis",
        "[r0100]|Planes 1|Class air.DUCK|weapons 2xA|[r0101]|Planes 1|Class air.DUCKY|weapons no");
  write("b.mis",
        "[r0100]|Planes 1|Class AIR.DUCK|weapons 2xa|[r0101]|Planes 1|Class air.DUCK|weapons none");
  write("c.mis", "[r0100]|Planes 1|Class air.GOOSE|weapons no|[NStationary]|0 DUCK no");
  Mission open;
  open.Flights.resize(1);
  open.Flights[0].Class = "DUCK";
  open.Flights[0].Weapons = "4xB";
  std::vector<SeenIn> missions;
  for (const char* name : {"a.mis", "b.mis", "c.mis", "gone.mis"})
    missions.push_back({box.Path(name)});
  missions.push_back({box.Path("a2.mis"), &open});
  SeenAircraft seen = LookForAircraft(world.Services, "DUCK", missions);
  EXPECT_EQ(test::Joined(seen.Loadouts), "2xA|4xB");
  EXPECT_EQ(SeenText(seen),
            "Seen in 3 missions: a.mis, b.mis, a2.mis. 1 mission could not be read.");
  EXPECT_EQ(world.Log.size(), 1U);
  std::string steps;
  seen = LookForAircraft(world.Services, "DUCK", missions, [&](const WorkStep& step) {
    steps += std::to_string(step.Done) + "/" + std::to_string(step.Of) + " ";
    return step.Done < 1;
  });
  EXPECT_EQ(steps, "0/5 1/5 ");
  EXPECT_EQ(SeenText(seen),
            "Seen in 1 mission: a.mis. The search was stopped: others were not looked at.");
  seen.Missions.assign(1007, "x.mis");
  EXPECT_EQ(SeenMissionsText(seen), "x.mis, x.mis, x.mis, x.mis, x.mis and 1,002 more");
}

}  // namespace
}  // namespace rws
