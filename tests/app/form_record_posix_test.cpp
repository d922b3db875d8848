#include <QRegularExpression>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "tests/app/form_record.h"
#include "tests/app/forms_fixture.h"
#include "tests/support/places.h"

namespace rws::test {
namespace {

class FormRecordTest : public AllFormsTest {
 protected:
  /** Without what differs from run to run. */
  std::string Timeless(const std::string& record) const {
    QString text = QString::fromStdString(record);
    text.replace(QString::fromStdString(Box.Path()), "BOX");
    text.replace(QRegularExpression(R"(\d{4}-\d\d-\d\d \d\d:\d\d(:\d\d)?)"), "WHEN");
    return text.toStdString();
  }
};

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

/** Each form against the record of it that was looked over when it last changed. To take new
    records: RWS_TAKE_RECORDS=1 form_tests --gtest_filter='FormRecordTest.*'; then read what
    git says of them. */
TEST_F(FormRecordTest, EachIsAsItsRecord) {
  ForEachForm([this](QWidget& form) {
    const std::string path =
        SourceFolder() + "/tests/app/records/" + form.objectName().toStdString() + ".txt";
    if (HasFailure()) return;
    const bool take = std::getenv("RWS_TAKE_RECORDS") != nullptr;
    const std::string expected = take ? "" : ReadFile(path);
    std::string record;
    // Some lists are filled from behind.
    const auto isAsExpected = [&] { return (record = Timeless(RecordOf(form))) == expected; };
    const bool same = QTest::qWaitFor(isAsExpected, take ? 500 : 3000);
    if (take)
      std::ofstream(path) << record;
    else
      EXPECT_TRUE(same) << FirstDifference(record, expected);
  });
}

}  // namespace
}  // namespace rws::test
