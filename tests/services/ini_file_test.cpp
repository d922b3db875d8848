#include "services/ini_file.h"

#include <gtest/gtest.h>

#include "services/faults.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws {
namespace {

TEST(IniFile, Reads) {
  const test::Sandbox box;
  const std::string file = box.Write(
      "skin.ini", test::Crlf({"Code=outside", "[Other]", "Code=1", "[Skin]", "; Code=remark",
                              " code = JG 54 = x ", "Code=second",
                              "Void=", "Long=" + std::string(300, 'x'), "[Skin]", "Name=late"}));
  struct Row {
    const char *Section, *Key;
    std::string Value;
  };
  const Row rows[] = {{"Skin", "Code", "JG 54 = x"},
                      {"SKIN", "CODE", "JG 54 = x"},
                      {"other", "Code", "1"},
                      {"Skin", "Void", ""},
                      {"Skin", "Long", std::string(256, 'x')},
                      {"Skin", "Name", "none"},
                      {"Absent", "Code", "none"}};
  const Services services;
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.Section) + " " + row.Key);
    EXPECT_EQ(ReadIniValue(services, file, row.Section, row.Key, "none"), row.Value);
  }
  EXPECT_EQ(ReadIniValue(services, box.Path("gone.ini"), "Skin", "Code", "none"), "none");
}

TEST(IniFile, WritesAndKeepsAllOtherLines) {
  const test::Sandbox box;
  const Services services;
  const std::string file = box.Path("skin.ini");
  WriteIniValue(services, file, "Skin", "Code", "JG 54");
  WriteIniValue(services, file, "Skin", "Name", "   ");
  EXPECT_EQ(box.Read("skin.ini"), "[Skin]\r\nCode=JG 54\r\nName=Empty\r\n");
  EXPECT_EQ(ReadIniValue(services, file, "Skin", "Name", ""), "Empty");

  box.Write("skin.ini", test::Crlf({"junk", "[skin]", "; remark", "code=1", "", "[B]", "Code=2"}));
  WriteIniValue(services, file, "Skin", "Code", "3");
  WriteIniValue(services, file, "Skin", "New", "4");
  WriteIniValue(services, file, "C", "Code", "5");
  EXPECT_EQ(box.Read("skin.ini"), test::Crlf({"junk", "[skin]", "; remark", "Code=3", "New=4", "",
                                              "[B]", "Code=2", "[C]", "Code=5"}));
  EXPECT_THROW(WriteIniValue(services, box.Path("gone/skin.ini"), "C", "Code", "5"), Fault);
}

}  // namespace
}  // namespace rws
