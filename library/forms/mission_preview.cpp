#include "library/forms/mission_preview.h"

#include <QHeaderView>
#include <QVBoxLayout>
#include <array>

#include "catalogues/army_text.h"
#include "catalogues/squadrons.h"
#include "controls/layouts.h"
#include "controls/list_colors.h"
#include "library/briefings.h"
#include "library/columns.h"
#include "platform/icons.h"
#include "platform/qt_text.h"
#include "services/faults.h"
#include "services/text.h"

namespace rws {

MissionPreview::MissionPreview(const Session& session)
    : QSplitter(Qt::Vertical), Flights(session.Services.Page, this), session_(session) {
  setObjectName(QStringLiteral("preview"));
  setChildrenCollapsible(false);
  auto* texts = new QWidget;
  auto* column = new QVBoxLayout(texts);
  column->setContentsMargins(0, 0, 0, 0);
  lblName = Named(new QLabel, "lblName");
  lblName->setTextFormat(Qt::PlainText);
  lblName->setWordWrap(true);
  QFont bold = lblName->font();
  bold.setBold(true);
  lblName->setFont(bold);
  txtBriefing = Named(new QPlainTextEdit, "txtBriefing", tr("Briefing"));
  txtBriefing->setReadOnly(true);
  txtBriefing->setTabChangesFocus(true);
  column->addWidget(lblName);
  column->addWidget(txtBriefing, 1);
  lstFlights = Named(new ReportList, "lstFlights", tr("Flights"));
  lstFlights->setModel(&Flights);
  lstFlights->header()->setSectionsClickable(false);
  lstFlights->setSelectionMode(QAbstractItemView::SingleSelection);
  lstFlights->header()->setSectionResizeMode(PreviewFlights::kAircraft, QHeaderView::Stretch);
  lstFlights->header()->setStretchLastSection(false);
  const int letter = fontMetrics().averageCharWidth();
  lstFlights->setColumnWidth(PreviewFlights::kSquadron, letter * 14);
  lstFlights->setColumnWidth(PreviewFlights::kPlanes, letter * 8);
  lstFlights->setColumnWidth(PreviewFlights::kRemark, letter * 9);
  addWidget(texts);
  addWidget(lstFlights);
}

void MissionPreview::Clear() {
  lblName->clear();
  txtBriefing->clear();
  Flights.SetRows({});
}

void MissionPreview::ShowMission(const MissionIndex& index, std::size_t row) {
  const QString name =
      FromBytes(session_.Services.Page, index.Text(row, MissionText::BriefingName));
  const QString file = QString::fromStdString(CellText(index, row, MissionColumn::Mission));
  lblName->setText(name.trimmed().isEmpty() ? file : name);
  txtBriefing->setPlainText(BriefingOfRow(index, row));
  Flights.SetRows(FlightsOf(index, row));
}

/** The short text, and below it the long one. One that cannot be read says why. */
QString MissionPreview::BriefingOfRow(const MissionIndex& index, std::size_t row) const {
  const Services& services = session_.Services;
  QString text;
  Trap(
      [&] {
        const auto briefing = BriefingOf(services.Files, index.Path(row));
        if (!briefing) return;
        const QString brief = FromBytes(services.Page, briefing->Short).trimmed();
        const QString description = FromBytes(services.Page, briefing->Description).trimmed();
        text = brief + (brief.isEmpty() ? QString() : QStringLiteral("\n\n")) + description;
      },
      [&](const Fault& caught) { text = FromPath(caught.Text); });
  const QString trouble = QString::fromStdString(CellText(index, row, MissionColumn::Trouble));
  return trouble.isEmpty() ? text : trouble + QStringLiteral("\n\n") + text;
}

std::vector<PreviewFlight> MissionPreview::FlightsOf(const MissionIndex& index,
                                                     std::size_t row) const {
  const Catalogues& tables = session_.Tables;
  std::vector<PreviewFlight> flights;
  for (std::uint16_t i = 0; i < index[row].Flights; ++i) {
    const IndexedFlight& flight = index.Flights(row)[i];
    const NamedValue& squadron = index.Squadrons[flight.Squadron];
    // Tables are asked by the names of flights, which end in two digits.
    const std::string group = squadron.Word + "00";
    PreviewFlight& shown = flights.emplace_back();
    shown.Aircraft = index.Aircraft[flight.Class].Shown;
    shown.Squadron = Replace(squadron.Word, "_", " ");
    shown.Icon = GetCntyNameByGroup(tables, session_.Services, group);
    shown.Color =
        ArmyColor(GetColorByGroup(tables, session_.Services, group)).value_or(shown.Color);
    shown.Planes = static_cast<int>(flight.Planes);
    shown.IsPlayer = index[row].Player == i;
    shown.OnlyAI = flight.OnlyAI != 0;
  }
  return flights;
}

QVariant PreviewFlights::Text(const PreviewFlight& flight, int column) const {
  switch (column) {
    case kAircraft:
      return FromBytes(page_, flight.Aircraft);
    case kSquadron:
      return FromBytes(page_, flight.Squadron);
    case kPlanes:
      return QString::number(flight.Planes);
    default:
      if (flight.IsPlayer) return tr("Player");
      return flight.OnlyAI ? tr("AI only") : QString();
  }
}

QVariant PreviewFlights::data(const QModelIndex& index, int role) const {
  const PreviewFlight* flight = RowOf(index);
  if (!flight) return {};
  if (role == Qt::DisplayRole) return Text(*flight, index.column());
  if (role == Qt::ForegroundRole) return FromBgr(flight->Color);
  if (role == Qt::TextAlignmentRole && index.column() == kPlanes) return QVariant(Qt::AlignCenter);
  if (role == Qt::DecorationRole && index.column() == kAircraft)
    return GroupIcon(FromBytes(page_, flight->Icon));
  return {};
}

QVariant PreviewFlights::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  const std::array<QString, kColumns> names{tr("Aircraft"), tr("Squadron"), tr("Planes"),
                                            QString()};
  return At(names, section);
}

}  // namespace rws
