#include <QRegularExpression>

#include "tests/app/form_record.h"
#include "tests/app/forms_fixture.h"
#include "tests/app/records.h"

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

TEST_F(FormRecordTest, EachIsAsItsRecord) {
  ForEachForm([this](QWidget& form) {
    ExpectRecord("tests/app/records/" + form.objectName().toStdString() + ".txt",
                 [&] { return Timeless(RecordOf(form)); });
  });
}

}  // namespace
}  // namespace rws::test
