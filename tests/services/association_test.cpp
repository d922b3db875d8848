#include "services/association.h"

#include <gtest/gtest.h>

#include <utility>

#include "services/paths.h"
#include "tests/support/doubles.h"

namespace rws::test {
namespace {

class AssociationTest : public ::testing::Test {
 protected:
  AssociationTest() : World_("/opt/my edit") {
    World_.Services.ProgramName = "rws-edit";
    World_.Services.System.NotifyAssocChanged = [this] { Calls.push_back("notify"); };
    World_.Services.System.Associate = [this](bool on) {
      Calls.push_back(on ? "on" : "off");
      return Refusal;
    };
    auto& backend = World_.Services.Settings.Backend;
    backend.Write = [this, write = backend.Write](SettingsRoot root, const std::string& key,
                                                  const std::string& name,
                                                  const SettingData& data) {
      EXPECT_EQ(root, SettingsRoot::ClassesRoot);
      Calls.push_back(key + "=" + std::get<std::string>(data));
      write(root, key, name, data);
    };
    backend.Delete = [this, remove = backend.Delete](SettingsRoot root, const std::string& key) {
      Calls.push_back("delete " + key);
      remove(root, key);
    };
  }
  std::string TakeCalls() { return Joined(std::exchange(Calls, {})); }

  World World_;
  std::vector<std::string> Calls;
  std::string Refusal;
};

TEST_F(AssociationTest, WritesAndDeletesTheKeysInOrder) {
  const Services& services = World_.Services;
  AssociateOn(services);
  const std::string command = BuildPath("/opt/my edit", "rws-edit") + " %1";
  EXPECT_EQ(TakeCalls(),
            "on|RWS Edit.mis=RWS Edit|RWS Edit.properties=RWS Briefing|.mis=RWS Edit.mis|"
            ".properties=RWS Edit.properties|RWS Edit.mis\\shell\\open\\command=" +
                command + "|RWS Edit.properties\\shell\\open\\command=" + command + "|notify");
  EXPECT_TRUE(IsAssociated(services));
  SetRegValue(services.Settings, SettingsRoot::ClassesRoot, ".properties", "",
              std::string("another"));
  TakeCalls();
  AssociateOff(services);
  EXPECT_EQ(TakeCalls(), "off|delete .mis|delete RWS Edit.mis|delete RWS Edit.properties|notify")
      << "briefings belong to another program by now";
  EXPECT_FALSE(IsAssociated(services));
}

TEST_F(AssociationTest, ARefusalIsToldAndChangesNothing) {
  Refusal = "Cannot write \"/x\": disk full";
  World_.Script.Expect(Refusal);
  AssociateOn(World_.Services);
  EXPECT_FALSE(IsAssociated(World_.Services));
  Refusal.clear();
  AssociateOn(World_.Services);
  Refusal = "Cannot delete \"/x\": busy";
  World_.Script.Expect(Refusal);
  AssociateOff(World_.Services);
  EXPECT_TRUE(IsAssociated(World_.Services));
}

}  // namespace
}  // namespace rws::test
