#pragma once

#include <cstddef>
#include <string>

#include "mission/document.h"
#include "services/services.h"

namespace rws {

/** Lists the missions of `MissionDir` into `MissionFiles`, full paths sorted without regard to
   case. True if there is at least one. A folder that cannot be read is logged and counts as empty.
 */
bool GetMissionFiles(Document& doc, const Services& services);

/** Builds one unread mission for every listed file. */
void LoadMissionArray(Document& doc, const Services& services);

/** Reads one mission and all its records, by the rule that holds for it. A file that is gone ends
   the program; one that cannot be read is logged and stays unread, so that the next selection tries
   again. What fails inside the file is logged, and the rest is read. */
void LoadMission(Document& doc, const Services& services, std::size_t mission);

/** The part of `LoadMission` behind the disk: fills the mission from a file's bytes, whose line
   ends are in order. A mission that was given up half way stays unread: written back, it would lose
   the rest. */
void ReadMissionText(Document& doc, const Services& services, std::size_t mission,
                     std::string bytes);

/** The pass over `Lines` that finds flights, routes and home bases; false, logged, if it was given
   up before the end. Records of an earlier read are not cleared first; who reads a mission again
   erases its arrays. */
bool LoadMissionParams(Document& doc, const Services& services, std::size_t mission);

/** Counts the lines that the section readers may still look at. A file made so that each of its
   lines starts a section over the rest of it would be read for hours; it is given up with an
   overflow instead, far beyond anything that a mission needs. */
class ReadBudget {
 public:
  void Spend(std::size_t lines);
  /** True once it is used up. */
  bool Spent() const { return left_ == 0; }

 private:
  std::size_t left_ = 16'000'000;
};

/** Reads the flight section whose "Planes" key stands at line `line`, into an existing flight. */
void LoadPlane(Document& doc, const Services& services, std::size_t mission, std::size_t flight,
               std::size_t line, ReadBudget& budget);

/** Reads one route section, whose header stands at line `line`, into the flight's `Waypoints`.
    Distances count in tens of the file's unit. A line of fewer than five words ends the section,
    logged; its record stays half filled. */
void LoadWayPoint(Document& doc, const Services& services, std::size_t mission, std::size_t flight,
                  std::size_t line, ReadBudget& budget);

/** Reads home bases from the line behind `line` on, then the aircraft lists that follow. Fired by a
    numbered section too, it takes the first aircraft for a home base: the records are cut to one
   and the run ends, logged. */
void LoadBornPlace(Document& doc, const Services& services, std::size_t mission, std::size_t line,
                   ReadBudget& budget);

}  // namespace rws
