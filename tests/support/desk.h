#pragma once

#include <string>

#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws::test {

/** A session on a folder of missions, for what works on files. Files are told as
    "folder/name=content", joined by "|". */
struct Desk {
  /** Makes these files and the folder "out". The missions of `folder` are listed, not read. */
  explicit Desk(const std::string& files, const std::string& folder = "in");

  /** "name=content" of each file of a folder, sorted by bytes. */
  std::string Disk(const std::string& folder = "in") const;
  std::string Notices() const { return Joined(World.Script.Notices); }
  Mission& Record() { return World.Doc.Missions[0]; }

  Sandbox Box;
  test::World World;
};

}  // namespace rws::test
