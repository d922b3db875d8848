#pragma once

#include <QLabel>
#include <QPlainTextEdit>
#include <QSplitter>

#include "controls/report_list.h"
#include "controls/row_model.h"
#include "library/index.h"
#include "session/session.h"

namespace rws {

/** A flight as it is previewed; texts are in the encoding of mission text. */
struct PreviewFlight {
  std::string Aircraft, Squadron, Icon;
  int Planes = 0;
  bool IsPlayer = false, OnlyAI = false;
  std::int32_t Color = 0;
};

/** The rows of the flights. Columns: aircraft, squadron, planes, what is special. */
class PreviewFlights : public RowModel<PreviewFlight> {
  Q_OBJECT

 public:
  enum Column { kAircraft, kSquadron, kPlanes, kRemark, kColumns };

  PreviewFlights(const CodePage& page, QObject* parent) : RowModel(kColumns, parent), page_(page) {}
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  QVariant Text(const PreviewFlight& flight, int column) const;

  const CodePage& page_;
};

/** What a mission is about: its briefing and its flights, one below the other. */
class MissionPreview : public QSplitter {
  Q_OBJECT

 public:
  explicit MissionPreview(const Session& session);

  void ShowMission(const MissionIndex& index, std::size_t row);
  void Clear();

  QLabel* lblName;
  QPlainTextEdit* txtBriefing;
  ReportList* lstFlights;
  PreviewFlights Flights;

 private:
  QString BriefingOfRow(const MissionIndex& index, std::size_t row) const;
  std::vector<PreviewFlight> FlightsOf(const MissionIndex& index, std::size_t row) const;

  const Session& session_;
};

}  // namespace rws
