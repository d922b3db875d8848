#include "map/forms/time_bar.h"

#include <QHBoxLayout>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>

#include "controls/layouts.h"
#include "map/flight_clock.h"
#include "map/map_units.h"

namespace rws {

namespace {

/** Ticks of the slider in a minute: it moves by seconds. */
constexpr int kTicks = 60;
constexpr int kFrame = 50;  // milliseconds
constexpr std::array<int, 3> kPaces{1, 4, 16};

}  // namespace

TimeBar::TimeBar(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("TimeBar"));
  Build();
  Place();
  connect(sldMinute, &QSlider::valueChanged, this,
          [this](int value) { MoveTo(double(value) / kTicks); });
  connect(cmdPlay, &QToolButton::toggled, this, &TimeBar::Play);
  connect(cmdStep[0], &QToolButton::clicked, this, [this] { Step(-1); });
  connect(cmdStep[1], &QToolButton::clicked, this, [this] { Step(1); });
  connect(chkPositions, &QCheckBox::toggled, this, [this](bool on) {
    if (!on) cmdPlay->setChecked(false);
    TellMinute();
  });
  connect(&timer_, &QTimer::timeout, this, &TimeBar::Tick);
  SetMission("12", 1);
}

void TimeBar::Build() {
  sldMinute = Named(new QSlider(Qt::Horizontal), "sldMinute", tr("Minute of the mission"),
                    tr("Time of the mission at which the flights are shown"));
  sldMinute->setSingleStep(kTicks);
  sldMinute->setPageStep(10 * kTicks);
  cmdPlay = Named(new QToolButton, "cmdPlay", tr("Play"), tr("Let the time of the mission run"));
  cmdPlay->setCheckable(true);
  cmdStep = {Named(new QToolButton, "cmdStep(0)", tr("One minute back"), tr("One minute back")),
             Named(new QToolButton, "cmdStep(1)", tr("One minute on"), tr("One minute on"))};
  cmdStep[0]->setArrowType(Qt::LeftArrow);
  cmdStep[1]->setArrowType(Qt::RightArrow);
  for (auto* button : cmdStep) button->setAutoRepeat(true);
  for (auto* button : {cmdStep[0], cmdPlay, cmdStep[1]}) {
    button->setFocusPolicy(Qt::StrongFocus);
    button->setAutoRaise(true);
  }
  cmbPace = Named(new QComboBox, "cmbPace", tr("Pace"),
                  tr("Minutes of the mission in each second of playing"));
  for (const int pace : kPaces) cmbPace->addItem(QChar(0xD7) + QString::number(pace));
  lblClock = Named(new QLabel, "lblClock", tr("Time of the mission"));
  chkPositions = Named(new QCheckBox(tr("Show &positions")), "chkPositions", tr("Show positions"),
                       tr("Show on the map where each flight is at this time"));
  chkPositions->setChecked(true);
  timer_.setInterval(kFrame);
  Play(false);
}

void TimeBar::Place() {
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  const int pause = cmdPlay->fontMetrics().horizontalAdvance(tr("Pause"));
  cmdPlay->setMinimumWidth(pause + 2 * cmdPlay->fontMetrics().averageCharWidth());
  for (auto* button : {cmdStep[0], cmdPlay, cmdStep[1]}) row->addWidget(button);
  row->addWidget(cmbPace);
  row->addWidget(sldMinute, 1);
  row->addWidget(lblClock);
  row->addWidget(chkPositions);
  TabOrder({cmdStep[0], cmdPlay, cmdStep[1], cmbPace, sldMinute, chkPositions});
}

void TimeBar::SetMission(const std::string& time, double lastMinute) {
  time_ = time;
  last_ = std::clamp(std::isfinite(lastMinute) ? lastMinute : 1, 1.0, kMostMinutes);
  minute_ = std::min(minute_, last_);
  const QSignalBlocker quiet(sldMinute);
  sldMinute->setRange(0, static_cast<int>(std::ceil(last_ * kTicks)));
  lblClock->setMinimumWidth(
      lblClock->fontMetrics().horizontalAdvance(QStringLiteral("00:00:00, 000 min 00 s")));
  ShowClock();
}

std::optional<double> TimeBar::Minute() const {
  return chkPositions->isChecked() ? std::optional(minute_) : std::nullopt;
}

void TimeBar::SetMinute(std::optional<double> minute) {
  const QSignalBlocker quiet(chkPositions);
  chkPositions->setChecked(minute.has_value());
  if (minute)
    minute_ = std::clamp(*minute, 0.0, last_);
  else
    cmdPlay->setChecked(false);
  ShowClock();
}

void TimeBar::Play(bool on) {
  // From the end it begins anew.
  if (on && minute_ >= last_) minute_ = 0;
  if (on && !chkPositions->isChecked()) chkPositions->setChecked(true);
  on ? timer_.start() : timer_.stop();
  cmdPlay->setText(on ? tr("Pa&use") : tr("P&lay"));
  cmdPlay->setAccessibleName(on ? tr("Pause") : tr("Play"));
  cmdPlay->setToolTip(on ? tr("Let the time of the mission stand")
                         : tr("Let the time of the mission run"));
}

void TimeBar::Tick() {
  const auto pace = static_cast<std::size_t>(std::max(cmbPace->currentIndex(), 0));
  MoveTo(minute_ + kPaces[pace] * double(kFrame) / 1000);
  if (minute_ >= last_) cmdPlay->setChecked(false);
}

void TimeBar::Step(double minutes) { MoveTo(minute_ + minutes); }

/** Whoever moves the time wants to see where the flights are. */
void TimeBar::MoveTo(double minute) {
  minute_ = std::clamp(minute, 0.0, last_);
  const QSignalBlocker quiet(chkPositions);
  chkPositions->setChecked(true);
  TellMinute();
}

void TimeBar::TellMinute() {
  ShowClock();
  Q_EMIT MinuteChanged(Minute());
}

void TimeBar::ShowClock() {
  const QSignalBlocker quiet(sldMinute);
  sldMinute->setValue(static_cast<int>(std::lround(minute_ * kTicks)));
  const QString text = QString::fromStdString(TimeOfDay(time_, minute_)) + QStringLiteral(", ") +
                       QString::fromStdString(MinutesText(minute_));
  lblClock->setText(text);
  sldMinute->setAccessibleDescription(text);
}

void TimeBar::hideEvent(QHideEvent* event) {
  cmdPlay->setChecked(false);
  QWidget::hideEvent(event);
}

}  // namespace rws
