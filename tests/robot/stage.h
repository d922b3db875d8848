#pragma once

#include <QObject>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "mainwindow/frmRWS.h"
#include "platform/event_pump.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws::robot {

/** The real window over missions of its own. What leaves the program is answered here: questions
    and choosers by chance, all that starts other programs by nothing. */
class Stage : public QObject {
 public:
  explicit Stage(std::uint32_t setup);
  ~Stage() override;

  /** From now on chance is that of this number. */
  void Begin(std::uint32_t chance);
  std::size_t Random(std::size_t count) { return dice_() % count; }
  bool Once(std::size_t in) { return Random(in) == 0; }

  /** All that waits for a time comes to it now. */
  void RunTimers();
  /** Something is worked on in the background. */
  bool IsBusy() const;
  /** Another program does something to a file of the folder. */
  void ActOutside();
  /** Whether others than the program have written to the folder, or may. */
  bool IsPrivate() const { return (setup_ & 8) == 0; }

  test::Sandbox Box;
  test::World World;
  std::unique_ptr<frmRWS> Window;
  /** Events run in the middle of a long work. */
  bool Pumping = false;
  /** The questions since the last look, with their answers. */
  std::vector<std::string> Asked;
  /** Bytes of the missions at the start, by full path; of those that nobody else has changed. */
  std::map<std::string, std::string> Start;
  /** What may have left Update other than the comparison tells, since the last look. */
  bool Unlit = false;

 protected:
  /** Time stands still but for `RunTimers`. */
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void FillBox();
  void Wire();
  QObjectList Waiting() const;
  std::string AnyPath(bool folder);
  std::vector<std::string> Files() const;

  std::uint32_t setup_;
  std::mt19937 dice_;
  EventPump pump_{0};
  bool timersRun_ = false;
};

/** Letters, digits, blanks, quotes and other bytes that nobody types. */
std::string Junk(std::mt19937& dice);

}  // namespace rws::robot
