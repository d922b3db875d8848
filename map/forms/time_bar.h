#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QSlider>
#include <QTimer>
#include <QToolButton>
#include <QWidget>
#include <array>
#include <optional>
#include <string>

namespace rws {

/** Moves a mission's time: a slider, a clock that can be started, and a switch for whether the
    flights' positions are shown at all. Minutes count from the mission's start. */
class TimeBar : public QWidget {
  Q_OBJECT

 public:
  explicit TimeBar(QWidget* parent = nullptr);

  /** The mission's time in decimal hours and its last minute; the minute shown stays within. More
      than `kMostMinutes` are not offered. */
  void SetMission(const std::string& time, double lastMinute);
  static constexpr double kMostMinutes = 10'000;

  /** The minute shown; nothing while positions are not shown. */
  std::optional<double> Minute() const;
  /** Moves the slider without a signal; none unchecks "Show positions". */
  void SetMinute(std::optional<double> minute);

  bool IsPlaying() const { return timer_.isActive(); }

  QSlider* sldMinute;
  QToolButton* cmdPlay;
  /** One minute back, one on. */
  std::array<QToolButton*, 2> cmdStep;
  QComboBox* cmbPace;
  QLabel* lblClock;
  QCheckBox* chkPositions;

 Q_SIGNALS:
  /** The user, or the running clock, has moved the time or switched the positions. */
  void MinuteChanged(std::optional<double> minute);

 protected:
  void hideEvent(QHideEvent* event) override;

 private:
  void Build();
  void Place();
  void Play(bool on);
  void Tick();
  void Step(double minutes);
  void MoveTo(double minute);
  void TellMinute();
  void ShowClock();

  std::string time_;
  double minute_ = 0, last_ = 1;
  QTimer timer_{this};
};

}  // namespace rws
