#include "services/list_files.h"

#include <gtest/gtest.h>

#include "services/paths.h"
#include "tests/support/sandbox.h"

namespace rws {
namespace {

using Names = std::vector<std::string>;

TEST(ListFiles, AppendsWhatMatches) {
  const test::Sandbox box;
  for (const char* name :
       {"b.MIS", "A.mis", ".hidden.mis", "Readme.txt", "a.mis.bak", "x_Sound.mis", "oldCOPY.mis"})
    box.Write(name, "");
  box.MakeFolder("folder.mis");
  int pumped = 0;
  Services services;
  services.System.PumpEvents = [&] { ++pumped; };

  Names names{"first"};
  EXPECT_EQ(ListFiles(services, names, box.Path(), "*.mis", false, "_sound,Copy"), 3);
  EXPECT_EQ(names, (Names{"first", ".hidden.mis", "A.mis", "b.MIS"}));
  EXPECT_EQ(pumped, 3);

  names.clear();
  EXPECT_EQ(ListFiles(services, names, box.Path(), "*.TXT", true, ""), 0);
  EXPECT_EQ(names, Names{BuildPath(box.Path(), "Readme.txt")});

  names.clear();
  EXPECT_EQ(ListFiles(services, names, box.Path(), "*.bmp", true, ""), -1);
}

}  // namespace
}  // namespace rws
