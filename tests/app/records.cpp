#include "tests/app/records.h"

#include <gtest/gtest.h>

#include <QTest>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "tests/support/places.h"

namespace rws::test {

namespace {

std::string ReadFile(const std::string& path) {
  std::ostringstream text;
  text << std::ifstream(path).rdbuf();
  return text.str();
}

std::string FirstDifference(const std::string& text, const std::string& expected) {
  std::istringstream has(text), wants(expected);
  std::string line, wanted;
  while (line == wanted && (has || wants)) {
    line.clear();
    wanted.clear();
    std::getline(has, line);
    std::getline(wants, wanted);
  }
  return "is:  " + line + "\nwas: " + wanted;
}

}  // namespace

void ExpectRecord(const std::string& file, const std::function<std::string()>& make) {
  const std::string path = SourceFolder() + "/" + file;
  std::string record;
  if (std::getenv("RWS_TAKE_RECORDS")) {
    QTest::qWait(500);
    std::ofstream(path, std::ios::binary) << make();
    return;
  }
  const std::string expected = ReadFile(path);
  const auto isAsExpected = [&] { return (record = make()) == expected; };
  // One that has failed says enough; the others need not be waited for.
  const int patience = testing::Test::HasFailure() ? 0 : 3000;
  EXPECT_TRUE(QTest::qWaitFor(isAsExpected, patience)) << file << '\n'
                                                       << FirstDifference(record, expected);
}

}  // namespace rws::test
