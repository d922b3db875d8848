#include "mainwindow/logic/stationary.h"

#include "services/faults.h"
#include "services/text.h"

namespace rws {

int CountStationary(const Document& doc, std::size_t mission) {
  const LineArray& lines = At(doc.Missions, static_cast<std::ptrdiff_t>(mission)).Lines;
  int count = 0;
  for (std::size_t i = 0; i < lines.size(); ++i) count += Contains(lines[i], "planes.Plane");
  return count;
}

std::string StationaryText(int count) {
  if (count < 1) return "No stationary aircraft for this mission";
  return std::to_string(count) + " stationary aircraft in this mission";
}

}  // namespace rws
