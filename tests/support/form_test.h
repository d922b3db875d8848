#pragma once

#include <gtest/gtest.h>

#include <QTest>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "session/doors.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws::test {

/** The real dialog over a world of its own, opened as its caller opens it. */
template <class Dialog>
struct FormTest : testing::Test {
  FormTest() {
    W.Listeners.push_back([this](const Change& change) {
      edits_.push_back(change.Kind ? change.Kind->What : "(shown)");
    });
  }

  /** Makes, loads and shows a new one; `prepare` sets what its caller sets. */
  template <class Prepare>
  Dialog& Open(Prepare prepare) {
    Form = std::make_unique<Dialog>(W, nullptr);
    prepare(*Form);
    Form->LoadForm();
    Form->show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(Form.get()));
    return *Form;
  }
  Dialog& Open() {
    return Open([](Dialog&) {});
  }
  /** What listeners have heard of since the last call, joined by "|". */
  std::string TakeEdits() { return Joined(std::exchange(edits_, {})); }

  const Sandbox Box;
  World W{Box.Path()};
  Catalogues& Tables = W.Tables;
  std::unique_ptr<Dialog> Form;

 private:
  std::vector<std::string> edits_;
};

}  // namespace rws::test
