#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <vector>

#include "map/forms/map_export.h"
#include "map/map_texts.h"

/** A mission on paper: the map, its flights' waypoints and the briefing. */
namespace rws {

struct BriefingTable {
  QString Caption;
  QStringList Headings;
  std::vector<QStringList> Rows;
};

/** The waypoints of a flight. */
BriefingTable WaypointTable(const MapTextSources& from, std::size_t route);

/** What the pages show, from the top. Texts are shown as they are. */
struct BriefingPages {
  QString Title, Subtitle;
  PaintMapInto Map;  // none for no map
  std::vector<BriefingTable> Tables;
  QString Text;
};

/** The bytes of a PDF file, on Letter where the locale has inches and on A4 elsewhere. What does
    not fit goes on over as many pages as it takes; each has the title and its number at the foot.
    More text than a million letters is a fault. */
QByteArray BriefingPdf(const BriefingPages& pages);

/** Writes it; the file is whole or as it was. */
void SaveBriefingPdf(const Services& services, const std::string& path, const BriefingPages& pages);

}  // namespace rws
